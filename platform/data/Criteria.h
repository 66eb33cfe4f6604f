#pragma once
// The criteria of Find and Filter: comparisons of fields with literals, joined by AND, OR and
// NOT, in parentheses where needed.
//
//   AccountId='1-1000' AND (BranchId=Null OR BranchId='HO')
//   Value>=100.5   Date<#2024-07-01#   Name LIKE 'Smi*'   DeptId Is Not Null
//
// Literals: 'text' (a quote inside doubled), numbers, #date# (ISO, or day first), True, False,
// Null. "Field=Null" and "Field<>Null" test for Null; any other comparison with a Null value is
// false. Text compares without regard to case.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/Recordset.h"

namespace trellin::data {

class Criteria {
 public:
  // Parses `text` against `fields`, converting each literal to the type of the field it is
  // compared with. Throws RecordsetError naming `text` for criteria that do not parse, an
  // unknown field or a literal that does not fit its field.
  static Criteria Parse(std::string_view text, const std::vector<FieldInfo>& fields);

  // Whether the row (one value per field, in field order) satisfies the criteria. Throws
  // RecordsetError naming the criteria when a value cannot be compared with its literal.
  [[nodiscard]] bool Matches(const std::vector<Variant>& row) const;
  [[nodiscard]] const std::string& Text() const { return text_; }

  struct Node;

 private:
  Criteria(std::string text, std::shared_ptr<const Node> root)
      : text_(std::move(text)), root_(std::move(root)) {}

  std::string text_;
  std::shared_ptr<const Node> root_;
};

// Index of the field named `name` (case ignored, brackets allowed; "Table.Column" finds the
// field "Column" when no field has the whole name), -1 when there is none.
[[nodiscard]] int FindField(const std::vector<FieldInfo>& fields, std::string_view name);

}  // namespace trellin::data
