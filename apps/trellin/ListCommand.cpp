// trellin list: the report keys with caption and area, and which of them run today.
#include <cstdio>
#include <set>

#include <yaml-cpp/yaml.h>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "core/Catalogue.h"
#include "layouts/EmbeddedLayouts.h"
#include "reports/Designers.h"

namespace trellin::cli {

namespace {

// The caption a designer's stored layout gives its report ("Customer Type List"), for keys whose
// catalogue row leaves the caption to the layout; "" when the layout has none.
std::string LayoutCaption(std::string_view designer) {
  std::optional<layouts::EmbeddedLayout> layout = layouts::FindEmbeddedLayout(designer);
  if (!layout) return {};
  try {
    YAML::Node caption = YAML::Load(std::string(layout->text))["Report"]["Caption"];
    return caption && caption.IsScalar() ? caption.as<std::string>() : std::string();
  } catch (const YAML::Exception&) {
    return {};
  }
}

// The caption a designer gives itself when it is made, for one that prints on a shared layout
// and names its report in code; "" when it gives none.
std::string DesignerCaption(const CatalogueEntry& entry) {
  DesignerPtr designer = FindKeyFactory(Designers(), entry)();
  return designer ? designer->Caption() : std::string();
}

const std::vector<OptionSpec> kListOptions = {
    {"all", 'a', false, false, "", "also list the keys whose report is not built yet"},
    {"help", 'h', false, false, "", "show this help"},
};

}  // namespace

std::string ReportCaption(const CatalogueEntry& entry) {
  CatalogueCaptions captions = CaptionsFor(entry, entry.key);
  std::string caption = captions.caption;
  if (caption.empty()) caption = LayoutCaption(entry.designer);
  if (caption.empty() && FindKeyFactory(Designers(), entry)) caption = DesignerCaption(entry);
  if (caption.empty()) caption = std::string("(") + entry.designer + ")";
  return caption;
}

int ListCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kListOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin list [--all]\n\nLists the report keys that run, with caption and "
        "area.\n\n%s",
        OptionsHelp(kListOptions).c_str());
    return kExitOk;
  }
  if (!parsed.Positional().empty()) throw UsageError("list takes no arguments");
  bool all = parsed.Has("all");
  std::size_t shown = 0, runnable = 0;
  for (const CatalogueEntry& entry : Catalogue()) {
    bool runs = FindKeyFactory(Designers(), entry) != nullptr;
    runnable += runs ? 1 : 0;
    if (!runs && !all) continue;
    std::string caption = ReportCaption(entry);
    std::printf("%-32s %-12s %s%s\n", entry.key, entry.area, caption.c_str(),
                runs ? "" : "  [not built yet]");
    ++shown;
  }
  std::fprintf(stderr, "%zu of %zu report keys run%s\n", runnable, Catalogue().size(),
               all ? "" : " (--all lists every key)");
  return kExitOk;
}

}  // namespace trellin::cli
