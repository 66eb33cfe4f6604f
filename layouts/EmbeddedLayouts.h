#pragma once
// The stored layouts compiled into the program, one per designer, found by designer name.

#include <optional>
#include <span>
#include <string_view>

namespace trellin::layouts {

struct EmbeddedLayout {
  std::string_view designer;  // the file's name without ".yaml": "arCustomerTypeList"
  std::string_view path;      // below layouts/: "admin/arCustomerTypeList.yaml"
  std::string_view text;
};

[[nodiscard]] std::optional<EmbeddedLayout> FindEmbeddedLayout(std::string_view designer);
[[nodiscard]] std::span<const EmbeddedLayout> AllEmbeddedLayouts();

}  // namespace trellin::layouts
