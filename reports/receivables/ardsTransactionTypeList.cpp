// The key of the transaction type list, and each type's class by name.

#include "reports/receivables/ardsTransactionTypeList.h"

#include "core/host/Section.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/TransactionClass.h"

namespace trellin {

namespace {

constexpr ListOrder kTypeOrders[] = {
    {"Code", "TransactionType.TransactionTypeId"},
    {"Description", "TransactionType.Description,TransactionType.TransactionTypeId"},
    {"Class", "TransactionType.Type,TransactionType.TransactionTypeId"},
};

// Job invoices (42) are the customer's documents; orders are neither side's.
constexpr ListChoice kClassChoices[] = {
    {"All"},
    {"Receivables", "(TransactionType.Type Between 30 And 39 Or TransactionType.Type=42)",
     "Receivables types"},
    {"Payables", "TransactionType.Type Between 20 And 29", "Payables types"},
    {"Orders", "TransactionType.Type In (80,90)", "Order types"},
};

constexpr ListParameter kTypeParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "TransactionType.TransactionTypeId",
     .index = 39,
     .primary = true},
    {.kind = ListParameterKind::Choice,
     .name = "Class",
     .caption = "Class",
     .choices = kClassChoices},
};

constexpr ListColumn kTypeColumns[] = {
    {"Code", "TransactionTypeId", kColumnText, "Code", "", 1100, false},
    {"Description", "Description", kColumnText, "Description", "", 3000, false},
    {"Class", "ClassText", kColumnText, "Class", "", 2600, false},
    {"Message", "Message", kColumnText, "Message", "", -1, false},
};

constexpr ListKey kTypeKeys[] = {{
    .key = "TransactionTypeList",
    .base_sql = "SELECT TransactionType.TransactionTypeId,TransactionType.Description,"
                "TransactionType.Type,TransactionType.Message FROM TransactionType",
    .orders = kTypeOrders,
    .parameters = kTypeParameters,
    .columns = kTypeColumns,
}};

}  // namespace

ardsTransactionTypeList::ardsTransactionTypeList()
    : ListDesigner("ardsTransactionTypeList", kTypeKeys, "Transaction Type List") {}

DesignerPtr CreateardsTransactionTypeList() { return std::make_shared<ardsTransactionTypeList>(); }

void ardsTransactionTypeList::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  for (Control& c : Sections()["Detail"].Controls()) {
    if (c.DataField() == "Message") c.SetCanGrow(true);
  }
}

void ardsTransactionTypeList::ActiveReport_DataInitialize() { Fields().Add("ClassText"); }

void ardsTransactionTypeList::ActiveReport_FetchData(bool&) {
  const ReportField* type = Fields().Find("Type");
  if (type == nullptr) return;
  Fields()
      .Item("ClassText")
      .SetValue(type->Value().IsNull() ? Variant(std::string())
                                       : Variant(TransactionClassText(type->Value().ToLong())));
}

}  // namespace trellin
