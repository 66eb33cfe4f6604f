#include "core/host/Parameter.h"

#include "platform/runtime/Strings.h"

namespace trellin {

std::vector<std::string> Parameter::ChoiceList() const {
  std::vector<std::string> choices;
  if (Trim(Choices).empty()) {
    return choices;
  }
  for (const std::string& item : Split(Choices, ",")) {
    std::string choice = Trim(item);
    // A doubled comma or a trailing one leaves an empty item; the dialogue has nothing to show
    // for it, so it is not a choice.
    if (!choice.empty()) {
      choices.push_back(std::move(choice));
    }
  }
  return choices;
}

void Parameter::RemoveChoice(const std::string& choice) {
  std::vector<std::string> kept;
  bool removed = false;
  for (std::string& item : ChoiceList()) {
    // Only the first match goes, so a list that names a choice twice keeps the other one.
    if (!removed && EqualsIgnoreCase(item, Trim(choice))) {
      removed = true;
      continue;
    }
    kept.push_back(std::move(item));
  }
  if (removed) {
    Choices = Join(kept, ",");
  }
}

}  // namespace trellin

namespace trellin {

std::vector<MultiListItem> SplitMultiListValue(std::string_view value) {
  std::vector<MultiListItem> items;
  if (Trim(value).empty()) {
    return items;
  }
  for (const std::string& raw : Split(value, ",")) {
    MultiListItem item;
    std::string text = raw;
    std::size_t mark = InStr(text, kPageBreakMark, 1, true);
    if (mark > 0) {
      item.PageBreak = true;
      text = Replace(text, kPageBreakMark, "", true);
    }
    // A saved selection may carry a display prefix ending in a tab; only what follows counts.
    std::size_t tab = text.rfind('\t');
    if (tab != std::string::npos) {
      text = text.substr(tab + 1);
    }
    item.Choice = Trim(text);
    if (!item.Choice.empty()) {
      items.push_back(std::move(item));
    }
  }
  return items;
}

}  // namespace trellin
