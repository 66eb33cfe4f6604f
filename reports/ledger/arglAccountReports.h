#pragma once
// The twelve account statements ("TrialBalance", "FinancialStatement", "PeriodSummary", ...):
// one designer that walks the chart of accounts by hand inside its Detail section and decides on
// each pass what the next printed line is: an account, a heading, a total or nothing. Totals are
// kept in seven level records, not in the engine; the figures of each column family come from
// one grouped query over the ledger, looked up by account.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Designer.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Variant.h"
#include "reports/ledger/arglAccountReportsCashFlowSub.h"
#include "reports/ledger/arglAccountReportsGLSub.h"
#include "reports/ledger/arglAccountReportsSub.h"

namespace trellin {

// The statements this designer serves, one per catalogue key.
enum class LedgerReport {
  GeneralLedger,
  TrialBalance,
  EndOfYearTrialBalance,
  FinancialStatement,
  FiveYearSummary,
  PeriodSummary,
  MovementReport,
  VarianceReport,
  LastYearComparison,
  BudgetCashFlow,
  BudgetSummary,
  BudgetVarianceReport,
};

// The statement of a catalogue key; throws std::invalid_argument naming a key this designer does
// not serve.
[[nodiscard]] LedgerReport LedgerReportFromKey(std::string_view key);

// Account.Type, the class of an account, with its stored numbers: 1 to 5 make the profit and
// loss, 6 the appropriations, 7 to 11 the balance sheet. None is a row with no type.
enum class AccountType : std::uint8_t {
  None = 0,
  Sales = 1,
  CostOfSales = 2,
  Expense = 3,
  OtherIncome = 4,
  OtherExpense = 5,
  Appropriation = 6,
  CurrentAsset = 7,
  Asset = 8,
  CurrentLiability = 9,
  Liability = 10,
  Capital = 11,
  // Past the last class: where a walk grouped by type stands after the chart's last row.
  End = 12,
};

// The type of a stored Account.Type number; a number outside 1 to 11 keeps its value and has no
// heading.
[[nodiscard]] constexpr AccountType AccountTypeOf(long stored) {
  return static_cast<AccountType>(static_cast<std::uint8_t>(stored));
}
// Sales to Other Expense: the accounts the profit and loss sums.
[[nodiscard]] constexpr bool IsProfitAndLoss(AccountType type) {
  return type >= AccountType::Sales && type <= AccountType::OtherExpense;
}

// Account.Post, the stored letter of a chart row that is not an account; a blank Post is an
// account.
enum class PostCode : char {
  Account = ' ',
  Heading = 'H',  // a heading over the accounts that follow, with no total
  Group = 'G',    // a heading whose accounts are totalled when the level closes
  Total = 'T',    // prints the open level's total on its own line
  Clear = 'C',    // zeroes the levels from its own down, printing nothing
  Page = 'P',     // ends the page
};

// The code of a stored Post text: its first letter, in either case, after blanks; Account when
// blank. A letter the walk does not know is kept as it is and does nothing.
[[nodiscard]] PostCode PostCodeOf(std::string_view stored);

// Where one level of totals stands in the walk.
enum class LevelState : std::int16_t {
  None = 0,            // nothing open
  HeadingWaiting = 1,  // a heading to print before the level's first account
  TotalDue = 2,        // a group heading whose total prints when the level closes
};

// One level of totals. Index 0 sums the whole statement, 1 to 5 follow ALevel, 6 is the
// current account's own row.
struct AccountLevel {
  LevelState State = LevelState::None;
  std::int32_t Lines = 0;  // accounts printed since the heading was set
  std::string Code;
  std::string Description;
  AccountType Type = AccountType::None;
  std::array<Currency, 21> Values{};  // columns 1 to 20; [0] unused

  void Zero() { Values.fill(Currency()); }
};

inline constexpr int kAccountLevels = 7;
inline constexpr int kRowLevel = 6;
inline constexpr int kMaxColumns = 20;
// Figures and captions stop this many twips short of their column's right edge, so that
// neighbouring columns never touch.
inline constexpr float kColumnGap = 90;

// The heading a statement grouped by type gives an account class; "" for None, End and numbers
// outside 1 to 11.
[[nodiscard]] std::string_view TypeHeading(AccountType type);
// Sales, Other Income, Appropriation, Current Liability, Liability and Capital: the classes whose
// balances are credits.
[[nodiscard]] bool IsCreditType(AccountType type);
// The name the End of Year Trial Balance gives a profit and loss class in "... accounts must be
// zero."; "" for the others.
[[nodiscard]] std::string_view ClosingName(AccountType type);
// "TOTAL " + description when it is all capitals, otherwise "Total " + description.
[[nodiscard]] std::string TotalCaption(const std::string& description);

// The ends of the period columns: ends[0] closes the period before column 1, ends[n] closes
// column n. `fiscal_year_end` is used by "Year to Date" only. Throws std::invalid_argument for a
// frequency the statements do not know.
[[nodiscard]] std::vector<Date> PeriodEnds(const std::string& frequency, Date to_date,
                                           Date fiscal_year_end);

class arglAccountReports : public Designer {
 public:
  arglAccountReports() : Designer("arglAccountReports") {}

  void RefreshParameters(std::string& ReportName) override;
  [[nodiscard]] bool ValidateParameters() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The title rule: "YTD Trial Balance ending 31/03/2025", "Trial Balance (1/04/2024-...)", ...
  // Uses the designer's Period, FromDate and ToDate and the business layer's date format.
  [[nodiscard]] std::string FormatPeriodTitle(const std::string& title,
                                              const std::string& period) const;

  // State after ApplyParameters, for the statement's callers and tests.
  [[nodiscard]] LedgerReport Report() const { return report_; }
  [[nodiscard]] const Variant& FromDate() const { return from_date_; }
  [[nodiscard]] const Variant& ToDate() const { return to_date_; }
  [[nodiscard]] const Variant& LastFromDate() const { return last_from_date_; }
  [[nodiscard]] const Variant& LastToDate() const { return last_to_date_; }
  [[nodiscard]] const std::string& ParametersText() const { return parameters_text_; }
  [[nodiscard]] const std::string& ChartSQL() const { return chart_sql_; }
  // The queries of the column families as opened for the current group combination.
  [[nodiscard]] const std::vector<std::string>& ValueSQL() const { return value_sql_; }
  // The report footer's cross-check query, "" when the statement has none or it did not run.
  [[nodiscard]] const std::string& CheckSQL() const { return check_sql_; }
  // The General Ledger's lines sub-report, after report start; null for the other statements.
  [[nodiscard]] const std::shared_ptr<arglAccountReportsGLSub>& LedgerLines() const {
    return gl_sub_;
  }
  // The Budget Cash Flow's cash lines, after report start; null for the other statements.
  [[nodiscard]] const std::shared_ptr<arglAccountReportsCashFlowSub>& CashLines() const {
    return cash_sub_;
  }

 private:
  // --- parameters (arglAccountReports_parameters.cpp) ---
  void DeclareParameters(const std::string& key);
  void ApplyParameters();
  void DefineGroupings();
  void NormaliseDates();
  void BuildChartSQL();
  [[nodiscard]] std::string DateText(const Variant& date) const;

  // --- columns and titles (arglAccountReports_columns.cpp) ---
  void CreateColumns();
  // Turns the page for the wide statements; idempotent.
  void SetPage();
  void SetTitle();
  void SetColumnFormats();
  Control& AddValueField(int n, float left, float width);
  // Where value column n starts; ColumnLeft(n + 1) is where it ends, its gap included.
  [[nodiscard]] float ColumnLeft(int n) const;
  void AddCaption(int n, const std::string& caption, float left, float width);

  // --- figures (arglAccountReports_figures.cpp) ---
  void OpenValueSets();
  void OpenStatementSets();
  void OpenPeriodSets();
  void ReadStartFigures();
  [[nodiscard]] bool IsPeriodColumns() const;
  // Balance-sheet accounts to `to`, profit and loss within the period; a Null date drops its
  // own part.
  [[nodiscard]] std::string StatementFigures(const Variant& from, const Variant& to) const;
  [[nodiscard]] std::string SumByAccount(const std::vector<std::string>& conditions) const;
  // The account types whose figures go to the retained earnings row; "" when none do.
  [[nodiscard]] std::string RetainedCondition() const;
  void FillRow(const std::string& account_id, AccountType type);
  void FillPeriodRow(const std::string& account_id, AccountType type);
  [[nodiscard]] Currency Lookup(std::size_t set, const std::string& account_id, int field);
  // The figure of retained set `set` for the retained earnings row; 0 when there is none.
  [[nodiscard]] Currency Retained(std::size_t set) const;
  [[nodiscard]] std::string Where(std::vector<std::string> conditions) const;
  [[nodiscard]] std::string SumValue() const;
  void OpenSet(const std::string& sql);
  void OpenRetained(const std::string& sql);
  void RunFooterChecks();

  // --- the walk (arglAccountReports_walk.cpp) ---
  void Detail_Format(Section& detail);
  bool LevelGroupEnds(Section& detail);
  bool TypeEnds(Section& detail);
  void ChartRowLine(Section& detail);
  void AccountLine(Section& detail);
  void PrintTotal(Section& detail, int level, const std::string& caption);
  void PrintHeading(Section& detail, const AccountLevel& level);
  void ResetLine(Section& detail);
  // Moves a description in by its level, keeping its right edge.
  void Indent(Control& description, int level) const;
  void MoveNextRow();
  // GeneralLedger: whether the account has ledger lines in the period, for a row whose
  // figures net to nothing; and the period's movement added to the totals.
  [[nodiscard]] bool HasLedgerLines(const std::string& account_id);
  void AddLedgerMovement();
  void StartCombination();
  [[nodiscard]] bool NextCombination();
  [[nodiscard]] std::string GroupFilter() const;

  // --- sub-reports (arglAccountReports_subreports.cpp) ---
  void AttachSubReports();
  // The General Ledger's lines of one account for the period, with the group filter or, when
  // `split_key` is given, that condition in its place and the period's last day included.
  [[nodiscard]] std::string LedgerLinesSQL(const std::string& account_id,
                                           const std::string& split_key) const;
  // Under an account's opening line: its ledger lines, from the opening as printed.
  void ShowLedgerLines(const std::string& account_id);
  // The split lines' figures: every value set of the combination again, widened by the split
  // field, opened once and looked up by account and code.
  void OpenSplitSets();
  // One split line of the present account: the statement's own column rules over the split
  // line's copy of the value controls, with the figures of `code` alone.
  void FillSplitLine(Section& detail, const SplitCode& code);
  // The Detail's txtField1 of the line being filled: the account's or the split line's.
  [[nodiscard]] Control* TextField1() const;

  // --- links (arglAccountReports_links.cpp) ---
  // Points the account line's figures at "GeneralLedger" for the account and the figure's
  // period; the General Ledger, the Five Year Summary and the Last Year Comparison link nothing.
  void LinkFigures(const std::string& account_id);
  void ClearLinks();

  // --- level values (arglAccountReports_levels.cpp) ---
  bool ShowLevelValues(int level, bool lastLine);
  void ShowValueFields(bool showNumbers, bool showTexts);
  void StatementRule(int level, bool lastLine, bool total_line);
  void ShowWhenNonZero(int n);
  void PeriodVisibility();
  void ShowPercent(int n, double numerator, double denominator);
  [[nodiscard]] Control* NumField(int n) const;
  [[nodiscard]] std::string ChartText(const char* field) const;
  [[nodiscard]] int ChartLong(const char* field) const;

  struct GroupList {
    std::string field;              // BranchId or DeptId
    std::shared_ptr<Recordset> rs;  // first column the value, Null a real group
  };

  LedgerReport report_ = LedgerReport::TrialBalance;
  std::string key_;
  std::string title_;

  // Parameters as applied.
  std::string period_;
  std::int64_t fiscal_year_ = 0;  // index into the calendar's years, from 1
  Variant from_date_, to_date_, last_from_date_, last_to_date_;
  std::string account_filter_;
  std::string accounts_, branches_, departments_;
  bool by_type_ = false;
  int account_summary_level_ = 5;
  int account_total_level_ = 3;
  int round_digits_ = 2;
  bool include_code_ = true, adjust_credits_ = false, show_total_ = false;
  bool tax_inclusive_ = false, add_net_profit_ = false, add_appropriations_ = false;
  bool drilldown_ = false;
  std::string budget_column_ = "Budget";
  std::string split_by_;
  bool filtered_ = false;
  std::vector<Date> period_ends_;
  Currency sales_total_;
  std::string parameters_text_;
  std::string chart_sql_;
  std::string frequency_;
  std::string tax_name_;
  std::string retained_account_;
  Currency opening_bank_;
  std::array<Currency, 21> column_sums_{};  // BudgetCashFlow's sums over every account

  // The walk.
  std::array<AccountLevel, kAccountLevels> AccountLevels{};
  AccountType CurrentType = AccountType::None;
  int CurrentLevel = 0;
  int LastLevel = 0;
  bool PendingBlankLine = false;
  std::shared_ptr<Recordset> chart_;
  bool chart_done_ = false;
  bool finished_ = false;
  bool started_ = false;
  float standard_height_ = 260;
  float description_left_ = 0;
  float description_width_ = 3000;
  std::int64_t row_number_ = 0;   // moves with the chart's row pointer
  std::int64_t filled_row_ = -1;  // the row whose figures level 6 holds
  Currency gl_debits_, gl_credits_;
  int column_count_ = 0;
  int total_column_ = 0;  // the ShowTotal column of the period statements, 0 when none
  float column_width_ = 1300;
  float values_left_ = 0;           // where the first value column starts
  bool wide_first_column_ = false;  // column 1 is two figures wide (see ColumnLeft)
  float figure_font_size_ = 9;
  std::array<Control*, kMaxColumns + 1> num_fields_{};
  std::vector<std::shared_ptr<Recordset>> ValueSets;
  std::vector<Variant> RetainedSets;  // one scalar per column, Null when nothing to add
  std::vector<std::string> value_sql_;
  std::string check_sql_;
  std::vector<GroupList> groups_;
  std::shared_ptr<arglAccountReportsGLSub> gl_sub_;

  // The split lines (Split "Branch" or "Department").
  std::string split_field_;  // BranchId or DeptId, "" with no split
  std::shared_ptr<arglAccountReportsSub> split_sub_;
  std::shared_ptr<arglAccountReportsGLSub> split_gl_sub_;
  std::vector<std::string> set_sql_;  // the query of each of ValueSets, "" where none
  // The query of each of RetainedSets and the field it reads, "" where none.
  std::vector<std::pair<std::string, int>> retained_sql_;
  std::vector<std::shared_ptr<Recordset>> split_sets_, split_retained_sets_;
  std::array<Control*, kMaxColumns + 1> split_fields_{};
  Control* split_text_field_ = nullptr;
  const SplitCode* split_code_ = nullptr;  // while a split line is filled
  std::string split_account_;
  AccountType split_type_ = AccountType::None;
  std::string row_drcr_;  // DrCr of the account whose row is filled

  // The Budget Cash Flow's cash lines in the report footer.
  std::shared_ptr<arglAccountReportsCashFlowSub> cash_sub_;
};

[[nodiscard]] DesignerPtr CreatearglAccountReports();

}  // namespace trellin
