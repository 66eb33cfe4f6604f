#pragma once
// The page app's files (serve/app/), compiled into the binary.

#include <optional>
#include <string_view>

namespace trellin::serve {

struct AppFile {
  std::string_view name;  // "index.html", "app.js"
  std::string_view text;
};

// The file of that name; nullopt for any other.
[[nodiscard]] std::optional<AppFile> FindAppFile(std::string_view name);

}  // namespace trellin::serve
