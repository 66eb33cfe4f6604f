#pragma once
// The catalogue of report keys: what the application's menus and saved reports ask for, and the
// designer, captions and area behind each key.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Designer.h"

namespace trellin {

// How Report titles the designer of a key.
enum class CaptionRule {
  kLayout,       // neither Caption nor documentName is set: the stored layout's stand
  kGiven,        // the row's caption and document name
  kDocumentKey,  // the key's last two letters and " Document", for both
};

struct CatalogueEntry {
  const char* key;
  const char* designer;  // the designer's class name, also its layout's name
  CaptionRule caption_rule;
  const char* caption;        // kGiven only
  const char* document_name;  // kGiven only
  const char* area;           // the folder under reports/ that holds the designer
  // Null while the designer is not built. A designer unit plugs in by declaring its factory in
  // core/DesignerFactories.h and naming it in its rows of the table.
  DesignerFactory factory;
};

// All 164 keys in comparison order: the first row whose key equals the asked key exactly, case
// included, serves it.
[[nodiscard]] std::span<const CatalogueEntry> Catalogue();

// The first entry of `catalogue` whose key is `key` exactly; nullptr when there is none.
[[nodiscard]] const CatalogueEntry* FindCatalogueEntry(std::span<const CatalogueEntry> catalogue,
                                                       std::string_view key);

// The keys whose designer is not built yet, in catalogue order: Report gives nothing for them.
[[nodiscard]] std::vector<std::string> UnbuiltReportKeys();

// The caption and document name Report gives an entry's designer for `key`; both empty for
// kLayout rows, which keep their layout's.
struct CatalogueCaptions {
  std::string caption;
  std::string document_name;
};
[[nodiscard]] CatalogueCaptions CaptionsFor(const CatalogueEntry& entry, std::string_view key);

}  // namespace trellin
