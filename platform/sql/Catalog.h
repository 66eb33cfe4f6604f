#pragma once
// The schema as the front end sees it: tables, their columns in declared order, and the
// semantic type of each column. Names match without regard to case.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/sql/Names.h"
#include "platform/sql/SemType.h"

namespace trellin::sql {

struct ResultColumn {
  std::string name;
  SemType type = SemType::Null;

  bool operator==(const ResultColumn&) const = default;
};

struct CatalogTable {
  std::string name;                   // as first added
  std::vector<ResultColumn> columns;  // in the order added
  // The primary key's columns, in order, where the catalogue was told them (SetKey).
  std::vector<std::string> key;

  // The column called `name` (any case), or nullptr.
  [[nodiscard]] const ResultColumn* FindColumn(std::string_view name) const;

  std::unordered_map<std::string, std::size_t, NameHash, NameEqual> index;  // -> columns
};

class Catalog {
 public:
  // Adds a column to `table`, creating the table on first use. Adding a column a second time
  // replaces its type and keeps its place.
  void AddColumn(std::string_view table, std::string_view column, SemType type);
  // Names the primary key of `table`, a table already added.
  void SetKey(std::string_view table, std::vector<std::string> columns);

  // The table called `name` (any case), or nullptr. The pointer lives as long as the catalogue
  // is not changed.
  [[nodiscard]] const CatalogTable* FindTable(std::string_view name) const;
  // The type of table.column, or nullopt when either is unknown.
  [[nodiscard]] std::optional<SemType> ColumnType(std::string_view table,
                                                  std::string_view column) const;
  // Table names in the order they were first added.
  [[nodiscard]] std::vector<std::string> TableNames() const;

 private:
  std::vector<CatalogTable> tables_;
  std::unordered_map<std::string, std::size_t, NameHash, NameEqual> index_;  // -> tables_
};

}  // namespace trellin::sql
