#pragma once
// What the ledger and bank lists share: the period they run over unless told otherwise. A debit
// is a positive ledger value; a bank's money in is a positive value of its own line (sequence 0).

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "core/ListDesigner.h"
#include "core/host/Fields.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"
#include "reports/ReportShapes.h"

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

// "PostingOnly": the chart's posting accounts only, its shaping rows left out.
inline constexpr ListParameter kPostingOnly = {.kind = ListParameterKind::Option,
                                               .name = "PostingOnly",
                                               .caption = "Posting Only",
                                               .condition = "Account.Post Is Null",
                                               .phrase = "Posting accounts only"};

// Adds "DateAsAt", a date defaulting to the ledger's current date.
void AddDateAsAt(trellin::Parameters& parameters);

// "Banks": the standard bank row, tested on `field`.
constexpr ListParameter BanksParameter(std::string_view field) {
  return {.kind = ListParameterKind::Standard, .field = field, .index = 5, .primary = true};
}
inline constexpr ListParameter kBankEntryBanks = BanksParameter("glBankTransaction.BankId");

// The balance of every bank's asset account before `from` (every line dated earlier), by account
// upper-cased, from one grouped query; empty when `from` is blank. Needs the globals;
// throws what the date conversion throws.
[[nodiscard]] std::map<std::string, Currency, std::less<>> BankOpenings(const Variant& from);

// What a chart row is by its Post code ("Account" for a blank one, "Heading", "Group", "Total",
// "Clear", "Page"); a code not known names itself.
[[nodiscard]] std::string AccountKindName(const std::string& post);
// The class of an account by its Type, 1 "Sales" to 11 "Capital"; "" for any other value.
[[nodiscard]] std::string AccountClassName(const Variant& type);

// The text of the row's field `name`; "" when the row has no such field.
[[nodiscard]] std::string LedgerFieldText(const Fields& fields, std::string_view name);

}  // namespace trellin
