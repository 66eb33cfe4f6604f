#pragma once
// The demo company the end-to-end tests read, built once for all test processes of a build.

#include <optional>
#include <string>
#include <string_view>

#include "platform/demo/DemoCompany.h"

namespace trellin::testing {

// The path of the scale-1 demo company of `country` (seed 1, the library's fixed present). It is
// built once and kept as <temp>/trellin-demo-cache/<country>-<build>/demo.db, keyed by the build of
// the generator and of the libraries it uses (the time they were last linked), so every test binary
// of one build shares it and a new build of any of them builds it anew. Processes that ask at the
// same time build it once: the first holds a lock while it builds, the others wait and then open
// its file. `summary`, when given, gets the summary of a build made by this call and is left alone
// when the company came from the cache. `present`, when given, is the company's "today" in place
// of the fixed one, and its company is kept apart. Throws what BuildDemoCompany throws.
[[nodiscard]] std::string CachedDemoCompany(std::string_view country,
                                            demo::DemoSummary* summary = nullptr,
                                            std::optional<Date> present = std::nullopt);

}  // namespace trellin::testing
