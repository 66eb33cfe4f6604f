#pragma once
// One group level of a grouped report as the report code defines it: what it is called, the
// field it breaks on, where its heading text comes from, and whether it starts a new page.

#include <map>
#include <string>
#include <string_view>

#include "core/host/Database.h"
#include "platform/runtime/Variant.h"

namespace trellin::host {

// What a group heading or total line prints for a Null key.
inline constexpr std::string_view kNoValueText = "(none)";

class GroupDefinition {
 public:
  GroupDefinition(int level, std::string name, std::string key_field, std::string list_sql,
                  bool page_break);

  [[nodiscard]] int Level() const { return level_; }
  [[nodiscard]] const std::string& Name() const { return name_; }
  // The key as the report code gave it, which may be qualified ("Item.SupplierId").
  [[nodiscard]] const std::string& KeyField() const { return key_field_; }
  // The column of the report's rows that holds the key: the name after any table qualifier.
  [[nodiscard]] std::string BoundField() const;
  [[nodiscard]] const std::string& ListSQL() const { return list_sql_; }
  [[nodiscard]] bool PageBreak() const { return page_break_; }

  // Reads the code -> description pairs of ListSQL (code first column, description second).
  // An empty ListSQL reads nothing. Throws DatabaseError, naming the group, when the query fails.
  void LoadDescriptions(Database& database);
  [[nodiscard]] std::size_t DescriptionCount() const { return descriptions_.size(); }

  // The description of a key, "" when the list has none for it. Codes match without regard to
  // case, as the company database compares text.
  [[nodiscard]] std::string Description(const Variant& key) const;
  // The key and its description, as a heading shows them: "ACME  Acme Trading Ltd"; the key
  // alone when there is no description; kNoValueText (or the list's description of a Null
  // code) for a Null key.
  [[nodiscard]] std::string KeyText(const Variant& key) const;

 private:
  [[nodiscard]] static std::string MapKey(const Variant& key);

  int level_;
  std::string name_;
  std::string key_field_;
  std::string list_sql_;
  bool page_break_;
  std::map<std::string, std::string> descriptions_;
};

}  // namespace trellin::host
