// The key of the cheque list, row by row.

#include "reports/ledger/arglChequeList.h"

#include "reports/ReportShapes.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kChequeOrders[] = {
    {"Reference", "glBankTransaction.Reference,glBankTransaction.glBankTransactionId"},
    {"Date", "glBankTransaction.Date,glBankTransaction.Reference"},
    {"Payee", "Payee,glBankTransaction.Reference"},
    {"Amount", "glTransaction.Value DESC,glBankTransaction.Reference"},
};

constexpr ListParameter kChequeParameters[] = {
    kBankEntryBanks,
    DatedParameter("glBankTransaction.Date"),
    kBankReferences,
    {.kind = ListParameterKind::Standard, .field = "glBankTransaction.OtherPartyId", .index = 33},
    {.kind = ListParameterKind::Option,
     .name = "UnpresentedOnly",
     .caption = "Unpresented Only",
     .condition = "glBankTransaction.Presented Is Null",
     .phrase = "Unpresented cheques only"},
};

constexpr ListColumn kChequeColumns[] = {
    {"ChequeNo", "Reference", kColumnText, "Cheque No", "", 1200, false},
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Payee", "Payee", kColumnText, "Payee", "", 3000, false},
    {"Comment", "Comment", kColumnText, "Comment", "", -1, false},
    {"Amount", "Amount", kColumnMoney, "Amount", "", 1400, false},
    {"Presented", "Presented", kColumnDate, "Presented", "", 1000, false},
    {"StmtPage", "StmtPage", kColumnText, "Stmt Page", "", 1100, false},
    {"Status", "Status", kColumnText, "Status", "", 1200, false},
};

// A cheque is money out of the bank: its own line (sequence 0) below zero. It is paid to the
// party's cheque name where it has one.
constexpr ListKey kChequeKeys[] = {{
    .key = "ChequeList",
    .base_sql = "SELECT glBankTransaction.glBankTransactionId,glBankTransaction.BankId,"
                "glBankTransaction.Reference,glBankTransaction.Date,"
                "IIf(Len(Nz(OtherParty.ChqName,''))>0,OtherParty.ChqName,OtherParty.Name) AS Payee,"
                "glBankTransaction.Comment,-glTransaction.Value AS Amount,"
                "glBankTransaction.Presented,glBankTransaction.StmtPage,"
                "IIf(glBankTransaction.Presented Is Null,'Unpresented','Presented') AS Status"
                " FROM (glBankTransaction INNER JOIN glTransaction ON"
                " glBankTransaction.glBankTransactionId=glTransaction.glBankTransactionId)"
                " LEFT JOIN OtherParty ON glBankTransaction.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "glTransaction.glBankTransactionSequence=0 AND glTransaction.Value<0",
    .orders = kChequeOrders,
    .parameters = kChequeParameters,
    .grouping_table = "glBankTransaction",
    .fixed_grouping = "Bank",
    .columns = kChequeColumns,
}};

}  // namespace

arglChequeList::arglChequeList() : ListDesigner("arglChequeList", kChequeKeys) {}

DesignerPtr CreatearglChequeList() { return std::make_shared<arglChequeList>(); }

}  // namespace trellin
