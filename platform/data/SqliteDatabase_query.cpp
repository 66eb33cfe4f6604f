// Running Jet-dialect queries: translation, typed fields, held and streamed rows.
#include "platform/data/ForwardRecordset.h"
#include "platform/data/MemoryRecordset.h"
#include "platform/data/SqliteDatabase.h"

namespace trellin::data {

namespace {

struct TypeMapping {
  sql::SemType sem;
  FieldType field;
  bool typed;
};

// How each semantic type of a result column shows in a recordset. A bare Null column has no
// type of its own; its values are read as stored.
constexpr TypeMapping kTypeMappings[] = {
    {sql::SemType::Null, FieldType::Text, false},
    {sql::SemType::Text, FieldType::Text, true},
    {sql::SemType::Long, FieldType::Long, true},
    {sql::SemType::Double, FieldType::Double, true},
    {sql::SemType::Currency, FieldType::Currency, true},
    {sql::SemType::Date, FieldType::Date, true},
    {sql::SemType::Boolean, FieldType::Boolean, true},
};

// Queries are the reports' own, tested against the schema, so one that fails finds the company
// file damaged or not as the reports need it: the message names the file first.
[[noreturn]] void QueryFailed(const std::string& path, std::string_view jet_sql,
                              const std::string& why) {
  throw DatabaseError("The company file '" + path + "' cannot be read as the reports need: " + why +
                      ". The query: " + std::string(jet_sql));
}

}  // namespace

std::vector<ResultField> SqliteDatabase::FieldsOf(const sql::Translation& translation) {
  std::vector<ResultField> fields;
  fields.reserve(translation.columns.size());
  for (const sql::ResultColumn& column : translation.columns) {
    ResultField field;
    field.info.name = column.name;
    for (const TypeMapping& mapping : kTypeMappings) {
      if (mapping.sem == column.type) {
        field.info.type = mapping.field;
        field.typed = mapping.typed;
      }
    }
    fields.push_back(std::move(field));
  }
  return fields;
}

std::shared_ptr<const sql::Translation> SqliteDatabase::Translate(std::string_view jet_sql) {
  try {
    std::shared_ptr<const sql::Translation> translation = translator_->Translate(jet_sql);
    if (query_log_) query_log_(jet_sql, translation->sql);
    return translation;
  } catch (const sql::SqlError& e) {
    // Too large to translate: made so by the user's filter, and said without the query.
    if (e.Kind() == ErrorKind::Input) throw DatabaseError(e.problem(), ErrorKind::Input);
    QueryFailed(path_, jet_sql, e.what());
  }
}

std::shared_ptr<Recordset> SqliteDatabase::Query(std::string_view jet_sql) {
  std::shared_ptr<const sql::Translation> translation = Translate(jet_sql);
  std::vector<ResultField> fields = FieldsOf(*translation);
  std::vector<MemoryRecordset::Row> rows;
  try {
    Statement statement(connection_, translation->sql);
    sqlite3_stmt* stmt = statement.Handle();
    if (sqlite3_column_count(stmt) != static_cast<int>(fields.size())) {
      throw DatabaseError("it returns " + std::to_string(sqlite3_column_count(stmt)) +
                          " columns where " + std::to_string(fields.size()) + " were expected");
    }
    while (statement.Step()) {
      MemoryRecordset::Row row;
      row.reserve(fields.size());
      for (std::size_t i = 0; i < fields.size(); ++i) {
        row.push_back(ReadColumn(stmt, static_cast<int>(i), fields[i]));
      }
      rows.push_back(std::move(row));
    }
  } catch (const DatabaseError& e) {
    QueryFailed(path_, jet_sql, e.what());
  }
  std::vector<FieldInfo> infos;
  infos.reserve(fields.size());
  for (ResultField& field : fields) infos.push_back(std::move(field.info));
  return std::make_shared<MemoryRecordset>(std::move(infos), std::move(rows), /*updatable=*/false);
}

std::shared_ptr<ForwardRecordset> SqliteDatabase::OpenForward(std::string_view jet_sql) {
  std::shared_ptr<const sql::Translation> translation = Translate(jet_sql);
  try {
    return std::make_shared<ForwardRecordset>(connection_, translation->sql,
                                              FieldsOf(*translation));
  } catch (const DatabaseError& e) {
    QueryFailed(path_, jet_sql, e.what());
  }
}

}  // namespace trellin::data
