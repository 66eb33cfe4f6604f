// The life of one statement run: keys, report start, the unbound fetch and the events.

#include "reports/ledger/arglAccountReports.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

struct KeyName {
  std::string_view key;
  LedgerReport report;
};

constexpr KeyName kKeys[] = {
    {"GeneralLedger", LedgerReport::GeneralLedger},
    {"TrialBalance", LedgerReport::TrialBalance},
    {"EndOfYearTrialBalance", LedgerReport::EndOfYearTrialBalance},
    {"FinancialStatement", LedgerReport::FinancialStatement},
    {"FiveYearSummary", LedgerReport::FiveYearSummary},
    {"PeriodSummary", LedgerReport::PeriodSummary},
    {"MovementReport", LedgerReport::MovementReport},
    {"VarianceReport", LedgerReport::VarianceReport},
    {"LastYearComparison", LedgerReport::LastYearComparison},
    {"BudgetCashFlow", LedgerReport::BudgetCashFlow},
    {"BudgetSummary", LedgerReport::BudgetSummary},
    {"BudgetVarianceReport", LedgerReport::BudgetVarianceReport},
};

// One row per account class, in stored order: the heading of a statement grouped by type,
// whether its balances are credits, and the name the year-end check gives it.
struct AccountTypeRow {
  AccountType type;
  std::string_view heading;
  bool credit;
  std::string_view closing_name;
};

constexpr AccountTypeRow kAccountTypes[] = {
    {AccountType::Sales, "Sales Accounts", true, "Sales/Income"},
    {AccountType::CostOfSales, "Cost of Sales Accounts", false, "Cost of Sales"},
    {AccountType::Expense, "Expense Accounts", false, "Expense"},
    {AccountType::OtherIncome, "Other Income Accounts", true, "Other Income"},
    {AccountType::OtherExpense, "Other Expense Accounts", false, "Other Expense"},
    {AccountType::Appropriation, "Appropriation Accounts", true, ""},
    {AccountType::CurrentAsset, "Current Asset Accounts", false, ""},
    {AccountType::Asset, "Asset Accounts", false, ""},
    {AccountType::CurrentLiability, "Current Liability Accounts", true, ""},
    {AccountType::Liability, "Liability Accounts", true, ""},
    {AccountType::Capital, "Capital Accounts", true, ""},
};

const AccountTypeRow* FindAccountType(AccountType type) {
  for (const AccountTypeRow& row : kAccountTypes) {
    if (row.type == type) return &row;
  }
  return nullptr;
}

}  // namespace

DesignerPtr CreatearglAccountReports() { return std::make_shared<arglAccountReports>(); }

LedgerReport LedgerReportFromKey(std::string_view key) {
  for (const KeyName& k : kKeys) {
    if (EqualsIgnoreCase(k.key, key)) return k.report;
  }
  throw std::invalid_argument("arglAccountReports does not print the report '" + std::string(key) +
                              "'.");
}

std::string_view TypeHeading(AccountType type) {
  const AccountTypeRow* row = FindAccountType(type);
  return row == nullptr ? std::string_view() : row->heading;
}

bool IsCreditType(AccountType type) {
  const AccountTypeRow* row = FindAccountType(type);
  return row != nullptr && row->credit;
}

std::string_view ClosingName(AccountType type) {
  const AccountTypeRow* row = FindAccountType(type);
  return row == nullptr ? std::string_view() : row->closing_name;
}

PostCode PostCodeOf(std::string_view stored) {
  const std::string post = UCase(Trim(std::string(stored)));
  return post.empty() ? PostCode::Account : static_cast<PostCode>(post[0]);
}

std::string TotalCaption(const std::string& description) {
  // Only a description with letters, all of them capitals, counts as written in capitals.
  bool has_letter = false;
  bool all_capitals = true;
  for (unsigned char c : description) {
    if (std::isalpha(c)) {
      has_letter = true;
      if (std::islower(c)) all_capitals = false;
    }
  }
  return (has_letter && all_capitals ? "TOTAL " : "Total ") + description;
}

void arglAccountReports::RefreshParameters(std::string& ReportName) {
  key_ = ReportName;
  report_ = LedgerReportFromKey(ReportName);
  TLReport()->SetHasParameters(true);
  DeclareParameters(ReportName);
  SetPage();
}

bool arglAccountReports::ValidateParameters() {
  trellin::Parameters& parameters = TLReport()->Parameters();
  parameters.Validate("");
  return parameters.Valid();
}

void arglAccountReports::ActiveReport_ReportStart() {
  if (key_.empty()) {
    key_ = TLReport()->ReportName();
    report_ = LedgerReportFromKey(key_);
  }
  ApplyParameters();
  include_code_ = TLReport()->Parameters().Value("IncludeAccountCode", true).ToBool();
  TLReport()->SetupStandardHeader(true);
  Sections()["Detail"].SetBackStyle(0);
  standard_height_ = Sections()["Detail"].Height();
  title_ = Caption().empty() ? std::string(kKeys[static_cast<int>(report_)].key) : Caption();
  if (report_ == LedgerReport::BudgetCashFlow || report_ == LedgerReport::BudgetSummary ||
      report_ == LedgerReport::BudgetVarianceReport) {
    AppendDescription(parameters_text_, "Based on " + budget_column_ + " figures");
  }
  // The description stands in the footer from the start, where the exports read it.
  // The statement's own text, not the host's value behind it.
  if (Control* text = FindControl("txtParameters")) {
    text->SetDataValue(Variant());
    text->SetText(parameters_text_);
  }
  NormaliseDates();
  CreateColumns();
  SetTitle();
  SetColumnFormats();
  AttachSubReports();
  ReadStartFigures();
  BuildChartSQL();
  chart_ = TrellinReportGlobals::RequireDatabase()->Query(chart_sql_);
  for (GroupList& group : groups_) {
    if (group.rs && !group.rs->Eof()) group.rs->MoveFirst();
  }
  CurrentType = AccountType::None;
  PendingBlankLine = false;
  for (AccountLevel& level : AccountLevels) level = AccountLevel{};
  started_ = false;
}

void arglAccountReports::ActiveReport_FetchData(bool& eof) {
  if (!chart_) {
    eof = true;
    return;
  }
  if (!started_) {
    started_ = true;
    StartCombination();
  } else if (chart_done_) {
    // The chart has printed whole for this combination of groups: the next combination starts
    // the walk again from the top, or the statement is finished.
    if (!NextCombination()) finished_ = true;
  }
  eof = finished_;
}

void arglAccountReports::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::Detail:
      if (!finished_) Detail_Format(section);
      break;
    case SectionType::GroupHeader:
      for (int level = 1; level <= TLReport()->GroupCount(); ++level) {
        if (section.Name() == "GroupHeader" + std::to_string(level)) {
          TLReport()->GroupHeaderFormat(level);
        }
      }
      break;
    case SectionType::ReportFooter:
      RunFooterChecks();
      if (Control* text = FindControl("txtParameters")) text->SetText(parameters_text_);
      break;
    default:
      break;
  }
}

void arglAccountReports::ActiveReport_ReportEnd() {
  chart_.reset();
  ValueSets.clear();
  if (gl_sub_) gl_sub_->ActiveReport_ReportEnd();
  for (GroupList& group : groups_) group.rs.reset();
}

}  // namespace trellin
