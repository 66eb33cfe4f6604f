// The bank ledger's key, its openings read once, and the running balance.

#include "reports/ledger/arglBankLedger.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kBankLedgerOrders[] = {
    {"Date", "Bank.BankId,glTransaction.Date,glTransaction.glTransactionId"},
};

constexpr ListParameter kBankLedgerParameters[] = {
    BanksParameter("Bank.BankId"),
    DatedParameter("glTransaction.Date"),
};

// A bank's lines are every line of its asset account, whichever entry made them; a line from a
// bank entry names the entry's party, any other its comment. A bank no longer in use is left out:
// it may share its account with the one that took its place.
constexpr ListKey kBankLedgerKeys[] = {{
    .key = "BankLedger",
    .base_sql =
        "SELECT Bank.BankId,Bank.AccountName,Bank.AssetAccountId,glTransaction.glTransactionId,"
        "glTransaction.Date,glTransaction.Reference,"
        "IIf(OtherParty.Name Is Null,glTransaction.Comment,OtherParty.Name) AS PartyOrComment,"
        "IIf(glTransaction.Value>0,glTransaction.Value,Null) AS Deposit,"
        "IIf(glTransaction.Value<0,-glTransaction.Value,Null) AS Withdrawal,glTransaction.Value,"
        "IIf(glBankTransaction.StmtPage Is Null,False,True) AS Reconciled"
        " FROM ((Bank INNER JOIN glTransaction ON Bank.AssetAccountId=glTransaction.AccountId)"
        " LEFT JOIN glBankTransaction ON"
        " glTransaction.glBankTransactionId=glBankTransaction.glBankTransactionId)"
        " LEFT JOIN OtherParty ON glBankTransaction.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "Bank.InUse=True",
    .orders = kBankLedgerOrders,
    .parameters = kBankLedgerParameters,
}};

}  // namespace

arglBankLedger::arglBankLedger() : ListDesigner("arglBankLedger", kBankLedgerKeys) {}

DesignerPtr CreatearglBankLedger() { return std::make_shared<arglBankLedger>(); }

void arglBankLedger::ActiveReport_ReportStart() {
  openings_ = BankOpenings(TLReport()->Parameters().Value("DatedFrom", Variant::Null()));
  ListDesigner::ActiveReport_ReportStart();
}

Currency arglBankLedger::OpeningOf(const std::string& account) const {
  auto found = openings_.find(UCase(account));
  return found == openings_.end() ? Currency() : found->second;
}

void arglBankLedger::ActiveReport_DataInitialize() { Fields().Add("Balance"); }

void arglBankLedger::ActiveReport_FetchData(bool&) {
  const std::string bank = LedgerFieldText(Fields(), "BankId");
  if (bank != fetched_bank_) {
    fetched_bank_ = bank;
    balance_ = OpeningOf(LedgerFieldText(Fields(), "AssetAccountId"));
  }
  if (const ReportField* value = Fields().Find("Value"); value && !value->Value().IsNull()) {
    balance_ += value->Value().ToCurrency();
  }
  closings_[bank] = balance_;
  Fields().Add("Balance").SetValue(Variant(balance_));
}

// The header and footer of a bank: its opening before the first line, its closing after the
// last, which is the balance the rows ran to.
void arglBankLedger::OnFormat(Section& section) {
  if (section.Name() == "ghBank") {
    printing_bank_ = LedgerFieldText(Fields(), "BankId");
    Field("txtOpening")
        .SetText(Format(Variant(OpeningOf(LedgerFieldText(Fields(), "AssetAccountId"))),
                        "#,##0.00;(#,##0.00)"));
  } else if (section.Name() == "gfBank") {
    auto found = closings_.find(printing_bank_);
    Field("txtClosing")
        .SetText(Format(Variant(found == closings_.end() ? Currency() : found->second),
                        "#,##0.00;(#,##0.00)"));
  } else {
    ListDesigner::OnFormat(section);
  }
}

}  // namespace trellin
