// What the ledger and bank lists share beyond their parameter rows.

#include "reports/ledger/LedgerLists.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

void AddDateAsAt(trellin::Parameters& parameters) {
  parameters.AddDate("DateAsAt", Variant(), false, "Date As At", kPeriodEnd, false, "Date As At")
      ->Help = "Left blank, the general ledger's current date (GLCURRENT).";
}

std::map<std::string, Currency, std::less<>> BankOpenings(const Variant& from) {
  std::map<std::string, Currency, std::less<>> openings;
  if (from.IsNull() || from.IsEmpty() || from.IsMissing()) return openings;
  const std::string sql =
      "SELECT AccountId,Sum(Value) AS Opening FROM glTransaction WHERE AccountId In (SELECT "
      "AssetAccountId FROM Bank) AND Date<" +
      Database::SQLDate(from.ToDate().DateOnly()) + " GROUP BY AccountId";
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
  for (; !rs->Eof(); rs->MoveNext())
    openings[UCase(rs->Value(0).Text())] = rs->Value(1).ToCurrency();
  return openings;
}

namespace {

struct AccountKind {
  std::string_view post;
  std::string_view name;
};
constexpr AccountKind kAccountKinds[] = {
    {"", "Account"}, {"H", "Heading"}, {"G", "Group"},
    {"T", "Total"},  {"C", "Clear"},   {"P", "Page"},
};

// The account classes by Type, 1 to 11.
constexpr std::string_view kAccountClasses[] = {
    "Sales",         "Cost of Sales", "Expense", "Other Income",      "Other Expense",
    "Appropriation", "Current Asset", "Asset",   "Current Liability", "Liability",
    "Capital",
};

}  // namespace

std::string AccountKindName(const std::string& post) {
  std::string code = UCase(Trim(post));
  for (const AccountKind& k : kAccountKinds) {
    if (k.post == code) return std::string(k.name);
  }
  return code;
}

std::string AccountClassName(const Variant& type) {
  if (type.IsNull() || type.IsEmpty() || type.IsMissing()) return {};
  const long code = type.ToLong();
  return code >= 1 && code <= 11 ? std::string(kAccountClasses[code - 1]) : std::string();
}

std::string LedgerFieldText(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  return field == nullptr ? std::string() : field->Value().Text();
}

}  // namespace trellin
