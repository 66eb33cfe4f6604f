#include "platform/engine/PageWriter.h"

#include <type_traits>

#include "platform/engine/PageBreaker.h"
#include "platform/runtime/Strings.h"

namespace trellin::engine {

int PageWriter::CurrentPage() const {
  // Between pages, bands land on the page still to come.
  return page_open_ ? page_number_ : page_number_ + 1;
}

float PageWriter::Room() {
  if (pending_break_ && page_open_ && has_body_) {
    FinishPage();
    pending_break_ = false;
  }
  EnsurePage();
  // Headings held back for the next band stand above it.
  float headings = 0;
  for (const Band& b : held_) headings += b.height;
  return body_bottom_ - y_ - headings;
}

void PageWriter::Place(Band band) {
  if (band.keep_with_next && !band.break_after) {
    if (band.break_before || pending_break_) {
      PlaceHeld(nullptr);
      if (page_open_ && has_body_) FinishPage();
      band.break_before = false;
      pending_break_ = false;
    }
    // The page opens now, as it would for the heading, so its header formats in the same order.
    EnsurePage();
    held_.push_back(std::move(band));
    return;
  }
  PlaceHeld(&band);
  PlaceNow(std::move(band));
}

void PageWriter::PlaceHeld(const Band* next) {
  if (held_.empty()) return;
  if (next && !next->break_before && !pending_break_ && page_open_ && has_body_) {
    float headings = 0;
    for (const Band& b : held_) headings += b.height;
    const float space = body_bottom_ - y_;
    // What of `next` must stand under the headings: the whole band, or its first clean piece.
    bool fits = headings + next->Reach() <= space + 0.5f;
    if (!fits && next->can_split && space - headings > 0)
      fits = FindCut(*next, space - headings) > 0;
    const bool fits_fresh = headings + next->Reach() <= body_bottom_ - body_top_;
    if (!fits && (fits_fresh || next->can_split)) FinishPage();
  }
  std::vector<Band> held = std::move(held_);
  held_.clear();
  for (Band& b : held) PlaceNow(std::move(b));
}

void PageWriter::PlaceNow(Band band) {
  if ((band.break_before || pending_break_) && page_open_ && has_body_) FinishPage();
  pending_break_ = false;
  bool after = band.break_after;
  while (true) {
    EnsurePage();
    float space = body_bottom_ - y_;
    Placement placement = Decide(band, space, has_body_);
    if (placement == Placement::Here || (!has_body_ && space <= 0)) {
      Put(band, y_);
      break;
    }
    if (placement == Placement::NextPage) {
      FinishPage();
      continue;
    }
    float cut = FindCut(band, space);
    if (cut <= 0) {
      if (has_body_) {
        FinishPage();
        continue;
      }
      // Nothing on this page and no clean cut: cut through, or the band would never print.
      cut = space;
    }
    auto [first, rest] = SplitBand(std::move(band), cut);
    Put(first, y_);
    FinishPage();
    band = std::move(rest);
  }
  pending_break_ = after;
}

void PageWriter::StartSection(bool new_page) {
  if (new_page || pending_break_) PlaceHeld(nullptr);
  if ((new_page || pending_break_) && page_open_ && has_body_) FinishPage();
  pending_break_ = false;
}

void PageWriter::Finish() {
  PlaceHeld(nullptr);
  if (!page_open_ && page_number_ == 0) EnsurePage();
  if (page_open_) FinishPage();
}

void PageWriter::EnsurePage() {
  if (page_open_) return;
  if (page_number_ == 0 && source_) geometry_ = source_();
  ++page_number_;
  page_ = Page{};
  page_.number = page_number_;
  page_.width = geometry_.width;
  page_.height = geometry_.height;
  page_open_ = true;
  has_body_ = false;
  Band header = furniture_.PageHeader(page_number_);
  Put(header, geometry_.top);
  y_ = geometry_.top + header.height;
  body_top_ = y_;
  body_bottom_ = geometry_.height - geometry_.bottom - furniture_.FooterReserve();
  has_body_ = false;
}

void PageWriter::FinishPage() {
  Band footer = furniture_.PageFooter(page_number_);
  // The footer sits on the bottom margin, however tall it turned out.
  Put(footer, geometry_.height - geometry_.bottom - footer.height);
  sink_.AddPage(page_);
  ++pages_written_;
  page_ = Page{};
  page_open_ = false;
}

void PageWriter::Put(Band& band, float y) {
  for (auto& late : band.late) {
    if (auto* run = std::get_if<TextRun>(&band.items[late.item]))
      run->text = late.text(page_number_);
  }
  for (auto& item : band.items) {
    std::visit(
        [y](auto& it) {
          using T = std::decay_t<decltype(it)>;
          if constexpr (std::is_same_v<T, LineItem>) {
            it.y1 += y;
            it.y2 += y;
          } else {
            it.top += y;
          }
        },
        item);
    page_.items.push_back(std::move(item));
  }
  for (auto& path : band.toc) page_.bookmarks.push_back(Bookmark{Split(path, "\\"), y});
  for (auto& row : band.rows) page_.rows.push_back(std::move(row));
  if (band.height > 0 || !band.items.empty()) has_body_ = true;
  y_ = y + band.height;
}

}  // namespace trellin::engine
