#include "tests/reports/ledger/LedgerFixture.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <sqlite3.h>

#include "platform/data/CompanyFile.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

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

constexpr const char* kFixtureRows = R"sql(
INSERT INTO CompanySetting VALUES ('Company','Name','Fixture Traders'),('Tax','Name','GST'),
  ('Accounts','RetainedEarnings','4520'),('Periods','CurrentDateGL','2025-03-31'),
  ('Formats','Date','d/mm/yyyy');
INSERT INTO FinancialYear VALUES (1,'2023/24','2023-04-01','2024-03-31'),
  (2,'2024/25','2024-04-01','2025-03-31');
INSERT INTO Branch (BranchId, Name) VALUES ('N','North'),('S','South');
INSERT INTO Account (AccountId, Description, Post, Type, ALevel, DrCr) VALUES
  ('1000','INCOME','H',1,1,NULL),
  ('1005','Sales','G',1,2,NULL),
  ('1010','Sales A',NULL,1,3,'C'),
  ('1020','Sales B',NULL,1,3,'C'),
  ('1100','Idle Costs','G',3,2,NULL),
  ('1110','Idle Expense',NULL,3,3,'D'),
  ('1200','Expenses','G',3,2,NULL),
  ('1210','Rent',NULL,3,3,'D'),
  ('1290','NET RESULT','T',3,1,NULL),
  ('1295','Clear','C',3,1,NULL),
  ('1296','Nothing Above','T',3,2,NULL),
  ('3000','ASSETS','G',7,1,NULL),
  ('3010','Bank',NULL,7,2,'D'),
  ('3020','Petty Cash',NULL,7,2,'D'),
  ('4000','Liabilities','G',10,1,NULL),
  ('4010','Loan',NULL,10,2,'C'),
  ('4500','EQUITY','G',11,1,NULL),
  ('4520','Retained Earnings',NULL,11,2,'C');
INSERT INTO glTransaction (AccountId, Date, Value, BranchId) VALUES
  ('1010','2024-03-15',-2000000,'N'),('3010','2024-03-15',2000000,'N'),
  ('1010','2024-03-31 10:00:00',2000000,NULL),('4520','2024-03-31 10:00:00',-2000000,NULL),
  ('1010','2024-04-05',-10000000,'N'),('3010','2024-04-05',10000000,'N'),
  ('1010','2024-06-20',-4000000,'S'),('3010','2024-06-20',4000000,'S'),
  ('1210','2024-05-10',3000000,'N'),('3010','2024-05-10',-3000000,'N'),
  ('3010','2024-06-01',50000000,NULL),('4010','2024-06-01',-50000000,NULL),
  ('3020','2024-06-02',4000,NULL),('3010','2024-06-02',-4000,NULL),
  ('3010','2025-01-15',500000,NULL);
INSERT INTO glBudget (AccountId, Month, Budget, Revised) VALUES
  ('1010','2024-04-01',-9000000,-9500000),('1010','2024-06-01',-11000000,-10000000),
  ('1210','2024-05-01',2500000,2500000);
)sql";

constexpr const char* kBankRows = R"sql(
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer) VALUES ('ALPHA','Alpha Marine',1);
INSERT INTO Department (DeptId, Description) VALUES ('D1','Retail');
INSERT INTO glBankTransaction (glBankTransactionId, Date, OtherPartyId, StmtPage) VALUES
  (1,'2025-02-10','ALPHA',3),(2,'2025-02-12',NULL,NULL),(3,'2025-02-14','ALPHA',NULL);
INSERT INTO glTransaction (AccountId, Date, Value, TaxValue, BranchId, DeptId, Comment,
  TaxCategory, glBankTransactionId, glBankTransactionSequence) VALUES
  ('3010','2025-02-10',11500000,0,'N','D1','Receipt',NULL,1,0),
  ('1010','2025-02-10',-10000000,-1500000,'N','D1','',NULL,1,1),
  ('3010','2025-02-12',-230000,0,'S',NULL,'Bank fee',NULL,2,0),
  ('1210','2025-02-12',230000,0,'S',NULL,'Bank fee','*',2,1),
  ('3010','2025-02-14',-5000000,0,NULL,'GONE',NULL,NULL,3,0),
  ('1010','2025-02-14',5000000,0,NULL,'D1','Refund',NULL,3,1),
  ('3020','2025-02-20',6000000,0,'N',NULL,'Float',NULL,NULL,NULL),
  ('3020','2025-02-21',6000000,0,'N',NULL,'Float',NULL,NULL,NULL),
  ('3020','2025-02-28 16:00:00',1000000,0,'N',NULL,'Late float',NULL,NULL,NULL);
UPDATE glTransaction SET Type=1 WHERE Date='2024-03-31 10:00:00';
)sql";

// A company file of the fixture's rows and `more`, made once per test binary and name.
std::string CompanyFile(const char* name, const char* more) {
  const auto stamp = fs::last_write_time("/proc/self/exe").time_since_epoch().count();
  const fs::path folder =
      fs::temp_directory_path() / "trellin-ledger-tests" / std::to_string(stamp);
  fs::create_directories(folder);
  const std::string file =
      (folder / (std::string(name) + "-" + std::to_string(getpid()) + ".db")).string();
  auto writer = data::CreateCompanyFile(file);
  for (const char* rows : {kFixtureRows, more}) {
    char* error = nullptr;
    if (sqlite3_exec(writer->Handle(), rows, nullptr, nullptr, &error) != SQLITE_OK) {
      std::string message = error ? error : "unknown";
      sqlite3_free(error);
      throw std::runtime_error(std::string(name) + " rows: " + message);
    }
  }
  writer->Commit();
  return file;
}

std::string FixturePath() {
  static const std::string path = CompanyFile("fixture", "");
  return path;
}

std::string BankFixturePath() {
  static const std::string path = CompanyFile("bank", kBankRows);
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
