// The key of the batch transaction list, row by row, and each row's values on its side's sign.

#include "reports/receivables/ardsBatchTransactions.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Currency.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/LedgerSide.h"

namespace trellin {

namespace {

constexpr ListOrder kBatchOrders[] = {
    {"Entered", "Transactions.CreatedDate,Transactions.TransactionId"},
    {"Date", "Transactions.Date,Transactions.TransactionId"},
    {"Reference", "Transactions.Reference,Transactions.TransactionId"},
    {"Code", "Transactions.OtherPartyId,Transactions.TransactionId"},
};

// The side's range of types is the designer's own condition, from the side's table.
constexpr ListChoice kLedgerChoices[] = {
    {"Receivables", "", "Receivables"},
    {"Payables", "", "Payables"},
};

constexpr ListParameter kBatchParameters[] = {
    {.kind = ListParameterKind::Choice,
     .name = "Ledger",
     .caption = "Ledger",
     .primary = true,
     .choices = kLedgerChoices},
    {.kind = ListParameterKind::PickList,
     .name = "Batches",
     .caption = "Batches",
     .field = "Transactions.BatchId",
     .list_sql = "SELECT BatchId,'' FROM Transactions WHERE BatchId Is Not Null GROUP BY BatchId",
     .key_field = "BatchId"},
    {.kind = ListParameterKind::DatePair,
     .name = "Process",
     .caption = "Process date",
     .field = "Transactions.DateProcess",
     .primary = true,
     .from_default = "ARCURRENT-1E+1D",
     .to_default = "ARCURRENT"},
    {.kind = ListParameterKind::Standard, .field = "Transactions.TransactionTypeId", .index = 39},
    {.kind = ListParameterKind::Standard, .field = "Transactions.OtherPartyId", .index = 8},
    {.kind = ListParameterKind::Standard, .field = "Transactions.OtherPartyId", .index = 33},
};

constexpr ListColumn kBatchColumns[] = {
    {"TransId", "TransactionId", kColumnText, "Trans Id", "", 900, false},
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Type", "TransactionTypeId", kColumnText, "Type", "", 700, false},
    {"Code", "OtherPartyId", kColumnText, "Code", "", 1100, false},
    {"Name", "Name", kColumnText, "Name", "", -1, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1300, false},
    {"Net", "Net", kColumnMoney, "Net", "", 1400, false},
    {"Tax", "Tax", kColumnMoney, "Tax", "", 1200, false},
    {"Gross", "Gross", kColumnMoney, "Gross", "", 1400, false},
    {"Outstanding", "Outstanding", kColumnMoney, "Outstanding", "", 1400, true},
};

constexpr ListKey kBatchKeys[] = {{
    .key = "BatchTransactions",
    .base_sql =
        "SELECT Transactions.TransactionId,Transactions.Date,Transactions.TransactionTypeId,"
        "Transactions.OtherPartyId,OtherParty.Name,Transactions.Reference,Transactions.BatchId,"
        "Transactions.Value,Transactions.ValueRemaining FROM Transactions LEFT JOIN OtherParty ON "
        "Transactions.OtherPartyId=OtherParty.OtherPartyId",
    .orders = kBatchOrders,
    .parameters = kBatchParameters,
    .grouping_table = "Transactions",
    .fixed_grouping = "Batch",
    .columns = kBatchColumns,
}};

const LedgerSide& SideOfLedger(const trellin::Parameters& p) {
  return SideOf(p.Value("Ledger", Variant()).Text() == "Payables" ? LedgerSideKind::Payables
                                                                  : LedgerSideKind::Receivables);
}

Currency Money(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  if (field == nullptr || field->Value().IsNull() || field->Value().IsEmpty()) return Currency();
  return field->Value().ToCurrency();
}

}  // namespace

ardsBatchTransactions::ardsBatchTransactions()
    : ListDesigner("ardsBatchTransactions", kBatchKeys) {}

DesignerPtr CreateardsBatchTransactions() { return std::make_shared<ardsBatchTransactions>(); }

std::string ardsBatchTransactions::ExtraCondition() {
  return "(Transactions.Type Between " + std::string(SideOfLedger(TLReport()->Parameters()).range) +
         ")";
}

void ardsBatchTransactions::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  // The lines' tax of every transaction listed, with one grouped query through the lines'
  // index; a receipt or payment has no lines and no tax.
  tax_.clear();
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
      "SELECT TransactionId,Sum(TaxValue) AS Tax FROM TransactionLine WHERE TransactionId In (" +
      ListKeysSubquery(SQL(), "Transactions.TransactionId") + ") GROUP BY TransactionId");
  for (; !rs->Eof(); rs->MoveNext()) tax_[rs->Value(0).ToLong()] = rs->Value(1).ToCurrency();
}

void ardsBatchTransactions::ActiveReport_DataInitialize() {
  for (const char* name : {"Net", "Tax", "Gross", "Outstanding"}) Fields().Add(name);
}

void ardsBatchTransactions::ActiveReport_FetchData(bool&) {
  const bool turned = SideOfLedger(TLReport()->Parameters()).sign == "-";
  auto signed_value = [&](std::string_view name) {
    const Currency value = Money(Fields(), name);
    return turned ? -value : value;
  };
  const Currency gross = signed_value("Value");
  const ReportField* id = Fields().Find("TransactionId");
  const auto found = id == nullptr ? tax_.end() : tax_.find(id->Value().ToLong());
  const Currency line_tax = found == tax_.end() ? Currency() : found->second;
  const Currency tax = turned ? -line_tax : line_tax;
  Fields().Item("Gross").SetValue(Variant(gross));
  Fields().Item("Tax").SetValue(Variant(tax));
  Fields().Item("Net").SetValue(Variant(gross - tax));
  Fields().Item("Outstanding").SetValue(Variant(signed_value("ValueRemaining")));
}

}  // namespace trellin
