#include "platform/data/ColumnReader.h"

#include <charconv>
#include <cmath>
#include <string>

#include "core/host/Database.h"

namespace trellin::data {

namespace {

std::string_view TextOf(sqlite3_stmt* stmt, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
  return text == nullptr ? std::string_view()
                         : std::string_view(text, sqlite3_column_bytes(stmt, column));
}

// The row of `table` holding the misfit value, found again by the value itself: this runs only
// on the way to an error, so the extra query costs nothing in a sound file.
std::string RowIdOf(sqlite3_stmt* stmt, int column, const char* table, const char* origin) {
  std::string sql = "SELECT rowid FROM \"" + std::string(table) + "\" WHERE \"" +
                    std::string(origin) + "\" IS ?1 LIMIT 1";
  sqlite3_stmt* lookup = nullptr;
  std::string id;
  if (sqlite3_prepare_v2(sqlite3_db_handle(stmt), sql.c_str(), -1, &lookup, nullptr) == SQLITE_OK) {
    sqlite3_bind_value(lookup, 1, sqlite3_column_value(stmt, column));
    if (sqlite3_step(lookup) == SQLITE_ROW) id = std::to_string(sqlite3_column_int64(lookup, 0));
  }
  sqlite3_finalize(lookup);
  return id;
}

[[noreturn]] void Misfit(sqlite3_stmt* stmt, int column, const ResultField& field,
                         std::string_view kind) {
  // A value read straight from a table is named by table, column and row, for the user to find
  // and mend; a computed one by the result column it fills.
  const char* table = sqlite3_column_table_name(stmt, column);
  const char* origin = sqlite3_column_origin_name(stmt, column);
  std::string where = "the column '" + field.info.name + "'";
  if (table != nullptr && origin != nullptr) {
    where = std::string(table) + "." + origin;
    if (std::string id = RowIdOf(stmt, column, table, origin); !id.empty()) {
      where += " (row " + id + ")";
    }
  }
  std::string value(TextOf(stmt, column));
  if (value.size() > 40) value = value.substr(0, 40) + "...";
  throw DatabaseError(where + " holds '" + value + "', which is not " + std::string(kind));
}

Variant ReadAsStored(sqlite3_stmt* stmt, int column, int storage) {
  switch (storage) {
    case SQLITE_INTEGER:
      return Variant(static_cast<std::int64_t>(sqlite3_column_int64(stmt, column)));
    case SQLITE_FLOAT:
      return Variant(sqlite3_column_double(stmt, column));
    case SQLITE_NULL:
      return Variant::Null();
    default:
      return Variant(TextOf(stmt, column));
  }
}

Variant ReadLong(sqlite3_stmt* stmt, int column, int storage, const ResultField& field) {
  switch (storage) {
    case SQLITE_INTEGER:
      return Variant(static_cast<std::int64_t>(sqlite3_column_int64(stmt, column)));
    case SQLITE_FLOAT: {
      // A whole-number column computed in floating point: rounded half to even, as CLng does.
      double value = sqlite3_column_double(stmt, column);
      if (!std::isfinite(value) || std::fabs(value) > 9.2e18) {
        Misfit(stmt, column, field, "a whole number");
      }
      return Variant(static_cast<std::int64_t>(std::nearbyint(value)));
    }
    default:
      if (auto n = ParseWholeText(TextOf(stmt, column))) return Variant(*n);
      Misfit(stmt, column, field, "a whole number");
  }
}

Variant ReadDouble(sqlite3_stmt* stmt, int column, int storage, const ResultField& field) {
  if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT) {
    return Variant(sqlite3_column_double(stmt, column));
  }
  if (auto d = ParseRealText(TextOf(stmt, column))) return Variant(*d);
  Misfit(stmt, column, field, "a number");
}

Variant ReadCurrency(sqlite3_stmt* stmt, int column, int storage, const ResultField& field) {
  switch (storage) {
    case SQLITE_INTEGER:
      return Variant(Currency::FromRaw(sqlite3_column_int64(stmt, column)));
    case SQLITE_FLOAT: {
      // Ten-thousandths that went through floating point (a product or a quotient): the
      // nearest whole count is the exact amount.
      double raw = sqlite3_column_double(stmt, column);
      if (!std::isfinite(raw) || std::fabs(raw) > 9.2e18) Misfit(stmt, column, field, "an amount");
      return Variant(Currency::FromRaw(std::llround(raw)));
    }
    default:
      if (auto n = ParseWholeText(TextOf(stmt, column))) return Variant(Currency::FromRaw(*n));
      Misfit(stmt, column, field, "an amount");
  }
}

Variant ReadDate(sqlite3_stmt* stmt, int column, int storage, const ResultField& field) {
  if (storage == SQLITE_TEXT) {
    if (auto date = Date::FromIso(TextOf(stmt, column))) return Variant(*date);
  }
  Misfit(stmt, column, field, "a date");
}

Variant ReadBoolean(sqlite3_stmt* stmt, int column, int storage, const ResultField& field) {
  if (storage == SQLITE_INTEGER || storage == SQLITE_FLOAT) {
    return Variant(sqlite3_column_double(stmt, column) != 0);
  }
  std::string_view text = TextOf(stmt, column);
  if (text == "1" || text == "-1" || text == "True" || text == "true") return Variant(true);
  if (text == "0" || text == "False" || text == "false") return Variant(false);
  Misfit(stmt, column, field, "True or False");
}

using Reader = Variant (*)(sqlite3_stmt*, int, int, const ResultField&);

// One reader per field type, in the order of FieldType.
constexpr Reader kReaders[] = {
    [](sqlite3_stmt* stmt, int column, int, const ResultField&) {
      return Variant(TextOf(stmt, column));
    },
    ReadLong,
    ReadDouble,
    ReadCurrency,
    ReadDate,
    ReadBoolean,
};

}  // namespace

std::optional<std::int64_t> ParseWholeText(std::string_view text) {
  std::int64_t value = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<double> ParseRealText(std::string_view text) {
  double value = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

Variant ReadColumn(sqlite3_stmt* stmt, int column, const ResultField& field) {
  // The storage class is read once: each sqlite3_column_* call costs, and a report reads
  // millions of cells.
  int storage = sqlite3_column_type(stmt, column);
  if (storage == SQLITE_NULL) return Variant::Null();
  if (!field.typed) return ReadAsStored(stmt, column, storage);
  return kReaders[static_cast<int>(field.info.type)](stmt, column, storage, field);
}

}  // namespace trellin::data
