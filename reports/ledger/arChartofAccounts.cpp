// The chart's key, the names of its codes and the balances read once.

#include "reports/ledger/arChartofAccounts.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kChartOrders[] = {{"Code", "Account.AccountId"}};

// "5" shows every level; a lower one hides the rows below it.
constexpr ListChoice kChartLevels[] = {
    {"5", "", ""},
    {"4", "Account.ALevel<=4", "Levels 1 to 4"},
    {"3", "Account.ALevel<=3", "Levels 1 to 3"},
    {"2", "Account.ALevel<=2", "Levels 1 to 2"},
    {"1", "Account.ALevel<=1", "Level 1 only"},
};

constexpr ListParameter kChartParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Account.AccountId",
     .index = 0,
     .primary = true},
    {.kind = ListParameterKind::Choice,
     .name = "Levels",
     .caption = "Levels",
     .choices = kChartLevels},
    {.kind = ListParameterKind::Option, .name = "ShowBalances", .caption = "Show Balances"},
    kPostingOnly,
};

constexpr ListKey kChartKeys[] = {{
    .key = "ChartofAccounts",
    .base_sql =
        "SELECT Account.AccountId,Account.Description,Account.Post,Account.Type,Account.ALevel,"
        "Account.DrCr FROM Account",
    .orders = kChartOrders,
    .parameters = kChartParameters,
}};

// Each level below the first sits this much further in.
constexpr float kChartIndent = 240;

const Variant& ChartValue(const Fields& fields, std::string_view name) {
  static const Variant kNull = Variant::Null();
  const ReportField* field = fields.Find(name);
  return field == nullptr ? kNull : field->Value();
}

}  // namespace

arChartofAccounts::arChartofAccounts() : ListDesigner("arChartofAccounts", kChartKeys) {}

DesignerPtr CreatearChartofAccounts() { return std::make_shared<arChartofAccounts>(); }

void arChartofAccounts::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  AddDateAsAt(TLReport()->Parameters());
}

void arChartofAccounts::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  show_balances_ = p.Value("ShowBalances", false).ToBool();
  balances_.clear();
  if (show_balances_) {
    std::string where;
    std::string ignored;
    AppendDateRangeCondition(where, "Date", Variant::Null(), p.Value("DateAsAt", Variant::Null()),
                             "", ignored);
    std::string sql = "SELECT AccountId,Sum(Value) AS Balance FROM glTransaction";
    if (!where.empty()) sql += " WHERE " + where;
    sql += " GROUP BY AccountId";
    auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
    for (; !rs->Eof(); rs->MoveNext()) {
      balances_[UCase(rs->Value(0).Text())] = rs->Value(1).ToCurrency();
    }
  }
  for (const char* name : {"lblDebit", "lblCredit", "txtDebit", "txtCredit", "txtTotalDebit",
                           "txtTotalCredit", "linTotal", "lblTotal"}) {
    if (Control* c = FindControl(name)) c->SetVisible(show_balances_);
  }
  ListDesigner::ActiveReport_ReportStart();
  if (show_balances_) {
    std::string description = Description();
    const Variant as_at = p.Value("DateAsAt", Variant::Null());
    AppendDescription(
        description,
        as_at.IsDate()
            ? "Balances as at " +
                  Format(as_at, TrellinReportGlobals::RequireBusinessLayer().DateFormat())
            : "Balances to date");
    if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
  }
}

void arChartofAccounts::ActiveReport_DataInitialize() {
  for (const char* name : {"Kind", "Class", "Debit", "Credit"}) Fields().Add(name);
}

void arChartofAccounts::ActiveReport_FetchData(bool&) {
  const std::string post = UCase(Trim(ChartValue(Fields(), "Post").Text()));
  Fields().Add("Kind").SetValue(Variant(AccountKindName(post)));
  Fields().Add("Class").SetValue(Variant(AccountClassName(ChartValue(Fields(), "Type"))));
  Variant debit = Variant::Null();
  Variant credit = Variant::Null();
  if (show_balances_ && post.empty()) {
    auto found = balances_.find(UCase(ChartValue(Fields(), "AccountId").Text()));
    const Currency balance = found == balances_.end() ? Currency() : found->second;
    if (balance > Currency()) debit = Variant(balance);
    if (balance < Currency()) credit = Variant(Currency() - balance);
  }
  Fields().Add("Debit").SetValue(debit);
  Fields().Add("Credit").SetValue(credit);
}

// Each row sits in by its level; the chart's shaping rows are bold.
void arChartofAccounts::Detail_Format() {
  Control& description = Field("txtDescription");
  if (description_left_ < 0) {
    description_left_ = description.Left();
    description_width_ = description.Width();
  }
  const Variant& level = ChartValue(Fields(), "ALevel");
  const long depth = level.IsNull() || level.IsEmpty() ? 1 : std::max(1L, level.ToLong());
  const float indent = kChartIndent * static_cast<float>(std::min(depth, 5L) - 1);
  description.SetLeft(description_left_ + indent);
  description.SetWidth(description_width_ - indent);
  const bool shaping = !Trim(ChartValue(Fields(), "Post").Text()).empty();
  for (const char* name : {"txtCode", "txtDescription"}) Field(name).Font().Bold = shaping;
}

}  // namespace trellin
