// Every key that runs, once, on the demo company with the values a user gets by default; one
// run feeds three checks, a test a key:
// - no figure or caption is printed cut, wider than its box, or broken inside a word;
// - its CSV heads exactly the columns its printed pages head, in their order, and every figure
//   and text a row printed stands in the CSV under the heading it printed beneath, with the value
//   it printed; the workbook holds the same table under its title block;
// - every query it sends reads the ledger through its indexes (the plan check of
//   QueryPlanTest.cpp, with the same allow-list).

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "core/Catalogue.h"
#include "platform/engine/DumpPage.h"
#include "platform/engine/ReportEngine.h"
#include "platform/render/Render.h"
#include "platform/runtime/Strings.h"
#include "reports/Designers.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/QueryPlan.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPaths.h"

namespace trellin::reports::testing {
namespace {

namespace fs = std::filesystem;

// What the printed page shows of a report: furniture is no heading.
constexpr std::string_view kFurniture[] = {"lblReportTitle", "phDated", "lblNotice"};

// Keeps the pages and passes everything on to the exports as well: one run gives all three.
class TeeSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo& info) override {
    for (auto* other : others) other->Begin(info);
  }
  void AddPage(const engine::Page& page) override {
    pages.push_back(page);
    for (auto* other : others) other->AddPage(page);
  }
  void End() override {
    for (auto* other : others) other->End();
  }
  void Abort() override {
    for (auto* other : others) other->Abort();
  }

  std::vector<engine::Page> pages;
  std::vector<engine::PageSink*> others;
};

// The workbook read back from its XML: first its head (title block lines, the frozen row and
// the column widths), then its rows from the heading line on, as CSV: numbers as the sheet holds
// them, dates (numbers with a date format) in ISO form, booleans True/False.
constexpr const char* kWorkbookAsCsv = R"py(
import csv, datetime, re, sys, zipfile
z = zipfile.ZipFile(sys.argv[1])
sheet = z.read('xl/worksheets/sheet1.xml').decode()
styles = z.read('xl/styles.xml').decode()
codes = {int(i): c for i, c in re.findall(r'<numFmt numFmtId="(\d+)" formatCode="([^"]*)"', styles)}
xfs = [int(i) for i in re.findall(r'<xf [^>]*?numFmtId="(\d+)"', styles.split('<cellXfs')[1])]
pane = re.search(r'<pane ySplit="(\d+)"', sheet)
heading = int(pane.group(1))
widths = re.findall(r'<col min="\d+" max="\d+" width="([\d.]+)"', sheet)
rows = {}
def unescape(t):
    return t.replace('&lt;', '<').replace('&gt;', '>').replace('&quot;', '"').replace('&amp;', '&')
for r, body in re.findall(r'<row r="(\d+)"[^>]*>(.*?)</row>', sheet, re.S):
    cells = {}
    for ref, attrs, inner in re.findall(r'<c r="([A-Z]+)\d+"([^>]*)>(.*?)</c>', body, re.S):
        col = 0
        for ch in ref: col = col * 26 + ord(ch) - 64
        t = re.search(r't="(\w+)"', attrs)
        s = re.search(r's="(\d+)"', attrs)
        code = codes.get(xfs[int(s.group(1))], '') if s else ''
        if t and t.group(1) == 'inlineStr':
            v = unescape(re.search(r'<t[^>]*>(.*?)</t>', inner, re.S).group(1)).replace('\n', '\r\n')
        elif t and t.group(1) == 'b':
            v = 'True' if re.search(r'<v>(.*?)</v>', inner).group(1) == '1' else 'False'
        else:
            v = re.search(r'<v>(.*?)</v>', inner).group(1)
            if 'yy' in code:
                d = datetime.datetime(1899, 12, 30) + datetime.timedelta(days=float(v))
                v = d.strftime('%Y-%m-%d %H:%M:%S' if float(v) % 1 else '%Y-%m-%d')
        cells[col] = v
    rows[int(r)] = cells
width = max([len(widths)] + [max(c) for c in rows.values() if c])
head = [rows[r].get(1, '').replace('\r\n', ' ') for r in sorted(rows) if r < heading and rows[r]]
print('\x1f'.join(head + ['frozen %d' % heading, 'widths %d' % len(widths)]))
w = csv.writer(sys.stdout, lineterminator='\r\n')
for r in sorted(rows):
    if r >= heading:
        w.writerow([rows[r].get(c, '') for c in range(1, width + 1)])
)py";

std::string Command(const std::string& command) {
  std::string out;
  if (FILE* pipe = ::popen(command.c_str(), "r")) {
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
      out.append(buffer, n);
    ::pclose(pipe);
  }
  return out;
}

// The fields of one CSV record; quoted fields may hold commas, quotes and line breaks.
std::vector<std::vector<std::string>> ReadCsv(const std::string& text) {
  std::vector<std::vector<std::string>> records(1, std::vector<std::string>(1));
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quoted) {
      if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
        records.back().back() += '"';
        ++i;
      } else if (c == '"') {
        quoted = false;
      } else {
        records.back().back() += c;
      }
    } else if (c == '"') {
      quoted = true;
    } else if (c == ',') {
      records.back().emplace_back();
    } else if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      ++i;
      records.emplace_back(1);
    } else {
      records.back().back() += c;
    }
  }
  if (records.back().size() == 1 && records.back()[0].empty()) records.pop_back();
  return records;
}

// A figure as a plain decimal with no trailing zeros ("1,234.50" and "1234.5" both give
// "1234.5"); "" when the text is no figure. Brackets and a minus make it negative.
std::string Figure(std::string text) {
  text = Trim(text);
  bool negative = false;
  if (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
    negative = true;
    text = text.substr(1, text.size() - 2);
  }
  if (!text.empty() && text.front() == '-') {
    negative = !negative;
    text.erase(0, 1);
  }
  if (!text.empty() && text.front() == '$') text.erase(0, 1);
  std::string digits;
  for (char c : text) {
    if (c == ',') continue;
    if (!std::isdigit(static_cast<unsigned char>(c)) && c != '.') return "";
    digits += c;
  }
  if (digits.empty() || std::count(digits.begin(), digits.end(), '.') > 1) return "";
  if (digits.find('.') != std::string::npos) {
    while (digits.back() == '0') digits.pop_back();
    if (digits.back() == '.') digits.pop_back();
  }
  while (digits.size() > 1 && digits[0] == '0' && digits[1] != '.') digits.erase(0, 1);
  if (digits == "0" || digits.empty()) return "0";
  return (negative ? "-" : "") + digits;
}

// The blank-parted words of a text, a run of blanks parting once.
std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words = Split(text, " ");
  words.erase(std::remove(words.begin(), words.end(), std::string()), words.end());
  return words;
}

// What the CSV must hold for a printed text: the same figure, the date in ISO form, a
// yes/no as True/False, else the same text.
bool SameValue(const std::string& printed, const std::string& exported) {
  const std::string figure = Figure(printed);
  if (!figure.empty()) return Figure(exported) == figure;
  const std::vector<std::string> dmy = Split(printed, "/");
  // A date alone: a text that only holds one ("Opened: 26/10/2025") is compared as text.
  const bool day = !dmy.empty() && !dmy[0].empty() && dmy[0].size() <= 2 &&
                   std::all_of(dmy[0].begin(), dmy[0].end(),
                               [](unsigned char c) { return std::isdigit(c) != 0; });
  if (dmy.size() == 3 && day && dmy[2].size() == 4) {
    char iso[16];
    std::snprintf(iso, sizeof iso, "%s-%02d-%02d", dmy[2].c_str(), std::atoi(dmy[1].c_str()),
                  std::atoi(dmy[0].c_str()));
    return exported == iso;
  }
  if (printed == "Yes" || printed == "No") return exported == (printed == "Yes" ? "True" : "False");
  // A share printed as a percentage ("30.2%") exports its fraction, to be shown as the sheet
  // formats it.
  if (printed.size() > 1 && printed.back() == '%' && !Figure(exported).empty()) {
    const std::string shown = printed.substr(0, printed.size() - 1);
    const std::size_t point = shown.find('.');
    const int decimals =
        point == std::string::npos ? 0 : static_cast<int>(shown.size() - point - 1);
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, std::stod(exported) * 100.0);
    return Figure(text) == Figure(shown);
  }
  // A count printed with words ("Count: 46") exports its number.
  const std::vector<std::string> words = Split(Trim(printed), " ");
  if (!Figure(exported).empty() && Figure(words.back()) == Figure(exported)) return true;
  return exported == printed;
}

bool IsFurniture(const std::string& name) {
  // A caption over a group of columns heads no column of its own.
  if (name.rfind("lblGroup", 0) == 0) return true;
  return std::any_of(std::begin(kFurniture), std::end(kFurniture),
                     [&](std::string_view f) { return f == name; });
}

float Overlap(std::pair<float, float> span, float left, float width) {
  return std::min(span.first + span.second, left + width) - std::max(span.first, left);
}

// The exports of one run against its printed pages.
void ExpectExportsAsPrinted(const std::vector<engine::Page>& pages, const fs::path& csv,
                            const fs::path& xlsx, const fs::path& script) {
  // The headings: the labels the first page header prints, left to right; a document that
  // opens its first page with its own heading prints them in its first row instead, and a table
  // a group (captions that change with the group) in its first group heading.
  std::vector<std::string> headings;
  std::vector<std::pair<float, float>> spans;
  ASSERT_FALSE(pages.empty());
  const bool page_header = std::any_of(
      pages[0].rows.begin(), pages[0].rows.end(),
      [](const engine::DataRow& row) { return row.kind == engine::RowKind::PageHeader; });
  const engine::RowKind heading_kind =
      page_header ? engine::RowKind::PageHeader : engine::RowKind::Detail;
  for (const engine::RowKind kind : {heading_kind, engine::RowKind::GroupHeader}) {
    if (!headings.empty()) break;
    for (const engine::DataRow& row : pages[0].rows) {
      if (row.kind != kind || row.depth != 0) continue;
      for (std::size_t i = 0; i < row.labels.size(); ++i) {
        if (IsFurniture(row.label_names[i]) || Trim(row.labels[i]).empty()) continue;
        headings.push_back(Trim(row.labels[i]));
        spans.push_back(row.label_spans[i]);
      }
      if (kind == engine::RowKind::GroupHeader && !headings.empty()) break;
    }
  }
  const std::string csv_text = trellin::testing::ReadFile(csv);
  const auto records = ReadCsv(csv_text);
  ASSERT_FALSE(records.empty());
  if (headings.empty()) {
    // A report that prints no headings (labels on a sheet) names its export's columns by their
    // fields; it still exports a record for every detail it printed.
    std::size_t details = 0;
    for (const engine::Page& page : pages) {
      for (const engine::DataRow& row : page.rows) {
        details += row.kind == engine::RowKind::Detail && row.depth == 0 ? 1 : 0;
      }
    }
    EXPECT_EQ(records.size(), details + 1);
    return;
  }
  EXPECT_EQ(records[0], headings);
  if (records[0] != headings) return;

  // Each row that printed a value is the next record, with every value under the heading
  // it printed beneath.
  std::size_t next = 1;
  for (const engine::Page& page : pages) {
    for (const engine::DataRow& row : page.rows) {
      if (row.kind == engine::RowKind::PageHeader || row.kind == engine::RowKind::PageFooter)
        continue;
      std::vector<std::vector<std::string>> printed(headings.size());
      bool any = false;
      for (const engine::DataCell& cell : row.cells) {
        if (Trim(cell.text).empty() || cell.name == "txtParameters") continue;
        std::size_t best = 0;
        for (std::size_t i = 1; i < spans.size(); ++i) {
          if (Overlap(spans[i], cell.left, cell.width) >
              Overlap(spans[best], cell.left, cell.width))
            best = i;
        }
        printed[best].push_back(cell.text);
        any = true;
      }
      if (!any && row.kind == engine::RowKind::GroupHeader) {
        for (const std::string& label : row.labels) {
          if (!Trim(label).empty()) printed[0].push_back(label);
        }
        any = !printed[0].empty();
      }
      if (!any) continue;
      ASSERT_LT(next, records.size()) << "a printed row is missing from the CSV";
      const std::vector<std::string>& record = records[next++];
      ASSERT_EQ(record.size(), headings.size()) << "record " << next - 1;
      for (std::size_t i = 0; i < headings.size(); ++i) {
        if (printed[i].empty()) {
          EXPECT_EQ(record[i], "") << "record " << next - 1 << " under " << headings[i];
          continue;
        }
        // Several texts under one heading stand joined by a blank, in the order printed:
        // each takes as many blank-parted words of the export as it has itself. Runs of blanks
        // count as one (the amount in words on a cheque stands behind five).
        const std::vector<std::string> words = Words(record[i]);
        std::size_t at = 0;
        bool same = true;
        for (std::size_t k = 0; same && k < printed[i].size(); ++k) {
          const std::size_t count = k + 1 == printed[i].size()
                                        ? words.size() - std::min(at, words.size())
                                        : Words(printed[i][k]).size();
          if (at + count > words.size()) {
            same = false;
            break;
          }
          const std::vector<std::string> part(words.begin() + at, words.begin() + at + count);
          same = SameValue(Join(Words(printed[i][k]), " "), Join(part, " "));
          at += count;
        }
        EXPECT_TRUE(same) << "record " << next - 1 << " under " << headings[i] << ": printed \""
                          << Join(printed[i], "|") << "\", exported \"" << record[i] << "\"";
      }
    }
  }
  EXPECT_EQ(next, records.size()) << "the CSV has records no printed row accounts for";

  // The workbook: the same table cell for cell under a title block of the company and
  // the printed title, with the panes frozen on the heading line and every column sized.
  std::string workbook = Command("python3 '" + script.string() + "' '" + xlsx.string() + "'");
  const std::size_t head_end = workbook.find('\n');
  ASSERT_NE(head_end, std::string::npos) << workbook;
  const std::vector<std::string> head = Split(workbook.substr(0, head_end), "\x1f");
  ASSERT_GE(head.size(), 4u) << workbook.substr(0, head_end);
  EXPECT_EQ(head[0], "Tui Bay Marine Ltd");
  // The title lines, a blank row, then the heading line, on which the panes freeze.
  EXPECT_EQ(head[head.size() - 2], "frozen " + std::to_string(head.size()));
  EXPECT_EQ(head.back(), "widths " + std::to_string(headings.size()));
  EXPECT_EQ(ReadCsv(workbook.substr(head_end + 1)), records);
}

// The DocumentId of a layout in the checkout.
std::string Document(const std::string& path) {
  return "DocumentId=" + (trellin::testing::SourceDir() / path).string();
}

// The keys whose designers are built, by key.
std::vector<std::string> RunnableKeys() {
  std::vector<std::string> keys;
  for (const CatalogueEntry& entry : Catalogue()) {
    if (FindKeyFactory(Designers(), entry) != nullptr) keys.emplace_back(entry.key);
  }
  return keys;
}

class EveryKey : public DemoReports, public ::testing::WithParamInterface<std::string> {};

TEST_P(EveryKey, FitsExportsWhatItPrintsAndReadsTheLedgerThroughItsIndexes) {
  const std::string& key = GetParam();
  trellin::testing::TempFolder folder("trellin-every-key");
  const fs::path script = folder.Path() / "workbook.py";
  const fs::path csv = folder.Path() / (key + ".csv");
  const fs::path xlsx = folder.Path() / (key + ".xlsx");
  trellin::testing::WriteFile(script, kWorkbookAsCsv);

  std::set<std::string> queries;
  data::CompanyDatabase& database = Service().Database();
  database.SetQueryLog(
      [&](std::string_view, const std::string& sqlite) { queries.insert(sqlite); });
  // The documents' defaults print every document the company holds, thousands of pages: one
  // week of them is enough for checks of what a page holds. A delivery docket prints the one
  // document it is given, and nothing by default.
  static const std::vector<std::string> kWeek = {"ProcessFrom=01/10/2025", "ProcessTo=07/10/2025"};
  static const std::map<std::string, std::vector<std::string>> kRuns = {
      {"InvoiceAR", kWeek},
      {"InvoiceAP", kWeek},
      {"PackingSlip", kWeek},
      {"Delivery Docket", {"TransactionId=38862"}},
      // A page a receipt: one working day's.
      {"PaymentReceipt", {"DatedFrom=2025-11-28", "DatedTo=2025-11-28"}},
      // Every line of figures, and the customer under each job.
      {"JobSummary",
       {"ShowActual=True", "ShowOpen=True", "ShowBudget=True", "ShowExtraDetail=True"}},
      // A page a bank entry with a party: a few of the payment run of the 20th.
      {"ChequeStandard",
       {"SQLWhere= WHERE glBankTransaction.Date=#2025-11-20# AND glBankTransaction.OtherPartyId "
        "IN ('EASTE001','CHANR901','HARBF901','SLIPW901')"}},
      // A Document key prints the user's layout it is given: the samples, and small lists.
      {"DocumentAR", {Document("examples/templates/CustomerLetter.yaml"), "Customers=A..C"}},
      {"DocumentSC", {Document("examples/templates/ItemLabels.yaml")}},
      {"DocumentAP", {Document("tests/reports/admin/documents/SupplierList.yaml")}},
      {"DocumentOP", {Document("tests/reports/admin/documents/OtherPartyList.yaml")}},
      {"DocumentGL", {Document("tests/reports/admin/documents/AccountList.yaml")}},
      {"DocumentFA", {Document("tests/reports/admin/documents/AssetList.yaml")}},
      {"DocumentJO", {Document("tests/reports/admin/documents/JobList.yaml")}},
      // Grouped, with the charts: every kind of section it prints.
      {"ManagementReport", {"GroupByBranch=True", "ShowCharts=True", "UseColour=True"}},
  };
  const auto run = kRuns.find(key);
  DesignerPtr designer = Open(key, run != kRuns.end() ? run->second : std::vector<std::string>{});
  TeeSink tee;
  {
    auto csv_sink = render::MakeSink(render::Format::Csv, csv);
    auto xlsx_sink = render::MakeSink(render::Format::Xlsx, xlsx);
    tee.others = {csv_sink.get(), xlsx_sink.get()};
    engine::RunReport(*designer, tee);
  }
  database.SetQueryLog(nullptr);
  EXPECT_TRUE(designer->TLReport()->Errors().empty())
      << designer->TLReport()->Errors().front().message;
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);

  ASSERT_FALSE(tee.pages.empty());
  std::vector<std::string> misfits;
  for (const engine::Page& page : tee.pages) {
    for (std::string& misfit : engine::Misfits(page)) misfits.push_back(std::move(misfit));
  }
  EXPECT_TRUE(misfits.empty()) << Join(misfits, "\n");

  ExpectExportsAsPrinted(tee.pages, csv, xlsx, script);

  trellin::testing::PlanChecker checker(DemoCompanyPath(), "reports/query_plans_allowed.tsv");
  for (const std::string& sqlite : queries) {
    for (const std::string& failure : checker.Failures(sqlite, key)) ADD_FAILURE() << failure;
  }
}

INSTANTIATE_TEST_SUITE_P(Keys, EveryKey, ::testing::ValuesIn(RunnableKeys()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                           // "Sales Order" runs as Keys/EveryKey.Run/Sales_Order.
                           std::string name = info.param;
                           std::replace(name.begin(), name.end(), ' ', '_');
                           return name;
                         });

}  // namespace
}  // namespace trellin::reports::testing
