// What the ledger and bank lists share beyond their parameter rows.

#include "reports/ledger/LedgerLists.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

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

std::string LedgerFieldText(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  return field == nullptr ? std::string() : field->Value().Text();
}

}  // namespace trellin
