// The data exports: columns by position, headings, plain values and CSV quoting.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RenderTestSupport.h"
#include "platform/render/CellText.h"
#include "platform/render/CsvSink.h"
#include "platform/render/ExcelFormat.h"
#include "platform/render/ExportColumns.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

using engine::DataCell;
using engine::DataRow;
using engine::RowKind;

TEST(CellText, ValuesArePlainAndExact) {
  const std::pair<Variant, const char*> cases[] = {
      {Currency::FromRaw(-12345000), "-1234.50"},
      {Currency::FromRaw(1234), "0.1234"},
      {Currency::FromRaw(0), "0.00"},
      {Currency::FromRaw(-1), "-0.0001"},
      {Currency::FromRaw(INT64_MIN), "-922337203685477.5808"},
      {Date::FromSerial(45474), "2024-07-01"},
      {Date::FromSerial(45351), "2024-02-29"},
      {Date::FromSerial(2), "1900-01-01"},
      {Date::FromSerial(45474, 13 * 3600 + 5 * 60 + 9), "2024-07-01 13:05:09"},
      {Variant(std::int64_t{-42}), "-42"},
      {Variant(0.1), "0.1"},
      {Variant(500000.0), "500000"},
      {Variant(-1234567.891), "-1234567.891"},
      {Variant(1e21), "1e+21"},
      {Variant(true), "True"},
      {Variant("text, as is"), "text, as is"},
      {Variant::Null(), ""},
  };
  for (const auto& [value, expected] : cases) {
    EXPECT_EQ(PlainCellText(DataCell{"c", 0, 0, value, "printed", ""}), expected) << expected;
  }
  EXPECT_EQ(PlainCellText(DataCell{"c", 0, 0, Variant(), "printed", ""}), "printed");
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

TEST(ExcelFormat, MasksBecomeSpreadsheetFormats) {
  struct Case {
    const char* mask;
    CellKind kind;
    const char* expected;
  };
  const Case cases[] = {
      {"#,##0.00;(#,##0.00)", CellKind::Money, "#,##0.00;(#,##0.00)"},
      {"#,###,##0;(#,###,##0);\"\";\"-\"", CellKind::Money, "#,###,##0;(#,###,##0);\"\""},
      {"0.0%", CellKind::Real, "0.0%"},
      {"0.00E+00", CellKind::Real, "0.00E+00"},
      {"Each 0", CellKind::Real, "\\E\\a\\c\\h 0"},
      {"", CellKind::Money, "#,##0.00;-#,##0.00"},
      {"Round", CellKind::Integer, "General"},
      {"(auto)", CellKind::Real, "General"},
      {"currency", CellKind::Money, "$#,##0.00;-$#,##0.00"},
      {"Standard", CellKind::Real, "#,##0.00"},
      {"Short Date", CellKind::Date, "d/mm/yyyy"},
      {"Short Date", CellKind::Money, "#,##0.00;-#,##0.00"},
      {"mmmyy", CellKind::Date, "mmmyy"},
      {"dd/mm/yyyy", CellKind::Date, "dd/mm/yyyy"},
      {"h:nnam/pm", CellKind::DateTime, "h:mmam/pm"},
      {"d mmm yyyy hh:nn", CellKind::DateTime, "d mmm yyyy hh:mm"},
      {"#,##0 units", CellKind::Integer, "#,##0 \\u\\n\\i\\t\\s"},
      {"Qty 0", CellKind::Integer, "\\Q\\t\\y 0"},
      {"\\C\\R 0.00", CellKind::Money, "\\C\\R 0.00"},
      {"0.00 \xE2\x82\xAC", CellKind::Money, "0.00 \"\xE2\x82\xAC\""},
      {"no placeholders", CellKind::Real, "General"},
      {"", CellKind::Date, "d/mm/yyyy"},
      {"", CellKind::DateTime, "d/mm/yyyy h:mm:ss AM/PM"},
  };
  for (const Case& c : cases) EXPECT_EQ(ExcelNumberFormat(c.mask, c.kind), c.expected) << c.mask;
}

TEST(ExportColumns, CaptionsFromControlNames) {
  const std::pair<const char*, const char*> cases[] = {
      {"txtDueDate", "Due Date"}, {"gfGSTAmount", "GST Amount"},
      {"txtBalance", "Balance"},  {"ghName", "Name"},
      {"amount", "amount"},       {"txtOpening_Balance", "Opening Balance"},
      {"Code", "Code"},           {"txtYTD", "YTD"},
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(CaptionFromName(name), expected) << name;
}

DataCell At(const char* name, float left, float width, Variant value = Variant()) {
  return DataCell{name, left, width, std::move(value), name, ""};
}

TEST(ExportColumns, TotalsLandUnderTheColumnsTheyTotal) {
  const std::vector<DataRow> rows = {
      {RowKind::PageHeader, 0, "PageHeader", {}, {"Ledger", "Amount", "Balance Due", "Dated"}},
      {RowKind::GroupHeader, 1, "GroupHeader1", {At("ghName", 0, 3000)}, {}},
      {RowKind::Detail,
       0,
       "Detail",
       {At("txtAmount", 2000, 1000), At("txtDate", 0, 1000), At("txtBal", 3000, 1000)},
       {}},
  };
  const ExportColumns columns = ExportColumns::FromRows(rows);
  std::vector<std::string> captions;
  for (const auto& c : columns.Columns()) captions.push_back(c.name + "=" + c.caption);
  EXPECT_THAT(captions,
              ::testing::ElementsAre("txtDate=Dated", "txtAmount=Amount", "txtBal=Balance Due"));

  struct Case {
    DataRow row;
    std::vector<std::string> expected;  // cell names by column, "" for none
  };
  const Case cases[] = {
      {{RowKind::GroupFooter, 1, "", {At("gfBalance", 3100, 900), At("gfAmount", 2000, 1000)}, {}},
       {"", "gfAmount", "gfBalance"}},
      {{RowKind::GroupHeader, 1, "", {At("ghName", 0, 3000)}, {}}, {"ghName", "", ""}},
      // Two cells over one column: the second takes the nearest free one.
      {{RowKind::ReportFooter, 0, "", {At("rfA", 0, 500), At("rfB", 500, 500)}, {}},
       {"rfA", "rfB", ""}},
      // More cells than columns: the rest go after the last column.
      {{RowKind::Detail,
        0,
        "",
        {At("txtDate", 0, 1000), At("x", 0, 100), At("y", 0, 100), At("z", 0, 100)},
        {}},
       {"txtDate", "x", "y", "z"}},
  };
  for (const Case& c : cases) {
    std::vector<std::string> names;
    for (const DataCell* cell : columns.Assign(c.row)) names.push_back(cell ? cell->name : "");
    EXPECT_EQ(names, c.expected) << c.row.cells.front().name;
  }
}

TEST(ExportColumns, ALabelNamedAsTheColumnGivesItsHeading) {
  // Statement columns are numField1..n under labels lblField1..n whose captions say nothing of
  // the names ("Debits"); the label's name pairs them. Without names, captions are matched.
  DataRow header{RowKind::PageHeader, 0, "PageHeader", {}, {"Code", "Debits", "Credits"}};
  header.label_names = {"lblCode", "lblField2", "lblField1"};
  const std::vector<DataRow> rows = {
      header,
      {RowKind::Detail,
       0,
       "Detail",
       {At("txtCode", 0, 800), At("numField1", 4000, 1000), At("numField2", 5000, 1000)},
       {}},
  };
  const ExportColumns columns = ExportColumns::FromRows(rows);
  std::vector<std::string> captions;
  for (const auto& c : columns.Columns()) captions.push_back(c.caption);
  EXPECT_THAT(captions, ::testing::ElementsAre("Code", "Credits", "Debits"));
}

TEST(ExportColumns, HeadingsFallBackToNamesAndSummaryReportsUseFooters) {
  const std::vector<DataRow> rows = {
      {RowKind::PageHeader, 0, "PageHeader", {}, {"Customer Balances", "Page"}},
      {RowKind::GroupFooter, 1, "", {At("gfTotal", 4000, 1000), At("gfName", 0, 3000)}, {}},
  };
  const ExportColumns columns = ExportColumns::FromRows(rows);
  std::vector<std::string> captions;
  for (const auto& c : columns.Columns()) captions.push_back(c.caption);
  EXPECT_THAT(captions, ::testing::ElementsAre("Name", "Total"));
}

TEST(CsvSink, WritesHeadingKindsLevelsAndPlainValues) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Csv, dir / "out.csv");
  sink->Begin(testing::LetterDocument("Ledger"));
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
            "Row,Level,Date,Name,Amount\r\n"
            "Group Header,2,,\"North, \"\"upper\"\"\",\r\n"
            "Detail,,2024-07-01,\"two\r\nlines\",-1234.50\r\n"
            "Detail,,,plain,2.00\r\n"
            "Group Footer,2,,,-1232.50\r\n"
            "Report Footer,,2,,\r\n");
}

TEST(CsvSink, ReportWithoutRowsStillHasItsHeading) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Csv, dir / "out.csv");
  sink->Begin(testing::LetterDocument("Ledger"));
  sink->AddPage(testing::LetterPage(1));
  sink->End();
  EXPECT_EQ(testing::ReadFile(dir / "out.csv"), "Row,Level\r\n");
}

}  // namespace
}  // namespace trellin::render
