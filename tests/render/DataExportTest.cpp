// The data exports: columns by position, headings, plain values and CSV quoting.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "RenderTestSupport.h"
#include "platform/render/CellText.h"
#include "platform/render/CsvSink.h"
#include "platform/render/ExcelFormat.h"
#include "platform/render/ExportColumns.h"
#include "platform/render/Render.h"
#include "tests/support/CaseFile.h"

namespace trellin::render {
namespace {

using engine::DataCell;
using engine::DataRow;
using engine::RowKind;

// Cells, masks and captions as listed in export_values.tsv.
TEST(ExportValues, AsListed) {
  const std::map<std::string, CellKind> kinds = {{"money", CellKind::Money},
                                                 {"real", CellKind::Real},
                                                 {"integer", CellKind::Integer},
                                                 {"date", CellKind::Date},
                                                 {"datetime", CellKind::DateTime}};
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("render/export_values.tsv", 3)) {
    SCOPED_TRACE(row.Where());
    const std::vector<std::string>& f = row.fields;
    if (f[0] == "cell") {
      ASSERT_EQ(f.size(), 4u);
      const DataCell cell{"c", 0, 0, trellin::testing::ParseValue(f[1]), f[2], ""};
      EXPECT_EQ(PlainCellText(cell), f[3]);
    } else if (f[0] == "format") {
      ASSERT_EQ(f.size(), 4u);
      EXPECT_EQ(ExcelNumberFormat(f[1], kinds.at(f[2])), f[3]);
    } else {
      ASSERT_EQ(f[0], "caption");
      EXPECT_EQ(CaptionFromName(f[1]), f[2]);
    }
  }
}

TEST(CsvField, QuotesOnlyWhereNeeded) {
  const std::pair<const char*, const char*> cases[] = {
      {"plain", "plain"},
      {"", ""},
      {"Smith, John", "\"Smith, John\""},
      {"12\" rule", "\"12\"\" rule\""},
      {"two\nlines", "\"two\nlines\""},
      {"cr\rhere", "\"cr\rhere\""},
      // CR LF inside a field stays as it is, quoted: a spreadsheet reads it as one line break.
      {"two\r\nlines", "\"two\r\nlines\""},
      {" spaced ", " spaced "},
  };
  for (const auto& [field, expected] : cases) EXPECT_EQ(CsvField(field), expected) << field;
}

// Text prints as it stands; other values print as the cell's name.
DataCell At(const char* name, float left, float width, Variant value = Variant()) {
  const std::string* text = value.Get<std::string>();
  std::string printed = text ? *text : name;
  return DataCell{name, left, width, std::move(value), std::move(printed), ""};
}

engine::DocumentInfo Declared(std::vector<engine::TableColumn> columns) {
  engine::DocumentInfo info = testing::LetterDocument("Ledger");
  info.columns = std::move(columns);  // in place of the sample ledger's
  return info;
}

TEST(ExportColumns, RowsGoUnderTheDeclaredColumns) {
  // Two fields under one heading ("This Year" over the inner and the outer figure), a heading
  // with no field of its own (filled by a sub-report), and a field under no heading.
  const ExportColumns columns(Declared({
      {"Description", {"txtDescription", "txtDescription2"}, 1000, 3000},
      {"Date", {}, 4000, 1000},
      {"This Year", {"numField1", "numField2"}, 5000, 2000},
      {"", {"txtCheck"}, 7000, 500},
  }));
  std::vector<std::string> captions;
  for (const auto& c : columns.Columns()) captions.push_back(c.caption);
  EXPECT_THAT(captions, ::testing::ElementsAre("Description", "Date", "This Year", "Check"));

  DataRow sub{RowKind::Detail, 0, "", {At("txtDate", 4100, 800), At("txtAmount", 6000, 900)}, {}};
  sub.depth = 1;
  DataRow blank_inner{
      RowKind::Detail, 0, "", {At("numField1", 5000, 1000), At("numField2", 6000, 1000)}, {}};
  blank_inner.cells[0].text = " ";
  DataRow heading{RowKind::GroupHeader, 1, "", {}, {"Branch: AKL  Auckland"}};
  struct Case {
    DataRow row;
    std::vector<std::string> expected;  // cell names by column, "+" between several, "" for none
  };
  const Case cases[] = {
      {blank_inner, {"", "", "numField2", ""}},
      // A sub-report's line goes by where it printed, not by its names.
      {sub, {"", "txtDate", "txtAmount", ""}},
      // A footer's total goes under the column it prints beneath.
      {{RowKind::GroupFooter, 1, "", {At("gfTotal", 6100, 800)}, {}}, {"", "", "gfTotal", ""}},
      {{RowKind::Detail,
        0,
        "",
        {At("txtDescription", 1000, 3000), At("txtDescription2", 1000, 3000)},
        {}},
       {"txtDescription+txtDescription2", "", "", ""}},
      {heading, {"=Branch: AKL  Auckland", "", "", ""}},
  };
  for (const Case& c : cases) {
    auto values = columns.Assign(c.row);
    ASSERT_TRUE(values.has_value());
    std::vector<std::string> names;
    for (const ExportValue& v : *values) {
      std::string joined = v.text.empty() ? "" : "=" + v.text;
      for (const DataCell* cell : v.cells) joined += (joined.empty() ? "" : "+") + cell->name;
      names.push_back(joined);
    }
    EXPECT_EQ(names, c.expected) << c.row.cells.size();
  }
  // Page furniture, rows that print nothing and the run's description are no rows of the table.
  EXPECT_FALSE(columns.Assign({RowKind::PageHeader, 0, "", {At("txtCompany", 0, 3000)}, {}}));
  EXPECT_FALSE(columns.Assign({RowKind::ReportHeader, 0, "", {}, {}}));
  EXPECT_FALSE(columns.Assign({RowKind::ReportFooter, 0, "", {At("txtParameters", 0, 9000)}, {}}));
  // A group heading that only repeats the columns' captions (an ungrouped run's) is no row.
  EXPECT_FALSE(
      columns.Assign({RowKind::GroupHeader, 1, "", {}, {"Description", " ", "This Year"}}));
}

TEST(CsvSink, OneHeadingLineThenPlainValues) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Csv, dir / "out.csv");
  sink->Begin(Declared({{"Date", {"txtDate"}, 0, 1000},
                        {"Name", {"txtName"}, 1000, 3000},
                        {"Amount", {"txtAmount"}, 4000, 1000}}));
  engine::Page page = testing::LetterPage(1);
  page.rows = {
      {RowKind::PageHeader, 0, "PageHeader", {}, {"Date", "Name", "Amount"}},
      {RowKind::GroupHeader, 2, "", {At("ghName", 1000, 3000, "North, \"upper\"")}, {}},
      {RowKind::Detail,
       0,
       "",
       {At("txtDate", 0, 1000, Date::FromSerial(45474)), At("txtName", 1000, 3000, "two\r\nlines"),
        At("txtAmount", 4000, 1000, Currency::FromRaw(-12345000))},
       {}},
      {RowKind::Detail,
       0,
       "",
       {At("txtDate", 0, 1000, Variant::Null()), At("txtName", 1000, 3000, "plain"),
        At("txtAmount", 4000, 1000, Currency::FromRaw(20000))},
       {}},
      {RowKind::GroupFooter, 2, "", {At("gfAmount", 4000, 1000, Currency::FromRaw(-12325000))}, {}},
      {RowKind::PageFooter, 0, "", {At("pfPage", 4000, 1000, std::int64_t{1})}, {}},
  };
  sink->AddPage(page);
  engine::Page second = testing::LetterPage(2);
  second.rows = {{RowKind::ReportFooter, 0, "", {At("rfCount", 0, 1000, std::int64_t{2})}, {}}};
  sink->AddPage(second);
  sink->End();
  EXPECT_EQ(testing::ReadFile(dir / "out.csv"),
            "Date,Name,Amount\r\n"
            ",\"North, \"\"upper\"\"\",\r\n"
            "2024-07-01,\"two\r\nlines\",-1234.50\r\n"
            ",plain,2.00\r\n"
            ",,-1232.50\r\n"
            "2,,\r\n");
}

TEST(CsvSink, ReportWithoutRowsStillHasItsHeading) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Csv, dir / "out.csv");
  sink->Begin(Declared({{"Code", {"txtCode"}, 0, 1000}, {"Name", {"txtName"}, 1000, 3000}}));
  sink->AddPage(testing::LetterPage(1));
  sink->End();
  EXPECT_EQ(testing::ReadFile(dir / "out.csv"), "Code,Name\r\n");
}

}  // namespace
}  // namespace trellin::render
