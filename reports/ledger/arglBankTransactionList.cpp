// The key of the bank entry list, row by row.

#include "reports/ledger/arglBankTransactionList.h"

#include "reports/ReportShapes.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

// "Amount" sorts by the bank's signed amount: the largest withdrawal first, deposits last.
constexpr ListOrder kBankOrders[] = {
    {"Date", "glBankTransaction.Date,glBankTransaction.glBankTransactionId"},
    {"Reference",
     "glBankTransaction.Reference,glBankTransaction.Date,glBankTransaction.glBankTransactionId"},
    {"Amount", "glTransaction.Value,glBankTransaction.Date,glBankTransaction.glBankTransactionId"},
    {"Entered", "glBankTransaction.glBankTransactionId"},
};

constexpr ListChoice kBankReconciled[] = {
    {"All", "", ""},
    {"Reconciled", "glBankTransaction.StmtPage Is Not Null", "Reconciled entries only"},
    {"Unreconciled", "glBankTransaction.StmtPage Is Null", "Unreconciled entries only"},
};

constexpr ListParameter kBankParameters[] = {
    kBankEntryBanks,
    DatedParameter("glBankTransaction.Date"),
    kBankReferences,
    {.kind = ListParameterKind::Standard, .field = "glBankTransaction.OtherPartyId", .index = 24},
    {.kind = ListParameterKind::Choice,
     .name = "Reconciled",
     .caption = "Reconciled",
     .choices = kBankReconciled},
    {.kind = ListParameterKind::MoneyRange,
     .name = "Amount",
     .caption = "Amount",
     .field = "Abs(glTransaction.Value)"},
};

// The bank entry's own table holds a reference too, so the grouping names it.
constexpr ListGrouping kBankOwnGroupings[] = {
    {"Reference", "glBankTransaction.Reference",
     "SELECT Reference,'' FROM glBankTransaction GROUP BY Reference", "Reference"},
};

constexpr ListColumn kBankColumns[] = {
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1200, false},
    {"Party", "OtherPartyId", kColumnText, "Party", "", 1100, false},
    {"Name", "Name", kColumnText, "Name", "", 2600, false},
    {"Comment", "Comment", kColumnText, "Comment", "", -1, false},
    {"Deposit", "Deposit", kColumnMoney, "Deposit", "", 1400, false},
    {"Withdrawal", "Withdrawal", kColumnMoney, "Withdrawal", "", 1400, false},
    {"StmtPage", "StmtPage", kColumnText, "Stmt Page", "", 1100, false},
    {"Presented", "Presented", kColumnDate, "Presented", "", 1000, false},
    {"Entry", "glBankTransactionId", kColumnText, "Entry", "", 800, true},
};

constexpr ListKey kBankKeys[] = {{
    .key = "BankTransactionList",
    .base_sql = "SELECT glBankTransaction.glBankTransactionId,glBankTransaction.BankId,"
                "glBankTransaction.Date,glBankTransaction.Reference,glBankTransaction.OtherPartyId,"
                "OtherParty.Name,glBankTransaction.Comment,"
                "IIf(glTransaction.Value>0,glTransaction.Value,Null) AS Deposit,"
                "IIf(glTransaction.Value<0,-glTransaction.Value,Null) AS Withdrawal,"
                "glBankTransaction.StmtPage,glBankTransaction.Presented"
                " FROM (glBankTransaction INNER JOIN glTransaction ON"
                " glBankTransaction.glBankTransactionId=glTransaction.glBankTransactionId)"
                " LEFT JOIN OtherParty ON glBankTransaction.OtherPartyId=OtherParty.OtherPartyId",
    .base_where = "glTransaction.glBankTransactionSequence=0",
    .orders = kBankOrders,
    .parameters = kBankParameters,
    .groupings = "Bank,Other Party,Reference",
    .grouping_table = "glBankTransaction",
    .own_groupings = kBankOwnGroupings,
    .summary = true,
    .columns = kBankColumns,
}};

}  // namespace

arglBankTransactionList::arglBankTransactionList()
    : ListDesigner("arglBankTransactionList", kBankKeys) {}

DesignerPtr CreatearglBankTransactionList() { return std::make_shared<arglBankTransactionList>(); }

}  // namespace trellin
