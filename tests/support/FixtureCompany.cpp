#include "tests/support/FixtureCompany.h"

#include <sqlite3.h>

#include <stdexcept>
#include <string>

#include "platform/data/CompanyFile.h"
#include "tests/support/TestPaths.h"

namespace trellin::testing {

void WriteCompany(const std::filesystem::path& path,
                  std::initializer_list<std::string_view> row_files) {
  std::unique_ptr<data::CompanyFileWriter> writer = data::CreateCompanyFile(path.string());
  for (std::string_view file : row_files) {
    const std::string rows = ReadFile(TestDir(file));
    char* error = nullptr;
    if (sqlite3_exec(writer->Handle(), rows.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
      const std::string message = error != nullptr ? error : "unknown error";
      sqlite3_free(error);
      throw std::runtime_error("tests/" + std::string(file) + ": " + message);
    }
  }
  writer->Commit();
}

FixtureCompany::FixtureCompany(std::initializer_list<std::string_view> row_files) {
  WriteCompany(Path(), row_files);
  database_ = data::SqliteDatabase::Open(Path().string());
}

}  // namespace trellin::testing
