// The account card's key, its figures read once per run and what links to each account.

#include "reports/ledger/arAccountDetail.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kAccountDetailOrders[] = {
    {"Code", "Account.AccountId"},
    {"Description", "Account.Description,Account.AccountId"},
};

constexpr ListParameter kAccountDetailParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Account.AccountId",
     .index = 0,
     .primary = true},
    kPostingOnly,
};

constexpr ListKey kAccountDetailKeys[] = {{
    .key = "AccountDetails",
    .base_sql = "SELECT Account.* FROM Account",
    .orders = kAccountDetailOrders,
    .parameters = kAccountDetailParameters,
}};

// What the link table's ids stand for.
struct AccountLinkName {
  std::string_view id;
  std::string_view name;
};
constexpr AccountLinkName kAccountLinkNames[] = {
    {"AR", "receivables control"},
    {"AP", "payables control"},
    {"SC", "stock control"},
};

constexpr int kAccountUserFields = 20;

const Variant& AccountValue(const Fields& fields, std::string_view name) {
  static const Variant kNull = Variant::Null();
  const ReportField* field = fields.Find(name);
  return field == nullptr ? kNull : field->Value();
}

// Sum(expression) of `table` per AccountId where `where` holds, into `into`.
void ReadAccountSums(const std::string& expression, const std::string& table,
                     const std::string& where, std::map<std::string, Currency>& into) {
  into.clear();
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(
      "SELECT AccountId,Sum(" + expression + ") AS Figure FROM " + table +
      (where.empty() ? "" : " WHERE " + where) + " GROUP BY AccountId");
  for (; !rs->Eof(); rs->MoveNext()) into[UCase(rs->Value(0).Text())] = rs->Value(1).ToCurrency();
}

void AddLink(std::map<std::string, std::string>& links, const std::string& account,
             const std::string& text) {
  if (Trim(account).empty()) return;
  std::string& line = links[UCase(Trim(account))];
  line += (line.empty() ? "" : "; ") + text;
}

}  // namespace

arAccountDetail::arAccountDetail() : ListDesigner("arAccountDetail", kAccountDetailKeys) {}

DesignerPtr CreatearAccountDetail() { return std::make_shared<arAccountDetail>(); }

void arAccountDetail::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  AddDateAsAt(TLReport()->Parameters());
}

// The year is the financial year that holds DateAsAt, its movement counted to DateAsAt and the
// year before's in full; year-end entries are no movement. With no year holding the date, the
// movements and budget stay blank.
void arAccountDetail::ActiveReport_ReportStart() {
  BusinessLayer& business = TrellinReportGlobals::RequireBusinessLayer();
  Application& application = TrellinReportGlobals::RequireApplication();
  const FinancialCalendar& calendar = application.FinancialCalendar();
  Variant as_at = TLReport()->Parameters().Value("DateAsAt", Variant::Null());
  if (!as_at.IsDate()) as_at = Variant(calendar.CurrentDateGL(true));
  const Date day = as_at.ToDate().DateOnly();
  std::string ignored;
  std::string where;
  AppendDateRangeCondition(where, "Date", Variant::Null(), Variant(day), "", ignored);
  ReadAccountSums("Value", "glTransaction", where, balances_);
  this_year_.clear();
  last_year_.clear();
  budgets_.clear();
  std::string years;
  if (const std::int64_t id = calendar.YearIdFromDate(day); id != 0) {
    const FinancialYear year = calendar.Year(id);
    where = "Type Is Null";
    AppendDateRangeCondition(where, "Date", Variant(year.DateStart), Variant(day), "", ignored);
    ReadAccountSums("Value", "glTransaction", where, this_year_);
    where.clear();
    AppendDateRangeCondition(where, "Month", Variant(year.DateStart), Variant(year.DateEnd), "",
                             ignored);
    ReadAccountSums("Budget", "glBudget", where, budgets_);
    years = "this year " + year.Name + " from " +
            Format(Variant(year.DateStart), business.DateFormat());
    if (const std::int64_t before = calendar.YearIdFromDate(year.DateStart.AddDays(-1))) {
      const FinancialYear last = calendar.Year(before);
      where = "Type Is Null";
      AppendDateRangeCondition(where, "Date", Variant(last.DateStart), Variant(last.DateEnd), "",
                               ignored);
      ReadAccountSums("Value", "glTransaction", where, last_year_);
      years += ", last year " + last.Name;
    }
  }
  // What links to each account: the link table, the banks and the company's settings.
  links_.clear();
  Database& db = *TrellinReportGlobals::RequireDatabase();
  for (auto rs = db.Query("SELECT AccountLinkId,AccountId FROM AccountLink ORDER BY AccountLinkId");
       !rs->Eof(); rs->MoveNext()) {
    const std::string id = rs->Value(0).Text();
    std::string text = "link " + id;
    for (const AccountLinkName& l : kAccountLinkNames) {
      if (EqualsIgnoreCase(l.id, id)) text += " (" + std::string(l.name) + ")";
    }
    AddLink(links_, rs->Value(1).Text(), text);
  }
  for (auto rs = db.Query("SELECT BankId,AssetAccountId,FeesAccountId FROM Bank ORDER BY BankId");
       !rs->Eof(); rs->MoveNext()) {
    AddLink(links_, rs->Value(1).Text(), "bank " + rs->Value(0).Text());
    AddLink(links_, rs->Value(2).Text(), "bank " + rs->Value(0).Text() + " fees");
  }
  const Options& options = application.Options();
  AddLink(links_, options.RetainedEarningsAccount(), "retained earnings setting");
  AddLink(links_, options.ReceivablesControlAccount(), "receivables control setting");
  AddLink(links_, options.PayablesControlAccount(), "payables control setting");

  ListDesigner::ActiveReport_ReportStart();
  std::string description = Description();
  AppendDescription(description, "Balances as at " + Format(Variant(day), business.DateFormat()) +
                                     (years.empty() ? "" : "; " + years));
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arAccountDetail::ActiveReport_DataInitialize() {
  for (const char* name :
       {"Kind", "Class", "Balance", "ThisYear", "LastYear", "YearBudget", "Links", "UserFields"}) {
    Fields().Add(name);
  }
}

// Only a posting account has figures; a figure the books do not hold is blank, not zero.
void arAccountDetail::ActiveReport_FetchData(bool&) {
  const std::string post = Trim(AccountValue(Fields(), "Post").Text());
  Fields().Add("Kind").SetValue(Variant(AccountKindName(post)));
  Fields().Add("Class").SetValue(Variant(AccountClassName(AccountValue(Fields(), "Type"))));
  const std::string account = UCase(Trim(AccountValue(Fields(), "AccountId").Text()));
  const auto figure = [&](const std::map<std::string, Currency>& from) {
    auto found = from.find(account);
    return !post.empty() || found == from.end() ? Variant::Null() : Variant(found->second);
  };
  Fields().Add("Balance").SetValue(figure(balances_));
  Fields().Add("ThisYear").SetValue(figure(this_year_));
  Fields().Add("LastYear").SetValue(figure(last_year_));
  Fields().Add("YearBudget").SetValue(figure(budgets_));
  auto links = links_.find(account);
  Fields().Add("Links").SetValue(
      Variant(links == links_.end() ? std::string() : "Linked as " + links->second));
  std::string user;
  for (int i = 1; i <= kAccountUserFields; ++i) {
    const std::string value =
        Trim(AccountValue(Fields(), "UserDefined" + std::to_string(i)).Text());
    if (!value.empty()) user += (user.empty() ? "" : "; ") + std::to_string(i) + ": " + value;
  }
  Fields().Add("UserFields").SetValue(Variant(user.empty() ? user : "User defined " + user));
}

}  // namespace trellin
