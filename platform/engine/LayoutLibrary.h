#pragma once
// The stored layouts as the designers find them: a file of the designer's name in the template
// folder wins over the layout compiled into the program.

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/host/ActiveReport.h"

namespace trellin::engine {

// A layout compiled into the program: the path it was read from (as "admin/arX.yaml") and its text.
struct StoredLayout {
  std::string path;
  std::string text;
};

class LayoutLibrary : public LayoutProvider {
 public:
  // `compiled` finds the compiled-in layout of a designer; `template_folder` may be empty.
  using Lookup = std::function<std::optional<StoredLayout>(std::string_view designer)>;
  LayoutLibrary(Lookup compiled, std::filesystem::path template_folder);

  // Looks in the template folder for "<designer>.yaml" (also under the compiled layout's area
  // folder), then in the compiled layouts. Throws LayoutError for a bad layout.
  bool Load(std::string_view designer, ActiveReport& report) override;
  // A file given by path; a bare file name is looked for in the template folder.
  bool LoadFile(const std::string& path, ActiveReport& report) override;

  // The layout text that Load would read, and the name it goes by in messages; nullopt if none.
  [[nodiscard]] std::optional<StoredLayout> Find(std::string_view designer) const;

 private:
  Lookup compiled_;
  std::filesystem::path template_folder_;
};

}  // namespace trellin::engine
