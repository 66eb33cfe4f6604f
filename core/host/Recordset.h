#pragma once
// A table of typed rows with a cursor: what a query returns and what a report builds in memory.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/Error.h"
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
class RecordsetError : public Error {
 public:
  explicit RecordsetError(const std::string& message) : Error(ErrorKind::Report, message) {}
};

// The cursor starts on the first row (or at EOF when there is none). Field names match without
// regard to case. Implementations: query results (static, scrollable), forward-only streams of a
// report's main rows, client-side recordsets built by appending fields, and disconnected
// updatable copies. Operations a kind of recordset does not offer throw RecordsetError saying so.
class Recordset : public Object {
 public:
  [[nodiscard]] virtual bool Eof() const = 0;
  [[nodiscard]] virtual bool Bof() const = 0;
  virtual void MoveFirst() = 0;
  // Throws RecordsetError when already at EOF.
  virtual void MoveNext() = 0;
  // Throws RecordsetError when already at BOF.
  virtual void MovePrevious() = 0;
  virtual void MoveLast() = 0;
  // Rows visible through the current filter, deleted rows not counted.
  [[nodiscard]] virtual std::int64_t RecordCount() const = 0;

  [[nodiscard]] virtual int FieldCount() const = 0;
  [[nodiscard]] virtual const FieldInfo& Field(int index) const = 0;
  // Index of the named field, -1 when there is none.
  [[nodiscard]] virtual int FieldIndex(std::string_view name) const = 0;
  // The current row's value. Throws RecordsetError at EOF or BOF, on a deleted row, or for a
  // bad index.
  [[nodiscard]] virtual const Variant& Value(int index) const = 0;

  // The current row's value of the named field; throws RecordsetError for an unknown name.
  [[nodiscard]] const Variant& Value(std::string_view name) const;
  [[nodiscard]] const Variant& operator[](std::string_view name) const { return Value(name); }

  // --- Searching and ordering (static and in-memory recordsets) ---

  // Moves forward from the current row, the current row included, to the first row matching
  // `criteria` ("AccountId='1-1000'", "Value>100", "Date<#2024-01-01#"); leaves the cursor at
  // EOF when no row matches. Throws RecordsetError naming the criteria when they do not parse or
  // name an unknown field.
  virtual void Find(std::string_view criteria);
  // Shows only the rows matching `criteria`: comparisons joined by AND and OR, in parentheses
  // where needed; "BranchId=Null" matches a Null value. "" shows every row again. The cursor
  // moves to the first visible row. Errors as Find.
  virtual void Filter(std::string_view criteria);
  // Orders the visible rows by comma-separated keys, each optionally followed by DESC or ASC
  // ("Code, Date DESC"). Text ignores case, Null comes first, and rows with equal keys keep the
  // order they were read or added in.
  // "" restores the order of the rows as read or added. The cursor moves to the first row.
  virtual void Sort(std::string_view keys);
  // The criteria and keys in force, "" when none.
  [[nodiscard]] virtual std::string CurrentFilter() const { return {}; }
  [[nodiscard]] virtual std::string CurrentSort() const { return {}; }

  // --- Editing (client-side and disconnected recordsets only) ---

  [[nodiscard]] virtual bool Updatable() const { return false; }
  // Adds a field; rows already present get Null in it. Throws RecordsetError for a name that is
  // already used.
  virtual void AppendField(std::string_view name, FieldType type, int size = 0);
  // Adds an empty row (every field Null) after the last one and makes it current, in edit.
  virtual void AddNew();
  // Writes a value into the current row's edit, converted to the field's type (Empty and Null
  // store Null). Throws RecordsetError when the value does not convert or text is wider than
  // the field's size.
  virtual void SetValue(int index, const Variant& value);
  void SetValue(std::string_view name, const Variant& value);
  // Keeps the current row's edit. Moving the cursor keeps it too.
  virtual void Update();
  // Drops the current row's edit; after AddNew the new row goes and the cursor returns to the
  // row it was on.
  virtual void CancelUpdate();
  // Deletes the current row. The cursor stays in its place until moved, so MoveNext reaches the
  // row that followed; reading the deleted row throws.
  virtual void Delete();

  // An updatable copy of the visible rows in their current order (of a forward-only recordset,
  // the rows from the current one on), with the same fields, detached from any database:
  // writing to it never touches the source. Its cursor is on its first row.
  [[nodiscard]] virtual std::shared_ptr<Recordset> Disconnect();
};

}  // namespace trellin
