#include "tests/reports/ledger/LedgerFixture.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "platform/data/demo/DemoCompany.h"
#include "platform/engine/DumpPage.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"

namespace trellin::ledger_testing {

namespace fs = std::filesystem;

std::unique_ptr<host::ReportService> LedgerReports::service_;

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

const std::string& LedgerReports::CompanyPath() {
  // Cached beside the temporary files, keyed by the binary's build time: a new build of the
  // generator comes with a new binary and a new company.
  static const std::string path = [] {
    const auto stamp = fs::last_write_time("/proc/self/exe").time_since_epoch().count();
    const fs::path folder =
        fs::temp_directory_path() / "trellin-ledger-tests" / std::to_string(stamp);
    fs::create_directories(folder);
    const std::string file = (folder / "demo.db").string();
    if (!fs::exists(file)) {
      demo::DemoOptions options;
      options.path = file + "." + std::to_string(getpid());
      demo::BuildDemoCompany(options);
      fs::rename(options.path, file);
    }
    return file;
  }();
  return path;
}

void LedgerReports::SetUpTestSuite() {
  SetClockForTesting(Date::FromYmdHms(2025, 11, 30, 9, 30, 0));
  if (!service_) service_ = host::ReportService::Open(CompanyPath());
}

void LedgerReports::TearDownTestSuite() {
  service_.reset();
  SetClockForTesting(std::nullopt);
}

host::ReportService& LedgerReports::Service() { return *service_; }

DesignerPtr LedgerReports::Open(const std::string& key,
                                const std::vector<std::string>& assignments) {
  DesignerPtr designer = host::OpenReport(*service_, key);
  TLReport& report_host = *designer->TLReport();
  host::DateResolver resolver = [](const Variant& expression, const Parameters& parameters) {
    return service_->Reports().InterpretDate(expression, &parameters);
  };
  host::ParameterDialogue dialogue(report_host.Parameters(), service_->DatabasePtr(), resolver,
                                   &service_->BusinessLayer().Utilities().RangeBuilder());
  for (const std::string& assignment : assignments) dialogue.SetFromAssignment(assignment);
  EXPECT_TRUE(dialogue.Validate()) << key << ": " << Join(dialogue.Errors(), "; ");
  EXPECT_TRUE(designer->ValidateParameters()) << key;
  return designer;
}

std::vector<std::string> LedgerReports::RunPages(const DesignerPtr& designer) {
  DumpSink sink;
  engine::RunReport(*designer, sink);
  std::vector<std::string> pages = std::move(sink.pages);
  std::string errors;
  for (const ReportErrorInfo& error : designer->TLReport()->Errors()) {
    errors += error.source + ": " + error.message + "\n";
  }
  if (!errors.empty()) pages.push_back("errors:\n" + errors);
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);
  return pages;
}

std::string LedgerReports::Run(const std::string& key,
                               const std::vector<std::string>& assignments) {
  return Join(RunPages(Open(key, assignments)), "");
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

void ExpectLedgerGolden(const std::string& name, const std::string& actual) {
  const fs::path path =
      fs::path(TRELLIN_SOURCE_DIR) / "tests" / "reports" / "ledger" / "golden" / (name + ".txt");
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

}  // namespace trellin::ledger_testing
