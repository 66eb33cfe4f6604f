// Reading a value of a PostgreSQL result, in libpq's text form, as a recordset's typed value.
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

#include "platform/data/postgres/PostgresDatabase.h"

namespace trellin::data {

namespace {

// The type numbers of the server's built-in types, as a result names its columns' types.
constexpr Oid kBool = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kFloat4 = 700, kFloat8 = 701,
              kNumeric = 1700, kDate = 1082, kTimestamp = 1114, kTimestampTz = 1184;

[[noreturn]] void Misfit(std::string_view value, const ResultField& field, std::string_view kind) {
  std::string shown(value);
  if (shown.size() > 40) shown = shown.substr(0, 40) + "...";
  throw DatabaseError("the column '" + field.info.name + "' holds '" + shown + "', which is not " +
                      std::string(kind));
}

// A whole count from a whole number, a NUMERIC with a fraction, or a double: the nearest one,
// halves to even for a Long (as CLng), away from zero for money (as SQLite's ROUND).
std::optional<std::int64_t> WholeOf(std::string_view text, bool money) {
  if (auto whole = ParseWholeText(text)) return whole;
  // "123.0000": a NUMERIC sum of whole counts, read exactly.
  if (auto point = text.find('.');
      point != std::string_view::npos &&
      text.find_first_not_of('0', point + 1) == std::string_view::npos) {
    return ParseWholeText(text.substr(0, point));
  }
  std::optional<double> real = ParseRealText(text);
  if (!real || !std::isfinite(*real) || std::fabs(*real) > 9.2e18) return std::nullopt;
  return money ? std::llround(*real) : static_cast<std::int64_t>(std::nearbyint(*real));
}

Variant AsStored(std::string_view text, Oid type) {
  switch (type) {
    case kBool:
      return Variant(static_cast<std::int64_t>(text == "t" ? 1 : 0));
    case kInt2:
    case kInt4:
    case kInt8:
      if (auto n = ParseWholeText(text)) return Variant(*n);
      break;
    case kNumeric:
      if (auto n = ParseWholeText(text)) return Variant(*n);
      [[fallthrough]];
    case kFloat4:
    case kFloat8:
      if (auto d = ParseRealText(text)) return Variant(*d);
      break;
    case kDate:
    case kTimestamp:
    case kTimestampTz: {
      // As a company file stores a date: no time part at midnight.
      std::string iso(text.substr(0, 19));
      if (iso.size() == 19 && iso.compare(10, 9, " 00:00:00") == 0) iso.resize(10);
      return Variant(iso);
    }
    default:
      break;
  }
  return Variant(text);
}

}  // namespace

Variant ReadPgValue(const PgResult& result, int row, int column, const ResultField& field) {
  if (result.IsNull(row, column)) return Variant::Null();
  const std::string_view text = result.Value(row, column);
  if (!field.typed) return AsStored(text, PQftype(result.Handle(), column));
  switch (field.info.type) {
    case FieldType::Text:
      return Variant(text);
    case FieldType::Long:
      if (auto n = WholeOf(text, false)) return Variant(*n);
      Misfit(text, field, "a whole number");
    case FieldType::Double:
      if (auto d = ParseRealText(text)) return Variant(*d);
      Misfit(text, field, "a number");
    case FieldType::Currency:
      if (auto n = WholeOf(text, true)) return Variant(Currency::FromRaw(*n));
      Misfit(text, field, "an amount");
    case FieldType::Date:
      if (auto date = Date::FromIso(text)) return Variant(*date);
      Misfit(text, field, "a date");
    case FieldType::Boolean:
      if (text == "t" || text == "true" || text == "1" || text == "-1") return Variant(true);
      if (text == "f" || text == "false" || text == "0") return Variant(false);
      Misfit(text, field, "True or False");
  }
  return Variant(text);
}

}  // namespace trellin::data
