#pragma once
// The catalogue of report keys: what the application's menus and saved reports ask for, and the
// designer, captions and area behind each key. Which designers are built, and how each is made,
// is a second table kept beside the designers (reports/Designers.h) and handed to the service
// where it is set up, so that this folder never names a designer's code.

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
};

// One built designer: its class name, as the catalogue's `designer` column names it, and the
// factory that makes it.
struct DesignerEntry {
  const char* designer;
  DesignerFactory factory;
  // The keys of this designer whose branch is not built yet, comma-separated: they do not run.
  const char* keys_not_built = "";
};

// All 164 keys in comparison order: the first row whose key equals the asked key exactly, case
// included, serves it.
[[nodiscard]] std::span<const CatalogueEntry> Catalogue();

// The first entry of `catalogue` whose key is `key` exactly; nullptr when there is none.
[[nodiscard]] const CatalogueEntry* FindCatalogueEntry(std::span<const CatalogueEntry> catalogue,
                                                       std::string_view key);

// The factory of the designer named `designer` exactly; nullptr when `designers` holds none.
[[nodiscard]] DesignerFactory FindDesignerFactory(std::span<const DesignerEntry> designers,
                                                  std::string_view designer);

// The factory for the key of `entry`: that of its designer, unless the designer leaves the key
// out as not built yet; nullptr then and when `designers` holds no such designer.
[[nodiscard]] DesignerFactory FindKeyFactory(std::span<const DesignerEntry> designers,
                                             const CatalogueEntry& entry);

// The keys of `catalogue` whose designer `designers` does not hold, in catalogue order: Report
// gives nothing for them.
[[nodiscard]] std::vector<std::string> UnbuiltReportKeys(std::span<const CatalogueEntry> catalogue,
                                                         std::span<const DesignerEntry> designers);

// The caption and document name Report gives an entry's designer for `key`; both empty for
// kLayout rows, which keep their layout's.
struct CatalogueCaptions {
  std::string caption;
  std::string document_name;
};
[[nodiscard]] CatalogueCaptions CaptionsFor(const CatalogueEntry& entry, std::string_view key);

}  // namespace trellin
