#include "core/host/Recordset.h"

namespace trellin {

const Variant& Recordset::Value(std::string_view name) const {
  int index = FieldIndex(name);
  if (index < 0) {
    throw RecordsetError("no field named '" + std::string(name) + "' in the recordset");
  }
  return Value(index);
}

}  // namespace trellin
