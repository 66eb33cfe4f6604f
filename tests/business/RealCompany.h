#pragma once
// A small company file on disk, built from the company schema, opened read-only.

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "platform/data/CompanyFile.h"
#include "platform/data/SqliteDatabase.h"

namespace trellin::testing {

// Settings, two financial years, a few accounts and parties: enough to read the calendar and
// options and to run list conditions and pick-lists against real SQL.
inline constexpr const char* kRealCompanyRows = R"(
INSERT INTO CompanySetting VALUES ('Company','Name','Harbour Traders'), ('Tax','Rate','12.5'),
  ('Periods','CurrentDateAR','2025-03-31'), ('Formats','Date','dd/mm/yyyy'),
  ('UserDefinedFields','OtherParty.1.Name','Region');
INSERT INTO FinancialYear VALUES (1,'2023/24','2023-04-01','2024-03-31'),
  (2,'2024/25','2024-04-01','2025-03-31');
INSERT INTO Configuration VALUES (1);
INSERT INTO Account (AccountId, Description, ALevel) VALUES ('1-1000','Bank',1),
  ('1-1100','Cheque account',2), ('1-1999','Petty cash',2), ('2-1000','Creditors',1);
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, Status, UserDefined1) VALUES
  ('A100','Acme',1,1,'North'), ('a150','Apex',1,2,'South'), ('A199','Atlas',1,3,NULL),
  ('B7','Bay',1,4,'North'), ('X,Y','Comma Co',1,5,NULL), ('O''Neil','O''Neil Ltd',0,1,'South');
)";

class RealCompany {
 public:
  RealCompany() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "trellin-business-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a temp folder");
    folder_ = pattern;
    std::string path = (folder_ / "company.db").string();
    auto writer = data::CreateCompanyFile(path);
    char* error = nullptr;
    if (sqlite3_exec(writer->Handle(), kRealCompanyRows, nullptr, nullptr, &error) != SQLITE_OK) {
      std::string message = error ? error : "unknown";
      sqlite3_free(error);
      throw std::runtime_error("fixture rows: " + message);
    }
    writer->Commit();
    database_ = data::SqliteDatabase::Open(path);
  }
  RealCompany(const RealCompany&) = delete;
  RealCompany& operator=(const RealCompany&) = delete;
  ~RealCompany() {
    database_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  [[nodiscard]] const std::shared_ptr<data::SqliteDatabase>& Database() const { return database_; }

 private:
  std::filesystem::path folder_;
  std::shared_ptr<data::SqliteDatabase> database_;
};

}  // namespace trellin::testing
