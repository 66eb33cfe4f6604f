// The asset lists' shared pick-lists, status filter and figures at a date.

#include "reports/assets/AssetLists.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/AssetDepreciation.h"
#include "core/host/Database.h"
#include "platform/runtime/Strings.h"

namespace trellin {

void AddAssetStatusBoxes(trellin::Parameters& p, std::initializer_list<std::string_view> unticked) {
  for (std::string_view status : kAssetStatusNames) {
    bool ticked = true;
    for (std::string_view off : unticked) ticked = ticked && off != status;
    const std::string text(status);
    p.AddBoolean("Status" + text, ticked, false, "", ticked, false, text);
  }
}

std::string AssetStatusCondition(const trellin::Parameters& p, std::string& description) {
  bool all = true;
  const std::string statuses = SelectedBooleanNames(p, "Status", all);
  if (all) return {};
  // None ticked keeps nothing: an empty In list is no SQL.
  if (statuses.empty()) {
    AppendDescription(description, "Include no Assets");
    return "(1=0)";
  }
  AppendDescription(description, "Include " + statuses + " Assets");
  std::string numbers;
  for (const std::string& item : Split(statuses, ",")) {
    if (!numbers.empty()) numbers += ",";
    numbers += std::to_string(Asset::StatusFromText(Replace(item, "'", "")));
  }
  return "Asset.Status IN (" + numbers + ")";
}

void AddAssetDateAsAt(trellin::Parameters& p) {
  const Date current =
      TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateGL(true);
  p.AddDate("DateAsAt", current, true, "Date As At", "GLCURRENT", false, "Date As At");
}

Date AssetDateAsAt(const trellin::Parameters& p) {
  const Variant as_at = p.Value("DateAsAt", Variant());
  if (as_at.IsNull() || as_at.IsEmpty() || (!as_at.IsDate() && Trim(as_at.Text()).empty())) {
    throw std::invalid_argument("Date As At: the report needs a date.");
  }
  return as_at.ToDate().DateOnly();
}

std::string AssetStatusText(const Variant& status) {
  return status.IsNull() || status.IsEmpty() ? std::string()
                                             : Asset::StatusText(static_cast<int>(status.ToLong()));
}

void FillAssetKind(Fields& fields) {
  const ReportField* type = fields.Find("Type");
  const bool blank = type == nullptr || type->Value().IsNull();
  fields.Add("KindText")
      .SetValue(Variant(blank ? std::string()
                              : Asset::TypeText(static_cast<int>(type->Value().ToLong()))));
}

std::map<std::string, AssetFigures, std::less<>> AssetFiguresAt(const Date& as_at,
                                                                bool combine_components) {
  // Types 10 and 11 are what the asset cost: its purchase and additions.
  const std::string key = combine_components
                              ? "IIf(Asset.ParentAssetId Is Null,Asset.AssetId,Asset.ParentAssetId)"
                              : "AssetTransaction.AssetId";
  const std::string sql =
      "SELECT " + key +
      " AS Code,Sum(IIf(AssetTransaction.Type In (10,11),AssetTransaction.Value,0)) AS Cost,"
      "Sum(AssetTransaction.Value) AS Book,Sum(AssetTransaction.TaxValue) AS Tax FROM "
      "AssetTransaction INNER JOIN Asset ON AssetTransaction.AssetId=Asset.AssetId WHERE "
      "AssetTransaction.Date<" +
      Database::SQLDate(as_at.AddDays(1)) + " GROUP BY " + key;
  std::map<std::string, AssetFigures, std::less<>> figures;
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
  auto money = [](const Variant& v) { return v.IsNull() ? Currency() : v.ToCurrency(); };
  for (; !rs->Eof(); rs->MoveNext()) {
    AssetFigures& row = figures[UCase(rs->Value(0).Text())];
    row.cost = money(rs->Value(1));
    row.book = money(rs->Value(2));
    row.tax = money(rs->Value(3));
  }
  return figures;
}

}  // namespace trellin
