// The saved-document keys, row by row, the lines' signs and the documents' headings.

#include "reports/receivables/ardsInvoiceBatchTransactions.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Section.h"
#include "platform/runtime/Format.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/PurchaseOrderLines.h"

namespace trellin {

namespace {

constexpr ListOrder kSavedOrders[] = {
    {"Code", "acBatchTransaction.OtherPartyId,acBatchTransaction.acBatchTransactionId"},
    {"Date", "acBatchTransaction.Date,acBatchTransaction.acBatchTransactionId"},
    {"Reference", "acBatchTransaction.Reference,acBatchTransaction.acBatchTransactionId"},
    {"Entered", "acBatchTransaction.acBatchTransactionId"},
};

constexpr ListParameter kSavedParameters[] = {
    {.kind = ListParameterKind::PickList,
     .name = "Batches",
     .caption = "Batches",
     .field = "acBatchTransaction.BatchId",
     .list_sql = "SELECT BatchId,'' FROM acBatchTransaction GROUP BY BatchId",
     .key_field = "BatchId"},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .field = "acBatchTransaction.Date"},
    {.kind = ListParameterKind::Standard, .field = "acBatchTransaction.OtherPartyId", .index = 8},
    {.kind = ListParameterKind::Standard, .field = "acBatchTransaction.OtherPartyId", .index = 33},
};

// The commit list names the one batch about to be posted.
constexpr ListParameter kCommitParameters[] = {
    {.kind = ListParameterKind::PickList,
     .name = "BatchId",
     .caption = "Batch",
     .field = "acBatchTransaction.BatchId",
     .primary = true,
     .list_sql = "SELECT BatchId,'' FROM acBatchTransaction GROUP BY BatchId",
     .key_field = "BatchId"},
};

// A batch heads with its name, a party with its name, a document with its reference (the
// designer writes the rest of the document's heading).
constexpr ListGrouping kSavedGroupings[] = {
    {"Batch", "acBatchHeader.acBatchSId", "SELECT acBatchSId,acBatchHeaderId FROM acBatchHeader",
     "acBatchSId"},
    {"Customer", "acBatchTransaction.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
    {"Supplier", "acBatchTransaction.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
    {"Party", "acBatchTransaction.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
    {"Document", "acBatchTransaction.acBatchTransactionId",
     "SELECT acBatchTransactionId,Reference FROM acBatchTransaction", "acBatchTransactionId"},
};

constexpr ListColumn kSavedColumns[] = {
    {"Code", "OtherPartyId", kColumnText, "Code", "", 1100, true},
    {"Name", "Name", kColumnText, "Name", "", 2400, true},
    {"Type", "TransactionTypeId", kColumnText, "Type", "", 700, true},
    {"Date", "Date", kColumnDate, "Date", "", 1000, true},
    {"Reference", "Reference", kColumnText, "Reference", "", 1100, true},
    {"OrderNo", "OrderNo", kColumnText, "Order No", "", 1100, true},
    {"Item", "ItemId", kColumnText, "Item", "", 1100, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Qty", "Qty", kColumnNumber, "Qty", "", 800, false},
    {"Price", "UnitPrice", kColumnMoney, "Price", "", 1100, false},
    {"TaxCategory", "TaxCategory", kColumnText, "Tax Cat", "", 800, false},
    {"Tax", "Tax", kColumnMoney, "Tax", "", 1100, false},
    {"Value", "LineValue", kColumnMoney, "Value", "", 1300, false},
    {"Total", "Total", kColumnMoney, "Total", "", 1300, false},
};

// The line, its document, batch and party, and whether its item and tax category are on file.
constexpr std::string_view kSavedSql =
    "SELECT acBatchHeader.acBatchSId,acBatchHeader.acBatchHeaderId,acBatchHeader.Type,"
    "acBatchTransaction.acBatchTransactionId,acBatchTransaction.OtherPartyId,OtherParty.Name,"
    "acBatchTransaction.TransactionTypeId,acBatchTransaction.Date,acBatchTransaction.Reference,"
    "acBatchTransaction.OrderNo,acBatchTransactionLine.Type AS LineType,"
    "acBatchTransactionLine.ItemId,acBatchTransactionLine.Description,"
    "acBatchTransactionLine.Quantity,acBatchTransactionLine.UnitPrice,"
    "acBatchTransactionLine.TaxCategory,acBatchTransactionLine.TaxValue,"
    "acBatchTransactionLine.[Value],Item.ItemId AS ItemOnFile,"
    "TaxCategory.TaxCategoryId AS TaxOnFile FROM ((((acBatchHeader INNER JOIN acBatchTransaction "
    "ON acBatchHeader.acBatchSId=acBatchTransaction.acBatchSId) INNER JOIN acBatchTransactionLine "
    "ON acBatchTransaction.acBatchTransactionId=acBatchTransactionLine.acBatchTransactionId) LEFT "
    "JOIN OtherParty ON acBatchTransaction.OtherPartyId=OtherParty.OtherPartyId) LEFT JOIN Item "
    "ON acBatchTransactionLine.ItemId=Item.ItemId) LEFT JOIN TaxCategory ON "
    "acBatchTransactionLine.TaxCategory=TaxCategory.TaxCategoryId";

constexpr ListKey SavedKey(std::string_view key, std::span<const ListParameter> parameters,
                           std::string_view groups) {
  return {.key = key,
          .base_sql = kSavedSql,
          .orders = kSavedOrders,
          .parameters = parameters,
          .own_groupings = kSavedGroupings,
          .fixed_grouping = groups,
          .columns = kSavedColumns};
}

constexpr ListKey kSavedKeys[] = {
    SavedKey("SavedTransactionListAR", kSavedParameters, "Batch,Customer,Document"),
    SavedKey("SavedTransactionListAP", kSavedParameters, "Batch,Supplier,Document"),
    SavedKey("InvoiceCommitBatch", kCommitParameters, "Batch,Party,Document"),
};

// A credit note's lines (line types 21 and 31) are stored positive like an invoice's.
bool CreditLine(const Fields& fields) {
  const ReportField* type = fields.Find("LineType");
  if (type == nullptr || type->Value().IsNull()) return false;
  const long t = static_cast<long>(type->Value().ToLong());
  return t == 21 || t == 31;
}

Variant ValueOf(const Fields& fields, std::string_view name) {
  const ReportField* field = fields.Find(name);
  return field == nullptr ? Variant::Null() : field->Value();
}

bool Blank(const Variant& v) { return v.IsNull() || v.IsEmpty() || v.Text().empty(); }

}  // namespace

std::string MissingCodesWarning(long no_account, long no_tax) {
  std::string text;
  if (no_account != 0) text = "Lines without an account: " + std::to_string(no_account) + ".";
  if (no_tax != 0) {
    text += (text.empty() ? "" : " ") + std::string("Lines without a tax category: ") +
            std::to_string(no_tax) + ".";
  }
  return text;
}

ardsInvoiceBatchTransactions::ardsInvoiceBatchTransactions()
    : ListDesigner("ardsInvoiceBatchTransactions", kSavedKeys) {}

DesignerPtr CreateardsInvoiceBatchTransactions() {
  return std::make_shared<ardsInvoiceBatchTransactions>();
}

void ardsInvoiceBatchTransactions::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  TLReport()->DataColumns().Item("Qty").Totalled = false;
  TLReport()->DataColumns().Item("Qty").Format = QuantityMask();
  TLReport()->DataColumns().Item("Price").Totalled = false;
}

std::string ardsInvoiceBatchTransactions::ExtraCondition() {
  const std::string key = TLReport()->ReportName();
  if (const auto side = SideOfKey("ardsInvoiceBatchTransactions", key)) {
    return "(acBatchHeader.Type Between " + std::string(SideOf(*side).range) + ")";
  }
  // The commit list with no batch named takes the latest batch saved.
  if (!Blank(TLReport()->Parameters().Value("BatchId", Variant()))) return {};
  return "acBatchHeader.acBatchSId=(SELECT Max(acBatchSId) FROM acBatchHeader)";
}

void ardsInvoiceBatchTransactions::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  for (Control& c : Sections()["Detail"].Controls()) {
    if (c.DataField() == "Description") c.SetCanGrow(true);
  }
  // The rows are a batch's lines: counted in one pass over the list's own recordset, which then
  // starts again from its first row. A line with no value (a text line) needs neither code.
  missing_.clear();
  if (const auto& rs = DataControl().Recordset(); rs && !rs->Eof()) {
    const int batch = rs->FieldIndex("acBatchSId");
    const int item = rs->FieldIndex("ItemOnFile");
    const int tax = rs->FieldIndex("TaxOnFile");
    const int value = rs->FieldIndex("Value");
    for (; !rs->Eof(); rs->MoveNext()) {
      const Variant& v = rs->Value(value);
      if (v.IsNull() || v.ToCurrency() == Currency()) continue;
      Missing& m = missing_[static_cast<long>(rs->Value(batch).ToLong())];
      if (Blank(rs->Value(item))) ++m.account;
      if (Blank(rs->Value(tax))) ++m.tax;
    }
    rs->MoveFirst();
  }
}

void ardsInvoiceBatchTransactions::ActiveReport_DataInitialize() {
  for (const char* name : {"Qty", "Tax", "LineValue", "Total"}) Fields().Add(name);
}

void ardsInvoiceBatchTransactions::ActiveReport_FetchData(bool&) {
  const bool credit = CreditLine(Fields());
  auto money = [&](std::string_view name) {
    const Variant v = ValueOf(Fields(), name);
    const Currency c = Blank(v) ? Currency() : v.ToCurrency();
    return credit ? -c : c;
  };
  const Variant q = ValueOf(Fields(), "Quantity");
  const double quantity = Blank(q) ? 0.0 : q.ToDouble();
  Fields().Item("Qty").SetValue(Variant(credit ? -quantity : quantity));
  const Currency tax = money("TaxValue");
  const Currency value = money("Value");
  Fields().Item("Tax").SetValue(Variant(tax));
  Fields().Item("LineValue").SetValue(Variant(value));
  Fields().Item("Total").SetValue(Variant(value + tax));
}

void ardsInvoiceBatchTransactions::OnFormat(Section& section) {
  ListDesigner::OnFormat(section);
  const bool header = section.Type() == SectionType::GroupHeader;
  const bool footer = section.Type() == SectionType::GroupFooter;
  if (!header && !footer) return;
  // Innermost first: the document is level 1 and the batch level 3.
  const int level = GroupLevelOf(section, header ? "GroupHeader" : "GroupFooter");
  if (header && level == 1) {
    if (Control* label = FindControl("ghLabel1")) {
      // The date first, then the type and the reference.
      const Variant date = ValueOf(Fields(), "Date");
      std::string text =
          Blank(date)
              ? std::string()
              : Format(date, TrellinReportGlobals::RequireBusinessLayer().DateFormat()) + "   ";
      text += ValueOf(Fields(), "TransactionTypeId").Text() + "   " +
              ValueOf(Fields(), "Reference").Text();
      const std::string order = ValueOf(Fields(), "OrderNo").Text();
      if (!order.empty()) text += "   Order " + order;
      label->SetCaption(text);
    }
  }
  if (footer && level == 3 && TLReport()->ReportName() == "InvoiceCommitBatch") {
    Control* label = FindControl("gfLabel3");
    const Variant batch = ValueOf(Fields(), "acBatchSId");
    const auto found = missing_.find(Blank(batch) ? 0L : static_cast<long>(batch.ToLong()));
    if (label != nullptr && found != missing_.end()) {
      const std::string warning = MissingCodesWarning(found->second.account, found->second.tax);
      if (!warning.empty()) label->SetText(label->Text() + "   " + warning);
    }
  }
}

}  // namespace trellin
