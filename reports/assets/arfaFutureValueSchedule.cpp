// The future value schedule: parameters, the period table, the years, the columns and the
// projection of a line.

#include "reports/assets/arfaFutureValueSchedule.h"

#include <algorithm>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr float kPeriodWidth = 1200;  // twips, each period column and the total
constexpr float kFutureCodeWidth = 900;
constexpr float kFutureDescriptionWidth = 1500;  // twelve periods still leave whole words room

// What a period column shows.
enum class ReportOn { BookValues, Depreciation, AccumulatedDepreciation, Nothing };

ReportOn ReportOnOf(const std::string& text) {
  if (text == "Book Values") return ReportOn::BookValues;
  if (text == "Depreciation") return ReportOn::Depreciation;
  if (text == "Accumulated Depreciation") return ReportOn::AccumulatedDepreciation;
  return ReportOn::Nothing;
}

// The first day of month `month` of `year` less one day; months past 12 roll into later years.
Date DayBeforeMonth(int year, int month) {
  return Date::FromYmd(year, 1, 1).AddMonths(month - 1).AddDays(-1);
}

std::string ColumnName(int i) { return "COL" + std::to_string(i); }

}  // namespace

DesignerPtr CreatearfaFutureValueSchedule() { return std::make_shared<arfaFutureValueSchedule>(); }

std::vector<Date> arfaFutureValueSchedule::PeriodTable(Date date_start, const std::string& period,
                                                       int columns) {
  std::vector<Date> table = {date_start.DateOnly().FirstOfMonth().AddDays(-1)};
  for (int i = 1; i <= columns; ++i) {
    const Date& before = table.back();
    const int y = before.Year();
    const int m = before.Month();
    if (period == "Quarters") {
      table.push_back(DayBeforeMonth(y, m + 4));
    } else if (period == "Years") {
      table.push_back(DayBeforeMonth(y + 1, m + 1));
    } else {
      table.push_back(DayBeforeMonth(y, m + 2));
    }
  }
  return table;
}

int arfaFutureValueSchedule::ExtendYears(std::vector<FinancialYear>& years, Date last) {
  if (years.empty()) return 0;
  int added = 0;
  for (;;) {
    const FinancialYear& latest = *std::max_element(
        years.begin(), years.end(),
        [](const FinancialYear& a, const FinancialYear& b) { return a.DateEnd < b.DateEnd; });
    if (!(latest.DateEnd < last)) return added;
    const Date end = DayBeforeMonth(latest.DateEnd.Year(), latest.DateEnd.Month() + 13);
    FinancialYear year;
    year.Name = Format(Variant(static_cast<std::int32_t>(end.Year())), "0000");
    year.DateStart = latest.DateEnd.AddDays(1);
    year.DateEnd = end;
    years.push_back(std::move(year));
    ++added;
  }
}

void arfaFutureValueSchedule::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddList("Period", "Months", true, "", "Months", "Months,Quarters,Years", false, "Period");
  p.AddList("ReportOn", "Depreciation", true, "", "Depreciation",
            "Book Values,Depreciation,Accumulated Depreciation", false, "Report On");
  p.AddDate("DateStart", Variant(), true, "Date Start", Variant(), false, "Date Start")->Help =
      "Left blank, the general ledger's current date.";
  AddDateRangeParameters(p);
  p.AddNumber("NumberOfColumns", 6, false, "", 6, 6, false, "Number Of Columns")->Help =
      "From 0 to 12.";
  p.AddBoolean("IncludeComponents", false, false, "", false, false, "Include Components");
  p.AddBoolean("IncludeTotals", false, false, "", false, false, "Include Totals");
  p.AddBoolean("UseTaxBasis", false, false, "", false, false, "Use Tax Basis");
  AddStatusParameters(p);
  AddGroupingsAndLists(p);
}

void arfaFutureValueSchedule::ReadPeriods() {
  trellin::Parameters& p = TLReport()->Parameters();
  const Variant columns = p.Value("NumberOfColumns", 6);
  columns_ = columns.IsNull() || columns.IsEmpty() ? 6 : static_cast<int>(columns.ToLong());
  if (columns_ < 0 || columns_ > kMostColumns) {
    throw std::invalid_argument("NumberOfColumns: " + std::to_string(columns_) +
                                " columns asked for; the report holds from 0 to " +
                                std::to_string(kMostColumns) + ".");
  }
  period_ = p.Value("Period", "Months").Text();
  report_on_ = p.Value("ReportOn", "Depreciation").Text();
  include_totals_ = p.Value("IncludeTotals", false).ToBool();
  use_tax_basis_ = p.Value("UseTaxBasis", false).ToBool();
  const Variant start = DateOrNull(p.Value("DateStart", Variant()));
  date_start_ =
      start.IsNull()
          ? TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateGL(true)
          : start.ToDate();
  periods_ = PeriodTable(date_start_, period_, columns_);
}

void arfaFutureValueSchedule::RefreshDataColumns() {
  if (periods_.empty()) ReadPeriods();
  DataColumns& columns = TLReport()->DataColumns();
  columns.Add("AssetId", "AssetId", kColumnCode, "Code", "", -1, kFutureCodeWidth, -1, 0, "(auto)",
              0, 0, "", true, "", true, false);
  columns.Add("Description", "Description", kColumnText, "Description", "Desc", -1,
              kFutureDescriptionWidth, -1, -1, "(auto)", 0, 0, "", true, "", true, false);
  for (int i = 1; i <= columns_; ++i) {
    const Variant end(periods_[static_cast<std::size_t>(i)]);
    columns.Add(ColumnName(i), ColumnName(i), kColumnMoney, Format(end, "mmm yyyy"),
                Format(end, "m/yy"), kPeriodWidth, -1, -1, -1, "(auto)", 0, 0, "", true, "", true,
                false);
  }
  if (include_totals_) {
    columns.Add("Total", "Total", kColumnMoney, "Total", "Tot", kPeriodWidth, -1, -1, -1, "(auto)",
                0, 0, "", true, "", true, false);
  }
}

void arfaFutureValueSchedule::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  ReadPeriods();
  std::string fields = "AssetId,Description";
  description_.clear();
  summary_ = p.Value("Summary", false).ToBool();
  include_components_ = p.Value("IncludeComponents", false).ToBool();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(description_, "Assets ordered by " + order_by);
  AppendDescription(description_, "Report " + report_on_);
  AppendDescription(description_, "Dated From " + DateText(Variant(date_start_)));
  if (use_tax_basis_) AppendDescription(description_, "Tax Basis Figures");

  // The projection may run past the years the company knows: those after are added here, in
  // memory, a year of twelve months at a time.
  const FinancialCalendar& calendar =
      TrellinReportGlobals::RequireApplication().FinancialCalendar();
  years_ = calendar.Years();
  ExtendYears(years_, periods_.back());
  current_year_end_ = Variant::Null();
  const Date today = Today();
  for (const FinancialYear& year : years_) {
    if (year.DateStart <= today && today <= year.DateEnd) current_year_end_ = Variant(year.DateEnd);
  }

  sql_ = AssetQuery(fields, order_by, description_);
}

void arfaFutureValueSchedule::ActiveReport_ReportStart() {
  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  asset_ = objects_->CreateAsset();
  // The columns are named from the period table, so the query routine comes first.
  BuildSQL();
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  StartRun(sql_, description_, summary_, 10.0f);
}

void arfaFutureValueSchedule::ActiveReport_DataInitialize() {
  // Twelve period fields whatever NumberOfColumns says, and the total, shown or not.
  for (int i = 1; i <= kMostColumns; ++i) Fields().Add(ColumnName(i));
  Fields().Add("Total");
}

void arfaFutureValueSchedule::ActiveReport_FetchData(bool& eof) {
  if (eof) return;
  std::unique_ptr<AssetDepreciation> calculator = objects_->CreateAssetDepreciation();
  calculator->SetUseTaxBasis(use_tax_basis_);
  for (int i = 1; i <= kMostColumns; ++i) Fields()[ColumnName(i)].SetValue(Variant());
  Currency total;
  Fields()["Total"].SetValue(total);
  std::string result;
  if (!calculator->Calculate(Trim(Fields()["AssetId"].Value().Text()), periods_.back(),
                             include_components_, years_, result)) {
    throw std::runtime_error(result);
  }
  const Date first = periods_.front().AddDays(1);
  // Portions never straddle a month end and count on their last day, so both openings are
  // exact at the month's start. The accumulated opening ends on entry 0 itself: a portion cut
  // before an addition dated the 2nd ends on the 1st, and belongs to the first column.
  Currency accumulated = calculator->DepreciationForPeriod(
                             Variant::Null(), Variant(periods_.front()), use_tax_basis_) -
                         calculator->DepreciationOffset();
  const AssetDepreciationFigures& f = calculator->Figures();
  Currency book = use_tax_basis_ ? f.OpeningBookValueTax : f.OpeningBookValue;
  for (const AssetDepreciationTransaction& t : f.Transactions) {
    if (t.Date < first) book -= use_tax_basis_ ? t.TaxValue : t.Value;
  }
  const ReportOn shown = ReportOnOf(report_on_);
  for (int i = 1; i <= columns_; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const Currency depreciation = calculator->DepreciationForPeriod(
        Variant(periods_[at - 1].AddDays(1)), Variant(periods_[at]), use_tax_basis_);
    book -= depreciation;
    accumulated += depreciation;
    ReportField& column = Fields()[ColumnName(i)];
    switch (shown) {
      case ReportOn::BookValues:
        column.SetValue(book);
        total = book;
        break;
      case ReportOn::Depreciation:
        column.SetValue(depreciation);
        total += depreciation;
        break;
      case ReportOn::AccumulatedDepreciation:
        // The total adds balances period on period, so it prints more than any column.
        column.SetValue(accumulated);
        total += accumulated;
        break;
      case ReportOn::Nothing:
        break;
    }
  }
  if (include_totals_) Fields()["Total"].SetValue(total);
}

}  // namespace trellin
