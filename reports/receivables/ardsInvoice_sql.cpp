// The documents' keys, their parameters and the run's query.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/ardsInvoice.h"

namespace trellin {

namespace {

// clang-format off
constexpr InvoiceKey kKeys[] = {
    {"InvoiceAR", false,
     "SELECT max(TransactionId) FROM Transactions WHERE Transactions.Type in (30,31)",
     "SELECT DISTINCT Reference FROM Transactions WHERE Transactions.Type in (30,31) ORDER BY Reference",
     "SELECT TransactionTypeId,Description FROM TransactionType WHERE Type in (30,31,33) ORDER BY TransactionTypeId",
     "SELECT DISTINCT BatchId FROM Transactions WHERE Type in(30,31) ORDER BY BatchId",
     "Customers", "T.Type in (30,31)", KeyFlag::AsGiven, KeyFlag::Off, KeyFlag::AsGiven},
    {"PackingSlip", false,
     "SELECT max(TransactionId) FROM Transactions WHERE Transactions.Type=30",
     "SELECT DISTINCT Reference FROM Transactions WHERE Transactions.Type=30 ORDER BY Reference",
     "SELECT TransactionTypeId,Description FROM TransactionType WHERE Type in (30,33) ORDER BY TransactionTypeId",
     "SELECT DISTINCT BatchId FROM Transactions WHERE Type=30 ORDER BY BatchId",
     "Customers", "T.Type in (30,31)", KeyFlag::AsGiven, KeyFlag::Off, KeyFlag::On},
    {"InvoiceAP", true,
     "SELECT max(TransactionId) FROM Transactions WHERE Transactions.Type in (20,21)",
     "SELECT DISTINCT Reference FROM Transactions WHERE Transactions.Type in(20,21) ORDER BY Reference",
     "SELECT TransactionTypeId,Description FROM TransactionType WHERE Type in(20,21) ORDER BY TransactionTypeId",
     "SELECT DISTINCT BatchId FROM Transactions WHERE Type in(20,21) ORDER BY BatchId",
     "Suppliers", "T.Type in (20,21)", KeyFlag::AsGiven, KeyFlag::Off, KeyFlag::AsGiven},
    {"PurchaseOrder", true,
     "SELECT max(PurchaseOrderId) FROM PurchaseOrder",
     "SELECT DISTINCT Reference FROM PurchaseOrder ORDER BY Reference",
     "SELECT TransactionTypeId,Description FROM TransactionType WHERE Type=80 ORDER BY TransactionTypeId",
     "", "Suppliers", "", KeyFlag::Off, KeyFlag::On, KeyFlag::Off},
    {"Sales Order", false,
     "SELECT Max(acBatchTransaction.acBatchTransactionId) AS MaxOfacBatchTransactionId FROM acBatchHeader INNER JOIN acBatchTransaction ON acBatchHeader.acBatchSId = acBatchTransaction.acBatchSId WHERE acBatchHeader.Type=90",
     "", "", "", "", "acBatchHeader.Type=90", KeyFlag::On, KeyFlag::Off, KeyFlag::AsGiven},
    // No table of its own: it prints from what its flags name, with no party or type filter.
    {"Delivery Docket", false, "", "", "", "", "", "", KeyFlag::AsGiven, KeyFlag::AsGiven, KeyFlag::AsGiven},
};
// clang-format on

constexpr const char* kOpenSelect =
    "SELECT acBatchTransaction.acBatchTransactionId, acBatchTransaction.TransactionTypeId, "
    "acBatchTransaction.LocationId, acBatchTransaction.OtherPartyId, acBatchTransaction.Date, "
    "acBatchTransaction.Reference, acBatchTransaction.PPDDate, acBatchTransaction.PPDAllowed, "
    "acBatchTransaction.AddressId, acBatchTransaction.OrderNo, "
    "acBatchTransaction.acBatchTransactionId, acBatchHeader.Type, acBatchTransactionLine.Hidden, "
    "acBatchTransactionLine.ItemId, acBatchTransactionLine.Description, "
    "acBatchTransactionLine.SerialNumber, acBatchTransactionLine.Quantity, "
    "acBatchTransactionLine.UnitPrice, acBatchTransactionLine.Extension, "
    "acBatchTransactionLine.Discount, acBatchTransactionLine.DiscountRate, "
    "acBatchTransactionLine.Value, acBatchTransactionLine.TaxCategory, "
    "acBatchTransactionLine.TaxValue, acBatchTransactionLine.OrderQuantity, "
    "acBatchTransactionLine.Hold"
    " FROM (acBatchHeader INNER JOIN acBatchTransaction ON acBatchHeader.acBatchSId = "
    "acBatchTransaction.acBatchSId) INNER JOIN acBatchTransactionLine ON "
    "acBatchTransaction.acBatchTransactionId = acBatchTransactionLine.acBatchTransactionId";

constexpr const char* kPurchaseOrderSelect =
    "SELECT PurchaseOrder.PurchaseOrderId, PurchaseOrder.TransactionTypeId, "
    "PurchaseOrder.Comment, PurchaseOrder.LocationId, PurchaseOrder.OtherPartyId, "
    "PurchaseOrder.Date, PurchaseOrder.Reference, PurchaseOrder.InternalReference, "
    "PurchaseOrder.AddressId, PurchaseOrder.Comment, PurchaseOrder.DateRequired, "
    "PurchaseOrderLine.ItemId, PurchaseOrderLine.Description, PurchaseOrderLine.Quantity, "
    "PurchaseOrderLine.UnitPrice, PurchaseOrderLine.Extension, PurchaseOrderLine.Discount, "
    "PurchaseOrderLine.DiscountRate, PurchaseOrderLine.Value, PurchaseOrderLine.TaxCategory, "
    "PurchaseOrderLine.TaxValue, '' AS SerialNumber, Item.SupplierCode"
    " FROM OtherParty INNER JOIN (PurchaseOrder INNER JOIN (Item RIGHT JOIN PurchaseOrderLine ON "
    "Item.ItemId = PurchaseOrderLine.ItemId) ON PurchaseOrder.PurchaseOrderId = "
    "PurchaseOrderLine.PurchaseOrderId) ON OtherParty.OtherPartyId = PurchaseOrder.OtherPartyId";

constexpr const char* kPostedSelect =
    "SELECT Transactions.TransactionId, Transactions.LocationId, Transactions.Type, "
    "Transactions.TransactionTypeId, Transactions.OtherPartyId, Transactions.Date, "
    "Transactions.Reference, Transactions.PPDDate, Transactions.PPDAllowed, "
    "Transactions.AddressId, Transactions.OrderNo, TransactionLine.ItemId, "
    "TransactionLine.Hidden, TransactionLine.Description, TransactionLine.SerialNumber, "
    "TransactionLine.Quantity, TransactionLine.UnitPrice, TransactionLine.Extension, "
    "TransactionLine.Discount, TransactionLine.DiscountRate, TransactionLine.Value, "
    "TransactionLine.TaxCategory, TransactionLine.TaxValue, TransactionLine.PPDiscount"
    " FROM OtherParty INNER JOIN (Transactions INNER JOIN TransactionLine ON "
    "Transactions.TransactionId = TransactionLine.TransactionId) ON OtherParty.OtherPartyId = "
    "Transactions.OtherPartyId";

// The base table of a source and its key.
const char* InvoiceTableOf(InvoiceSource source) {
  switch (source) {
    case InvoiceSource::OpenBatch:
      return "acBatchTransaction";
    case InvoiceSource::PurchaseOrders:
      return "PurchaseOrder";
    case InvoiceSource::Posted:
      break;
  }
  return "Transactions";
}

const char* InvoiceKeyColumnOf(InvoiceSource source) {
  switch (source) {
    case InvoiceSource::OpenBatch:
      return "acBatchTransactionId";
    case InvoiceSource::PurchaseOrders:
      return "PurchaseOrderId";
    case InvoiceSource::Posted:
      break;
  }
  return "TransactionId";
}

bool InvoiceFlag(const Parameters& p, const char* name) {
  const Variant value = p.Value(name, false);
  return !value.IsNull() && !value.IsEmpty() && value.ToBool();
}

// The flag `name` as the key has it: the user's value, or the one the key fixes whatever was
// given, so that no key prints from another key's table.
bool KeyedFlag(const Parameters& p, const char* name, KeyFlag rule) {
  if (rule == KeyFlag::AsGiven) return InvoiceFlag(p, name);
  return rule == KeyFlag::On;
}

}  // namespace

const InvoiceKey* InvoiceKeyOf(std::string_view key) {
  for (const InvoiceKey& row : kKeys) {
    if (row.key == key) return &row;
  }
  return nullptr;
}

DesignerPtr CreateardsInvoice() { return std::make_shared<ardsInvoice>(); }

void ardsInvoice::RefreshParameters(std::string& ReportName) {
  key_ = ReportName;
  key_row_ = InvoiceKeyOf(key_);
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  // Filled by the application that prints documents of its own choosing, and not shown.
  p.AddString("SQLOrderBy", "", false, "", "", false, "");
  p.AddString("SQLWhere", "", false, "", "", false, "");
  p.AddString("DocumentId", "", false, "", "", false, "");
  p.AddString("Message", "", false, "", "", false, "Message");
  p.AddString("Other", "", false, "", "", false, "Other");
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Date,Entered,Name,Reference,X Ref", false,
            "Order By");
  p.AddNumber("TransactionIdFrom", 1, false, "", 1, 1, false, "Transaction Id From");
  for (const auto& [name, caption] : {std::pair{"DatedFrom", "Dated From"},
                                      {"DatedTo", "Dated To"},
                                      {"EnteredFrom", "Entered From"},
                                      {"EnteredTo", "Entered To"},
                                      {"ProcessFrom", "Process From"},
                                      {"ProcessTo", "Process To"}}) {
    p.AddDate(name, Variant::Null(), false, "", Variant::Null(), false, caption);
  }
  p.AddNumber("TransactionId", 0, false, "", 0, 0, false, "Transaction Id");
  for (const auto& [name, caption] : {std::pair{"IsDraft", "Draft"},
                                      {"IsInvoiceCopy", "Copy"},
                                      {"IsOpen", "Open Batch"},
                                      {"PackingSlip", "Packing Slip"},
                                      {"PurchaseOrder", "Purchase Order"}}) {
    p.AddBoolean(name, false, false, "", false, false, caption);
  }
  if (key_row_ == nullptr || *key_row_->id_to_sql == '\0') return;

  p.AddBoolean("Supplier", key_row_->supplier, false, "", key_row_->supplier, false, "Supplier");
  std::int64_t last = 9999999999;
  try {
    last = TrellinReportGlobals::RequireDatabase()->ExecuteScalarLong(key_row_->id_to_sql, last);
  } catch (const std::exception&) {
    // A company that cannot answer leaves the range open.
  }
  const Variant to(static_cast<long>(last));
  p.AddNumber("TransactionIdTo", to, false, "", to, last, false, "Transaction Id To");
  if (*key_row_->references_sql != '\0') {
    p.AddSQLList("References", Variant(), false, "", Variant(), key_row_->references_sql,
                 "Reference", false, "References");
  }
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(15, p, false);
  if (*key_row_->types_sql != '\0') {
    p.AddSQLList("TransactionTypes", Variant(), false, "", Variant(), key_row_->types_sql,
                 "TransactionTypeId", false, "Transaction Types");
  }
  if (*key_row_->batches_sql != '\0') {
    p.AddSQLList("Batches", Variant(), false, "", Variant(), key_row_->batches_sql, "BatchId",
                 false, "Batches");
  }
  if (*key_row_->parties != '\0') {
    CreateStandardParameter(key_row_->supplier ? 33 : 8, p, false, key_row_->parties);
  }
  Application& application = TrellinReportGlobals::RequireApplication();
  application.AddUserDefinedParametersOtherParty(p, false);
  if (key_ == "PurchaseOrder") application.AddUserDefinedParametersItem(p, false);
  application.AddUserDefinedParametersTransactions(p, false);
}

void ardsInvoice::ReadFlags() {
  const trellin::Parameters& p = TLReport()->Parameters();
  static constexpr InvoiceKey kAsGiven{
      "", false, "", "", "", "", "", "", KeyFlag::AsGiven, KeyFlag::AsGiven, KeyFlag::AsGiven};
  const InvoiceKey& row = key_row_ != nullptr ? *key_row_ : kAsGiven;
  is_draft_ = InvoiceFlag(p, "IsDraft");
  is_copy_ = InvoiceFlag(p, "IsInvoiceCopy");
  is_open_ = KeyedFlag(p, "IsOpen", row.is_open);
  purchase_order_ = KeyedFlag(p, "PurchaseOrder", row.purchase_order);
  packing_slip_ = KeyedFlag(p, "PackingSlip", row.packing_slip);
  // A purchase order has no open batch.
  if (purchase_order_) is_open_ = false;
  source_ = is_open_          ? InvoiceSource::OpenBatch
            : purchase_order_ ? InvoiceSource::PurchaseOrders
                              : InvoiceSource::Posted;
}

std::string ardsInvoice::GetSQL() const {
  std::string sql = source_ == InvoiceSource::OpenBatch        ? kOpenSelect
                    : source_ == InvoiceSource::PurchaseOrders ? kPurchaseOrderSelect
                                                               : kPostedSelect;
  const std::string where = GetSQLWhere();
  if (!where.empty()) sql += " WHERE " + where;
  sql += " ORDER BY " + GetSQLOrderBy();
  switch (source_) {
    case InvoiceSource::PurchaseOrders:
      sql += ",PurchaseOrder.PurchaseOrderId,PurchaseOrderLine.PurchaseOrderLineId";
      break;
    case InvoiceSource::Posted:
      sql += ",Transactions.TransactionId,TransactionLine.TransactionLineId";
      break;
    case InvoiceSource::OpenBatch:
      // The lines keep the order the batch gives them, but a document's lines stay together
      // when two documents share the order's value.
      sql += ",acBatchTransaction.acBatchTransactionId";
      break;
  }
  return sql;
}

std::string ardsInvoice::GetSQLOrderBy() const {
  const std::string order = TLReport()->Parameters().Value("OrderBy", "Code").Text();
  const std::string t = InvoiceTableOf(source_);
  if (order == "Date") return t + ".Date";
  if (order == "Entered") return t + ".CreatedDate";
  if (order == "Reference") return t + ".Reference";
  // The open batch's query joins no party: its own party code stands for the name.
  if (source_ != InvoiceSource::OpenBatch) {
    if (order == "Name") return "OtherParty.Name";
    if (order == "X Ref") return "OtherParty.XRefId";
  }
  return t + ".OtherPartyId";
}

std::string ardsInvoice::GetSQLWhere() const {
  const trellin::Parameters& p = TLReport()->Parameters();
  const std::string t = InvoiceTableOf(source_);
  const Variant id = p.Value("TransactionId", 0);
  std::string where;
  std::string unused;
  if (!id.IsNull() && !id.IsEmpty() && id.ToCurrency() != Currency()) {
    // One document is meant: no range or filter, but still only a document of the key.
    AppendSQLCondition(where,
                       t + "." + InvoiceKeyColumnOf(source_) + "=" + std::to_string(id.ToLong()));
  } else {
    auto bound = [&p](const char* name, Currency fallback) {
      const Variant value = p.Value(name, Variant::Null());
      return value.IsNull() || value.IsEmpty() ? fallback : value.ToCurrency();
    };
    AppendNumberRangeCondition(where, t + "." + InvoiceKeyColumnOf(source_),
                               bound("TransactionIdFrom", Currency::FromWhole(1)),
                               bound("TransactionIdTo", kNumberRangeMaximum),
                               Currency::FromWhole(1), kNumberRangeMaximum, "", unused, "");
    AppendListParameterCondition(where, t + ".Reference", "References", p, unused, kRangeText);
    AppendDateRangeCondition(where, t + ".Date", p.Value("DatedFrom", Variant::Null()),
                             p.Value("DatedTo", Variant::Null()), "", unused);
    AppendDateRangeCondition(where, t + ".CreatedDate", p.Value("EnteredFrom", Variant::Null()),
                             p.Value("EnteredTo", Variant::Null()), "", unused);
    if (source_ != InvoiceSource::PurchaseOrders) {
      AppendDateRangeCondition(where, t + ".DateProcess", p.Value("ProcessFrom", Variant::Null()),
                               p.Value("ProcessTo", Variant::Null()), "", unused);
    }
    for (auto [column, name] : {std::pair{".LocationId", "Locations"},
                                {".EmployeeId", "Employees"},
                                {".BatchId", "Batches"},
                                {".TransactionTypeId", "TransactionTypes"},
                                {".OtherPartyId", "Customers"},
                                {".OtherPartyId", "Suppliers"}}) {
      AppendListParameterCondition(where, t + column, name, p, unused, kRangeText);
    }
  }
  if (key_row_ != nullptr) {
    if (source_ == InvoiceSource::PurchaseOrders) {
      AppendSQLCondition(where, p.Value("SQLWhere", "").Text());
    } else {
      std::string clause = key_row_->type_clause;
      if (clause.rfind("T.", 0) == 0) clause = t + clause.substr(1);
      AppendSQLCondition(where, clause);
    }
  }
  // The user-defined fields of the tables the query joins: the open batch's joins neither the
  // party nor the posted transaction.
  if (source_ != InvoiceSource::OpenBatch) AppendUserDefinedFilters(where, p, unused, "OtherParty");
  if (source_ == InvoiceSource::Posted) AppendUserDefinedFilters(where, p, unused, "Transactions");
  if (source_ == InvoiceSource::PurchaseOrders) AppendUserDefinedFilters(where, p, unused, "Item");
  return where;
}

}  // namespace trellin
