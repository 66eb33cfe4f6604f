// The lodgement schedule's key and each receipt's slip and pay method.

#include "reports/ledger/arLodgementSchedule.h"

#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

// Within a slip the receipts stand by pay method, then as the user orders them.
constexpr ListOrder kLodgementOrders[] = {
    {"Reference",
     "glBankTransaction.BankId,glBankTransaction.Date,PayMethod,Transactions.Reference,"
     "Transactions.TransactionId"},
    {"Name",
     "glBankTransaction.BankId,glBankTransaction.Date,PayMethod,OtherParty.Name,"
     "Transactions.TransactionId"},
    {"Amount",
     "glBankTransaction.BankId,glBankTransaction.Date,PayMethod,Transactions.Value DESC,"
     "Transactions.TransactionId"},
};

constexpr ListParameter kLodgementParameters[] = {
    kBankEntryBanks,
    DatedParameter("glBankTransaction.Date"),
    {.kind = ListParameterKind::Standard, .field = "Transactions.PayType", .index = 27},
    {.kind = ListParameterKind::Standard, .field = "Transactions.OtherPartyId", .index = 8},
};

// A receipt (type 35) is banked by its bank entry, whose date is the slip's day. A letter the
// methods do not know is cash, so it sorts with cash.
constexpr ListKey kLodgementKeys[] = {{
    .key = "Lodgements",
    .base_sql =
        "SELECT glBankTransaction.BankId,Bank.AccountName,Bank.BankName,Bank.AccountNumber,"
        "glBankTransaction.Date,IIf(Transactions.PayType In ('A','B','C','D','E','F','M','O','Q',"
        "'V'),Transactions.PayType,'$') AS PayMethod,Transactions.TransactionId,"
        "Transactions.Reference,Transactions.OtherPartyId,OtherParty.Name AS Customer,"
        "Transactions.Name AS Drawer,Transactions.BankDetails,Transactions.CardNumber,"
        "Transactions.Value AS Amount"
        " FROM ((Transactions INNER JOIN glBankTransaction ON"
        " Transactions.glBankTransactionId=glBankTransaction.glBankTransactionId)"
        " INNER JOIN Bank ON glBankTransaction.BankId=Bank.BankId)"
        " LEFT JOIN OtherParty ON Transactions.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "Transactions.Type=35",
    .orders = kLodgementOrders,
    .parameters = kLodgementParameters,
}};

}  // namespace

arLodgementSchedule::arLodgementSchedule() : ListDesigner("arLodgementSchedule", kLodgementKeys) {}

DesignerPtr CreatearLodgementSchedule() { return std::make_shared<arLodgementSchedule>(); }

void arLodgementSchedule::ActiveReport_DataInitialize() {
  for (const char* name : {"Slip", "Method"}) Fields().Add(name);
}

void arLodgementSchedule::ActiveReport_FetchData(bool&) {
  std::string slip = LedgerFieldText(Fields(), "BankId") + '\x1f';
  if (const ReportField* date = Fields().Find("Date"); date && date->Value().IsDate()) {
    slip += date->Value().ToDate().DateOnly().ToIso();
  }
  Fields().Add("Slip").SetValue(Variant(slip));
  Fields().Add("Method").SetValue(
      Variant(std::string(PayMethodName(LedgerFieldText(Fields(), "PayMethod")))));
}

}  // namespace trellin
