#pragma once
// A small company file for a test: the company schema, then the rows of data files under
// tests/ (".sql", plain INSERT statements), in a folder of its own, opened read-only.

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string_view>

#include "platform/data/SqliteDatabase.h"
#include "tests/support/TempFolder.h"

namespace trellin::testing {

// Writes a company file at `path` from the schema and the rows of `row_files`, each a path under
// tests/ ("business/objects.sql"). Throws std::runtime_error naming the file whose rows fail.
void WriteCompany(const std::filesystem::path& path,
                  std::initializer_list<std::string_view> row_files);

class FixtureCompany {
 public:
  explicit FixtureCompany(std::initializer_list<std::string_view> row_files);

  [[nodiscard]] const std::shared_ptr<data::SqliteDatabase>& Database() const { return database_; }
  [[nodiscard]] std::filesystem::path Path() const { return folder_.Path() / "company.db"; }

 private:
  TempFolder folder_{"trellin-company"};
  std::shared_ptr<data::SqliteDatabase> database_;
};

}  // namespace trellin::testing
