// The bank entry list's key, and the split lines of its entries.

#include "reports/ledger/arglBankBatch.h"

#include "core/TrellinReportGlobals.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kBankBatchOrders[] = {
    {"Entered", "glBankTransaction.BankId,glBankTransaction.glBankTransactionId"},
    {"Date",
     "glBankTransaction.BankId,glBankTransaction.Date,glBankTransaction.glBankTransactionId"},
    {"Reference",
     "glBankTransaction.BankId,glBankTransaction.Reference,glBankTransaction.glBankTransactionId"},
};

constexpr ListParameter kBankBatchParameters[] = {
    kBankEntryBanks,
    DatedParameter("glBankTransaction.Date"),
    {.kind = ListParameterKind::MoneyRange,
     .name = "EntryId",
     .caption = "Entry Id",
     .field = "glBankTransaction.glBankTransactionId"},
    kBankReferences,
};

// An entry's amount is the bank's own line (sequence 0).
constexpr ListKey kBankBatchKeys[] = {{
    .key = "BankBatch",
    .base_sql =
        "SELECT glBankTransaction.glBankTransactionId,glBankTransaction.BankId,Bank.AccountName,"
        "glBankTransaction.Date,glBankTransaction.Reference,glBankTransaction.OtherPartyId,"
        "OtherParty.Name,glBankTransaction.Comment,glTransaction.Value AS Amount,"
        "IIf(glTransaction.Value>0,glTransaction.Value,Null) AS Deposit,"
        "IIf(glTransaction.Value<0,-glTransaction.Value,Null) AS Withdrawal"
        " FROM ((glBankTransaction INNER JOIN glTransaction ON"
        " glBankTransaction.glBankTransactionId=glTransaction.glBankTransactionId)"
        " INNER JOIN Bank ON glBankTransaction.BankId=Bank.BankId)"
        " LEFT JOIN OtherParty ON glBankTransaction.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "glTransaction.glBankTransactionSequence=0",
    .orders = kBankBatchOrders,
    .parameters = kBankBatchParameters,
}};

// The split lines of the entries `entries` selects, in their order; a line of tax category "*"
// is never reported, and a line with no category is an ordinary one.
std::string SplitLinesSQL(const std::string& entries) {
  return "SELECT glTransaction.glBankTransactionId,glTransaction.AccountId,Account.Description,"
         "glTransaction.BranchId,glTransaction.DeptId,glTransaction.TaxCategory,"
         "glTransaction.Value,glTransaction.TaxValue FROM Account INNER JOIN glTransaction ON "
         "Account.AccountId=glTransaction.AccountId WHERE "
         "glTransaction.glBankTransactionSequence<>0 AND Nz(glTransaction.TaxCategory,'')<>'*' "
         "AND glTransaction.glBankTransactionId In (" +
         entries +
         ") ORDER BY glTransaction.glBankTransactionId,glTransaction.glBankTransactionSequence";
}

}  // namespace

arglBankBatch::arglBankBatch() : ListDesigner("arglBankBatch", kBankBatchKeys) {}

DesignerPtr CreatearglBankBatch() { return std::make_shared<arglBankBatch>(); }

// A split line's figures are turned to the bank's side: a deposit's lines credit the ledger.
void arglBankBatch::ActiveReport_ReportStart() {
  lines_.clear();
  if (!sub_) {
    sub_ = std::make_shared<arglBankBatchSub>();
    if (Control* sub = FindControl("srptSplit")) sub->SetObject(sub_);
  }
  ListDesigner::ActiveReport_ReportStart();
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(
      SplitLinesSQL(ListKeysSubquery(SQL(), "glBankTransaction.glBankTransactionId")));
  for (; !rs->Eof(); rs->MoveNext()) {
    lines_[rs->Value("glBankTransactionId").ToLong()].push_back(
        {rs->Value("AccountId").Text(), rs->Value("Description").Text(),
         rs->Value("BranchId").Text(), rs->Value("DeptId").Text(), rs->Value("TaxCategory").Text(),
         Currency() - rs->Value("Value").ToCurrency(),
         Currency() - rs->Value("TaxValue").ToCurrency()});
  }
}

void arglBankBatch::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    if (Control* sub = FindControl("srptSplit")) {
      const ReportField* entry = Fields().Find("glBankTransactionId");
      auto found = entry ? lines_.find(entry->Value().ToLong()) : lines_.end();
      sub->SetVisible(found != lines_.end());
      sub_->Lines = found != lines_.end() ? &found->second : nullptr;
    }
  }
  ListDesigner::OnFormat(section);
}

}  // namespace trellin
