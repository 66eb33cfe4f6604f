#include "core/host/Database.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace trellin {

bool Database::OpenRecordset(std::string_view sql, std::shared_ptr<Recordset>& rs, int, int) {
  try {
    rs = Query(sql);
    last_error_.clear();
    return true;
  } catch (const std::exception& e) {
    rs.reset();
    last_error_ = e.what();
    return false;
  }
}

RunSnapshot::~RunSnapshot() {
  try {
    database_.EndSnapshot();
  } catch (...) {
    // Ending a read fails only on a broken connection, and there is nothing to undo; a
    // destructor that threw would end the process instead of the report.
  }
}

std::shared_ptr<Recordset> Database::QueryUpdatable(std::string_view jet_sql) {
  return Query(jet_sql)->Disconnect();
}

std::shared_ptr<Recordset> Database::NewRecordset() {
  throw DatabaseError("this database does not make client-side recordsets");
}

Variant Database::FirstValue(std::string_view sql) {
  // The forward form reads one row and stops, so a scalar over a large table holds nothing.
  std::shared_ptr<Recordset> rs = QueryForward(sql);
  if (rs->Eof() || rs->FieldCount() == 0) return Variant::Null();
  return rs->Value(0);
}

std::int64_t Database::ExecuteScalarLong(std::string_view sql, std::int64_t default_value) {
  Variant value = FirstValue(sql);
  if (value.IsNull() || value.IsEmpty()) return default_value;
  try {
    return value.ToLong();
  } catch (const std::exception& e) {
    throw DatabaseError("the first value of " + std::string(sql) +
                        " is not a whole number: " + e.what());
  }
}

Currency Database::ExecuteScalarCurrency(std::string_view sql, Currency default_value) {
  Variant value = FirstValue(sql);
  if (value.IsNull() || value.IsEmpty()) return default_value;
  try {
    return value.ToCurrency();
  } catch (const std::exception& e) {
    throw DatabaseError("the first value of " + std::string(sql) +
                        " is not an amount: " + e.what());
  }
}

std::int64_t Database::RecordCount(std::string_view table, std::string_view where) {
  std::string sql = "SELECT Count(*) FROM " + std::string(table);
  if (!where.empty()) sql += " WHERE " + std::string(where);
  return ExecuteScalarLong(sql, 0);
}

std::string Database::SQLDate(const Date& date) {
  char text[32];
  std::snprintf(text, sizeof text, "#%04d-%02d-%02d", date.Year(), date.Month(), date.Day());
  std::string out = text;
  if (date.HasTime()) {
    std::snprintf(text, sizeof text, " %02d:%02d:%02d", date.Hour(), date.Minute(), date.Second());
    out += text;
  }
  return out + "#";
}

std::string Database::SQLBoolean(bool value) { return value ? "True" : "False"; }

std::string Database::SQLNumber(int value) { return std::to_string(value); }

std::string Database::SQLNumber(std::int64_t value) { return std::to_string(value); }

std::string Database::SQLNumber(double value) {
  if (!std::isfinite(value)) {
    throw DatabaseError("a number that is not finite cannot be written into SQL");
  }
  // Shortest text that reads back as the same double, never in the locale's form.
  char text[64];
  auto [end, ec] = std::to_chars(text, text + sizeof text, value);
  return std::string(text, end);
}

std::string Database::SQLNumber(Currency value) {
  // Written out digit by digit so that money never passes through a double.
  std::int64_t raw = value.Raw();
  bool negative = raw < 0;
  std::uint64_t magnitude =
      negative ? 0 - static_cast<std::uint64_t>(raw) : static_cast<std::uint64_t>(raw);
  std::string out = negative ? "-" : "";
  out += std::to_string(magnitude / Currency::kScale);
  std::uint64_t fraction = magnitude % Currency::kScale;
  if (fraction != 0) {
    std::string digits = std::to_string(fraction + Currency::kScale).substr(1);
    while (digits.back() == '0') digits.pop_back();
    out += '.';
    out += digits;
  }
  return out;
}

std::string Database::SQLNumber(const Variant& value) {
  if (const auto* n = value.Get<std::int64_t>()) return SQLNumber(*n);
  if (const auto* d = value.Get<double>()) return SQLNumber(*d);
  if (const auto* c = value.Get<Currency>()) return SQLNumber(*c);
  if (const auto* b = value.Get<bool>()) return *b ? "-1" : "0";
  if (const auto* s = value.Get<std::string>()) {
    if (auto money = Currency::Parse(*s)) return SQLNumber(*money);
    try {
      return SQLNumber(value.ToDouble());
    } catch (const std::exception&) {
    }
    throw DatabaseError("'" + *s + "' is not a number and cannot be written into SQL as one");
  }
  throw DatabaseError("a value that is not a number cannot be written into SQL as one");
}

std::string Database::SQLString(std::string_view text) {
  std::string out = "'";
  for (char c : text) {
    out += c;
    if (c == '\'') out += '\'';
  }
  return out + "'";
}

std::string Database::SQLIIf(std::string_view condition, std::string_view true_part,
                             std::string_view false_part) {
  return "IIf(" + std::string(condition) + "," + std::string(true_part) + "," +
         std::string(false_part) + ")";
}

std::string Database::SQLIsNull(std::string_view expression, std::string_view replacement) {
  return SQLIIf(std::string(expression) + " Is Null", replacement, expression);
}

}  // namespace trellin
