// trellin layout: the stored layout of a report's designer, where a user starts an edit of their
// own copy (saved in the template folder under the same name, it takes the place of the stored
// one).
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "core/Catalogue.h"
#include "layouts/EmbeddedLayouts.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kLayoutOptions = {
    {"output", 'o', true, false, "FILE", "write the layout to FILE (default: standard output)"},
    {"help", 'h', false, false, "", "show this help"},
};

}  // namespace

int LayoutCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kLayoutOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin layout KEY [-o FILE]\n\n"
        "Writes the stored layout of the report KEY's designer (YAML, layouts/README.md).\n"
        "Saved as <designer>.yaml in the company's template folder, an edited copy takes the\n"
        "place of the stored one, and may carry a script.\n\n%s",
        OptionsHelp(kLayoutOptions).c_str());
    return kExitOk;
  }
  if (parsed.Positional().size() != 1) throw UsageError("layout takes one report key");
  const std::string& key = parsed.Positional()[0];
  const CatalogueEntry* entry = FindCatalogueEntry(trellin::Catalogue(), key);
  if (entry == nullptr) throw Error(ErrorKind::Input, "There is no report named \"" + key + "\".");
  std::optional<layouts::EmbeddedLayout> layout = layouts::FindEmbeddedLayout(entry->designer);
  if (!layout) {
    throw Error(ErrorKind::Input, "The report \"" + key + "\" (" + std::string(entry->designer) +
                                      ") has no stored layout.");
  }
  std::optional<std::string> output = parsed.Value("output");
  if (!output) {
    std::fwrite(layout->text.data(), 1, layout->text.size(), stdout);
    return kExitOk;
  }
  std::error_code ec;
  if (std::filesystem::is_directory(*output, ec)) {
    throw Error(ErrorKind::Input, "The output \"" + *output + "\" is a folder; give a file name.");
  }
  std::ofstream out(*output, std::ios::binary | std::ios::trunc);
  out.write(layout->text.data(), static_cast<std::streamsize>(layout->text.size()));
  out.close();
  if (!out) throw Error(ErrorKind::Input, "cannot write the layout to \"" + *output + "\"");
  std::printf("%s: %s written to %s\n", key.c_str(), std::string(layout->path).c_str(),
              output->c_str());
  return kExitOk;
}

}  // namespace trellin::cli
