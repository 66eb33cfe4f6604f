// The transaction list's keys, orders and pay methods, and its parameters by key.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/receivables/ardscrTransactionList.h"

namespace trellin {

namespace {

// clang-format off
constexpr TransactionListKey kKeys[] = {
    {"TransactionListAR", false, LedgerSideKind::Receivables, "Transactions.Type Between 30 And 39", "",
     "Address,Batch,Customer,Customer Category,Customer Type,Department,Employee,Location,Job,Reference,Transaction Type,Item", false},
    {"TransactionListAP", false, LedgerSideKind::Payables, "Transactions.Type Between 20 And 29", "",
     "Address,Batch,Supplier,Supplier Category,Supplier Type,Department,Employee,Location,Job,Reference,Transaction Type,Item", false},
    {"OpenTransactionListAR", true, LedgerSideKind::Receivables, "acBatchHeader.Type IN (30,31)", "acBatchHeader.Type Between 30 And 39",
     "Address,Customer,Customer Category,Customer Type,Department,Employee,Location,Job,Reference,Transaction Type,Item,Item Category", false},
    {"OpenTransactionListAP", true, LedgerSideKind::Payables, "acBatchHeader.Type IN (20,21)", "acBatchHeader.Type Between 20 And 29",
     "Address,Supplier,Supplier Category,Supplier Type,Department,Employee,Location,Job,Reference,Transaction Type,Item,Item Category", false},
    {"SalesOrderList", true, LedgerSideKind::Receivables, "acBatchHeader.Type=90", "acBatchHeader.Type=90",
     "Address,Customer,Department,Employee,Location,Job,Reference,Transaction Type,Item,Item Category,Item Type", true},
    {"JobInvoiceList", true, LedgerSideKind::Receivables, "acBatchHeader.Type=42", "acBatchHeader.Type=42",
     "Address,Customer,Department,Employee,Location,Job,Reference,Transaction Type,Item,Item Category", true},
};

constexpr TransactionListOrder kOrders[] = {
    {"Code", "Transactions.OtherPartyId,Transactions.TransactionId", "acBatchTransaction.OtherPartyId,acBatchTransaction.acBatchTransactionId", "OtherPartyId,TransactionId"},
    {"Name", "OtherParty.Name,Transactions.TransactionId", "OtherParty.Name,acBatchTransaction.acBatchTransactionId", "Name,TransactionId"},
    {"Date", "Transactions.Date,Transactions.TransactionId", "acBatchTransaction.Date,acBatchTransaction.acBatchTransactionId", "Date,TransactionId"},
    {"Due", "Transactions.DatePayment,Transactions.TransactionId", "acBatchTransaction.DatePayment,acBatchTransaction.acBatchTransactionId", "DatePayment,TransactionId"},
    {"Entered", "Transactions.TransactionId", "acBatchTransaction.acBatchTransactionId", "TransactionId"},
    {"Reference", "Transactions.Reference,Transactions.TransactionId", "acBatchTransaction.Reference,acBatchTransaction.acBatchTransactionId", "Reference,TransactionId"},
};

// clang-format on

constexpr const char* kOrderChoices = "Code,Name,Date,Due,Entered,Reference";

}  // namespace

const TransactionListKey* TransactionListKeyOf(std::string_view key) {
  for (const TransactionListKey& row : kKeys) {
    if (row.key == key) return &row;
  }
  return nullptr;
}

const TransactionListOrder* TransactionListOrderOf(std::string_view order_by) {
  for (const TransactionListOrder& row : kOrders) {
    if (row.order_by == order_by) return &row;
  }
  return nullptr;
}

DesignerPtr CreateardscrTransactionList() { return std::make_shared<ardscrTransactionList>(); }

void ardscrTransactionList::RefreshParameters(std::string& ReportName) {
  key_ = TransactionListKeyOf(ReportName);
  if (key_ == nullptr) return;
  debtor_ = key_->side == LedgerSideKind::Receivables;
  const LedgerSide& side = SideOfDebtor(debtor_);
  const std::string range = debtor_ ? "30" : "20";
  const std::string range_to = debtor_ ? "39" : "29";
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();

  p.AddList("OrderBy", "Code", true, "", "Code", kOrderChoices, false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddNumber("TransactionIdFrom", 1, false, "", 1, 1, false, "Transaction Id From");
  for (const auto& [name, caption] : {std::pair{"DatedFrom", "Dated From"},
                                      {"DatedTo", "Dated To"},
                                      {"EnteredFrom", "Entered From"},
                                      {"EnteredTo", "Entered To"},
                                      {"ProcessFrom", "Process From"},
                                      {"ProcessTo", "Process To"}}) {
    p.AddDate(name, Variant::Null(), false, "", Variant::Null(), false, caption);
  }
  for (const auto& [name, caption] : {std::pair{"ShowLocationDetails", "Show Location Details"},
                                      {"ShowDepartmentDetails", "Show Department Details"},
                                      {"ShowEmployeeDetails", "Show Employee Details"},
                                      {"ShowFullDetail", "Show Full Detail"},
                                      {"ShowSerialNumber", "Show Serial Number"},
                                      {"ShowDescriptionLines", "Show Description Lines"}}) {
    p.AddBoolean(name, false, false, "", false, false, caption);
  }
  if (!key_->open) {
    for (const auto& [name, caption] : {std::pair{"ShowBatchId", "Show Batch Id"},
                                        {"ShowAllocationDetails", "Show Allocation Details"},
                                        {"ShowOutstandingOnly", "Show Outstanding Only"},
                                        {"ShowHeldOnly", "Show Held Only"}}) {
      p.AddBoolean(name, false, false, "", false, false, caption);
    }
    const Variant last = TrellinReportGlobals::RequireDatabase()->ExecuteScalarLong(
        "SELECT Max(TransactionId) FROM Transactions WHERE Transactions.Type between " + range +
            " AND " + range_to,
        0);
    p.AddNumber("TransactionIdTo", last, false, "", last, last.ToLong(), false,
                "Transaction Id To");
    p.AddSQLList("References", Variant(), false, "", Variant(),
                 "SELECT DISTINCT Reference FROM Transactions WHERE Transactions.Type between " +
                     range + " and " + range_to + " ORDER BY Reference",
                 "Reference", false, "References");
    p.AddSQLList("TransactionTypes", Variant(), false, "", Variant(),
                 "SELECT TransactionTypeId,Description FROM TransactionType WHERE Type between " +
                     range + " and " + range_to + " ORDER BY TransactionTypeId",
                 "TransactionTypeId", false, "Transaction Types");
    p.AddSQLList("Batches", Variant(), false, "", Variant(),
                 "SELECT DISTINCT BatchId FROM Transactions WHERE Type between " + range + " and " +
                     range_to + " ORDER BY BatchId",
                 "BatchId", false, "Batches");
  } else {
    p.AddDate("ModifiedFrom", Variant::Null(), false, "", Variant::Null(), false, "Modified From");
    p.AddDate("ModifiedTo", Variant::Null(), false, "", Variant::Null(), false, "Modified To");
    p.AddSQLList("References", Variant(), false, "", Variant(),
                 "SELECT DISTINCT acBatchTransaction.Reference FROM acBatchHeader INNER JOIN "
                 "acBatchTransaction ON acBatchHeader.acBatchSId=acBatchTransaction.acBatchSId "
                 "WHERE " +
                     std::string(key_->header_types) +
                     " AND acBatchHeader.acBatchHeaderId='Open' ORDER BY "
                     "acBatchTransaction.Reference",
                 "Reference", false, "References");
    p.AddSQLList("TransactionTypes", Variant(), false, "", Variant(),
                 "SELECT TransactionTypeId,Description FROM TransactionType WHERE Type between " +
                     range + " and " + range_to + " ORDER BY TransactionTypeId",
                 "TransactionTypeId", false, "Transaction Types");
  }
  // The side's standard lists, as the ledger has them, then the lines' and documents' own.
  CreateStandardParameter(side.parties.index, p, false, std::string(side.parties.name),
                          std::string(side.parties.caption));
  CreateStandardParameter(side.categories.index, p, false, std::string(side.categories.name));
  CreateStandardParameter(side.types.index, p, false, std::string(side.types.name));
  CreateStandardParameter(debtor_ ? 11 : 36, p, false);
  CreateStandardParameter(18, p, false);
  CreateStandardParameter(14, p, false);
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(15, p, false);
  CreateStandardParameter(22, p, false);
  if (key_->orders) {
    CreateStandardParameter(16, p, false);
    CreateStandardParameter(20, p, false);
  }
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), std::string(key_->groupings), false,
                 false, "Groupings");
  Application& application = TrellinReportGlobals::RequireApplication();
  application.AddUserDefinedParametersOtherParty(p, false);
  application.AddUserDefinedParametersTransactions(p, false);
}

}  // namespace trellin
