#pragma once
// Where a printed figure leads when a reader clicks it: another report of the catalogue, run with
// some parameter values (an account's figure opens "GeneralLedger" for that account and period).
// A target names a report key and parameter names made of letters, digits and underscores only,
// and carries values as plain text: it can name no file and no query. Whoever follows a link
// still looks the key up in the catalogue and validates the values as any run's values.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellin {

struct LinkTarget {
  std::string key;                                          // a report key; "" for no link
  std::vector<std::pair<std::string, std::string>> values;  // parameter name, value as text

  [[nodiscard]] bool Empty() const { return key.empty(); }
  bool operator==(const LinkTarget&) const = default;
};

// Letters, digits and underscores, starting with a letter, at most 64 characters.
[[nodiscard]] bool IsLinkName(std::string_view name);

// The target as a link address: "#run=KEY&Name=value&...", every value percent-encoded, so that
// it opens nothing outside the viewer. Throws std::invalid_argument for an empty target, a key
// or a parameter name that IsLinkName refuses.
[[nodiscard]] std::string LinkHref(const LinkTarget& target);

// The target of an address LinkHref wrote; nullopt for anything else (another form, a bad name,
// a broken escape).
[[nodiscard]] std::optional<LinkTarget> ParseLinkHref(std::string_view href);

}  // namespace trellin
