// The ledger's SQL routine: the party query clause by clause, the heading lines, the groups and
// the sub-report's state.

#include <stdexcept>
#include <vector>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/ardscrLedger.h"

namespace trellin {

namespace {

Variant DateOrNull(const Variant& v) { return HasDate(v) ? Variant(v.ToDate()) : Variant::Null(); }

// The database's conditional that reads a Null sum as 0.
std::string NullGuard(const std::string& x) { return Database::SQLIIf(x + " IS NULL", "0", x); }

}  // namespace

std::string ardscrLedger::DateText(const Variant& date) const {
  if (!HasDate(date)) return {};
  return Format(Variant(date.ToDate()), TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

std::string ardscrLedger::PartySum(const std::string& x) const {
  const LedgerSide& side = SideOfDebtor(debtor_);
  return "(SELECT Sum(" + std::string(side.sign) + x +
         ") FROM Transactions WHERE Transactions.OtherPartyId=OtherParty.OtherPartyId AND "
         "Transactions.Type Between " +
         std::string(side.range);
}

std::string ardscrLedger::BalanceAsAt() const {
  const LedgerSide& side = SideOfDebtor(debtor_);
  return "((SELECT Sum(" + std::string(side.sign) +
         "Transactions.ValueRemaining) FROM Transactions WHERE "
         "Transactions.OtherPartyId=OtherParty.OtherPartyId AND Transactions.Type Between " +
         std::string(side.range) + ")-" +
         NullGuard(PartySum("Transactions.Value") + " AND Transactions.Date>=" +
                   Database::SQLDate(date_as_at_.ToDate().AddDays(1)) + ")") +
         ")";
}

void ardscrLedger::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  const LedgerSide& side = SideOfDebtor(debtor_);
  const FinancialCalendar& calendar =
      TrellinReportGlobals::RequireApplication().FinancialCalendar();

  date_as_at_ = DateOrNull(p.Value("DateAsAt", Variant::Null()));
  if (date_as_at_.IsNull()) {
    throw std::invalid_argument("Date As At: the ledger needs a date to run to.");
  }
  period_ = p.Value("Period", "MTD").Text();
  date_to_ = DateOrNull(p.Value("DateTo", Variant::Null()));
  date_from_ =
      DateOrNull(LedgerDateFrom(period_, date_to_, p.Value("DateFrom", Variant::Null()), calendar));
  // The run's parameter summary shows the first day the period came to.
  if (p.Exists("DateFrom") && period_ != "Custom") p.SetValue("DateFrom", date_from_);

  std::string select = "OtherParty.OtherPartyId,OtherParty.Name";
  heading_.clear();
  AppendDescription(heading_, "Dated as at " + DateText(date_as_at_));
  AppendDescription(heading_, std::string(side.heading_word) + " ordered by " +
                                  p.Value("OrderBy", "Code").Text());
  std::string where;
  AppendSQLCondition(where, std::string(side.party_flag) + "=" + Database::SQLBoolean(true));
  AddFilters(where);
  std::string period_columns;
  AddPeriodFilter(where, period_columns);

  std::string order;
  AddGroupings(select, order);
  select += period_columns;
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  std::string party_order = "OtherParty.OtherPartyId";
  if (order_by == "Name") party_order = "OtherParty.Name";
  if (order_by == "X Ref") party_order = "OtherParty.XRefId";
  MoveInCommaList(order, party_order, false, true);

  sql_ = "SELECT " + select + " FROM OtherParty WHERE " + where + " ORDER BY " + order;
  AddPeriodHeading();
  MakeSubReport();
}

void ardscrLedger::AddFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  AppendPartyFilter(where, p, heading_, SideOfDebtor(debtor_));
  AppendPartyPlaceFilters(where, p, heading_, "Locations", "Employees");
  AppendPartyListFilters(where, p, heading_);
  AppendUserDefinedFilters(where, p, heading_, "OtherParty");
}

void ardscrLedger::AddPeriodFilter(std::string& where, std::string& columns) {
  trellin::Parameters& p = TLReport()->Parameters();
  const LedgerSide& side = SideOfDebtor(debtor_);
  const std::string sign(side.sign);
  const std::string range(side.range);
  const Currency overdue_from = p.Value("OverdueFrom", kNumberRangeMinimum).ToCurrency();
  const Currency overdue_to = p.Value("OverdueTo", kNumberRangeMaximum).ToCurrency();
  const std::string money_format = TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0);
  const std::string party = "Transactions.OtherPartyId=OtherParty.OtherPartyId";

  if (period_ == "Outstanding") {
    const std::string balance = BalanceAsAt();
    if (overdue_from != kNumberRangeMinimum || overdue_to != kNumberRangeMaximum) {
      AppendNumberRangeCondition(where, balance, overdue_from, overdue_to, kNumberRangeMinimum,
                                 kNumberRangeMaximum, "Overdues", heading_, money_format);
    } else {
      AppendSQLCondition(where, balance + "<>0");
    }
    columns = ",0 AS SumOfValue,(" + balance + ") AS Opening";
    return;
  }

  // Overdue: all that fell due by the as-at date and is not yet allocated.
  AppendNumberRangeCondition(
      where,
      "(SELECT Sum(" + sign +
          "Transactions.ValueRemaining) FROM "
          "Transactions WHERE " +
          party + " AND (Transactions.Type between " + range +
          ") AND Transactions.DatePayment<=" + Database::SQLDate(date_as_at_.ToDate()) + ")",
      overdue_from, overdue_to, kNumberRangeMinimum, kNumberRangeMaximum, "Overdues", heading_,
      money_format);
  const std::int64_t overdue_days = p.Value("OverdueDays", 0).ToLong();
  if (overdue_days > 0) {
    // The oldest open item's due date. ValueRemaining<0 is an open debt on the receivables side
    // only; the payables ledger asks the same of its open payments and credits.
    const Date due_by = date_as_at_.ToDate().AddDays(-static_cast<int>(overdue_days));
    AppendSQLCondition(
        where, "(SELECT TOP 1 Min(Transactions.DatePayment) FROM Transactions WHERE " + party +
                   " AND (Transactions.Type between " + range +
                   ") AND Transactions.ValueRemaining<0 GROUP BY "
                   "Transactions.DatePayment ORDER BY Transactions.DatePayment)<=" +
                   Database::SQLDate(due_by));
    AppendDescription(heading_, "Overdue on or before " + DateText(due_by));
  }

  // The period's bounds on DateProcess; an absent date leaves its bound out, as the
  // sub-report's date clause does, so "ALL" counts every transaction to DateTo.
  std::vector<std::string> bounds;
  if (!date_from_.IsNull()) {
    bounds.push_back("Transactions.DateProcess>=" + Database::SQLDate(date_from_.ToDate()));
  }
  if (!date_to_.IsNull()) {
    bounds.push_back("Transactions.DateProcess<" + Database::SQLDate(date_to_.ToDate().AddDays(1)));
  }
  const std::string in_period = bounds.empty() ? "" : " AND (" + Join(bounds, " AND ") + ")";
  const std::string from_date =
      date_from_.IsNull() ? "" : " AND DateProcess>=" + Database::SQLDate(date_from_.ToDate());
  const std::string all_remaining = "(SELECT Sum(ValueRemaining) FROM Transactions WHERE " + party +
                                    " AND (Transactions.Type Between " + range + "))";
  const std::string moved_since = "(SELECT Sum(Value) FROM Transactions WHERE " + party +
                                  from_date + " AND (Transactions.Type Between " + range + "))";
  // A party shows when it moved in the period or opened it with a balance.
  where += " AND (((SELECT Count(Transactions.TransactionId) FROM Transactions WHERE " + party +
           " AND (Transactions.Type Between " + range + ")" + in_period + ")<>0) OR (" +
           NullGuard(all_remaining) + "-" + NullGuard(moved_since) + "<>0))";

  if (period_ == "ALL") {
    columns = ",(SELECT Sum(" + sign + "Transactions.Value) FROM Transactions WHERE " + party +
              " AND (Transactions.Type Between " + range + ")) AS SumOfValue,0 AS Opening";
    return;
  }
  columns = ",(SELECT Sum(" + sign + "Transactions.Value) FROM Transactions WHERE " + party +
            " AND (Transactions.Type Between " + range + ")" + in_period + ") AS SumOfValue";
  const std::string sum_remaining = "(SELECT Sum(" + sign +
                                    "ValueRemaining) FROM Transactions WHERE " + party +
                                    " AND (Transactions.Type Between " + range + "))";
  const std::string sum_since = "(SELECT Sum(" + sign + "Value) FROM Transactions WHERE " + party +
                                from_date + " AND (Transactions.Type Between " + range + "))";
  columns += ",(" + NullGuard(sum_remaining) + "-" + NullGuard(sum_since) + ") AS Opening";
}

void ardscrLedger::AddGroupings(std::string& select, std::string& order) {
  for (const ChosenGrouping& g :
       ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), "OtherParty", {},
                       UnknownGrouping::kSkip)) {
    MoveInCommaList(select, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
}

void ardscrLedger::AddPeriodHeading() {
  auto dmy = [](const Variant& date) {
    return HasDate(date) ? Format(Variant(date.ToDate()), "d/m/yyyy") : std::string();
  };
  if (period_ == "ALL" || period_ == "MTD" || period_ == "QTD" || period_ == "YTD") {
    AppendDescription(heading_, period_ + " " + dmy(date_to_));
  } else if (period_ == "Custom") {
    AppendDescription(heading_, "Period Covered from " + dmy(date_from_) + " to " + dmy(date_to_));
  } else if (period_ == "Outstanding") {
    AppendDescription(heading_, "Outstanding Balances");
  }
}

void ardscrLedger::MakeSubReport() {
  sub_ = std::make_shared<ardscrLedgerSub>();
  Field("srptTransactions").SetObject(sub_);
  sub_->TLReport = TLReport();
  sub_->SQLOrderBySub = TLReport()->Parameters().Value("TransactionOrderBy", "Date").Text();
  sub_->Period = period_;
  sub_->dateAsAt = date_as_at_;
  sub_->DateFrom = date_from_;
  sub_->DateTo = date_to_;
  sub_->Debtor = debtor_;
  sub_->Queries = query_log_;
}

}  // namespace trellin
