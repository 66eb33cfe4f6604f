#include "tests/reports/ledger/LedgerFixture.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/host/run/RunReport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::ledger_testing {

namespace fs = std::filesystem;

std::unique_ptr<host::ReportService> LedgerReports::service_;

const std::string& LedgerReports::CompanyPath() {
  static const std::string path = reports::testing::DemoCompanyPath();
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
  return reports::testing::OpenWithValues(*service_, key, assignments);
}

std::vector<std::string> LedgerReports::RunPages(const DesignerPtr& designer) {
  return reports::testing::DumpPages(designer);
}

std::string LedgerReports::Run(const std::string& key,
                               const std::vector<std::string>& assignments) {
  return Join(RunPages(Open(key, assignments)), "");
}

namespace {

// A company file of the fixture's rows and `more`, made once per test binary and name.
std::string CompanyFile(const char* name, std::initializer_list<std::string_view> rows) {
  const auto stamp = fs::last_write_time("/proc/self/exe").time_since_epoch().count();
  const fs::path folder =
      fs::temp_directory_path() / "trellin-ledger-tests" / std::to_string(stamp);
  fs::create_directories(folder);
  const fs::path file = folder / (std::string(name) + "-" + std::to_string(getpid()) + ".db");
  trellin::testing::WriteCompany(file, rows);
  return file.string();
}

std::string FixturePath() {
  static const std::string path = CompanyFile("fixture", {"reports/ledger/fixture.sql"});
  return path;
}

std::string BankFixturePath() {
  static const std::string path =
      CompanyFile("bank", {"reports/ledger/fixture.sql", "reports/ledger/bank.sql"});
  return path;
}

}  // namespace

void LedgerFixtureCompany::SetUpTestSuite() {
  SetClockForTesting(Date::FromYmdHms(2025, 3, 31, 9, 30, 0));
  service_ = host::ReportService::Open(FixturePath());
}

void LedgerFixtureCompany::TearDownTestSuite() {
  service_.reset();
  SetClockForTesting(std::nullopt);
}

void LedgerBankCompany::SetUpTestSuite() {
  SetClockForTesting(Date::FromYmdHms(2025, 3, 31, 9, 30, 0));
  service_ = host::ReportService::Open(BankFixturePath());
}

void LedgerBankCompany::TearDownTestSuite() {
  service_.reset();
  SetClockForTesting(std::nullopt);
}

Currency Money(const std::string& dumped) {
  // A currency value is dumped with "@" behind it.
  const std::string figure =
      !dumped.empty() && dumped.back() == '@' ? dumped.substr(0, dumped.size() - 1) : dumped;
  return Currency::Parse(figure).value_or(Currency());
}

std::string Text(const DumpRow& row, const std::string& name) {
  auto it = row.find(name);
  return it == row.end() ? std::string("<hidden>") : it->second.second;
}

Currency Value(const DumpRow& row, const std::string& name) {
  auto it = row.find(name);
  return it == row.end() ? Currency() : Money(it->second.first);
}

void ExpectLedgerGolden(const std::string& name, const std::string& actual) {
  reports::testing::ExpectGolden("ledger", name, actual);
}

}  // namespace trellin::ledger_testing
