#include "platform/engine/LayoutLibrary.h"

#include <fstream>
#include <sstream>

#include "platform/engine/LayoutLoader.h"

namespace trellin::engine {

LayoutLibrary::LayoutLibrary(Lookup compiled, std::filesystem::path template_folder)
    : compiled_(std::move(compiled)), template_folder_(std::move(template_folder)) {}

std::optional<StoredLayout> LayoutLibrary::Find(std::string_view designer) const {
  std::optional<StoredLayout> compiled = compiled_ ? compiled_(designer) : std::nullopt;
  if (!template_folder_.empty()) {
    std::string file = std::string(designer) + ".yaml";
    std::vector<std::filesystem::path> candidates = {template_folder_ / file};
    if (compiled) candidates.push_back(template_folder_ / compiled->path);
    for (const auto& path : candidates) {
      std::error_code ec;
      if (!std::filesystem::is_regular_file(path, ec)) continue;
      std::ifstream in(path, std::ios::binary);
      if (!in) throw LayoutError(path.string() + ":0: the layout file cannot be read");
      std::ostringstream text;
      text << in.rdbuf();
      return StoredLayout{path.string(), text.str()};
    }
  }
  if (compiled) compiled->path = "layouts/" + compiled->path;
  return compiled;
}

bool LayoutLibrary::LoadFile(const std::string& path, ActiveReport& report) {
  std::filesystem::path file(path);
  if (!file.has_parent_path() && !template_folder_.empty()) file = template_folder_ / file;
  std::error_code ec;
  if (!std::filesystem::is_regular_file(file, ec)) return false;
  std::ifstream in(file, std::ios::binary);
  if (!in) return false;
  std::ostringstream text;
  text << in.rdbuf();
  LoadLayout(text.str(), file.string(), report);
  return true;
}

bool LayoutLibrary::Load(std::string_view designer, ActiveReport& report) {
  std::optional<StoredLayout> layout = Find(designer);
  if (!layout) return false;
  LoadLayout(layout->text, layout->path, report);
  return true;
}

}  // namespace trellin::engine
