// The aged report's SQL routine: the period ends, the five column sub-queries in both date modes,
// the main query clause by clause, the heading lines and the groups.

#include <stdexcept>
#include <vector>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/ReceivablesShared.h"
#include "reports/receivables/ardscrAgedOverdueReport.h"

namespace trellin {

namespace {

// The report's own groupings: the field, the query naming a group's code, and the conditional
// that narrows the column sub-queries to the row's group.
struct OwnGrouping {
  const char* name;
  const char* field;
  const char* key_field;
  const char* list_sql;
  const char* null_test;    // the row's field is Null
  const char* null_branch;  // then the sub-query's transactions with none
  const char* match;        // else those with the row's value
};

// clang-format off
constexpr OwnGrouping kOwnGroupings[] = {
    {"Transaction Employee", "Transactions.EmployeeId", "EmployeeId",
     "SELECT EmployeeId,Name FROM Employee", "Transactions.EmployeeId Is Null",
     "T.EmployeeId Is Null", "T.EmployeeId=Transactions.EmployeeId"},
    {"Transaction Location", "Transactions.LocationId", "LocationId",
     "SELECT LocationId,Description FROM Location", "Transactions.LocationId Is Null",
     "T.LocationId Is Null", "T.LocationId=Transactions.LocationId"},
    {"Stop Credit", "CustomerStopCredit", "CustomerStopCredit", "", nullptr, nullptr, nullptr},
};
// clang-format on

const OwnGrouping* FindOwnGrouping(const std::string& name) {
  for (const OwnGrouping& row : kOwnGroupings) {
    if (name == row.name) return &row;
  }
  return nullptr;
}

// Which date decides each column without document dates: P for an item with no due date (its
// process date, below; the upper bound on its own date), Q for the others (the due date).
struct DueDateColumn {
  const char* name;
  int from;  // index of the period end whose next day is the lower bound; -1 none
  int to;    // index of the period end whose next day is the upper bound; -1 none
};

constexpr DueDateColumn kDueDateColumns[] = {
    {"Column1", -1, 0}, {"Column2", 0, 1}, {"Column3", 1, 2}, {"Column4", 2, 3}, {"Future", 3, -1},
};

}  // namespace

std::string ardscrAgedOverdueReport::DateText(Date date) const {
  return Format(Variant(date), TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

std::string ardscrAgedOverdueReport::ColumnsSQL() const {
  const LedgerSide& side = SideOfDebtor(debtor_);
  const std::string value = debtor_ ? "-ValueRemaining" : "ValueRemaining";
  const std::string range(side.range);
  const std::string x = column_filter_.empty() ? std::string() : " AND " + column_filter_;
  auto next_day = [&](int index) {
    return Database::SQLDate(ends_[static_cast<std::size_t>(index)].AddDays(1));
  };
  const std::string a1 = Database::SQLDate(as_at_.AddDays(1));
  const std::string head = ",(SELECT Sum(" + value +
                           ") FROM Transactions T WHERE T.OtherPartyId=OtherParty.OtherPartyId";
  std::string sql;
  if (apply_transaction_date_) {
    // Only the oldest column is bounded by the as-at date; the others take an item dated after
    // it by its own date.
    sql += head + " AND T.[Date]<" + a1 + " AND T.Date<" + next_day(0) + " AND T.Type Between " +
           range + x + ") AS Column1";
    for (int i = 1; i <= 3; ++i) {
      sql += head + " AND T.[Date]>=" + next_day(i - 1) + " AND T.[Date]<" + next_day(i) +
             " AND T.Type Between " + range + x + ") AS Column" + std::to_string(i + 1);
    }
    sql +=
        head + " AND T.[Date]>=" + next_day(3) + " AND T.Type Between " + range + x + ") AS Future";
    return sql;
  }
  const std::string yes = Database::SQLBoolean(true);
  const std::string no = Database::SQLBoolean(false);
  for (const DueDateColumn& column : kDueDateColumns) {
    std::string p;
    std::string q;
    if (column.from < 0) {
      p = "T.DateProcess<" + next_day(column.to);
      q = "T.DatePayment<" + next_day(column.to);
    } else if (column.to < 0) {
      p = "T.DateProcess>=" + next_day(column.from);
      q = "T.DatePayment>=" + next_day(column.from);
    } else {
      // The upper bound of an item with no due date tests its own date, the lower its process
      // date, so such an item can fall between two columns.
      p = "T.DateProcess>=" + next_day(column.from) + " AND T.[Date]<" + next_day(column.to);
      q = "T.DatePayment>=" + next_day(column.from) + " AND T.DatePayment<" + next_day(column.to);
    }
    const bool fourth = std::string_view(column.name) == "Column4";
    // The fourth column tests its due date unprefixed and reads from "Transactions  T".
    const std::string conditional =
        Database::SQLIIf(fourth ? "DatePayment Is Null" : "T.DatePayment Is Null",
                         Database::SQLIIf(p, yes, no), Database::SQLIIf(q, yes, no));
    sql += ",(SELECT Sum(" + value + ") FROM Transactions " + (fourth ? " " : "") +
           "T WHERE T.OtherPartyId=OtherParty.OtherPartyId AND (T.[Date]<" + a1 + ") AND (" +
           conditional + "=" + yes + ") AND T.Type Between " + range + x + ") AS " + column.name;
  }
  return sql;
}

std::string ardscrAgedOverdueReport::LastPaymentSQL() const {
  const std::string type = debtor_ ? "35" : "25";
  const std::string tail =
      " FROM Transactions WHERE Transactions.OtherPartyId=OtherParty.OtherPartyId"
      " AND Type=" +
      type + " ORDER BY DateProcess DESC,TransactionId DESC)";
  return ",(SELECT TOP 1 DateProcess" + tail + " AS LastDate" + ",(SELECT TOP 1 " +
         (debtor_ ? "Value" : "-Value") + tail + " AS LastValue";
}

void ardscrAgedOverdueReport::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  const LedgerSide& side = SideOfDebtor(debtor_);
  const Variant as_at = p.Value("DateAsAt", Variant::Null());
  if (!HasDate(as_at)) {
    throw std::invalid_argument("Date As At: the aged report needs a date to age by.");
  }
  as_at_ = as_at.ToDate().DateOnly();
  frequency_ = p.Value("Frequency", "EOM").Text();
  const std::optional<AgeingEnds> ends = AgeingPeriodEnds(frequency_, as_at_);
  if (!ends) {
    throw std::invalid_argument("Frequency: \"" + frequency_ + "\" is not one of " +
                                std::string(kAgeingFrequencies) + ".");
  }
  ends_ = *ends;
  summary_ = p.Value("Summary", false).ToBool();
  back_date_ = p.Value("BackDate", false).ToBool();
  show_nil_ = p.Value("ShowNil", false).ToBool();
  apply_transaction_date_ = p.Value("ApplyTransactionDate", false).ToBool();
  show_email_ = debtor_ && p.Value("ShowEmail", false).ToBool();
  overdue_from_ = p.Value("OverdueFrom", kNumberRangeMinimum).ToCurrency();
  overdue_to_ = p.Value("OverdueTo", kNumberRangeMaximum).ToCurrency();

  heading_.clear();
  AddHeadings();

  std::string select = "OtherParty.OtherPartyId,OtherParty.Name,XRefId";
  std::string group_by = select;
  if (debtor_) {
    select += ",CustomerCreditLimit,CustomerActive AS Active,CustomerStopCredit";
    group_by += ",CustomerCreditLimit,CustomerActive,CustomerStopCredit";
  } else {
    select += ",SupplierActive AS Active";
    group_by += ",SupplierActive";
  }
  std::string where;
  AppendSQLCondition(where, std::string(side.party_flag) + "=" + Database::SQLBoolean(true));
  AddFilters(where);

  const std::string order_by = p.Value("OrderBy", "Code").Text();
  sort_ = "OtherPartyId";
  if (order_by == "Name") sort_ = "Name,OtherPartyId";
  if (order_by == "X Ref") sort_ = "XRefId";
  if (order_by == "Overdue") sort_ = "TotalOverdue DESC";
  column_filter_.clear();
  AddGroupings(select, group_by);
  if (!debtor_ || p.Value("ShowLastReceipt", false).ToBool()) select += LastPaymentSQL();

  sql_ = "SELECT " + select + ColumnsSQL() +
         " FROM OtherParty INNER JOIN Transactions ON OtherParty.OtherPartyId = "
         "Transactions.OtherPartyId WHERE " +
         where + " Group By " + group_by;
}

void ardscrAgedOverdueReport::AddHeadings() {
  trellin::Parameters& p = TLReport()->Parameters();
  const LedgerSide& side = SideOfDebtor(debtor_);
  AppendDescription(heading_, std::string(side.heading_word) + " ordered by " +
                                  p.Value("OrderBy", "Code").Text());
  AppendDescription(heading_, "Dated as at " + DateText(as_at_));
  // The bounds apply to each row's overdue total once the rows are worked out; the condition
  // the range helper writes is not used.
  std::string unused;
  AppendNumberRangeCondition(unused, "TotalOverdue", overdue_from_, overdue_to_,
                             kNumberRangeMinimum, kNumberRangeMaximum, "Overdues", heading_,
                             TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0));
  if (back_date_) AppendDescription(heading_, "Allocations Back Dated");
  if (apply_transaction_date_) AppendDescription(heading_, "Invoice date applied");
}

void ardscrAgedOverdueReport::AddFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  const LedgerSide& side = SideOfDebtor(debtor_);
  AppendPartyFilter(where, p, heading_, side);
  const std::int64_t overdue_days = p.Value("OverdueDays", 0).ToLong();
  if (overdue_days > 0) {
    // The oldest open item's due date; the sign of an open item turns with the side.
    const Date due_by = as_at_.AddDays(-static_cast<int>(overdue_days));
    AppendSQLCondition(
        where,
        "(SELECT TOP 1 Min(Transactions.DatePayment) FROM Transactions WHERE "
        "OtherParty.OtherPartyId=Transactions.OtherPartyId AND (Transactions.Type Between " +
            std::string(side.range) + ") AND Transactions.ValueRemaining" +
            (debtor_ ? "<0" : ">0") +
            " GROUP BY Transactions.DatePayment ORDER BY Transactions.DatePayment)<=" +
            Database::SQLDate(due_by));
    AppendDescription(heading_, "Overdue on or before " + DateText(due_by));
  }
  const std::string stop_credit = debtor_ ? p.Value("StopCreditOption", "").Text() : "";
  if (stop_credit == "On Stop Credit" || stop_credit == "Not on Stop Credit") {
    AppendSQLCondition(
        where, "CustomerStopCredit=" + Database::SQLBoolean(stop_credit == "On Stop Credit"));
    AppendDescription(heading_, stop_credit);
  }
  AppendPartyPlaceFilters(where, p, heading_, "Locations", "Employees");
  AppendPartyListFilters(where, p, heading_);
  AppendListParameterCondition(where, "Transactions.EmployeeId", "TransactionEmployees", p,
                               heading_, kRangeText);
  AppendListParameterCondition(where, "Transactions.LocationId", "TransactionLocations", p,
                               heading_, kRangeText);
  AppendUserDefinedFilters(where, p, heading_, "OtherParty");
  AppendUserDefinedFilters(where, p, heading_, "Transactions");
  if (show_nil_) AppendDescription(heading_, "Nil Balances included");
}

void ardscrAgedOverdueReport::AddGroupings(std::string& select, std::string& group_by) {
  auto own_grouping = [&](ChosenGrouping& g) {
    const OwnGrouping* own = FindOwnGrouping(g.name);
    if (own == nullptr) return false;
    g.field = own->field;
    g.list_sql = own->list_sql;
    g.key_field = own->key_field;
    if (own->null_test != nullptr) {
      const std::string narrow = Database::SQLIIf(own->null_test, own->null_branch, own->match);
      column_filter_ = column_filter_.empty() ? narrow : column_filter_ + " AND " + narrow;
    }
    return true;
  };
  for (const ChosenGrouping& g :
       ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), "OtherParty",
                       own_grouping, UnknownGrouping::kSkip, kGroupLevels)) {
    MoveInCommaList(select, g.field, false, false);
    MoveInCommaList(group_by, g.field, false, true);
    // The rows are sorted in the recordset, where the field goes by its own name.
    MoveInCommaList(sort_, g.key_field, true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
}

}  // namespace trellin
