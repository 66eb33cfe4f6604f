#include "platform/host/GroupDefinition.h"

#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

// The map's stand-in for a Null code: no real code reads as a control character.
constexpr std::string_view kNullKey = "\x01";

bool IsNoKey(const Variant& key) { return key.IsNull() || key.IsEmpty() || key.IsMissing(); }

}  // namespace

GroupDefinition::GroupDefinition(int level, std::string name, std::string key_field,
                                 std::string list_sql, bool page_break)
    : level_(level),
      name_(std::move(name)),
      key_field_(std::move(key_field)),
      list_sql_(std::move(list_sql)),
      page_break_(page_break) {}

std::string GroupDefinition::BoundField() const {
  // A query returns "SELECT Item.SupplierId" as the column SupplierId, so the section must break
  // on the bare name; brackets around either part go too.
  std::string field = Trim(key_field_);
  std::size_t dot = field.rfind('.');
  if (dot != std::string::npos) field = field.substr(dot + 1);
  if (field.size() >= 2 && field.front() == '[' && field.back() == ']') {
    field = field.substr(1, field.size() - 2);
  }
  return field;
}

std::string GroupDefinition::MapKey(const Variant& key) {
  if (IsNoKey(key)) return std::string(kNullKey);
  return UCase(Trim(key.Text()));
}

void GroupDefinition::LoadDescriptions(Database& database) {
  descriptions_.clear();
  if (Trim(list_sql_).empty()) return;
  std::shared_ptr<Recordset> rs;
  try {
    rs = database.Query(list_sql_);
  } catch (const std::exception& e) {
    throw DatabaseError("The headings of the group \"" + name_ + "\" cannot be read: " + e.what());
  }
  if (rs->FieldCount() < 2) return;
  for (; !rs->Eof(); rs->MoveNext()) {
    // The first row of a code wins, as the list shows it first.
    descriptions_.emplace(MapKey(rs->Value(0)), Trim(rs->Value(1).Text()));
  }
}

std::string GroupDefinition::Description(const Variant& key) const {
  auto found = descriptions_.find(MapKey(key));
  return found == descriptions_.end() ? std::string() : found->second;
}

std::string GroupDefinition::KeyText(const Variant& key) const {
  std::string description = Description(key);
  if (IsNoKey(key)) return description.empty() ? std::string(kNoValueText) : description;
  std::string code = Trim(key.Text());
  if (description.empty() || EqualsIgnoreCase(description, code)) return code;
  return code + "  " + description;
}

}  // namespace trellin::host
