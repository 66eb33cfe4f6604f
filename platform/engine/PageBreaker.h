#pragma once
// The page-breaking rules, apart from any report: whether a band goes on the current page, moves
// to the next, or is cut, and where a band may be cut without slicing a line of text.

#include <utility>

#include "platform/engine/Band.h"

namespace trellin::engine {

enum class Placement { Here, NextPage, Split };

// `space` is what is left of the page body; `page_has_body` says whether anything but the page
// header is on the page. A band that fits goes here; one that does not moves whole to the next
// page, unless it may split or nothing else is on the page (it would not fit anywhere).
[[nodiscard]] Placement Decide(const Band& band, float space, bool page_has_body);

// The lowest position at or above `limit` where the band can be cut without slicing a line of
// text; 0 when there is none.
[[nodiscard]] float FindCut(const Band& band, float limit);

// Cuts the band at `cut`: what lies above stays in the first part, with the band's data rows and
// contents entries; what lies below moves up into the second. Rules and boxes crossing the cut
// are divided between the two. The second part keeps break_after and can_split.
[[nodiscard]] std::pair<Band, Band> SplitBand(Band band, float cut);

}  // namespace trellin::engine
