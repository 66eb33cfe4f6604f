// The cheque list's key, and the documents each payment paid.

#include "reports/ledger/arChequeList.h"

#include <algorithm>

#include "core/TrellinReportGlobals.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kChequesOrders[] = {
    {"Reference",
     "glBankTransaction.BankId,glBankTransaction.Reference,Transactions.TransactionId"},
};

constexpr ListParameter kChequesParameters[] = {
    kBankEntryBanks,
    DatedParameter("glBankTransaction.Date"),
    {.kind = ListParameterKind::Standard, .field = "Transactions.OtherPartyId", .index = 33},
    {.kind = ListParameterKind::PickList,
     .name = "Batches",
     .caption = "Batches",
     .field = "Transactions.BatchId",
     .list_sql =
         "SELECT BatchId,'' FROM Transactions WHERE Type Between 20 And 29 GROUP BY BatchId",
     .key_field = "BatchId"},
    kBankReferences,
    {.kind = ListParameterKind::Option,
     .name = "ShowDetails",
     .caption = "Show Details",
     .phrase = "With the documents each payment paid"},
};

// A payment is drawn on the bank of its bank entry, on that entry's date; its cheque number is
// the entry's reference. The payee is the supplier's cheque name, else its name.
constexpr ListKey kChequesKeys[] = {{
    .key = "Cheques",
    .base_sql =
        "SELECT glBankTransaction.BankId,Transactions.TransactionId,"
        "glBankTransaction.Reference AS ChequeNo,glBankTransaction.Date,Transactions.OtherPartyId,"
        "IIf(Len(OtherParty.ChqName)>0,OtherParty.ChqName,OtherParty.Name) AS Payee,"
        "-Transactions.Value AS Amount"
        " FROM (Transactions INNER JOIN glBankTransaction ON"
        " Transactions.glBankTransactionId=glBankTransaction.glBankTransactionId)"
        " INNER JOIN OtherParty ON Transactions.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "Transactions.Type=25",
    .orders = kChequesOrders,
    .parameters = kChequesParameters,
}};

// The documents allocated to the payments that `payments` selects, from both sides of each
// allocation, as the cheque's stub reads them.
std::string ChequeDocumentsSQL(const std::string& payments) {
  std::string sql;
  for (const auto& [paid, document] : {std::pair{"TransactionId2", "TransactionId1"},
                                       std::pair{"TransactionId1", "TransactionId2"}}) {
    if (!sql.empty()) sql += " UNION ";
    sql += std::string("SELECT TransactionAllocation.") + paid +
           " AS Paid,TransactionAllocation.TransactionAllocationId,Transactions.Date,"
           "TransactionType.Description AS Comment,Transactions.Reference,"
           "-TransactionAllocation.ValueAllocated AS Amount FROM TransactionType INNER JOIN "
           "(Transactions INNER JOIN TransactionAllocation ON Transactions.TransactionId="
           "TransactionAllocation." +
           document +
           ") ON TransactionType.TransactionTypeId=Transactions.TransactionTypeId WHERE "
           "TransactionAllocation." +
           paid + " In (" + payments + ")";
  }
  return sql;
}

}  // namespace

arChequeList::arChequeList() : ListDesigner("arChequeList", kChequesKeys) {}

DesignerPtr CreatearChequeList() { return std::make_shared<arChequeList>(); }

void arChequeList::ActiveReport_ReportStart() {
  show_details_ = TLReport()->Parameters().Value("ShowDetails", false).ToBool();
  documents_.clear();
  if (show_details_ && !sub_) {
    sub_ = std::make_shared<arChequeListSub>();
    if (Control* sub = FindControl("srptDocuments")) sub->SetObject(sub_);
  }
  ListDesigner::ActiveReport_ReportStart();
  if (!show_details_) return;
  const std::string payments = ListKeysSubquery(SQL(), "Transactions.TransactionId");
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(ChequeDocumentsSQL(payments));
  for (; !rs->Eof(); rs->MoveNext()) {
    documents_[rs->Value("Paid").ToLong()].push_back(
        {rs->Value("Date").ToDate(), rs->Value("Comment").Text(), rs->Value("Reference").Text(),
         rs->Value("Amount").ToCurrency()});
  }
  for (auto& [payment, documents] : documents_) {
    std::sort(documents.begin(), documents.end(), [](const auto& a, const auto& b) {
      return a.date != b.date ? a.date < b.date : a.reference < b.reference;
    });
  }
}

void arChequeList::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    if (Control* sub = FindControl("srptDocuments")) {
      const ReportField* payment = Fields().Find("TransactionId");
      auto found = payment ? documents_.find(payment->Value().ToLong()) : documents_.end();
      const bool show = show_details_ && found != documents_.end();
      sub->SetVisible(show);
      if (sub_) sub_->Documents = show ? &found->second : nullptr;
    }
  }
  ListDesigner::OnFormat(section);
}

}  // namespace trellin
