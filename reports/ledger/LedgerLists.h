#pragma once
// What the ledger and bank lists share: the period they run over unless told otherwise. A debit
// is a positive ledger value; a bank's money in is a positive value of its own line (sequence 0).

#include <string_view>

#include "core/ListDesigner.h"

namespace trellin {

// From the first day of the ledger's current month to its current date.
inline constexpr const char* kPeriodStart = "GLCURRENT-1E+1D";
inline constexpr const char* kPeriodEnd = "GLCURRENT";

// "Dated": the period's dates, tested on `field` (with none, only described).
constexpr ListParameter DatedParameter(std::string_view field = {}) {
  return {.kind = ListParameterKind::DatePair,
          .name = "Dated",
          .caption = "Dated",
          .field = field,
          .primary = true,
          .from_default = kPeriodStart,
          .to_default = kPeriodEnd};
}

// "References": references picked from `list_sql`, tested on `field`.
constexpr ListParameter ReferencesParameter(std::string_view field, std::string_view list_sql) {
  return {.kind = ListParameterKind::PickList,
          .name = "References",
          .caption = "References",
          .field = field,
          .list_sql = list_sql,
          .key_field = "Reference"};
}
inline constexpr ListParameter kBankReferences = ReferencesParameter(
    "glBankTransaction.Reference", "SELECT Reference,'' FROM glBankTransaction GROUP BY Reference");
inline constexpr ListParameter kLedgerReferences = ReferencesParameter(
    "glTransaction.Reference", "SELECT Reference,'' FROM glTransaction GROUP BY Reference");

}  // namespace trellin
