// Comma lists of SQL clauses and the Groupings value.

#include <cstdint>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr char kAlias[] = " AS ";
constexpr char kPageBreak[] = " [Page Break]";
constexpr int kCommaCode = 44;
// Indexes 0 to 100: a Groupings value never offers more levels than that.
constexpr std::size_t kMaxGroupings = 101;

}  // namespace

void MoveInCommaList(std::string& List, const std::string& Item, bool First, bool CutAlias) {
  std::string item = Trim(Item);
  if (item.empty()) return;
  if (CutAlias) {
    const std::size_t alias = InStr(item, kAlias);
    if (alias > 0) item = Left(item, alias - 1);
  }
  // Presence is a substring test while removal takes whole items only: an item that is part of
  // another entry ("Item" in "ItemId") passes the test, removes nothing and comes in again.
  // Reports' clause lists are written with this behaviour in mind, so it is kept.
  if (InStr(List, item) > 0) {
    List = Replace("," + Trim(List) + ",", "," + item + ",", ",");
    if (!List.empty() && List.front() == ',') List.erase(0, 1);
    if (!List.empty() && List.back() == ',') List.pop_back();
  }
  if (First) {
    List = List.empty() ? item : item + "," + List;
  } else {
    List = List.empty() ? item : List + "," + item;
  }
}

bool SplitGroupings(const Variant& Value, std::vector<std::string>& Names,
                    std::vector<bool>& PageBreaks) {
  Names.clear();
  PageBreaks.clear();
  const std::string text = Value.Text();
  if (text.empty()) return false;

  Utilities& utilities = TrellinReportGlobals::RequireBusinessLayer().Utilities();
  std::int64_t position = 1;
  do {
    std::string token = utilities.GetNextToken(text, position, kCommaCode);
    // A reader that reports the end only on the call after the last token hands back one empty
    // token then; it is no grouping.
    if (position < 0 && token.empty() && !Names.empty()) break;
    if (Names.size() == kMaxGroupings) {
      throw std::out_of_range("Subscript out of range: a Groupings value holds more than " +
                              std::to_string(kMaxGroupings) + " items");
    }
    bool page_break = false;
    if (InStr(token, kPageBreak) > 0) {
      page_break = true;
      token = Replace(token, kPageBreak, "");
    }
    // The dialogue may put a caption before the name, ending in a tab; the name is what follows
    // the last tab.
    const std::size_t tab = token.rfind('\t');
    if (tab != std::string::npos) token.erase(0, tab + 1);
    Names.push_back(Trim(token));
    PageBreaks.push_back(page_break);
  } while (position >= 0);
  return true;
}

}  // namespace trellin
