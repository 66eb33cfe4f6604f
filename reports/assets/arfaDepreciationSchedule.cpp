// The depreciation schedule: parameters, columns, the query and the figures of a line.

#include "reports/assets/arfaDepreciationSchedule.h"

#include <array>
#include <map>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

// The columns in order: field, heading, short heading, kind, width (-1 automatic), totalled.
struct ScheduleColumn {
  const char* field;
  const char* caption;
  const char* short_caption;
  int data_type;
  float width;
  bool totalled;
};

constexpr ScheduleColumn kScheduleColumns[] = {
    {"AssetId", "Code", "", kColumnCode, -1, true},
    {"Description", "Description", "", kColumnText, 2000, true},
    {"Purchased", "Purchased", "", kColumnDate, 950, false},
    {"CostPrice", "Cost Price", "Cost", kColumnMoney, 1200, true},
    {"Opening", "Opening", "", kColumnMoney, 1200, true},
    {"Purchases", "Purchases", "", kColumnMoney, 1100, true},
    {"Additions", "Additions", "", kColumnMoney, 1100, true},
    {"Disposals", "Disposals", "", kColumnMoney, 1100, true},
    {"GainLoss", "Gain/Loss", "", kColumnMoney, 1000, true},
    {"DepreciationBasis", "Dep", "", kColumnText, 350, false},
    {"DepreciationRate", "Base", "", kColumnNumber, 500, false},
    {"Depreciation", "Depn", "", kColumnMoney, 1000, true},
    {"DepreciationYTD", "Depn YTD", "", kColumnMoney, 1000, true},
    {"Revaluation", "Revaluation", "Rev", kColumnMoney, 1000, true},
    {"RevaluationCost", "Rev Cost", "", kColumnMoney, 1000, true},
    {"Other", "Other", "", kColumnMoney, 1200, true},
    {"Closing", "Closing BV", "", kColumnMoney, 1200, true},
};

// The columns each ScheduleFormat flag shows; flag 3 shows none and only counts towards Other.
constexpr std::array<std::array<const char*, 2>, 13> kFlagColumns = {{
    {"Description", nullptr},
    {"Purchased", nullptr},
    {"CostPrice", nullptr},
    {nullptr, nullptr},
    {"Purchases", nullptr},
    {"Additions", nullptr},
    {"Disposals", nullptr},
    {"DepreciationBasis", "DepreciationRate"},
    {"Revaluation", nullptr},
    {"RevaluationCost", nullptr},
    {"Depreciation", nullptr},
    {"DepreciationYTD", nullptr},
    {"GainLoss", nullptr},
}};

// The column a movement type feeds; types 20, 21 and 24 also feed DepreciationYTD in the year.
struct TypeColumn {
  int type;
  const char* column;
};
constexpr TypeColumn kTypeColumns[] = {
    {10, "Purchases"},       {11, "Additions"},    {12, "Revaluation"},  {44, "Revaluation"},
    {14, "RevaluationCost"}, {20, "Depreciation"}, {21, "Depreciation"}, {24, "Depreciation"},
    {23, "Depreciation"},    {30, "GainLoss"},     {31, "GainLoss"},     {40, "Disposals"},
    {41, "Disposals"},       {42, "Disposals"},    {43, "Disposals"},
};

// Hidden columns gathered into Other, in this order.
constexpr const char* kGathered[] = {"Additions",   "Purchases",       "Disposals", "Depreciation",
                                     "Revaluation", "RevaluationCost", "GainLoss"};

// Divided by a thousand under "Thousands", in this order.
constexpr const char* kThousands[] = {
    "CostPrice", "Purchases",    "Additions",       "Disposals", "Revaluation", "RevaluationCost",
    "Closing",   "Depreciation", "DepreciationYTD", "Opening",   "GainLoss",    "Other"};

constexpr const char* kMoneyFields[] = {"CostPrice",    "Purchases",       "Additions", "Disposals",
                                        "Revaluation",  "RevaluationCost", "Opening",   "Closing",
                                        "Depreciation", "DepreciationYTD", "GainLoss",  "Other"};

constexpr float kCodeWidth = 900;  // twips: "PLA101" and its gap in the body font
constexpr const char* kWholeFormat = "#,###,###,##0;(#,###,###,##0)";

bool IsYearToDate(int type) { return type == 20 || type == 21 || type == 24; }

Currency MoneyOf(const std::shared_ptr<Recordset>& rs) {
  if (rs->Eof() || rs->Value(0).IsNull()) return {};
  return rs->Value(0).ToCurrency();
}

}  // namespace

DesignerPtr CreatearfaDepreciationSchedule() {
  return std::make_shared<arfaDepreciationSchedule>();
}

void arfaDepreciationSchedule::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddList("Period", "MTD", true, "", "MTD", "ALL,MTD,QTD,YTD,Custom", false, "Period");
  p.AddList("Rounding", "Normal", false, "", "Normal", "Normal,Whole,Thousands", false, "Rounding");
  p.AddDate("DateFrom", Variant(), true, "Date From", Variant(), false, "Date From");
  p.AddDate("DateTo", Variant(), true, "Date To", "GLCURRENT", false, "Date To")->Help =
      "Left blank, the general ledger's current date.";
  AddDateRangeParameters(p);
  p.AddBoolean("UseTaxBasis", false, false, "", false, false, "Use Tax Basis");
  p.AddBoolean("IncludeComponents", false, false, "", false, false, "Include Components");
  AddStatusParameters(p);
  for (int flag = 0; flag <= 12; ++flag) {
    const std::string name = std::to_string(flag) + "ScheduleFormat";
    p.AddBoolean(name, false, false, "", false, false, name)->Help =
        "Shows a column of the schedule; set by the application's schedule format.";
  }
  AddGroupingsAndLists(p);
}

void arfaDepreciationSchedule::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const ScheduleColumn& c : kScheduleColumns) {
    // A code column of its own width: codes are not cut.
    const bool code = c.data_type == kColumnCode;
    DataColumn& added = columns.Add(c.field, c.field, c.data_type, c.caption, c.short_caption,
                                    c.width, code ? kCodeWidth : -1, -1, code ? 0 : -1, "(auto)", 0,
                                    0, "", true, "", c.totalled, false);
    if (std::string_view(c.field) == "DepreciationBasis" ||
        std::string_view(c.field) == "DepreciationRate") {
      added.GroupCaption = "Basis";
    }
    if (std::string_view(c.field) == "DepreciationRate") added.Format = "#0.00";
  }
}

void arfaDepreciationSchedule::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  const Application& application = TrellinReportGlobals::RequireApplication();
  std::string fields = "AssetId,PurchaseDate";
  description_.clear();
  summary_ = p.Value("Summary", false).ToBool();
  use_tax_basis_ = p.Value("UseTaxBasis", false).ToBool();
  include_components_ = p.Value("IncludeComponents", false).ToBool();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(description_, "Assets ordered by " + order_by);

  const std::string rounding = p.Value("Rounding", "Normal").Text();
  rounding_ = rounding == "Whole" ? 0 : rounding == "Thousands" ? -3 : 2;
  if (rounding_ == -3) AppendDescription(description_, "Figures shown in thousands.");
  if (rounding_ != 2) {
    for (const ScheduleColumn& c : kScheduleColumns) {
      if (c.data_type == kColumnMoney || c.data_type == kColumnNumber) {
        columns.Item(c.field).Format = kWholeFormat;
      }
    }
  }

  const bool all_time = EqualsIgnoreCase(p.Value("Period", "MTD").Text(), "ALL");
  date_from_ = all_time ? Variant::Null() : DateOrNull(p.Value("DateFrom", Variant()));
  date_to_ = all_time ? Variant::Null() : DateOrNull(p.Value("DateTo", Variant()));
  AppendDateRangeDescription(description_, "Dated", date_from_, date_to_);
  if (use_tax_basis_) AppendDescription(description_, "Tax Basis Figures");

  // The year that holds DateFrom (DateTo when there is none, the ledger's current date when
  // neither is given); 1 January where the calendar knows no year.
  const FinancialCalendar& calendar = application.FinancialCalendar();
  const Date within = !date_from_.IsNull() ? date_from_.ToDate()
                      : !date_to_.IsNull() ? date_to_.ToDate()
                                           : calendar.CurrentDateGL(true);
  const std::int64_t year = calendar.YearIdFromDate(within);
  year_start_ = year != 0 ? calendar.Year(year).DateStart : Date::FromYmd(within.Year(), 1, 1);

  std::string where;
  AddFamilyFilters(where, description_);
  TrellinReports& reports = TrellinReportGlobals::RequireTrellinReports();
  if (!date_from_.IsNull()) {
    AppendSQLCondition(where, "(DisposalDate>=" + Database::SQLDate(date_from_.ToDate()) +
                                  " OR DisposalDate Is Null)");
  }
  reports.AppendSQLWhereFromDateRange(where, "PurchaseDate", Variant::Null(), date_to_);
  AddStatusFilter(where, description_);
  std::string order = order_by == "Name" ? "Description" : "AssetId";
  DefineGroupings(fields, order);

  DataColumn& other = columns.Item("Other");
  other.Hidden = true;
  for (std::size_t flag = 0; flag < kFlagColumns.size(); ++flag) {
    const bool shown = p.Value(std::to_string(flag) + "ScheduleFormat", false).ToBool();
    for (const char* column : kFlagColumns[flag]) {
      if (column != nullptr) columns.Item(column).Hidden = !shown;
    }
    if (!shown) other.Hidden = false;
  }
  if (date_from_.IsNull()) columns.Item("Opening").Hidden = true;

  sql_ = "SELECT " + fields + " FROM Asset ";
  if (!where.empty()) sql_ += " WHERE " + where;
  sql_ += " ORDER BY " + order;
}

void arfaDepreciationSchedule::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  asset_ = objects_->CreateAsset();
  BuildSQL();
  StartRun(sql_, description_, summary_);
}

void arfaDepreciationSchedule::ActiveReport_DataInitialize() {
  for (const char* name : kMoneyFields) Fields().Add(name);
  for (const char* name : {"Description", "Purchased", "DepreciationBasis", "DepreciationRate"}) {
    Fields().Add(name);
  }
}

void arfaDepreciationSchedule::ActiveReport_FetchData(bool& eof) {
  if (eof) return;
  const ReportField* id_field = Fields().Find("AssetId");
  const std::string asset_id = id_field == nullptr ? "" : Trim(id_field->Value().Text());
  std::map<std::string, Currency, std::less<>> money;
  for (const char* name : kMoneyFields) money[name] = Currency();
  (void)asset_->Load(asset_id);
  asset_->SetPeriod(date_from_, date_to_);
  const std::string condition = include_components_ ? "AssetId In(" + asset_->AssetList() + ")"
                                                    : "AssetId=" + Database::SQLString(asset_id);
  Fields()["Description"].SetValue(asset_->Description());
  Fields()["Purchased"].SetValue(asset_->Purchased());
  const std::string amount = use_tax_basis_ ? "TaxValue" : "Value";
  Fields()["DepreciationBasis"].SetValue(Asset::BasisText(
      use_tax_basis_ ? asset_->DepreciationBasisTax() : asset_->DepreciationBasis()));
  Fields()["DepreciationRate"].SetValue(use_tax_basis_ ? asset_->DepreciationRateTax()
                                                       : asset_->DepreciationRate());
  Database& db = *TrellinReportGlobals::RequireDatabase();
  money["CostPrice"] = MoneyOf(db.Query("SELECT Sum(" + amount + ") FROM AssetTransaction WHERE " +
                                        condition + " AND [Type] In (10,11)"));
  std::string closing = "SELECT Sum(" + amount + ") FROM AssetTransaction WHERE " + condition;
  if (!date_to_.IsNull()) {
    closing += " AND [Date]<" + Database::SQLDate(date_to_.ToDate().AddDays(1));
  }
  money["Closing"] = MoneyOf(db.Query(closing));
  money["Opening"] = money["Closing"];
  for (const AssetMovement& m : asset_->Transactions(include_components_)) {
    const Currency value = use_tax_basis_ ? m.TaxValue : m.Value;
    for (const TypeColumn& row : kTypeColumns) {
      if (row.type == m.Type) money[row.column] += value;
    }
    if (IsYearToDate(m.Type) && m.Date >= year_start_) money["DepreciationYTD"] += value;
    money["Opening"] -= value;
  }
  DataColumns& columns = TLReport()->DataColumns();
  if (!columns.Item("DepreciationYTD").Hidden) money["Depreciation"] -= money["DepreciationYTD"];
  if (!columns.Item("Other").Hidden) {
    for (const char* name : kGathered) {
      if (columns.Item(name).Hidden) money["Other"] += money[name];
    }
  }
  for (const char* name : kMoneyFields) {
    Fields()[name].SetValue(money[name]);
  }
  if (rounding_ == -3) {
    // Divided, not rounded: the number format rounds as it prints.
    for (const char* name : kThousands) Fields()[name].SetValue(money[name].ToDouble() / 1000.0);
  }
}

}  // namespace trellin
