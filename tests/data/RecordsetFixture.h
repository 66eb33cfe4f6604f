#pragma once
// A small table of mixed rows for the recordset tests, and a way to list what a cursor sees.

#include <memory>
#include <string>
#include <vector>

#include "platform/data/MemoryRecordset.h"

namespace trellin::data::testing {

// Code, Name, Date, Value, BranchId, Qty. Names are unique and identify rows; codes repeat in
// different cases, one date has a time, Nulls are spread over the columns.
inline std::shared_ptr<MemoryRecordset> Fruit(bool updatable = false) {
  std::vector<FieldInfo> fields = {
      {"Code", FieldType::Text, 10},    {"Name", FieldType::Text, 20},
      {"Date", FieldType::Date, 0},     {"Value", FieldType::Currency, 0},
      {"BranchId", FieldType::Text, 5}, {"Qty", FieldType::Long, 0},
  };
  auto money = [](std::int64_t raw) { return Variant(Currency::FromRaw(raw)); };
  Variant null = Variant::Null();
  std::vector<MemoryRecordset::Row> rows = {
      {"A1", "apple", Date::FromYmd(2024, 1, 5), money(100000), "HO", std::int64_t{3}},
      {"b2", "Banana", Date::FromYmd(2024, 2, 1), money(-55000), null, std::int64_t{1}},
      {"A1", "avocado", Date::FromYmdHms(2024, 1, 5, 10, 30, 0), money(1), "WN", std::int64_t{3}},
      {"C3", "cherry", null, null, null, std::int64_t{7}},
      {"a1", "apricot", Date::FromYmd(2023, 12, 31), money(100000), "HO", std::int64_t{2}},
  };
  return std::make_shared<MemoryRecordset>(fields, rows, updatable);
}

// The values of `field` from the current row to EOF, joined by commas; the cursor ends at EOF.
inline std::string Walk(Recordset& rs, const char* field = "Name") {
  std::string out;
  while (!rs.Eof()) {
    if (!out.empty()) out += ",";
    out += rs.Value(field).Text();
    rs.MoveNext();
  }
  return out;
}

}  // namespace trellin::data::testing
