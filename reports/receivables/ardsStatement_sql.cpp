// The statement run's parameters, its customers' query, and the figures of one customer: the
// closing balance, whether it is issued a statement, and the ageing of its stub.

#include <vector>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/RemainderAsAt.h"
#include "reports/receivables/ardsStatement.h"

namespace trellin {

namespace {

std::string CustomerLiteral(const std::string& code) { return Database::SQLString(code); }

// IIf([DatePayment] Is Null,[Date],DatePayment): a document is due on its own date when it has
// no due date.
std::string StatementDue() {
  return Database::SQLIIf("[DatePayment] Is Null", "[Date]", "DatePayment");
}

Currency FirstMoneyOf(Recordset& rs) {
  if (rs.Eof() || rs.Value(0).IsNull()) return Currency();
  return rs.Value(0).ToCurrency();
}

}  // namespace

StatementOptions ReadStatementOptions(std::string other) {
  StatementOptions options;
  struct Tag {
    const char* text;
    bool StatementOptions::*flag;
  };
  static constexpr Tag kTags[] = {
      {"[HT]", &StatementOptions::hide_letterhead},
      {"[HR]", &StatementOptions::hide_remittance},
      {"[OI]", &StatementOptions::open_item},
  };
  for (const Tag& tag : kTags) {
    const std::size_t at = other.find(tag.text);
    if (at == std::string::npos) continue;
    options.*tag.flag = true;
    other.erase(at, std::string_view(tag.text).size());
  }
  options.rest = std::move(other);
  return options;
}

void ardsStatement::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  const Date current =
      TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateAR(true);
  // Filled by the application that asks for a statement run, and not shown.
  p.AddString("SQLOrderBy", "", false, "", "", false, "");
  p.AddString("SQLWhere", "", false, "", "", false, "");
  p.AddString("DocumentId", "", false, "", "", false, "");
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name,X Ref", false, "Order By");
  p.AddDate("DateAsAt", current, true, "Date As At", "ARCURRENT", false, "Date As At");
  p.AddString("Message", "", false, "", "", false, "Message");
  p.AddString("Other", "", false, "", "", false, "Other");
  CreateStandardParameter(8, p, true, "Customers");
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(15, p, false);
  CreateStandardParameter(9, p, false, "CustomerCategories", "Categories");
  CreateStandardParameter(13, p, false, "CustomerTypes", "Types");
  CreateStandardParameter(12, p, false, "CustomerPaymentTerms", "Pay Terms");
}

std::string ardsStatement::GetSQL() const {
  return "SELECT OtherParty.OtherPartyId,OtherParty.XRefId FROM OtherParty WHERE " + GetSQLWhere() +
         " ORDER BY " + GetSQLOrderBy();
}

std::string ardsStatement::GetSQLWhere() const {
  const trellin::Parameters& p = TLReport()->Parameters();
  std::string where = "OtherParty.IsCustomer=" + Database::SQLBoolean(true);
  // The statement prints no heading of its filters.
  std::string unused;
  AppendListParameterCondition(where, "OtherParty.OtherPartyId", "Customers", p, unused,
                               kRangeText);
  AppendPartyPlaceFilters(where, p, unused, "Locations", "Employees");
  AppendPartyListFilters(where, p, unused, PartyColumns::kQualified);
  // The statement declares none of these, so they add nothing; a caller's own would filter.
  for (const char* table : {"OtherParty", "Item", "Transactions"}) {
    AppendUserDefinedFilters(where, p, unused, table);
  }
  return Trim(where);
}

std::string ardsStatement::GetSQLOrderBy() const {
  const std::string order_by = TLReport()->Parameters().Value("OrderBy", "Code").Text();
  if (order_by == "Name") return "OtherParty.Name";
  if (order_by == "X Ref") return "OtherParty.XRefId";
  return "OtherParty.OtherPartyId";
}

std::shared_ptr<Recordset> ardsStatement::Run(const std::string& sql) {
  if (query_log_) query_log_(sql);
  return TrellinReportGlobals::RequireDatabase()->Query(sql);
}

std::string ardsStatement::ClosingBalanceSQL(const std::string& party) const {
  return "SELECT Sum(-Transactions.ValueRemaining) AS SumOfValue FROM Transactions WHERE "
         "(Transactions.Type Between 30 And 39) AND Transactions.OtherPartyId=" +
         CustomerLiteral(party);
}

std::string ardsStatement::LaterMovementSQL(const std::string& party) const {
  return "SELECT Sum(-Transactions.Value) AS SumOfValue FROM Transactions WHERE "
         "(Transactions.Type Between 30 And 39) AND Transactions.OtherPartyId=" +
         CustomerLiteral(party) +
         " AND Transactions.Date>=" + Database::SQLDate(date_as_at_.AddDays(1));
}

std::string ardsStatement::MovementInMonthSQL(const std::string& party) const {
  return "SELECT TOP 1 TransactionId FROM Transactions WHERE (Transactions.Type Between 30 And "
         "39) And (Transactions.Date>=" +
         Database::SQLDate(date_from_) + " And Transactions.Date<" +
         Database::SQLDate(date_as_at_.AddDays(1)) +
         ") AND Transactions.OtherPartyId=" + CustomerLiteral(party);
}

std::string ardsStatement::OpenAtDateSQL(const std::string& party) const {
  const std::string bound = Database::SQLDate(date_as_at_.AddDays(1));
  return "SELECT TransactionId,ValueRemaining FROM Transactions WHERE (Transactions.Type between "
         "30 And 39) AND Transactions.OtherPartyId=" +
         CustomerLiteral(party) + " AND Transactions.DateProcess<" + bound +
         " AND (Transactions.ValueRemaining<>0 OR ((Transactions.TransactionId In (SELECT "
         "TransactionAllocation.TransactionId2 FROM Transactions AS T INNER JOIN "
         "TransactionAllocation ON T.TransactionId = TransactionAllocation.TransactionId1 WHERE "
         "T.DateProcess>=" +
         bound +
         " AND T.OtherPartyId=Transactions.OtherPartyId)) OR (Transactions.TransactionId In "
         "(SELECT TransactionAllocation.TransactionId1 FROM Transactions AS T INNER JOIN "
         "TransactionAllocation ON T.TransactionId = TransactionAllocation.TransactionId2 WHERE "
         "T.DateProcess>=" +
         bound + " AND T.OtherPartyId=Transactions.OtherPartyId)))) ORDER BY Date,TransactionId";
}

std::string ardsStatement::AgeingSQL(const std::string& party) const {
  const std::string end = Database::SQLDate(month_ends_[1].AddDays(1));
  return "SELECT -ValueRemaining as Remaining," + StatementDue() +
         " AS Due FROM Transactions WHERE OtherPartyId=" + CustomerLiteral(party) +
         " AND ValueRemaining<>0 AND DateProcess<" + Database::SQLDate(date_as_at_.AddDays(1)) +
         " AND (DatePayment<" + end + " OR (DatePayment Is Null AND Date<" + end +
         ")) AND (Type>=30 AND Type<40)";
}

std::string ardsStatement::AllocatedSinceMonthSQL(const std::string& party) const {
  return "SELECT TransactionId FROM Transactions WHERE OtherPartyId=" + CustomerLiteral(party) +
         " AND [ValueRemaining]<>[Value] AND ([DateProcess]>" + Database::SQLDate(month_ends_[0]) +
         ") AND (Type>=30 AND Type<40)";
}

Currency ardsStatement::ClosingBalanceOf(const std::string& party) {
  std::shared_ptr<Recordset> remaining = Run(ClosingBalanceSQL(party));
  std::shared_ptr<Recordset> later = Run(LaterMovementSQL(party));
  return FirstMoneyOf(*remaining) - FirstMoneyOf(*later);
}

bool ardsStatement::HasItemOpenAtDate(const std::string& party) {
  Database& database = *TrellinReportGlobals::RequireDatabase();
  const Date bound = date_as_at_.AddDays(1);
  std::shared_ptr<Recordset> items = Run(OpenAtDateSQL(party));
  for (; !items->Eof(); items->MoveNext()) {
    const std::string allocations =
        AllocationsProcessedFromSQL(items->Value("TransactionId").ToLong(), bound);
    if (query_log_) query_log_(allocations);
    const Variant& stored = items->Value("ValueRemaining");
    if (RemainderAsAt(database, stored.IsNull() ? Currency() : stored.ToCurrency(), allocations) !=
        Currency()) {
      return true;
    }
  }
  return false;
}

bool ardsStatement::Issues(const std::string& party, Currency closing) {
  if (closing != Currency()) return true;
  if (!Run(MovementInMonthSQL(party))->Eof()) return true;
  return options_.open_item && HasItemOpenAtDate(party);
}

StatementAgeing ardsStatement::AgeingOf(const std::string& party) {
  StatementAgeing ageing;
  // Due after the day before the month began: due in the month.
  auto add = [&](Currency value, const Variant& due) {
    if (!due.IsNull() && due.ToDate().DateOnly() > month_ends_[0]) {
      ageing.current += value;
    } else {
      ageing.overdue += value;
    }
  };
  std::shared_ptr<Recordset> open = Run(AgeingSQL(party));
  for (; !open->Eof(); open->MoveNext()) {
    const Variant& remaining = open->Value("Remaining");
    if (!remaining.IsNull()) add(remaining.ToCurrency(), open->Value("Due"));
  }

  // What documents of this month or later took from items of before it goes back to them.
  std::shared_ptr<Recordset> later = Run(AllocatedSinceMonthSQL(party));
  std::vector<std::string> ids;
  for (; !later->Eof(); later->MoveNext()) ids.push_back(later->Value(0).Text());
  if (ids.empty()) return ageing;
  const std::string list = Join(ids, ",");
  const std::string bound = Database::SQLDate(month_ends_[0].AddDays(1));
  const std::string sql =
      "SELECT TransactionAllocationId,-ValueAllocated AS AllocatedValue," + StatementDue() +
      " AS Due FROM Transactions INNER JOIN TransactionAllocation ON "
      "Transactions.TransactionId=TransactionAllocation.TransactionId1 WHERE TransactionId2 In(" +
      list + ") AND Transactions.DateProcess<" + bound +
      " UNION SELECT TransactionAllocationId,ValueAllocated AS AllocatedValue," + StatementDue() +
      " AS Due FROM Transactions INNER JOIN TransactionAllocation ON "
      "Transactions.TransactionId=TransactionAllocation.TransactionId2 WHERE TransactionId1 In(" +
      list + ") AND Transactions.DateProcess<" + bound;
  if (query_log_) query_log_(sql);
  ForEachAllocatedValue(
      *TrellinReportGlobals::RequireDatabase(), sql,
      [&](Currency value, const Recordset& row) { add(value, row.Value("Due")); });
  return ageing;
}

}  // namespace trellin
