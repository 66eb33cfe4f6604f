#pragma once
// The one fake company database of the tests: settings in a map, and query results given per SQL
// text, as the data layer's own in-memory recordsets (names matched without regard to case).

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/host/Database.h"
#include "platform/data/MemoryRecordset.h"
#include "platform/runtime/Strings.h"

namespace trellin::testing {

class FakeDatabase : public Database {
 public:
  [[nodiscard]] int DatabaseType() const override { return 1; }
  [[nodiscard]] std::string ConnectionString() const override { return "memory"; }

  // Answers only the SQL texts given to AddResult, exactly; anything else fails as a database
  // fails on a query it cannot run.
  [[nodiscard]] std::shared_ptr<Recordset> Query(std::string_view jet_sql) override {
    queries_.emplace_back(jet_sql);
    auto found = results_.find(std::string(jet_sql));
    if (found == results_.end()) {
      throw DatabaseError("no such table in: " + std::string(jet_sql));
    }
    return std::make_shared<data::MemoryRecordset>(found->second.first, found->second.second,
                                                   false);
  }

  [[nodiscard]] std::string GetSetting(std::string_view section, std::string_view key,
                                       std::string_view default_value) override {
    auto found = settings_.find(UCase(std::string(section) + "/" + std::string(key)));
    return found == settings_.end() ? std::string(default_value) : found->second;
  }

  void SetSetting(std::string_view section, std::string_view key, std::string value) {
    settings_[UCase(std::string(section) + "/" + std::string(key))] = std::move(value);
  }

  void AddResult(std::string sql, std::vector<FieldInfo> fields,
                 std::vector<data::MemoryRecordset::Row> rows) {
    results_[std::move(sql)] = {std::move(fields), std::move(rows)};
  }

  [[nodiscard]] const std::vector<std::string>& Queries() const { return queries_; }

 private:
  std::map<std::string, std::string> settings_;
  std::map<std::string, std::pair<std::vector<FieldInfo>, std::vector<data::MemoryRecordset::Row>>>
      results_;
  std::vector<std::string> queries_;
};

}  // namespace trellin::testing
