#include "tests/reports/ReportFixture.h"

#include "platform/data/Sqlite.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include <sqlite3.h>

#include "platform/demo/DemoCompany.h"
#include "platform/engine/DumpPage.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "tests/support/CaseFile.h"
#include "tests/support/DemoCache.h"
#include "tests/support/TestPaths.h"

namespace trellin::reports::testing {

namespace fs = std::filesystem;

std::unique_ptr<host::ReportService> DemoReports::service_;

std::string DemoCompanyPath() {
  // Another company, the scale-20 demo above all, for a run by hand of the checks that hold on
  // any company (every key fits); the golden dumps hold on the scale-1 demo only.
  if (const char* other = std::getenv("TRELLIN_REPORTS_DB"); other != nullptr && *other != '\0') {
    return other;
  }
  return trellin::testing::CachedDemoCompany("NZ");
}

namespace {

class DumpSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo&) override {}
  void AddPage(const engine::Page& page) override { pages.push_back(engine::DumpPage(page)); }
  void End() override {}
  void Abort() override { pages.clear(); }

  std::vector<std::string> pages;
};

}  // namespace

void DemoReports::SetUpTestSuite() {
  SetClockForTesting(Date::FromYmdHms(2026, 3, 31, 9, 30, 0));
  if (!service_) service_ = host::ReportService::Open(DemoCompanyPath());
}

void DemoReports::TearDownTestSuite() {
  service_.reset();
  SetClockForTesting(std::nullopt);
}

host::ReportService& DemoReports::Service() { return *service_; }

DesignerPtr DemoReports::Open(const std::string& key, const std::vector<std::string>& assignments) {
  return OpenWithValues(*service_, key, assignments);
}

DesignerPtr OpenWithValues(host::ReportService& service, const std::string& key,
                           const std::vector<std::string>& assignments) {
  DesignerPtr designer = host::OpenReport(service, key);
  TLReport& report_host = *designer->TLReport();
  host::DateResolver resolver = [&service](const Variant& expression,
                                           const Parameters& parameters) {
    return service.Reports().InterpretDate(expression, &parameters);
  };
  host::ParameterDialogue dialogue(report_host.Parameters(), service.DatabasePtr(), resolver,
                                   &service.BusinessLayer().Utilities().RangeBuilder());
  for (const std::string& assignment : assignments) dialogue.SetFromAssignment(assignment);
  EXPECT_TRUE(dialogue.Validate()) << key << ": " << Join(dialogue.Errors(), "; ");
  EXPECT_TRUE(designer->ValidateParameters()) << key;
  return designer;
}

std::vector<std::string> DemoReports::RunPages(const DesignerPtr& designer) {
  return DumpPages(designer);
}

std::map<std::string, Currency> DemoReports::ByParty(const std::string& sql) {
  std::map<std::string, Currency> sums;
  for (auto rs = Service().Database().Query(sql); !rs->Eof(); rs->MoveNext()) {
    if (!rs->Value(1).IsNull()) sums[rs->Value(0).Text()] = rs->Value(1).ToCurrency();
  }
  return sums;
}

std::vector<std::string> DumpPages(const DesignerPtr& designer) {
  DumpSink sink;
  // The designer and its report hold each other: let go of both however the run ends.
  const auto let_go = [&designer] {
    if (designer->TLReport()) designer->TLReport()->SetArReport(nullptr);
    designer->SetTLReport(nullptr);
  };
  try {
    engine::RunReport(*designer, sink);
  } catch (...) {
    let_go();
    throw;
  }
  std::vector<std::string> pages = std::move(sink.pages);
  std::string errors;
  for (const ReportErrorInfo& error : designer->TLReport()->Errors()) {
    errors += error.source + ": " + error.message + "\n";
  }
  if (!errors.empty()) pages.push_back("errors:\n" + errors);
  let_go();
  return pages;
}

void ExpectGolden(const std::string& area, const std::string& name, const std::string& actual) {
  // No golden file may hold a cut, wide or broken text, however it came to be written.
  std::string misfits;
  std::istringstream lines(actual);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("text ", 0) != 0) continue;
    for (const char* mark : {" !cut", " !wide", " !broken"}) {
      if (line.ends_with(mark)) misfits += line + "\n";
    }
  }
  EXPECT_EQ(misfits, "") << area << "/" << name << ": texts that did not fit their box";
  const fs::path path = trellin::testing::TestDir("reports") / area / "golden" / (name + ".txt");
  const char* update = std::getenv("TRELLIN_UPDATE_GOLDEN");
  if (update != nullptr && std::string(update) == "1") {
    std::ofstream(path, std::ios::binary) << actual;
    std::cout << "[ golden  ] wrote " << path.string() << "\n";
    return;
  }
  std::ifstream file(path, std::ios::binary);
  ASSERT_TRUE(file) << "no golden file " << path.string()
                    << "; run with TRELLIN_UPDATE_GOLDEN=1 to write it, then read it";
  std::stringstream expected;
  expected << file.rdbuf();
  EXPECT_EQ(expected.str(), actual) << "golden file " << path.string();
}

void ExpectGoldenRuns(host::ReportService& service, const std::string& area, std::string_view table,
                      const std::string& separator) {
  const std::vector<trellin::testing::CaseRow> rows = trellin::testing::ReadCases(table, 2);
  ASSERT_FALSE(rows.empty()) << table << " holds no runs";
  for (const trellin::testing::CaseRow& row : rows) {
    SCOPED_TRACE(row.Where() + " " + row.fields[0]);
    const std::vector<std::string> assignments(row.fields.begin() + 2, row.fields.end());
    const std::vector<std::string> pages =
        DumpPages(OpenWithValues(service, row.fields[1], assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_FALSE(pages.back().starts_with("errors:")) << pages.back();
    ExpectGolden(area, row.fields[0], Join(pages, separator));
  }
}

Currency DumpedAmount(const DumpRow& row, const std::string& name) {
  auto found = row.find(name);
  if (found == row.end()) return Currency();
  std::string value = found->second.first;
  if (value.empty() || value.back() != '@') return Currency();
  value.pop_back();
  return Currency::Parse(value).value_or(Currency());
}

BooksSql::BooksSql() {
  if (sqlite3_open_v2(DemoCompanyPath().c_str(), &db_, SQLITE_OPEN_READONLY, nullptr) !=
      SQLITE_OK) {
    ADD_FAILURE() << "cannot open the demo company";
  }
  // Plain SQL must not share the planner fault it checks the reports against.
  data::AvoidPlannerFaults(db_);
}

BooksSql::~BooksSql() { sqlite3_close(db_); }

std::vector<std::vector<std::string>> BooksSql::Rows(const std::string& sql) const {
  std::vector<std::vector<std::string>> rows;
  sqlite3_stmt* statement = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
      << sqlite3_errmsg(db_) << "\n  " << sql;
  while (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW) {
    std::vector<std::string> row;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      const unsigned char* text = sqlite3_column_text(statement, i);
      row.emplace_back(text != nullptr ? reinterpret_cast<const char*>(text) : "");
    }
    rows.push_back(std::move(row));
  }
  sqlite3_finalize(statement);
  return rows;
}

std::vector<std::string> BooksSql::Texts(const std::string& sql) const {
  std::vector<std::string> texts;
  for (std::vector<std::string>& row : Rows(sql)) texts.push_back(std::move(row.at(0)));
  return texts;
}

std::map<std::string, double> BooksSql::Numbers(const std::string& sql) const {
  std::map<std::string, double> numbers;
  for (const std::vector<std::string>& row : Rows(sql)) {
    numbers[row.at(0)] = row.at(1).empty() ? 0.0 : std::stod(row.at(1));
  }
  return numbers;
}

double BooksSql::Number(const std::string& sql) const {
  const std::vector<std::string> texts = Texts(sql);
  return texts.empty() || texts[0].empty() ? 0 : std::stod(texts[0]);
}

Currency BooksSql::Money(const std::string& sql) const {
  sqlite3_stmt* statement = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
      << sqlite3_errmsg(db_) << "\n  " << sql;
  Currency money;
  if (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW) {
    money = Currency::FromRaw(sqlite3_column_int64(statement, 0));
  }
  sqlite3_finalize(statement);
  return money;
}

std::vector<DumpRow> RowsOf(const std::string& dump, const std::string& kind) {
  static const std::regex cell(R"re(([A-Za-z0-9]+)=("[^"]*"|\S+) "([^"]*)")re");
  std::vector<DumpRow> rows;
  std::istringstream lines(dump);
  const std::string head = "row " + kind + " ";
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(head, 0) != 0) continue;
    DumpRow row;
    for (auto it = std::sregex_iterator(line.begin(), line.end(), cell);
         it != std::sregex_iterator(); ++it) {
      row[(*it)[1]] = {(*it)[2], (*it)[3]};
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<std::string> TextsOf(const std::string& dump, const std::string& name) {
  static const std::regex cell(R"re(([A-Za-z0-9]+)=(?:"[^"]*"|\S+) "([^"]*)")re");
  std::vector<std::string> texts;
  std::istringstream lines(dump);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("row ", 0) != 0) continue;
    for (auto it = std::sregex_iterator(line.begin(), line.end(), cell);
         it != std::sregex_iterator(); ++it) {
      if ((*it)[1] == name) texts.push_back((*it)[2]);
    }
  }
  return texts;
}

std::vector<std::string> PrintedTexts(const std::string& dump) {
  static const std::regex text(R"re(^text \S+ \S+ "([^"]*)")re");
  std::vector<std::string> texts;
  std::istringstream lines(dump);
  for (std::string line; std::getline(lines, line);) {
    std::smatch m;
    if (std::regex_search(line, m, text)) texts.push_back(m[1]);
  }
  return texts;
}

}  // namespace trellin::reports::testing
