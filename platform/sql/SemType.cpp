#include "platform/sql/SemType.h"

#include <array>
#include <utility>

#include "platform/sql/Names.h"

namespace trellin::sql {
namespace {

constexpr std::array<std::pair<std::string_view, SemType>, 6> kDeclared{{
    {"TEXT", SemType::Text},
    {"INTEGER", SemType::Long},
    {"DOUBLE", SemType::Double},
    {"MONEY", SemType::Currency},
    {"DATE", SemType::Date},
    {"BOOLEAN", SemType::Boolean},
}};

constexpr std::array<std::string_view, 7> kNames{"Null",     "Text", "Long",   "Double",
                                                 "Currency", "Date", "Boolean"};

}  // namespace

std::optional<SemType> SemTypeFromDeclared(std::string_view declared) {
  // The declaration may carry a collation or constraints after the type word.
  std::size_t start = declared.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return std::nullopt;
  declared.remove_prefix(start);
  std::string_view word = declared.substr(0, declared.find_first_of(" \t\r\n("));
  for (const auto& [name, type] : kDeclared) {
    if (SameName(name, word)) return type;
  }
  return std::nullopt;
}

std::string_view SemTypeName(SemType type) { return kNames[static_cast<std::size_t>(type)]; }

bool IsNumeric(SemType type) {
  return type == SemType::Long || type == SemType::Double || type == SemType::Currency ||
         type == SemType::Boolean;
}

}  // namespace trellin::sql
