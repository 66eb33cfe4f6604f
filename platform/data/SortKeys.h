#pragma once
// The keys of a recordset's Sort: "Code, Date DESC".

#include <string_view>
#include <vector>

#include "core/host/Recordset.h"

namespace trellin::data {

struct SortKey {
  int field = 0;
  bool descending = false;
};

// Parses comma-separated field names, each optionally followed by ASC or DESC (names may be in
// brackets). "" gives no keys. Throws RecordsetError naming `keys` for an unknown field or a
// word that is not ASC or DESC.
[[nodiscard]] std::vector<SortKey> ParseSortKeys(std::string_view keys,
                                                 const std::vector<FieldInfo>& fields);

// A total order of values for sorting: Null (and Empty) first, numbers by value, dates by time,
// text without regard to case; values of kinds that do not compare fall back to their text.
[[nodiscard]] int OrderValues(const Variant& a, const Variant& b);

// Whether row `a` sorts before row `b` under `keys`.
[[nodiscard]] bool RowBefore(const std::vector<Variant>& a, const std::vector<Variant>& b,
                             const std::vector<SortKey>& keys);

}  // namespace trellin::data
