// The remittance run's parameters, its payments' query, and what the fetch reads of one payment:
// the documents it settled and the supplier's postal address.

#include <vector>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/arcrRemittance.h"

namespace trellin {

void arcrRemittance::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  // Filled by the application that prints the advices of a payment run, and not shown.
  p.AddString("SQLOrderBy", "", false, "", "", false, "");
  p.AddString("SQLWhere", "", false, "", "", false, "");
  // 0, the default, is no payment in particular: every payment the other filters select.
  p.AddNumber("TransactionId", 0, false, "", 0, 0, false, "Transaction Id");
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name", false, "Order By");
  p.AddDate("dateFrom", Variant::Null(), false, "Date From", Variant::Null(), false, "Date From");
  p.AddDate("dateTo", Variant::Null(), false, "Date To", Variant::Null(), false, "Date To");
  p.AddString("Message", "", false, "", "", false, "Message");
  CreateStandardParameter(33, p, true, "Suppliers");
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(15, p, false);
  CreateStandardParameter(34, p, false, "SupplierCategories", "Categories");
  CreateStandardParameter(38, p, false, "SupplierTypes", "Types");
  CreateStandardParameter(37, p, false, "SupplierPaymentTerms", "Payment Terms");
}

std::string arcrRemittance::GetSQL() const {
  return "SELECT OtherParty.OtherPartyId,OtherParty.TaxNumber,Transactions.TransactionId,"
         "Transactions.Reference,Transactions.PayType,Transactions.Date,Transactions.Value,"
         "Branch.BranchId FROM (Branch INNER JOIN Location ON Branch.BranchId = Location.BranchId) "
         "INNER JOIN (OtherParty LEFT JOIN Transactions ON OtherParty.OtherPartyId = "
         "Transactions.OtherPartyId) ON Location.LocationId = OtherParty.LocationId WHERE " +
         GetSQLWhere() + " ORDER BY " + GetSQLOrderBy();
}

std::string arcrRemittance::GetSQLWhere() const {
  const trellin::Parameters& p = TLReport()->Parameters();
  std::string where = "OtherParty.IsSupplier=" + Database::SQLBoolean(true);
  for (auto [name, op] : {std::pair{"dateFrom", ">="}, std::pair{"dateTo", "<"}}) {
    const Variant value = p.Value(name, Variant::Null());
    if (!HasDate(value)) continue;
    Date bound = value.ToDate().DateOnly();
    // The upper bound takes in the whole of its day.
    if (std::string_view(op) == "<") bound = bound.AddDays(1);
    where += std::string(" AND Transactions.DateProcess") + op + Database::SQLDate(bound);
  }
  where += " AND Transactions.Type=25";
  // The advice prints no heading of its filters.
  std::string unused;
  AppendListParameterCondition(where, "OtherParty.OtherPartyId", "Suppliers", p, unused,
                               kRangeText);
  AppendPartyPlaceFilters(where, p, unused, "Locations", "Employees");
  AppendPartyListFilters(where, p, unused, PartyColumns::kQualified);
  const Variant id = p.Value("TransactionId", Variant::Null());
  if (!id.IsNull() && !id.IsEmpty() && id.ToCurrency() != Currency()) {
    where += " AND Transactions.TransactionId=" + std::to_string(id.ToLong());
  }
  return Trim(where);
}

std::string arcrRemittance::GetSQLOrderBy() const {
  const std::string order_by = TLReport()->Parameters().Value("OrderBy", "Code").Text();
  // A supplier's payments follow one another in the order they were made.
  return std::string(order_by == "Name" ? "OtherParty.Name" : "OtherParty.OtherPartyId") +
         ",Transactions.TransactionId";
}

std::string arcrRemittance::SettledSQL(std::int64_t payment) {
  const std::string id = std::to_string(payment);
  return "SELECT "
         "TransactionAllocation.TransactionAllocationId,TransactionAllocation.TransactionId2 "
         "AS Allocated FROM TransactionType INNER JOIN (Transactions INNER JOIN "
         "TransactionAllocation ON Transactions.TransactionId = "
         "TransactionAllocation.TransactionId2) "
         "ON TransactionType.TransactionTypeId = Transactions.TransactionTypeId WHERE "
         "(TransactionAllocation.TransactionId1=" +
         id +
         " AND Transactions.Type<>25) UNION SELECT TransactionAllocation.TransactionAllocationId,"
         "TransactionAllocation.TransactionId1 AS Allocated FROM TransactionType INNER JOIN "
         "(Transactions INNER JOIN TransactionAllocation ON "
         "Transactions.TransactionId=TransactionAllocation.TransactionId1) ON "
         "TransactionType.TransactionTypeId=Transactions.TransactionTypeId Where "
         "(TransactionAllocation.TransactionId2=" +
         id + " AND Transactions.Type<>25)";
}

std::string arcrRemittance::AddressSQL(const std::string& party) { return PostalAddressSQL(party); }

std::shared_ptr<Recordset> arcrRemittance::Run(const std::string& sql) {
  if (query_log_) query_log_(sql);
  return TrellinReportGlobals::RequireDatabase()->Query(sql);
}

std::string arcrRemittance::AddressOf(const std::string& party) {
  return PostalAddressOf(party, [this](const std::string& sql) { return Run(sql); });
}

}  // namespace trellin
