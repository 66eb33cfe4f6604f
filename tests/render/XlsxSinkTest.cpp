// The spreadsheet read back from its XML parts: typed cells, their number formats, the heading,
// the filter and the sheet name.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RenderTestSupport.h"
#include "platform/render/Render.h"
#include "platform/render/XlsxSink.h"

namespace trellin::render {
namespace {

using engine::DataCell;
using engine::RowKind;

// Prints one line per cell: reference, type, value, number format code. Inline strings are shown
// as their text; the format code comes through the cell's style from styles.xml.
constexpr const char* kDumpCells = R"py(
import re, sys, zipfile
z = zipfile.ZipFile(sys.argv[1])
sheet = z.read('xl/worksheets/sheet1.xml').decode()
styles = z.read('xl/styles.xml').decode()
codes = {int(i): c.replace('&quot;', '"') for i, c in re.findall(r'<numFmt numFmtId="(\d+)" formatCode="([^"]*)"', styles)}
codes.update({0: 'General', 14: 'm/d/yyyy'})
xfs = re.findall(r'<xf [^>]*?numFmtId="(\d+)"[^>]*?(?:/>|>)', styles.split('<cellXfs')[1])
for ref, attrs, body in re.findall(r'<c r="([A-Z]+\d+)"([^>]*)>(.*?)</c>', sheet):
    t = re.search(r't="(\w+)"', attrs)
    s = re.search(r's="(\d+)"', attrs)
    v = re.search(r'<v>(.*?)</v>', body) or re.search(r'<t[^>]*>(.*?)</t>', body, re.S)
    fmt = codes.get(int(xfs[int(s.group(1))]), '?') if s else 'General'
    print(ref, t.group(1) if t else 'n', v.group(1) if v else '', fmt)
for row, level in re.findall(r'<row r="(\d+)"[^>]*outlineLevel="(\d+)"', sheet):
    print('row', row, 'outline', level)
for tag in re.findall(r'<(?:autoFilter|pane|sheetView) [^>]*>', sheet):
    print(tag)
print(re.search(r'<sheet name="([^"]*)"', z.read('xl/workbook.xml').decode()).group(1))
)py";

DataCell At(const char* name, float left, Variant value, const char* format = "") {
  // Text prints as it stands; other values print as something else than their plain form.
  const std::string* text = value.Get<std::string>();
  std::string printed = text ? *text : "as printed";
  return DataCell{name, left, 1000, std::move(value), std::move(printed), format};
}

TEST(XlsxSink, CellsAreTypedWithFormatsFromTheirMasks) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Xlsx, dir / "out.xlsx");
  engine::DocumentInfo info = testing::LetterDocument("Aged [Debtors]: Summary");
  info.columns = {{"Date", {"txtDate", "ghName"}, 0, 1000},
                  {"Amount", {"txtAmount", "gfAmount"}, 1000, 1000},
                  {"Paid", {"txtPaid", "gfCount"}, 2000, 1000}};
  info.group_levels = 1;
  sink->Begin(info);
  engine::Page page = testing::LetterPage(1);
  page.rows = {
      {RowKind::PageHeader, 0, "", {}, {"Date", "Amount", "Paid"}},
      {RowKind::GroupHeader, 1, "", {At("ghName", 0, "Acme & Sons <Ltd>")}, {}},
      {RowKind::Detail,
       0,
       "",
       {At("txtDate", 0, Date::FromSerial(45474), "d mmm yyyy"),
        At("txtAmount", 1000, Currency::FromRaw(-12345600), "#,##0.00;(#,##0.00)"),
        At("txtPaid", 2000, true)},
       {}},
      {RowKind::Detail,
       0,
       "",
       {At("txtDate", 0, Date::FromSerial(45475, 43200)),
        At("txtAmount", 1000, Currency::FromRaw(1)), At("txtPaid", 2000, Variant::Null())},
       {}},
      {RowKind::GroupFooter,
       1,
       "",
       {At("gfAmount", 1000, Currency::FromRaw(-12345599), "Currency"),
        At("gfCount", 2000, std::int64_t{2}, "0 \"items\"")},
       {}},
  };
  sink->AddPage(page);
  sink->End();

  testing::WriteFile(dir / "dump.py", kDumpCells);
  const std::string dump = testing::RunCommand("python3 '" + (dir / "dump.py").string() + "' '" +
                                               (dir / "out.xlsx").string() + "'");
  EXPECT_EQ(dump,
            "A1 inlineStr Date General\n"
            "B1 inlineStr Amount General\n"
            "C1 inlineStr Paid General\n"
            "A2 inlineStr Acme &amp; Sons &lt;Ltd&gt; General\n"
            "A3 n 45474 d mmm yyyy\n"
            "B3 n -1234.56 #,##0.00;(#,##0.00)\n"
            "C3 b 1 General\n"
            "A4 n 45475.5 d/mm/yyyy h:mm:ss AM/PM\n"
            "B4 n 0.0001 #,##0.00;-#,##0.00\n"
            "B5 n -1234.5599 $#,##0.00;-$#,##0.00\n"
            "C5 n 2 0 \"items\"\n"
            "row 3 outline 1\n"
            "row 4 outline 1\n"
            "<sheetView tabSelected=\"1\" workbookViewId=\"0\">\n"
            "<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\"/>\n"
            "<autoFilter ref=\"A1:C5\"/>\n"
            "Aged Debtors Summary\n");
  EXPECT_THAT(testing::RunCommand(
                  "python3 -c \"import sys, zipfile; "
                  "print(zipfile.ZipFile(sys.argv[1]).read('docProps/core.xml').decode())\" '" +
                  (dir / "out.xlsx").string() + "'"),
              ::testing::HasSubstr("<dc:title>Aged [Debtors]: Summary</dc:title>"));
}

TEST(XlsxSink, TitleBlockAboveAFrozenHeadingAndFiguresAsPrinted) {
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Xlsx, dir / "out.xlsx");
  engine::DocumentInfo info = testing::LetterDocument("Trial Balance");
  info.title_lines = {"Tui Bay Marine Ltd", "YTD Trial Balance ending 30/11/2025"};
  info.description = "Accounts: 1000-1999\r\nBased on Budget figures";
  info.columns = {{"Closing", {"numField5"}, 0, 2100}};
  sink->Begin(info);
  engine::Page page = testing::LetterPage(1);
  DataCell figure = At("numField5", 0, Variant(81245.74000000001), "#,##0.00;(#,##0.00)");
  figure.text = "81,245.74";
  DataCell money = At("numField5", 0, Currency::FromRaw(-8124574000), "#,##0.00;(#,##0.00)");
  money.text = "(812,457.40)";
  page.rows = {{RowKind::Detail, 0, "", {figure}, {}}, {RowKind::Detail, 0, "", {money}, {}}};
  sink->AddPage(page);
  sink->End();
  testing::WriteFile(dir / "dump.py", kDumpCells);
  const std::string dump = testing::RunCommand("python3 '" + (dir / "dump.py").string() + "' '" +
                                               (dir / "out.xlsx").string() + "'");
  EXPECT_EQ(dump,
            "A1 inlineStr Tui Bay Marine Ltd General\n"
            "A2 inlineStr YTD Trial Balance ending 30/11/2025 General\n"
            "A3 inlineStr Accounts: 1000-1999 General\n"
            "A4 inlineStr Based on Budget figures General\n"
            "A6 inlineStr Closing General\n"
            "A7 n 81245.74 #,##0.00;(#,##0.00)\n"
            "A8 n -812457.40 #,##0.00;(#,##0.00)\n"
            "<sheetView tabSelected=\"1\" workbookViewId=\"0\">\n"
            "<pane ySplit=\"6\" topLeftCell=\"A7\" activePane=\"bottomLeft\" state=\"frozen\"/>\n"
            "<autoFilter ref=\"A6:A8\"/>\n"
            "Trial Balance\n");
  // As wide as the column printed: 2100 twips are 20 characters.
  EXPECT_THAT(testing::RunCommand("python3 -c \"import sys, zipfile; "
                                  "print(zipfile.ZipFile(sys.argv[1]).read("
                                  "'xl/worksheets/sheet1.xml').decode())\" '" +
                                  (dir / "out.xlsx").string() + "'"),
              ::testing::HasSubstr("<col min=\"1\" max=\"1\" width=\"20.00\" customWidth=\"1\"/>"));
}

TEST(XlsxSink, LongReportsGoOnInFurtherSheets) {
  testing::ScratchDir dir;
  XlsxSink sink(dir / "out.xlsx", 3);  // a heading and two rows a sheet
  engine::DocumentInfo info = testing::LetterDocument("A title thirty-one characters!!");
  info.columns = {{"N", {"txtN"}, 0, 1000}};
  sink.Begin(info);
  engine::Page page = testing::LetterPage(1);
  for (int i = 1; i <= 5; ++i) {
    page.rows.push_back({RowKind::Detail, 0, "", {At("txtN", 0, std::int64_t{i})}, {}});
  }
  sink.AddPage(page);
  sink.End();
  const std::string script = R"py(
import re, sys, zipfile
z = zipfile.ZipFile(sys.argv[1])
names = re.findall(r'<sheet name="([^"]*)"', z.read('xl/workbook.xml').decode())
for i, name in enumerate(names, 1):
    sheet = z.read('xl/worksheets/sheet%d.xml' % i).decode()
    print(name, re.findall(r'<c r="A\d+"[^>]*>(?:<v>|<is><t[^>]*>)([^<]*)<', sheet))
)py";
  testing::WriteFile(dir / "sheets.py", script);
  EXPECT_EQ(testing::RunCommand("python3 '" + (dir / "sheets.py").string() + "' '" +
                                (dir / "out.xlsx").string() + "'"),
            "A title thirty-one characters!! ['N', '1', '2']\n"
            "A title thirty-one characte (2) ['N', '3', '4']\n"
            "A title thirty-one characte (3) ['N', '5']\n");
}

TEST(XlsxSink, LineBreaksAreStoredAsBareLineFeeds) {
  // Each row: the text of a cell, and the text the sheet holds for it (as Python's repr).
  const std::pair<Variant, const char*> cases[] = {
      {Variant("two\r\nlines"), "'two\\nlines'"},
      {Variant("a\r\n\r\nb\r\n"), "'a\\n\\nb\\n'"},
      {Variant("lone\rcr"), "'lone\\ncr'"},
      {Variant("already\nbare"), "'already\\nbare'"},
      {Variant("plain"), "'plain'"},
      // No value: the printed text goes in, its breaks made bare too.
      {Variant(), "'as\\nprinted'"},
  };
  testing::ScratchDir dir;
  auto sink = MakeSink(Format::Xlsx, dir / "out.xlsx");
  engine::DocumentInfo info = testing::LetterDocument("Notes");
  info.columns = {{"Note\r\ntext", {"txtNote"}, 0, 1000}};
  sink->Begin(info);
  engine::Page page = testing::LetterPage(1);
  for (const auto& [value, expected] : cases) {
    DataCell cell = At("txtNote", 0, value);
    if (value.IsEmpty()) cell.text = "as\r\nprinted";
    page.rows.push_back({RowKind::Detail, 0, "", {cell}, {}});
  }
  sink->AddPage(page);
  sink->End();
  const std::string script = R"py(
import re, sys, zipfile
sheet = zipfile.ZipFile(sys.argv[1]).read('xl/worksheets/sheet1.xml').decode()
for text in re.findall(r'<c r="A\d+"[^>]*><is><t[^>]*>(.*?)</t>', sheet, re.S):
    print(repr(text))
)py";
  testing::WriteFile(dir / "texts.py", script);
  std::string expected = "'Note\\ntext'\n";
  for (const auto& row : cases) expected += std::string(row.second) + "\n";
  EXPECT_EQ(testing::RunCommand("python3 '" + (dir / "texts.py").string() + "' '" +
                                (dir / "out.xlsx").string() + "'"),
            expected);
}

TEST(XlsxSink, SheetNamesAreValid) {
  const std::pair<const char*, const char*> cases[] = {
      {"Trial Balance", "Trial Balance"},
      {"", "Report"},
      {"[]:*?/\\", "Report"},
      {"'Quoted'", "Quoted"},
      {"A very long report title that goes on and on", "A very long report title that g"},
      {"\xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 "
       "\xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 x",
       "\xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 "
       "\xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9 \xC3\xA9t\xC3\xA9"},
  };
  for (const auto& [title, expected] : cases) EXPECT_EQ(SheetName(title), expected) << title;
}

}  // namespace
}  // namespace trellin::render
