#include "core/host/Recordset.h"

namespace trellin {

namespace {

// Operations a kind of recordset does not offer fail loudly rather than doing nothing, so that a
// report written against the wrong kind shows its mistake on the first run.
[[noreturn]] void NotOffered(std::string_view operation) {
  throw RecordsetError(std::string(operation) + " is not available on this recordset");
}

}  // namespace

const Variant& Recordset::Value(std::string_view name) const {
  int index = FieldIndex(name);
  if (index < 0) {
    throw RecordsetError("no field named '" + std::string(name) + "' in the recordset");
  }
  return Value(index);
}

void Recordset::SetValue(std::string_view name, const Variant& value) {
  int index = FieldIndex(name);
  if (index < 0) {
    throw RecordsetError("no field named '" + std::string(name) + "' in the recordset");
  }
  SetValue(index, value);
}

void Recordset::Find(std::string_view) { NotOffered("Find"); }
void Recordset::Filter(std::string_view) { NotOffered("Filter"); }
void Recordset::Sort(std::string_view) { NotOffered("Sort"); }
void Recordset::AppendField(std::string_view, FieldType, int) { NotOffered("Fields.Append"); }
void Recordset::AddNew() { NotOffered("AddNew (the recordset is read-only)"); }
void Recordset::SetValue(int, const Variant&) {
  NotOffered("Writing a field (the recordset is read-only)");
}
void Recordset::Update() { NotOffered("Update (the recordset is read-only)"); }
void Recordset::CancelUpdate() { NotOffered("CancelUpdate (the recordset is read-only)"); }
void Recordset::Delete() { NotOffered("Delete (the recordset is read-only)"); }
std::shared_ptr<Recordset> Recordset::Disconnect() { NotOffered("Disconnect"); }

}  // namespace trellin
