#pragma once
// A table of typed rows with a cursor: what a query returns and what a report builds in memory.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/Variant.h"

namespace trellin {

// The semantic type of a column. Values come back as the matching Variant kind, or Null.
enum class FieldType { Text, Long, Double, Currency, Date, Boolean };

struct FieldInfo {
  std::string name;
  FieldType type = FieldType::Text;
  int size = 0;  // declared width of text, 0 when not known
};

// Raised for misuse of a recordset: reading at EOF, an unknown field, bad criteria.
class RecordsetError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The cursor starts on the first row (or at EOF when there is none). Field names match without
// regard to case. Implementations: query results (static, scrollable), client-side recordsets
// built by appending fields, and disconnected updatable copies.
class Recordset : public Object {
 public:
  [[nodiscard]] virtual bool Eof() const = 0;
  [[nodiscard]] virtual bool Bof() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;
  virtual void MovePrevious() = 0;
  virtual void MoveLast() = 0;
  // Rows visible through the current filter.
  [[nodiscard]] virtual std::int64_t RecordCount() const = 0;

  [[nodiscard]] virtual int FieldCount() const = 0;
  [[nodiscard]] virtual const FieldInfo& Field(int index) const = 0;
  // Index of the named field, -1 when there is none.
  [[nodiscard]] virtual int FieldIndex(std::string_view name) const = 0;
  // The current row's value. Throws RecordsetError at EOF or BOF, or for a bad index.
  [[nodiscard]] virtual const Variant& Value(int index) const = 0;

  // The current row's value of the named field; throws RecordsetError for an unknown name.
  [[nodiscard]] const Variant& Value(std::string_view name) const;
  [[nodiscard]] const Variant& operator[](std::string_view name) const { return Value(name); }
};

}  // namespace trellin
