#include "platform/engine/PageBreaker.h"

#include <algorithm>
#include <type_traits>

namespace trellin::engine {
namespace {

// Half a twip of slack: positions are sums of floats.
constexpr float kSlack = 0.5f;

float Top(const PageItem& item) {
  return std::visit(
      [](const auto& it) -> float {
        using T = std::decay_t<decltype(it)>;
        if constexpr (std::is_same_v<T, LineItem>)
          return std::min(it.y1, it.y2);
        else
          return it.top;
      },
      item);
}

float Bottom(const PageItem& item) {
  return std::visit(
      [](const auto& it) -> float {
        using T = std::decay_t<decltype(it)>;
        if constexpr (std::is_same_v<T, LineItem>)
          return std::max(it.y1, it.y2);
        else
          return it.top + it.height;
      },
      item);
}

void Shift(PageItem& item, float dy) {
  std::visit(
      [dy](auto& it) {
        using T = std::decay_t<decltype(it)>;
        if constexpr (std::is_same_v<T, LineItem>) {
          it.y1 += dy;
          it.y2 += dy;
        } else {
          it.top += dy;
        }
      },
      item);
}

}  // namespace

Placement Decide(const Band& band, float space, bool page_has_body) {
  if (band.Reach() <= space + kSlack) return Placement::Here;
  if (band.can_split || !page_has_body) return Placement::Split;
  return Placement::NextPage;
}

float FindCut(const Band& band, float limit) {
  // Move the cut up past every line of text it would slice, until none is sliced; each step
  // moves strictly up, so this ends.
  float cut = std::min(limit, band.height);
  bool moved = true;
  while (moved && cut > 0) {
    moved = false;
    for (const auto& item : band.items) {
      // Neither a line of text nor a drawn shape can be divided.
      if (!std::holds_alternative<TextRun>(item) && !std::holds_alternative<PathItem>(item)) {
        continue;
      }
      if (Top(item) < cut - kSlack && Bottom(item) > cut + kSlack) {
        cut = Top(item);
        moved = true;
      }
    }
  }
  return std::max(cut, 0.0f);
}

std::pair<Band, Band> SplitBand(Band band, float cut) {
  Band first;
  Band second;
  first.height = cut;
  second.height = std::max(band.height - cut, 0.0f);
  second.ink_height = std::max(band.ink_height - cut, 0.0f);
  first.rows = std::move(band.rows);
  first.toc = std::move(band.toc);
  first.break_before = band.break_before;
  second.break_after = band.break_after;
  second.can_split = band.can_split;

  std::vector<std::size_t> new_index(band.items.size());
  std::vector<bool> in_second(band.items.size());
  for (std::size_t i = 0; i < band.items.size(); ++i) {
    PageItem& item = band.items[i];
    float top = Top(item);
    float bottom = Bottom(item);
    if (bottom <= cut + kSlack) {
      new_index[i] = first.items.size();
      first.items.push_back(std::move(item));
    } else if (top >= cut - kSlack) {
      Shift(item, -cut);
      new_index[i] = second.items.size();
      in_second[i] = true;
      second.items.push_back(std::move(item));
    } else if (auto* rect = std::get_if<RectItem>(&item)) {
      // A shade or box across the cut: one part on each page.
      RectItem upper = *rect;
      upper.height = cut - rect->top;
      RectItem lower = *rect;
      lower.top = 0;
      lower.height = bottom - cut;
      first.items.emplace_back(upper);
      new_index[i] = second.items.size();
      in_second[i] = true;
      second.items.emplace_back(lower);
    } else if (auto* line = std::get_if<LineItem>(&item)) {
      // A rule across the cut (only an upright or slanting one can be): cut it where it crosses.
      float t = (cut - line->y1) / (line->y2 - line->y1);
      float x_cut = line->x1 + t * (line->x2 - line->x1);
      LineItem upper = *line;
      LineItem lower = *line;
      if (line->y1 < line->y2) {
        upper.x2 = x_cut;
        upper.y2 = cut;
        lower.x1 = x_cut;
        lower.y1 = 0;
        lower.y2 = line->y2 - cut;
      } else {
        upper.x1 = x_cut;
        upper.y1 = cut;
        lower.x2 = x_cut;
        lower.y2 = 0;
        lower.y1 = line->y1 - cut;
      }
      first.items.emplace_back(upper);
      new_index[i] = second.items.size();
      in_second[i] = true;
      second.items.emplace_back(lower);
    } else {
      // A line of text taller than the whole cut: it cannot be divided, so it goes first.
      new_index[i] = first.items.size();
      first.items.push_back(std::move(item));
    }
  }
  for (auto& late : band.late) {
    std::size_t at = late.item;
    late.item = new_index[at];
    (in_second[at] ? second.late : first.late).push_back(std::move(late));
  }
  return {std::move(first), std::move(second)};
}

}  // namespace trellin::engine
