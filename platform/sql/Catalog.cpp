#include "platform/sql/Catalog.h"

#include "platform/sql/Names.h"

namespace trellin::sql {

const ResultColumn* CatalogTable::FindColumn(std::string_view name) const {
  auto it = index.find(name);
  return it == index.end() ? nullptr : &columns[it->second];
}

void Catalog::AddColumn(std::string_view table, std::string_view column, SemType type) {
  auto [table_it, table_added] = index_.try_emplace(std::string(table), tables_.size());
  if (table_added) tables_.push_back(CatalogTable{std::string(table), {}, {}, {}});
  CatalogTable& entry = tables_[table_it->second];
  auto [column_it, column_added] =
      entry.index.try_emplace(std::string(column), entry.columns.size());
  if (column_added) {
    entry.columns.push_back(ResultColumn{std::string(column), type});
  } else {
    entry.columns[column_it->second].type = type;
  }
}

void Catalog::SetKey(std::string_view table, std::vector<std::string> columns) {
  auto it = index_.find(table);
  if (it != index_.end()) tables_[it->second].key = std::move(columns);
}

const CatalogTable* Catalog::FindTable(std::string_view name) const {
  auto it = index_.find(name);
  return it == index_.end() ? nullptr : &tables_[it->second];
}

std::optional<SemType> Catalog::ColumnType(std::string_view table, std::string_view column) const {
  const CatalogTable* entry = FindTable(table);
  if (entry == nullptr) return std::nullopt;
  const ResultColumn* found = entry->FindColumn(column);
  if (found == nullptr) return std::nullopt;
  return found->type;
}

std::vector<std::string> Catalog::TableNames() const {
  std::vector<std::string> names;
  names.reserve(tables_.size());
  for (const CatalogTable& table : tables_) names.push_back(table.name);
  return names;
}

}  // namespace trellin::sql
