// The bank high-low key, and its rows made from the banks' day-end balances.

#include "reports/ledger/arglBankHighLow.h"

#include <map>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

enum class HighLowFrequency { Daily, Weekly, Monthly };

constexpr ListOrder kHighLowOrders[] = {{"Code", "Bank.BankId"}};

constexpr ListChoice kHighLowFrequencies[] = {
    {"Daily", "", "Balances by day"},
    {"Weekly", "", "Balances by week, Monday to Sunday"},
    {"Monthly", "", "Balances by month"},
};

constexpr ListParameter kHighLowParameters[] = {
    BanksParameter("Bank.BankId"),
    DatedParameter(),
    {.kind = ListParameterKind::Choice,
     .name = "Frequency",
     .caption = "Frequency",
     .choices = kHighLowFrequencies},
};

// A bank no longer in use is left out, as on the bank ledger: it may share its account with the
// one that took its place.
constexpr ListKey kHighLowKeys[] = {{
    .key = "BankHighLow",
    .base_sql =
        "SELECT Bank.BankId,Bank.AccountName,Bank.AssetAccountId,Bank.OverdraftLimit FROM Bank",
    .base_where = "Bank.InUse=True",
    .orders = kHighLowOrders,
    .parameters = kHighLowParameters,
}};

constexpr const char* kHighLowFields[] = {
    "BankId",    "AccountName", "AssetAccountId", "OverdraftLimit", "PeriodFrom",   "PeriodTo",
    "Opening",   "Lowest",      "LowestOn",       "Highest",        "HighestOn",    "Closing",
    "OverLimit", "RunLowest",   "RunLowestOn",    "RunHighest",     "RunHighestOn", "Limit",
};

HighLowFrequency HighLowFrequencyOf(const std::string& value) {
  if (EqualsIgnoreCase(value, "Weekly")) return HighLowFrequency::Weekly;
  if (EqualsIgnoreCase(value, "Monthly")) return HighLowFrequency::Monthly;
  return HighLowFrequency::Daily;
}

// The last day of the period that `day` starts, cut at `last`. A week ends on a Sunday.
Date HighLowPeriodEnd(Date day, HighLowFrequency frequency, Date last) {
  Date end = day;
  if (frequency == HighLowFrequency::Weekly) {
    const int from_monday = (static_cast<int>(day.DayOfWeek()) + 5) % 7;
    end = day.AddDays(6 - from_monday);
  } else if (frequency == HighLowFrequency::Monthly) {
    end = day.LastOfMonth();
  }
  return end < last ? end : last;
}

using HighLowDays = std::map<Date, Currency>;

// Each bank account's movement per day in the dates, by account upper-cased.
std::map<std::string, HighLowDays, std::less<>> HighLowDailyMovements(const Variant& from,
                                                                      const Variant& to) {
  std::string where = "AccountId In (SELECT AssetAccountId FROM Bank)";
  std::string ignored;
  AppendDateRangeCondition(where, "Date", from, to, "", ignored);
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
      "SELECT AccountId,Date,Sum(Value) AS Movement FROM glTransaction WHERE " + where +
      " GROUP BY AccountId,Date");
  std::map<std::string, HighLowDays, std::less<>> movements;
  for (; !rs->Eof(); rs->MoveNext()) {
    movements[UCase(rs->Value(0).Text())][rs->Value(1).ToDate().DateOnly()] +=
        rs->Value(2).ToCurrency();
  }
  return movements;
}

bool HighLowBlank(const Variant& v) { return v.IsNull() || v.IsEmpty() || v.IsMissing(); }

}  // namespace

arglBankHighLow::arglBankHighLow() : ListDesigner("arglBankHighLow", kHighLowKeys) {}

DesignerPtr CreatearglBankHighLow() { return std::make_shared<arglBankHighLow>(); }

// Balances are taken at the end of each day, as a bank statement's are, so the order of a day's
// lines does not matter; a day with no lines keeps the balance of the day before. A period's
// lowest and highest are among its opening, held on its first day until that day's lines, and its
// day-end balances, and fall on the first day that reaches them.
void arglBankHighLow::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  const trellin::Parameters& p = TLReport()->Parameters();
  const Variant from = p.Value("DatedFrom", Variant::Null());
  const Variant to = p.Value("DatedTo", Variant::Null());
  const HighLowFrequency frequency =
      HighLowFrequencyOf(p.Value("Frequency", Variant("Daily")).Text());
  const auto openings = BankOpenings(from);
  const auto movements = HighLowDailyMovements(from, to);
  // Open dates run from the first day any bank moved to the last.
  std::optional<Date> first, last;
  if (!HighLowBlank(from)) first = from.ToDate().DateOnly();
  if (!HighLowBlank(to)) last = to.ToDate().DateOnly();
  for (const auto& [account, days] : movements) {
    if (days.empty()) continue;
    if (HighLowBlank(from) && (!first || days.begin()->first < *first)) first = days.begin()->first;
    if (HighLowBlank(to) && (!last || days.rbegin()->first > *last)) last = days.rbegin()->first;
  }
  rows_.clear();
  next_ = 0;
  const auto& banks = DataControl().Recordset();
  for (; banks && !banks->Eof() && first && last; banks->MoveNext()) {
    PeriodRow row;
    row.bank = banks->Value("BankId").Text();
    row.account_name = banks->Value("AccountName").Text();
    row.account = banks->Value("AssetAccountId").Text();
    row.overdraft_limit = banks->Value("OverdraftLimit").ToCurrency();
    const std::string key = UCase(row.account);
    auto opening = openings.find(key);
    Currency balance = opening == openings.end() ? Currency() : opening->second;
    auto found = movements.find(key);
    const HighLowDays none;
    const HighLowDays& days = found == movements.end() ? none : found->second;
    const std::size_t bank_first = rows_.size();
    for (Date start = *first; start <= *last;) {
      const Date end = HighLowPeriodEnd(start, frequency, *last);
      row.from = start;
      row.to = end;
      row.opening = row.lowest = row.highest = balance;
      row.lowest_on = row.highest_on = start;
      for (Date day = start; day <= end; day = day.AddDays(1)) {
        if (auto moved = days.find(day); moved != days.end()) balance += moved->second;
        if (balance < row.lowest) row.lowest = balance, row.lowest_on = day;
        if (balance > row.highest) row.highest = balance, row.highest_on = day;
      }
      row.closing = balance;
      rows_.push_back(row);
      start = end.AddDays(1);
    }
    // The run's extremes: the first period that reaches each.
    for (std::size_t i = bank_first; i < rows_.size(); ++i) {
      const PeriodRow& r = rows_[i];
      if (i == bank_first || r.lowest < row.run_lowest) {
        row.run_lowest = r.lowest, row.run_lowest_on = r.lowest_on;
      }
      if (i == bank_first || r.highest > row.run_highest) {
        row.run_highest = r.highest, row.run_highest_on = r.highest_on;
      }
    }
    for (std::size_t i = bank_first; i < rows_.size(); ++i) {
      rows_[i].run_lowest = row.run_lowest;
      rows_[i].run_lowest_on = row.run_lowest_on;
      rows_[i].run_highest = row.run_highest;
      rows_[i].run_highest_on = row.run_highest_on;
    }
  }
  // The rows are made; the report runs over them unbound.
  DataControl().SetSource("");
  const bool daily = frequency == HighLowFrequency::Daily;
  if (Control* label = FindControl("lblFrom")) label->SetCaption(daily ? "Day" : "From");
  // A day's lowest and highest fall on the day itself.
  for (const char* name :
       {"lblTo", "txtTo", "lblLowestOn", "txtLowestOn", "lblHighestOn", "txtHighestOn"}) {
    if (Control* c = FindControl(name)) c->SetVisible(!daily);
  }
  if (rows_.empty()) {
    for (Section& section : Sections()) {
      if (section.Type() == SectionType::GroupHeader ||
          section.Type() == SectionType::GroupFooter) {
        section.SetVisible(false);
      }
    }
  }
}

void arglBankHighLow::ActiveReport_DataInitialize() {
  for (const char* name : kHighLowFields) Fields().Add(name);
}

// A balance below the overdraft limit's negative is over the limit; a bank with no overdraft is
// over it as soon as it is overdrawn.
void arglBankHighLow::ActiveReport_FetchData(bool& eof) {
  if (next_ >= rows_.size()) {
    eof = true;
    return;
  }
  const PeriodRow& r = rows_[next_++];
  const Variant values[] = {
      Variant(r.bank),
      Variant(r.account_name),
      Variant(r.account),
      Variant(r.overdraft_limit),
      Variant(r.from),
      Variant(r.to),
      Variant(r.opening),
      Variant(r.lowest),
      Variant(r.lowest_on),
      Variant(r.highest),
      Variant(r.highest_on),
      Variant(r.closing),
      Variant(r.lowest < Currency() - r.overdraft_limit ? "Over limit" : ""),
      Variant(r.run_lowest),
      Variant(r.run_lowest_on),
      Variant(r.run_highest),
      Variant(r.run_highest_on),
      Variant(r.overdraft_limit == Currency()
                  ? std::string("No overdraft")
                  : "Overdraft limit " + Format(Variant(r.overdraft_limit), "#,##0.00")),
  };
  static_assert(std::size(values) == std::size(kHighLowFields));
  for (std::size_t i = 0; i < std::size(values); ++i)
    Fields()[kHighLowFields[i]].SetValue(values[i]);
  eof = false;
}

void arglBankHighLow::Detail_Format() {
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

}  // namespace trellin
