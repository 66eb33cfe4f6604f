// The mailing labels on the demo company: every label's text inside its own cell of the sheet,
// cells left blank for a sheet partly used, a long address clipped to its label, and the lines
// a label keeps when it has too many.

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>

#include <sstream>

#include "reports/admin/arLabels.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class Labels : public DemoReports {};

// One printed text of a page dump.
struct Printed {
  int page = 0;
  float left = 0, top = 0, width = 0, height = 0;
  std::string text;
  std::string fit;  // "", "ellipsis", "!cut", ...
};

std::vector<Printed> Texts(const std::vector<std::string>& pages) {
  static const std::regex kText(
      R"re(^text ([-\d.]+),([-\d.]+) ([\d.]+)x([\d.]+) "(.*)" .* (left|right|center)( \S+)?$)re");
  std::vector<Printed> out;
  for (std::size_t p = 0; p < pages.size(); ++p) {
    std::istringstream lines(pages[p]);
    for (std::string line; std::getline(lines, line);) {
      std::smatch m;
      if (!std::regex_match(line, m, kText)) continue;
      out.push_back(Printed{static_cast<int>(p) + 1, std::stof(m[1]), std::stof(m[2]),
                            std::stof(m[3]), std::stof(m[4]), m[5],
                            m[7].matched ? std::string(m[7]).substr(1) : ""});
    }
  }
  return out;
}

// The cell of the sheet a text stands in, as page * 1000 + its place in reading order, or -1
// when the text is not wholly inside one cell.
int CellOf(const LabelSheet& sheet, const Printed& t) {
  for (int row = 0; row < sheet.down; ++row) {
    for (int column = 0; column < sheet.across; ++column) {
      const float left = sheet.left + static_cast<float>(column) * (sheet.width + sheet.gap);
      const float top = sheet.top + static_cast<float>(row) * sheet.height;
      const bool inside = t.left >= left - 0.5f && t.left + t.width <= left + sheet.width + 0.5f &&
                          t.top >= top - 0.5f && t.top + t.height <= top + sheet.height + 0.5f;
      if (inside) return t.page * 1000 + row * sheet.across + column;
    }
  }
  return -1;
}

// The labels of a run, cell by cell: their lines in order.
std::map<int, std::vector<std::string>> LabelsByCell(const LabelSheet& sheet,
                                                     const std::vector<std::string>& pages) {
  std::map<int, std::vector<std::string>> cells;
  for (const Printed& t : Texts(pages)) {
    const int cell = CellOf(sheet, t);
    EXPECT_GE(cell, 0) << "\"" << t.text << "\" at " << t.left << "," << t.top << " " << t.width
                       << "x" << t.height << " on page " << t.page << " is outside every cell";
    EXPECT_TRUE(t.fit.empty() || t.fit == "ellipsis") << t.text << " " << t.fit;
    cells[cell].push_back(t.text);
  }
  return cells;
}

TEST_F(Labels, EverySheetPutsEveryLabelInsideItsOwnCell) {
  BooksSql books;
  const std::vector<std::string> names = books.Texts(
      "SELECT OtherParty.Name FROM OtherParty JOIN OtherPartyAddress USING (OtherPartyId) WHERE "
      "IsSupplier=1 AND AddressId='Postal' ORDER BY OtherParty.OtherPartyId");
  ASSERT_GT(names.size(), 30u);
  for (const LabelSheet& sheet : LabelSheets()) {
    SCOPED_TRACE(std::string(sheet.name));
    const std::vector<std::string> pages =
        RunPages(Open("LabelsAP", {"Sheet=" + std::string(sheet.name)}));
    ASSERT_FALSE(pages.empty());
    ASSERT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    const std::size_t per_page = static_cast<std::size_t>(sheet.across * sheet.down);
    EXPECT_EQ(pages.size(), (names.size() + per_page - 1) / per_page);
    // A label a supplier, in code order, each starting with the name, in consecutive cells.
    std::map<int, std::vector<std::string>> cells = LabelsByCell(sheet, pages);
    ASSERT_EQ(cells.size(), names.size());
    std::size_t i = 0;
    for (const auto& [cell, lines] : cells) {
      const int expected =
          static_cast<int>(i / per_page + 1) * 1000 + static_cast<int>(i % per_page);
      EXPECT_EQ(cell, expected) << names[i];
      ASSERT_GE(lines.size(), 2u) << names[i];
      EXPECT_LE(lines.size(), static_cast<std::size_t>(arLabels::Room(sheet)));
      EXPECT_EQ(lines.front(), names[i]);
      ++i;
    }
  }
}

TEST_F(Labels, StartPositionFiveLeavesFourCellsBlankAndCopiesRepeatALabel) {
  const LabelSheet& sheet = *FindLabelSheet("L7163");
  const auto first = LabelsByCell(sheet, RunPages(Open("ContactLabels", {"Sheet=L7163"})));
  const auto fifth =
      LabelsByCell(sheet, RunPages(Open("ContactLabels", {"Sheet=L7163", "StartPosition=5"})));
  ASSERT_FALSE(first.empty());
  ASSERT_EQ(fifth.size(), first.size());
  EXPECT_EQ(fifth.begin()->first, 1004);
  auto moved = fifth.begin();
  for (const auto& [cell, lines] : first) {
    EXPECT_EQ(moved->first, cell + 4);
    EXPECT_EQ(moved->second, lines);
    ++moved;
  }
  const auto twice =
      LabelsByCell(sheet, RunPages(Open("ContactLabels", {"Sheet=L7163", "Copies=2"})));
  ASSERT_EQ(twice.size(), 2 * first.size());
  EXPECT_EQ(twice.at(1000), first.at(1000));
  EXPECT_EQ(twice.at(1001), first.at(1000));
}

// The demo's overseas customer, whose postal address is longer and wider than a label, and its
// contact who works for no party on the books.
TEST_F(Labels, ALongAddressIsClippedToItsLabelKeepingThePlaceAndCountry) {
  struct Case {
    const char* sheet;
    std::vector<std::string> lines;  // "…" ends a line cut short
  } cases[] = {
      {"L7160",
       {"Vava'u Yacht Charters and Marine…", "Private Bag 3", "Level 2, Fangatongo Commercial…",
        "Neiafu Harbour Moorings Office", "Vava'u Islands Trading Estate",
        "Attention: Accounts Payable", "Neiafu", "Tonga"}},
      {"5160",
       {"Vava'u Yacht Charters and Marine…", "Private Bag 3", "Level 2, Fangatongo Commercial…",
        "Neiafu", "Tonga"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sheet);
    const LabelSheet& sheet = *FindLabelSheet(c.sheet);
    const auto cells = LabelsByCell(
        sheet, RunPages(Open("LabelsAR", {"Customers=ZZVAVAU", std::string("Sheet=") + c.sheet})));
    ASSERT_EQ(cells.size(), 1u);
    EXPECT_EQ(cells.begin()->second, c.lines);
  }
  // A contact with no party prints the name alone; one at a party in the home country, no
  // country line.
  const auto contacts = LabelsByCell(*FindLabelSheet("L7160"), RunPages(Open("ContactLabels", {})));
  bool alone = false;
  for (const auto& [cell, lines] : contacts) {
    if (lines.front() == "Rangi Parata") alone = lines.size() == 1;
    EXPECT_NE(lines.back(), "NZ") << lines.front();
  }
  EXPECT_TRUE(alone);
}

TEST(LabelLines, TooManyLinesDropStreetLinesFromTheLastUp) {
  struct Case {
    std::vector<std::string> heading, street, tail;
    int room;
    std::vector<std::string> expected;
  } cases[] = {
      {{"N"}, {"a", "b"}, {"City 1010"}, 5, {"N", "a", "b", "City 1010"}},
      {{"N"},
       {"a", "b", "c", "d"},
       {"City 1010", "Tonga"},
       5,
       {"N", "a", "b", "City 1010", "Tonga"}},
      {{"First Last", "Party"}, {"a", "b"}, {"City"}, 3, {"First Last", "Party", "City"}},
      {{"First Last"}, {}, {}, 5, {"First Last"}},
      {{"N", "P"}, {"a"}, {"City", "Tonga"}, 2, {"N", "P"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(LabelLines(c.heading, c.street, c.tail, c.room), c.expected);
  }
}

}  // namespace
}  // namespace trellin::reports::testing
