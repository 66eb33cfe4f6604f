// The statements' parameters: what each key asks for, how the answers are read into the
// designer's state, the dates, the groups and the chart query.

#include <algorithm>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

// Which parameters each key asks for, beside those every key shares. Columns: the date kind,
// the default Period, whether the Period list leaves out "ALL" and "Custom", AccountTotalLevel,
// the default Rounding, AdjustCreditTypeAccounts, TaxInclusive, Budget, Drilldown.
enum class DateKind { Period, FiscalYear, Frequency, DateAsAt };

struct KeyParameters {
  LedgerReport report;
  DateKind dates;
  bool statement_periods;
  bool total_level;
  const char* rounding;
  bool adjust_credits;
  bool tax_inclusive;
  bool budget;
  bool drilldown;
};

// clang-format off
constexpr KeyParameters kKeyParameters[] = {
    {LedgerReport::GeneralLedger, DateKind::Period, false, false, "Normal", false, true, false, true},
    {LedgerReport::TrialBalance, DateKind::Period, false, false, "Normal", false, true, false, false},
    {LedgerReport::EndOfYearTrialBalance, DateKind::FiscalYear, false, false, "Normal", false, false, false, false},
    {LedgerReport::FinancialStatement, DateKind::Period, true, true, "Normal", true, false, false, false},
    {LedgerReport::FiveYearSummary, DateKind::FiscalYear, false, false, "Normal", true, true, false, false},
    {LedgerReport::PeriodSummary, DateKind::Frequency, false, false, "Whole", true, true, false, false},
    {LedgerReport::MovementReport, DateKind::DateAsAt, false, false, "Normal", true, true, false, false},
    {LedgerReport::VarianceReport, DateKind::Period, false, false, "Normal", true, false, true, false},
    {LedgerReport::LastYearComparison, DateKind::Period, false, true, "Normal", true, false, false, false},
    {LedgerReport::BudgetCashFlow, DateKind::Frequency, false, false, "Whole", true, false, true, false},
    {LedgerReport::BudgetSummary, DateKind::Frequency, false, false, "Whole", true, false, true, false},
    {LedgerReport::BudgetVarianceReport, DateKind::Period, false, true, "Normal", true, false, true, false},
};
// clang-format on

const KeyParameters& ParametersOf(LedgerReport report) {
  for (const KeyParameters& row : kKeyParameters) {
    if (row.report == report) return row;
  }
  return kKeyParameters[1];
}

struct GroupingRule {
  const char* name;
  const char* field;
  const char* filter_parameter;
  const char* table;
  const char* description;
};

constexpr GroupingRule kGroupings[] = {
    {"Branch", "BranchId", "Branches", "Branch", "Name"},
    {"Department", "DeptId", "Departments", "Department", "Description"},
};

// Where a statement names no default for its last date, the books' own: the general ledger's
// current date. The end of today's month would run past the books.
constexpr const char* kLedgerCurrent = "GLCURRENT";
constexpr const char* kLedgerCurrentHelp =
    "Left blank, the general ledger's current date (GLCURRENT).";
constexpr const char* kPeriodHelp =
    "ALL: every date. MTD, QTD, YTD: the month, the quarter of the financial year or the "
    "financial year to To Date. Custom: From Date to To Date as given.";
constexpr const char* kStatementPeriodHelp =
    "MTD, QTD, YTD: the month, the quarter of the financial year or the financial year to "
    "To Date.";
constexpr const char* kFromHelp =
    "Follows the Period: the first day of the month, quarter or financial year that holds "
    "To Date; for Custom left blank, the first day of that financial year. A date given here, "
    "with no Period given, makes the Period Custom.";
constexpr const char* kStatementFromHelp =
    "Follows the Period: the first day of the month, quarter or financial year that holds "
    "To Date.";

bool Present(const Variant& v) { return !(v.IsNull() || v.IsEmpty() || v.IsMissing()); }

}  // namespace

void arglAccountReports::DeclareParameters(const std::string& key) {
  trellin::Parameters& p = TLReport()->Parameters();
  const KeyParameters& row = ParametersOf(LedgerReportFromKey(key));
  CreateStandardParameter(0, p, true);
  CreateStandardParameter(6, p, false);
  CreateStandardParameter(14, p, false);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), "Branch,Department", false, false,
                 "Groupings");
  p.AddString("Split", Variant(""), false, "", Variant(""), false, "Split");
  p.AddBoolean("AddNetProfitToREAccount", false, false, "", false, false,
               "Add Net Profit to Retained Earnings");
  p.AddBoolean("AddAppropriationsToREAccount", false, false, "", false, false,
               "Add Appropriations to Retained Earnings");

  switch (row.dates) {
    case DateKind::Period:
      p.AddList("Period", "YTD", true, "", "YTD",
                row.statement_periods ? "MTD,QTD,YTD" : "ALL,MTD,QTD,YTD,Custom", false, "Period")
          ->Help = row.statement_periods ? kStatementPeriodHelp : kPeriodHelp;
      // The first date follows the period (the host's dialogue works it out from To Date), so
      // it has no expression of its own.
      p.AddDate("FromDate", Variant(), true, "", Variant(), false, "From Date")->Help =
          row.statement_periods ? kStatementFromHelp : kFromHelp;
      p.AddDate("ToDate", Variant(), true, "", kLedgerCurrent, false, "To Date")->Help =
          kLedgerCurrentHelp;
      break;
    case DateKind::FiscalYear:
      p.AddNumber("FiscalYear", 0, true, "", 0, 0, false, "Fiscal Year")->Help =
          "0, the year that holds the general ledger's current date.";
      break;
    case DateKind::Frequency:
      p.AddList("Frequency", "Monthly", true, "", "Monthly",
                "Monthly,Quarterly,Six Monthly,Yearly,Year to Date", false, "Frequency");
      p.AddDate("EndDate", Variant(), true, "", kLedgerCurrent, false, "End Date")->Help =
          kLedgerCurrentHelp;
      p.AddBoolean("ShowTotal", false, false, "", false, false, "Show Total");
      break;
    case DateKind::DateAsAt:
      p.AddDate("DateAsAt", Variant(), true, "Date As At", kLedgerCurrent, false, "Date As At")
          ->Help = kLedgerCurrentHelp;
      break;
  }
  p.AddList("AccountsGroupBy", "Level", false, "", "Level", "Level,Type", false,
            "Accounts Group By");
  // The chart has heading levels 1 to 5 above its accounts; another level names none of them.
  ParameterPtr summary_level =
      p.AddNumber("AccountSummaryLevel", 5, false, "", 5, 5, false, "Account Summary Level");
  summary_level->Minimum = Currency::FromWhole(1);
  summary_level->Maximum = Currency::FromWhole(5);
  if (row.total_level) {
    ParameterPtr total_level =
        p.AddNumber("AccountTotalLevel", 3, false, "", 3, 3, false, "Account Total Level");
    total_level->Minimum = Currency::FromWhole(1);
    total_level->Maximum = Currency::FromWhole(5);
  }
  p.AddList("Rounding", row.rounding, false, "", row.rounding, "Normal,Whole,Thousands", false,
            "Rounding");
  p.AddBoolean("IncludeAccountCode", true, false, "", true, false, "Include Account Code");
  if (row.adjust_credits) {
    p.AddBoolean("AdjustCreditTypeAccounts", false, false, "", false, false,
                 "Adjust Credit Type Accounts");
  }
  if (row.tax_inclusive) {
    p.AddBoolean("TaxInclusive", false, false, "", false, false, "Tax Inclusive");
  }
  if (row.drilldown) p.AddBoolean("Drilldown", false, false, "", false, false, "Drilldown");
  if (row.budget) {
    p.AddList("Budget", "Budget", false, "", "Budget", "Budget,Revised,Alternate", false, "Budget");
  }
}

void arglAccountReports::ApplyParameters() {
  trellin::Parameters& p = TLReport()->Parameters();
  Application& application = TrellinReportGlobals::RequireApplication();
  tax_name_ = application.Tax().TaxName();
  retained_account_ = application.Options().RetainedEarningsAccount();
  parameters_text_.clear();

  DefineGroupings();
  add_net_profit_ = p.Value("AddNetProfitToREAccount", false).ToBool();
  add_appropriations_ = p.Value("AddAppropriationsToREAccount", false).ToBool();

  accounts_ = p.Value("Accounts", Variant()).Text();
  branches_ = p.Value("Branches", Variant()).Text();
  departments_ = p.Value("Departments", Variant()).Text();
  const std::pair<const char*, const std::string*> filters[] = {
      {"Accounts: ", &accounts_}, {"Branches: ", &branches_}, {"Departments: ", &departments_}};
  filtered_ = false;
  for (const auto& [label, value] : filters) {
    if (value->empty()) continue;
    AppendDescription(parameters_text_, label + *value);
    filtered_ = true;
  }

  adjust_credits_ = p.Value("AdjustCreditTypeAccounts", false).ToBool();
  tax_inclusive_ = p.Value("TaxInclusive", false).ToBool();
  drilldown_ = p.Value("Drilldown", false).ToBool();
  show_total_ = p.Value("ShowTotal", false).ToBool();
  budget_column_ = p.Value("Budget", "Budget").Text();
  if (budget_column_ != "Revised" && budget_column_ != "Alternate") budget_column_ = "Budget";
  split_by_ = Trim(p.Value("Split", "").Text());
  split_field_ = SplitField(split_by_);
  if (adjust_credits_) {
    AppendDescription(parameters_text_, "Income and Liability accounts printed as debits.");
  }
  if (add_net_profit_) {
    AppendDescription(parameters_text_, "Net Profit added to Retained Earnings Account.");
  }
  if (add_appropriations_) {
    AppendDescription(parameters_text_, "Appropriations added to Retained Earnings Account.");
  }
  if (tax_inclusive_) {
    AppendDescription(parameters_text_,
                      "WARNING - Values include " + tax_name_ + ", this will distort balances.");
  }
  if (report_ == LedgerReport::FiveYearSummary) {
    AppendDescription(parameters_text_, "Note: All figures based on movement within the period.");
  }

  account_filter_.clear();
  for (int n = 1; n <= 20; ++n) {
    const std::string name = "Account.UserDefined" + std::to_string(n);
    std::string ignored;
    AppendListParameterCondition(account_filter_, "UserDefined" + std::to_string(n), name, p,
                                 ignored, kRangeText);
  }

  // The fiscal year is held as its place among the company's years, from 1 for the oldest: the
  // five year summary steps back through those places.
  const FinancialCalendar& calendar = application.FinancialCalendar();
  const std::vector<FinancialYear> years = calendar.Years();
  std::int64_t year_id = p.Value("FiscalYear", 0).ToLong();
  if (year_id == 0) year_id = calendar.YearIdFromDate(calendar.CurrentDateGL(true));
  fiscal_year_ = 0;
  for (std::size_t i = 0; i < years.size(); ++i) {
    if (years[i].Id == year_id || years[i].DateEnd.Year() == year_id) {
      fiscal_year_ = static_cast<std::int64_t>(i) + 1;
    }
  }
  if (fiscal_year_ == 0 && p.Value("FiscalYear", 0).ToLong() != 0) {
    // A year the company does not have would print a statement of no period at all.
    throw std::invalid_argument("Fiscal Year: the company has no financial year " +
                                std::to_string(year_id) + ".");
  }

  period_ = p.Value("Period", "").Text();
  from_date_ = p.Value("FromDate", Variant::Null());
  to_date_ = p.Value("ToDate", Variant::Null());
  if (p.Exists("Frequency")) {
    frequency_ = p.Value("Frequency", "Monthly").Text();
    period_ = frequency_;
  }
  if (p.Exists("EndDate")) to_date_ = p.Value("EndDate", Variant::Null());
  if (p.Exists("DateAsAt")) {
    to_date_ = p.Value("DateAsAt", Variant::Null());
    from_date_ = Variant::Null();
    if (Present(to_date_)) {
      if (std::int64_t id = calendar.YearIdFromDate(to_date_.ToDate())) {
        from_date_ = calendar.Year(id).DateStart;
      }
    }
  }
  for (Variant* date : {&from_date_, &to_date_}) {
    if (!Present(*date)) *date = Variant::Null();
  }
  if (period_ == "ALL") from_date_ = to_date_ = Variant::Null();
  if (report_ == LedgerReport::EndOfYearTrialBalance && fiscal_year_ > 0) {
    to_date_ = years[static_cast<std::size_t>(fiscal_year_ - 1)].DateEnd;
  }

  by_type_ = p.Value("AccountsGroupBy", "Level").Text() == "Type";
  account_summary_level_ = static_cast<int>(p.Value("AccountSummaryLevel", 5).ToLong());
  account_total_level_ = static_cast<int>(p.Value("AccountTotalLevel", 3).ToLong());
  const std::string rounding = p.Value("Rounding", "Normal").Text();
  round_digits_ = kRoundingNormal;
  if (rounding == "Whole") round_digits_ = kRoundingWhole;
  if (rounding == "Thousands") {
    round_digits_ = kRoundingThousands;
    AppendDescription(parameters_text_, "Figures shown in thousands.");
  }
}

void arglAccountReports::DefineGroupings() {
  trellin::Parameters& p = TLReport()->Parameters();
  std::vector<std::string> names;
  std::vector<bool> page_breaks;
  groups_.clear();
  if (!SplitGroupings(p.Value("Groupings", Variant()), names, page_breaks)) {
    TLReport()->EndDefineGroups();
    return;
  }
  auto database = TrellinReportGlobals::RequireDatabase();
  RangeBuilder& builder = TrellinReportGlobals::RequireBusinessLayer().Utilities().RangeBuilder();
  int level = static_cast<int>(names.size());
  for (std::size_t i = 0; i < names.size(); ++i, --level) {
    const GroupingRule* rule = nullptr;
    for (const GroupingRule& g : kGroupings) {
      if (EqualsIgnoreCase(g.name, names[i])) rule = &g;
    }
    if (rule == nullptr) continue;
    const std::string field = rule->field;
    const std::string filter_value = p.Value(rule->filter_parameter, Variant()).Text();
    const std::string filter =
        filter_value.empty() ? "" : builder.BuildRangeCondition(field, filter_value, kRangeText);
    std::string sql;
    if (report_ == LedgerReport::BudgetSummary) {
      sql = "SELECT " + field + "," + rule->description + " FROM " + rule->table;
      sql += filter.empty() ? " UNION SELECT Null AS " + field + ", Null AS " + rule->description +
                                  " FROM " + rule->table
                            : " WHERE " + filter;
    } else {
      sql = "SELECT DISTINCT " + field + ",(SELECT " + rule->description + " FROM " + rule->table +
            " WHERE " + rule->table + "." + field + "=glTransaction." + field + ") AS " +
            rule->description + " FROM glTransaction";
      if (!filter.empty()) sql += " WHERE " + filter;
    }
    sql += " ORDER BY " + field;
    TLReport()->DefineGroup(level, rule->name, field, sql, page_breaks[i]);
    groups_.push_back({field, database->Query(sql)});
    Fields().Add(field);
  }
  TLReport()->EndDefineGroups();
  TLReport()->SetupGroupSections(false, -1, false);
}

void arglAccountReports::NormaliseDates() {
  if (period_ != "Custom") {
    if (!from_date_.IsNull()) from_date_ = from_date_.ToDate().DateOnly().FirstOfMonth();
    if (!to_date_.IsNull()) to_date_ = to_date_.ToDate().DateOnly().LastOfMonth();
  }
  last_from_date_ = from_date_.IsNull()
                        ? Variant::Null()
                        : Variant(from_date_.ToDate().FirstOfMonth().AddMonths(-12));
  // The day before the first of the month eleven months back: a February end stays the last
  // of February, whatever day the statement ends on.
  last_to_date_ = to_date_.IsNull()
                      ? Variant::Null()
                      : Variant(to_date_.ToDate().FirstOfMonth().AddMonths(-11).AddDays(-1));
}

std::string arglAccountReports::DateText(const Variant& date) const {
  return Format(date, TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

std::string arglAccountReports::FormatPeriodTitle(const std::string& title,
                                                  const std::string& period) const {
  for (const char* prefix : {"MTD", "QTD", "YTD"}) {
    if (period == prefix)
      return std::string(prefix) + " " + title + " ending " + DateText(to_date_);
  }
  const bool from = !from_date_.IsNull();
  const bool to = !to_date_.IsNull();
  if (from && to) return title + " (" + DateText(from_date_) + "-" + DateText(to_date_) + ")";
  if (from) return title + " from " + DateText(from_date_);
  if (to) return title + " to " + DateText(to_date_);
  return title;
}

void arglAccountReports::BuildChartSQL() {
  std::string where;
  if (!accounts_.empty()) {
    RangeBuilder& builder = TrellinReportGlobals::RequireBusinessLayer().Utilities().RangeBuilder();
    where = builder.BuildRangeCondition("AccountId", accounts_, kRangeText);
  }
  std::string user_defined = Trim(account_filter_);
  if (!user_defined.empty()) where += (where.empty() ? "" : " AND ") + user_defined;
  chart_sql_ = "SELECT AccountId,Description,Post,Type,ALevel,DrCr FROM Account";
  if (!where.empty()) chart_sql_ += " WHERE " + where;
  if (by_type_) {
    chart_sql_ += where.empty() ? " WHERE Post is null" : " AND Post is null";
    chart_sql_ += " ORDER BY Type,AccountId";
  } else {
    chart_sql_ += " ORDER BY AccountId";
  }
}

}  // namespace trellin
