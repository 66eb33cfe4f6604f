// Suggestions for a report key the catalogue does not hold.

#include <algorithm>
#include <string>
#include <vector>

#include "platform/host/run/RunReport.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

// Edits (insert, delete, change a letter) from one key to the other, ignoring case.
std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::string x = LCase(a);
  std::string y = LCase(b);
  std::vector<std::size_t> row(y.size() + 1);
  for (std::size_t j = 0; j <= y.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= x.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= y.size(); ++j) {
      std::size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (x[i - 1] == y[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[y.size()];
}

}  // namespace

std::vector<std::string> NearReportKeys(std::span<const CatalogueEntry> catalogue,
                                        std::string_view key, std::size_t limit) {
  struct Candidate {
    std::size_t score;
    std::string key;
  };
  std::vector<Candidate> candidates;
  const std::string wanted = LCase(Trim(key));
  if (wanted.empty()) return {};
  // A third of the key's letters may be wrong, and never fewer than two.
  const std::size_t allowed = std::max<std::size_t>(2, wanted.size() / 3);
  for (const CatalogueEntry& entry : catalogue) {
    const std::string candidate = LCase(entry.key);
    std::size_t score;
    if (candidate == wanted) {
      score = 0;
    } else if (wanted.size() >= 3 && (candidate.find(wanted) != std::string::npos ||
                                      wanted.find(candidate) != std::string::npos)) {
      score = 1;
    } else {
      std::size_t distance = EditDistance(wanted, candidate);
      if (distance > allowed) continue;
      score = 1 + distance;
    }
    bool seen = std::any_of(candidates.begin(), candidates.end(),
                            [&](const Candidate& c) { return c.key == entry.key; });
    if (!seen) candidates.push_back({score, entry.key});
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return a.score < b.score; });
  std::vector<std::string> keys;
  for (std::size_t i = 0; i < candidates.size() && i < limit; ++i)
    keys.push_back(candidates[i].key);
  return keys;
}

}  // namespace trellin::host
