// The key of the ledger line list, row by row.

#include "reports/ledger/arglTransactionList.h"

#include "reports/ReportShapes.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kLineOrders[] = {
    {"Date", "glTransaction.Date,glTransaction.glTransactionId"},
    {"Account", "glTransaction.AccountId,glTransaction.Date,glTransaction.glTransactionId"},
    {"Reference", "glTransaction.Reference,glTransaction.Date,glTransaction.glTransactionId"},
    {"Source", "glTransaction.glSourceId,glTransaction.Date,glTransaction.glTransactionId"},
    {"Entered", "glTransaction.glTransactionId"},
};

// Year-end lines carry a type; ordinary movement has none.
constexpr ListParameter kLineParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "glTransaction.AccountId",
     .index = 0,
     .primary = true},
    DatedParameter("glTransaction.Date"),
    {.kind = ListParameterKind::Standard, .field = "glTransaction.glSourceId", .index = 32},
    {.kind = ListParameterKind::Standard, .field = "glTransaction.BranchId", .index = 6},
    {.kind = ListParameterKind::Standard, .field = "glTransaction.DeptId", .index = 14},
    kLedgerReferences,
    {.kind = ListParameterKind::MoneyRange,
     .name = "Amount",
     .caption = "Amount",
     .field = "Abs(glTransaction.Value)"},
    {.kind = ListParameterKind::Option,
     .name = "IncludeYearEnd",
     .caption = "Include Year End",
     .phrase = "Year-end entries included",
     .off_condition = "glTransaction.Type Is Null"},
};

constexpr ListColumn kLineColumns[] = {
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Account", "AccountId", kColumnText, "Account", "", 900, false},
    {"Description", "Description", kColumnText, "Description", "", 2400, false},
    {"Source", "glSourceId", kColumnText, "Source", "", 700, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1200, false},
    {"Comment", "Comment", kColumnText, "Comment", "", -1, false},
    {"Branch", "BranchId", kColumnText, "Branch", "", 700, false},
    {"Dept", "DeptId", kColumnText, "Dept", "", 700, false},
    {"Debit", "Debit", kColumnMoney, "Debit", "", 1400, false},
    {"Credit", "Credit", kColumnMoney, "Credit", "", 1400, false},
    {"Tax", "TaxValue", kColumnMoney, "Tax", "", 1200, true},
    {"TaxCat", "TaxCategory", kColumnText, "Tax Cat", "", 900, true},
    {"Entry", "glBankTransactionId", kColumnText, "Entry", "", 800, true},
    {"Document", "TransactionId", kColumnText, "Document", "", 900, true},
    {"Line", "glTransactionId", kColumnText, "Line", "", 900, true},
};

constexpr ListKey kLineKeys[] = {{
    .key = "GLTransactionList",
    .base_sql =
        "SELECT glTransaction.glTransactionId,glTransaction.Date,glTransaction.AccountId,"
        "Account.Description,glTransaction.glSourceId,glTransaction.Reference,"
        "glTransaction.Comment,glTransaction.BranchId,glTransaction.DeptId,"
        "IIf(glTransaction.Value>0,glTransaction.Value,Null) AS Debit,"
        "IIf(glTransaction.Value<0,-glTransaction.Value,Null) AS "
        "Credit,glTransaction.TaxValue,glTransaction.TaxCategory,glTransaction.glBankTransactionId,"
        "glTransaction.TransactionId"
        " FROM glTransaction INNER JOIN Account ON glTransaction.AccountId=Account.AccountId",
    .orders = kLineOrders,
    .parameters = kLineParameters,
    .groupings = "Account,Source,Branch,Department,Reference",
    .grouping_table = "glTransaction",
    .summary = true,
    .columns = kLineColumns,
}};

}  // namespace

arglTransactionList::arglTransactionList() : ListDesigner("arglTransactionList", kLineKeys) {}

DesignerPtr CreatearglTransactionList() { return std::make_shared<arglTransactionList>(); }

}  // namespace trellin
