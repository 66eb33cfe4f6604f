#include "platform/data/SortKeys.h"

#include "platform/data/Criteria.h"
#include "platform/runtime/Strings.h"

namespace trellin::data {

std::vector<SortKey> ParseSortKeys(std::string_view keys, const std::vector<FieldInfo>& fields) {
  std::vector<SortKey> out;
  if (Trim(keys).empty()) return out;
  auto fail = [&](const std::string& why) {
    throw RecordsetError("cannot sort by \"" + std::string(keys) + "\": " + why);
  };
  for (const std::string& item : Split(keys, ",")) {
    std::string key = Trim(item);
    if (key.empty()) fail("a key is empty");
    SortKey sort_key;
    // The direction is the last word, unless the name is bracketed and has blanks in it.
    std::size_t blank = key.find_last_of(" \t");
    if (blank != std::string::npos && key.back() != ']') {
      std::string direction = Trim(key.substr(blank + 1));
      if (EqualsIgnoreCase(direction, "DESC")) {
        sort_key.descending = true;
      } else if (!EqualsIgnoreCase(direction, "ASC")) {
        fail("'" + direction + "' is not ASC or DESC");
      }
      key = Trim(key.substr(0, blank));
    }
    sort_key.field = FindField(fields, key);
    if (sort_key.field < 0) fail("there is no field named '" + key + "'");
    out.push_back(sort_key);
  }
  return out;
}

int OrderValues(const Variant& a, const Variant& b) {
  bool a_null = a.IsNull() || a.IsEmpty();
  bool b_null = b.IsNull() || b.IsEmpty();
  if (a_null || b_null) return static_cast<int>(b_null) - static_cast<int>(a_null);
  try {
    if (auto order = Compare(a, b, /*ignore_case=*/true)) return *order;
  } catch (const TypeMismatch&) {
  }
  return StrComp(a.Text(), b.Text(), /*ignore_case=*/true);
}

bool RowBefore(const std::vector<Variant>& a, const std::vector<Variant>& b,
               const std::vector<SortKey>& keys) {
  for (const SortKey& key : keys) {
    int order = OrderValues(a[key.field], b[key.field]);
    if (order != 0) return key.descending ? order > 0 : order < 0;
  }
  return false;
}

}  // namespace trellin::data
