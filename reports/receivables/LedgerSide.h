#pragma once
// The two sides of the sub-ledger, as every receivables and payables report tells them apart.
// One designer serves both sides; its report key chooses the side once, and from then on the
// side alone gives the range of transaction types, the sign that turns the stored values round,
// the party flag, the heading word and the standard party parameters.

#include <optional>
#include <string_view>

namespace trellin {

enum class LedgerSideKind { Receivables, Payables };

// A standard parameter of the side: its row of CreateStandardParameter, the name reports read it
// by, and the caption that replaces the row's (empty keeps the row's own).
struct SideParameter {
  long index;
  std::string_view name;
  std::string_view caption;
};

struct LedgerSide {
  LedgerSideKind kind;
  // The receivables side: a report's `Debtor` flag.
  bool debtor;
  // The range of Transactions.Type, ready to stand behind Between: "30 and 39".
  std::string_view range;
  // Put in front of a stored value so that what grows the party's balance shows positive: a
  // customer's debt is stored negative, a supplier's credit positive.
  std::string_view sign;
  // The OtherParty column that marks a party of the side: "IsCustomer".
  std::string_view party_flag;
  // "Customers" or "Suppliers", as headings name the parties.
  std::string_view heading_word;
  // The date expression of the side's current period: "ARCURRENT".
  std::string_view current_date;
  // The standard parameters that pick parties: the parties, categories, types, payment terms.
  SideParameter parties;
  SideParameter categories;
  SideParameter types;
  SideParameter payment_terms;
};

[[nodiscard]] const LedgerSide& SideOf(LedgerSideKind kind);
// The receivables side for a report's `Debtor` flag, else the payables side.
[[nodiscard]] const LedgerSide& SideOfDebtor(bool debtor);

// The side `key` means to `designer`, as that designer compares keys: some compare the key with
// their receivables key alone, so that every other key is payables; others compare both, and a
// key that is neither has no side (nullopt), as has any key of a designer outside the family.
[[nodiscard]] std::optional<LedgerSideKind> SideOfKey(std::string_view designer,
                                                      std::string_view key);

}  // namespace trellin
