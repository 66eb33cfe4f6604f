// The walk of the chart: on every pass of the Detail section, the next printed line. The row
// pointer moves only when a chart row has been dealt with; a pass that prints a heading or a
// total leaves it where it is, so the same row is asked again on the next pass.

#include <algorithm>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

constexpr float kBlankLineHeight = 100;
constexpr float kIndentPerLevel = 120;

int ClampLevel(int level) { return std::clamp(level, 1, 5); }

// The captions of type mode's closing lines at level 2 and level 1, by the type that ends.
struct TypeTotal {
  int level;
  AccountType type;
  const char* caption;
};

constexpr TypeTotal kTypeTotals[] = {
    {2, AccountType::Asset, "Total Assets"},
    {2, AccountType::Liability, "Total Liabilities"},
    {1, AccountType::CostOfSales, "Gross Profit"},
    {1, AccountType::Expense, "Net Profit (Before Others)"},
    {1, AccountType::OtherExpense, "Net Profit (After Others)"},
    {1, AccountType::Liability, "Net Assets"},
};

const char* TypeTotalCaption(int level, AccountType type) {
  for (const TypeTotal& t : kTypeTotals) {
    if (t.level == level && t.type == type) return t.caption;
  }
  return nullptr;
}

}  // namespace

std::string arglAccountReports::ChartText(const char* field) const {
  const Variant& v = chart_->Value(field);
  return v.IsNull() ? std::string() : v.Text();
}

int arglAccountReports::ChartLong(const char* field) const {
  const Variant& v = chart_->Value(field);
  return v.IsNull() ? 0 : static_cast<int>(v.ToLong());
}

void arglAccountReports::ResetLine(Section& detail) {
  detail.SetVisible(true);
  detail.SetHeight(standard_height_);
  detail.SetNewPage(NewPageMode::None);
  ShowValueFields(true, true);
  ClearLinks();
  for (const char* name : {"txtCode", "txtDescription", "txtDescription2", "txtField1"}) {
    if (Control* c = FindControl(name)) {
      c->SetText("");
      c->Font().Bold = false;
    }
  }
  if (Control* description = FindControl("txtDescription")) Indent(*description, 1);
  for (const char* name : {"srptSplit", "srptTrans"}) {
    if (Control* sub = FindControl(name)) sub->SetVisible(false);
  }
}

void arglAccountReports::Detail_Format(Section& detail) {
  ResetLine(detail);
  if (by_type_ ? TypeEnds(detail) : LevelGroupEnds(detail)) return;
  if (chart_->Eof()) {
    // Every total due has printed: this combination of groups is complete.
    detail.SetVisible(false);
    chart_done_ = true;
    return;
  }
  if (PostCodeOf(ChartText("Post")) == PostCode::Account) {
    AccountLine(detail);
  } else {
    ChartRowLine(detail);
  }
}

bool arglAccountReports::LevelGroupEnds(Section& detail) {
  // The end of the chart counts as level 0, so every group still open closes there.
  const int next_level = chart_->Eof() ? 1 : ClampLevel(ChartLong("ALevel"));
  for (int level = 5; level >= next_level; --level) {
    AccountLevel& open = AccountLevels[level];
    if (open.State != LevelState::TotalDue || open.Lines <= 0) continue;
    if (PendingBlankLine) {
      PendingBlankLine = false;
      ShowValueFields(false, false);
      detail.SetHeight(kBlankLineHeight);
      return true;
    }
    PrintTotal(detail, level, TotalCaption(open.Description));
    open.State = LevelState::None;
    open.Lines = 0;
    open.Zero();
    PendingBlankLine = true;
    return true;
  }
  return false;
}

bool arglAccountReports::TypeEnds(Section& detail) {
  const AccountType next_type = chart_->Eof() ? AccountType::End : AccountTypeOf(ChartLong("Type"));
  if (next_type == CurrentType) return false;
  for (int level : {3, 2, 1}) {
    AccountLevel& open = AccountLevels[level];
    // Appropriations close the profit: what follows on level 1 sums the balance sheet alone,
    // whether or not an appropriation printed.
    if (level == 1 && CurrentType == AccountType::Appropriation) open.Zero();
    if (open.Lines == 0) continue;
    std::string caption;
    if (level == 3) {
      caption = "Total " + AccountLevels[1].Description;
    } else if (const char* fixed = TypeTotalCaption(level, CurrentType)) {
      caption = fixed;
    } else {
      continue;
    }
    PrintTotal(detail, level, caption);
    open.State = LevelState::None;
    open.Lines = 0;
    if (level != 1) open.Zero();
    return true;
  }
  CurrentType = next_type;
  if (next_type >= AccountType::Sales && next_type <= AccountType::Capital) {
    AccountLevel& heading = AccountLevels[1];
    heading.State = LevelState::HeadingWaiting;
    heading.Lines = 0;
    heading.Code.clear();
    heading.Description = std::string(TypeHeading(next_type));
    heading.Type = next_type;
    AccountLevels[2].State = LevelState::HeadingWaiting;
    AccountLevels[2].Lines = 0;
    AccountLevels[2].Type = next_type;
  }
  return false;
}

void arglAccountReports::PrintTotal(Section& detail, int level, const std::string& caption) {
  (void)detail;
  const AccountLevel& open = AccountLevels[level];
  // Grouped by type, the type that is ending stays current until every total of it is out.
  if (!by_type_) CurrentType = open.Type;
  CurrentLevel = level;
  if (level == account_summary_level_) {
    // A group at the summary level stands in for its hidden accounts, as an account line does.
    Field("txtCode").SetText(open.Code);
    Field("txtDescription2").SetText(caption);
  } else {
    Control& description = Field("txtDescription");
    description.SetText(caption);
    description.Font().Bold = true;
    Indent(description, level);
  }
  ShowLevelValues(level, false);
}

void arglAccountReports::PrintHeading(Section& detail, const AccountLevel& level) {
  (void)detail;
  ShowValueFields(false, false);
  Field("txtCode").SetText(level.Code);
  Control& description = Field("txtDescription");
  description.SetText(level.Description);
  description.Font().Bold = true;
  int depth = 1;
  for (int l = 1; l <= 5; ++l) {
    if (&AccountLevels[l] == &level) depth = l;
  }
  Indent(description, depth);
}

void arglAccountReports::Indent(Control& description, int level) const {
  const float indent = kIndentPerLevel * static_cast<float>(level - 1);
  description.SetLeft(description_left_ + indent);
  description.SetWidth(description_width_ - indent);
}

void arglAccountReports::ChartRowLine(Section& detail) {
  const PostCode code = PostCodeOf(ChartText("Post"));
  const int a_level = ClampLevel(ChartLong("ALevel"));
  AccountLevel& level = AccountLevels[a_level];
  if (code == PostCode::Total) {
    Field("txtCode").SetText(ChartText("AccountId"));
    Control& description = Field("txtDescription");
    description.SetText(ChartText("Description"));
    description.Font().Bold = true;
    Indent(description, a_level);
    if (level.Lines > 0) {
      CurrentType = AccountTypeOf(ChartLong("Type"));
      CurrentLevel = a_level;
      ShowLevelValues(a_level, true);
    } else {
      ShowValueFields(false, false);
    }
    for (int l = a_level; l <= 5; ++l) {
      AccountLevels[l].State = LevelState::None;
      AccountLevels[l].Lines = 0;
    }
    PendingBlankLine = false;
    MoveNextRow();
    return;
  }
  if (code == PostCode::Page) {
    // A line of nothing that ends the page.
    ShowValueFields(false, false);
    detail.SetHeight(0);
    detail.SetNewPage(NewPageMode::After);
    MoveNextRow();
    return;
  }
  detail.SetVisible(false);
  if (code == PostCode::Clear) {
    for (int l = a_level; l <= 5; ++l) {
      AccountLevels[l].State = LevelState::None;
      AccountLevels[l].Lines = 0;
      AccountLevels[l].Zero();
    }
  } else if (code == PostCode::Group || code == PostCode::Heading) {
    level.State = code == PostCode::Group ? LevelState::TotalDue : LevelState::HeadingWaiting;
    level.Lines = 0;
    level.Code = ChartText("AccountId");
    level.Description = ChartText("Description");
    level.Type = AccountTypeOf(ChartLong("Type"));
    if (code == PostCode::Group) {
      for (int l = a_level + 1; l <= 5; ++l) {
        AccountLevels[l].State = LevelState::None;
        AccountLevels[l].Lines = 0;
      }
      for (int l = a_level; l <= 5; ++l) AccountLevels[l].Zero();
    }
  }
  MoveNextRow();
}

void arglAccountReports::AccountLine(Section& detail) {
  const std::string id = ChartText("AccountId");
  const AccountType type = AccountTypeOf(ChartLong("Type"));
  const int a_level = ClampLevel(ChartLong("ALevel"));
  if (filled_row_ != row_number_) {
    row_drcr_ = ChartText("DrCr");
    FillRow(id, type);
    filled_row_ = row_number_;
  }
  CurrentType = type;
  CurrentLevel = a_level;
  Field("txtCode").SetText(id);
  Field("txtDescription").SetText(ChartText("Description"));
  bool any = ShowLevelValues(kRowLevel, false);
  if (!any && report_ == LedgerReport::GeneralLedger) any = HasLedgerLines(id);
  if (!any) {
    // An empty account leaves no trace: no line, no heading, nothing counted.
    detail.SetVisible(false);
    MoveNextRow();
    return;
  }
  for (int l = 0; l <= 5; ++l) ++AccountLevels[l].Lines;
  const int last_heading = by_type_ ? 1 : a_level;
  for (int l = 1; l <= last_heading; ++l) {
    const AccountLevel& heading = AccountLevels[l];
    const bool waiting =
        by_type_ ? heading.State == LevelState::HeadingWaiting : heading.State != LevelState::None;
    if (waiting && heading.Lines == 1 && l < account_summary_level_) {
      PrintHeading(detail, heading);
      for (int deeper = l + 1; deeper <= 5; ++deeper) --AccountLevels[deeper].Lines;
      for (int above = 0; above <= l; ++above) --AccountLevels[above].Lines;
      ++AccountLevels[l].Lines;
      return;
    }
  }
  LinkFigures(id);
  LastLevel = a_level;
  PendingBlankLine = false;
  if (a_level > account_summary_level_) {
    detail.SetVisible(false);
  } else if (split_sub_) {
    split_account_ = id;
    split_type_ = type;
    Field("srptSplit").SetVisible(true);
    // The split lines carry the General Ledger's opening and lines, code by code.
    if (report_ == LedgerReport::GeneralLedger) {
      for (int n = 1; n <= 3; ++n) {
        if (Control* c = NumField(n)) c->SetVisible(false);
      }
      if (Control* opening = TextField1()) opening->SetVisible(false);
    }
  } else if (report_ == LedgerReport::GeneralLedger) {
    ShowLedgerLines(id);
  }
  for (int l = 0; l <= 5; ++l) {
    for (int n = 1; n <= kMaxColumns; ++n) {
      AccountLevels[l].Values[n] += AccountLevels[kRowLevel].Values[n];
    }
  }
  if (report_ == LedgerReport::GeneralLedger) AddLedgerMovement();
  MoveNextRow();
}

void arglAccountReports::MoveNextRow() {
  if (!chart_->Eof()) chart_->MoveNext();
  ++row_number_;
}

void arglAccountReports::StartCombination() {
  for (const GroupList& group : groups_) {
    if (!group.rs || group.rs->Eof()) {
      // A group with no values leaves no combination to print.
      finished_ = true;
      return;
    }
  }
  if (!chart_->Eof() || chart_->RecordCount() > 0) chart_->MoveFirst();
  ++row_number_;
  for (AccountLevel& level : AccountLevels) level = AccountLevel{};
  CurrentType = AccountType::None;
  CurrentLevel = 0;
  LastLevel = 0;
  PendingBlankLine = false;
  chart_done_ = false;
  for (const GroupList& group : groups_) Fields()[group.field].SetValue(group.rs->Value(0));
  OpenValueSets();
  OpenSplitSets();
}

bool arglAccountReports::NextCombination() {
  for (std::size_t i = groups_.size(); i-- > 0;) {
    Recordset& rs = *groups_[i].rs;
    rs.MoveNext();
    if (rs.Eof()) continue;
    for (std::size_t inner = i + 1; inner < groups_.size(); ++inner) groups_[inner].rs->MoveFirst();
    StartCombination();
    return true;
  }
  return false;
}

std::string arglAccountReports::GroupFilter() const {
  // Statements whose queries join Account name the ledger's columns with their table.
  const bool qualified = report_ == LedgerReport::FinancialStatement ||
                         report_ == LedgerReport::LastYearComparison ||
                         report_ == LedgerReport::PeriodSummary;
  std::string filter;
  for (const GroupList& group : groups_) {
    const Variant& value = group.rs->Value(0);
    const std::string field = (qualified ? "glTransaction." : "") + group.field;
    std::string condition;
    if (value.IsNull()) {
      condition = field + " IS Null";
    } else if (!value.Text().empty()) {
      condition = field + "=" + Database::SQLString(value.Text());
    }
    if (condition.empty()) continue;
    filter += (filter.empty() ? "" : " AND ") + condition;
  }
  return filter;
}

}  // namespace trellin
