// The deferred tax schedule: parameters, columns, the query and the figures of a line.

#include "reports/assets/arfaDeferredTaxSchedule.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

// The columns in order: field, heading, short heading, kind, width (-1 automatic), least width.
struct TaxColumn {
  const char* field;
  const char* caption;
  const char* short_caption;
  int data_type;
  float width;
  float minimum;
};

constexpr TaxColumn kTaxColumns[] = {
    {"AssetId", "Code", "", kColumnCode, -1, 900},
    {"Description", "Description", "", kColumnText, -1, -1},
    {"CostPrice", "Cost Price", "", kColumnMoney, 1400, -1},
    {"Depreciation", "Depn", "", kColumnMoney, 1050, -1},
    {"BookValue", "Book Value", "", kColumnMoney, 1400, -1},
    {"CostPriceTax", "Cost Price Tax", "", kColumnMoney, 1800, -1},
    {"DepreciationTax", "Depn Tax", "", kColumnMoney, 1200, -1},
    {"BookValueTax", "Book Value Tax", "", kColumnMoney, 1800, -1},
    {"Deferred", "Benefit Deferred", "Deferred", kColumnMoney, -1, 1100},
};

constexpr const char* kTaxMoneyFields[] = {"CostPrice",    "Depreciation",    "BookValue",
                                           "CostPriceTax", "DepreciationTax", "BookValueTax",
                                           "Deferred"};

// A lifetime sum; a Null one (no movements, or none on that book) counts as nothing.
Currency LifetimeSum(const Variant& v) {
  return v.IsNull() || v.IsEmpty() ? Currency() : v.ToCurrency();
}

}  // namespace

DesignerPtr CreatearfaDeferredTaxSchedule() { return std::make_shared<arfaDeferredTaxSchedule>(); }

void arfaDeferredTaxSchedule::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddDate("AsAtDate", Variant(), true, "As At Date", "GLCURRENT", false, "As At Date")->Help =
      "Left blank, the general ledger's current date.";
  AddDateRangeParameters(p);
  p.AddBoolean("IncludeComponents", false, false, "", false, false, "Include Components");
  AddStatusParameters(p);
  AddGroupingsAndLists(p);
}

void arfaDeferredTaxSchedule::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const TaxColumn& c : kTaxColumns) {
    const bool code = c.data_type == kColumnCode;
    columns.Add(c.field, c.field, c.data_type, c.caption, c.short_caption, c.width, c.minimum, -1,
                code ? 0 : -1, "(auto)", 0, 0, "", true, "", true, false);
  }
}

void arfaDeferredTaxSchedule::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  std::string fields =
      "AssetId,Description,(SELECT Sum([Value]) FROM AssetTransaction WHERE Asset.AssetId = "
      "AssetTransaction.AssetId) as SumOfValue"
      ",(SELECT Sum(TaxValue) FROM AssetTransaction WHERE Asset.AssetId = "
      "AssetTransaction.AssetId) as SumOfTaxValue";
  description_.clear();
  summary_ = p.Value("Summary", false).ToBool();
  include_components_ = p.Value("IncludeComponents", false).ToBool();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(description_, "Assets ordered by " + order_by);
  const Variant as_at = DateOrNull(p.Value("AsAtDate", Variant()));
  as_at_ = as_at.IsNull() ? TrellinReportGlobals::RequireApplication()
                                .FinancialCalendar()
                                .CurrentDateGL(true)
                                .DateOnly()
                          : as_at.ToDate();
  AppendDescription(description_, "Date as at " + DateText(Variant(as_at_)));

  sql_ = AssetQuery(fields, order_by, description_);
}

void arfaDeferredTaxSchedule::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  asset_ = objects_->CreateAsset();
  tax_values_ = objects_->CreateAssetTaxValues(
      TrellinReportGlobals::RequireApplication().FinancialCalendar().Years());
  BuildSQL();
  StartRun(sql_, description_, summary_);
}

void arfaDeferredTaxSchedule::ActiveReport_DataInitialize() {
  for (const char* name : kTaxMoneyFields) Fields().Add(name);
}

void arfaDeferredTaxSchedule::ActiveReport_FetchData(bool& eof) {
  if (eof) return;
  // An asset whose two books sum alike over its life has no timing difference and takes no line,
  // whatever its books say at the date. The rows skipped are read straight into the fields.
  const std::shared_ptr<Recordset>& rs = DataControl().Recordset();
  while (!rs->Eof() &&
         LifetimeSum(rs->Value("SumOfValue")) == LifetimeSum(rs->Value("SumOfTaxValue"))) {
    rs->MoveNext();
    if (rs->Eof()) break;
    for (int i = 0; i < rs->FieldCount(); ++i) {
      Fields()[rs->Field(i).name].SetValue(rs->Value(i));
    }
  }
  if (rs->Eof()) {
    eof = true;
    return;
  }
  std::string result;
  if (!tax_values_->Calculate(Trim(Fields()["AssetId"].Value().Text()), as_at_, include_components_,
                              true, result)) {
    throw std::runtime_error(result);
  }
  const AssetTaxFigures& f = tax_values_->Figures();
  Fields()["CostPrice"].SetValue(f.CostPrice);
  Fields()["CostPriceTax"].SetValue(f.CostPriceTax);
  Fields()["Depreciation"].SetValue(f.PeriodDepn + f.AccumDepn);
  Fields()["DepreciationTax"].SetValue(f.PeriodDepnTax + f.AccumDepnTax);
  Fields()["BookValue"].SetValue(f.BookValue);
  Fields()["BookValueTax"].SetValue(f.BookValueTax);
  Fields()["Deferred"].SetValue(f.BookValueTax - f.BookValue);
}

void arfaDeferredTaxSchedule::ActiveReport_ReportEnd() {
  tax_values_.reset();
  arfaScheduleBase::ActiveReport_ReportEnd();
}

}  // namespace trellin
