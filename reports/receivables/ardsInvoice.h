#pragma once
// The commercial documents of the company, one designer for six keys: customer invoices and credit
// notes ("InvoiceAR"), supplier invoices and credits ("InvoiceAP"), packing slips
// ("PackingSlip"), purchase orders ("PurchaseOrder"), sales orders ("Sales Order") and delivery
// dockets ("Delivery Docket"). Each document starts a page and numbers its pages from 1; its
// heading carries the branch's letterhead, the title, the party's addresses and the document's
// codes, its lines follow (hidden lines rolled into one "Other Items" line at the end), and its
// totals stand at the foot of its last page, "Continued" at the foot of the others.
//
// The rows come from the posted transactions, an open batch (`IsOpen`) or the purchase orders
// (`PurchaseOrder`), or from a document held in memory (UseDocument) with no query at all.
//
// Units: ardsInvoice.cpp the run and the bands, ardsInvoice_sql.cpp the keys, parameters and
// queries, ardsInvoice_walk.cpp the line walk.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"
#include "reports/receivables/PartyDocument.h"

namespace trellin {

// The numeric class of a document, as stored in `Type`.
enum class DocumentClass : std::int16_t {
  None = 0,
  SupplierFurther = 18,
  SupplierInvoice = 20,
  SupplierCredit = 21,
  SupplierAdjustment = 22,
  CustomerInvoice = 30,
  CustomerCredit = 31,
  PurchaseOrder = 80,
  SalesOrder = 90,
};

// Where a run's rows come from.
enum class InvoiceSource { Posted, OpenBatch, PurchaseOrders };

// The flags a key runs with: those the key decides, and whether the user's own stand.
enum class KeyFlag { AsGiven, On, Off };

// One key of the designer, read row by row: its side, the queries of its parameters (an empty
// text: no such parameter), its type filter on the base table ("T" stands for the table), and
// what it makes of the flags that choose the table.
struct InvoiceKey {
  const char* key;
  bool supplier;
  const char* id_to_sql;
  const char* references_sql;
  const char* types_sql;
  const char* batches_sql;
  const char* parties;  // the standard party list: "Customers", "Suppliers" or ""
  const char* type_clause;
  KeyFlag is_open;
  KeyFlag purchase_order;
  KeyFlag packing_slip;
};
// The row of `key`; nullptr for a key the designer does not serve.
[[nodiscard]] const InvoiceKey* InvoiceKeyOf(std::string_view key);

// One line of a document as the walk reads it, from a row or from a document object.
struct InvoiceLine {
  std::int64_t document = 0;
  std::string item;  // "" for a text line
  bool hidden = false;
  bool hold = false;
  std::string description;
  std::string serial_number;
  std::string supplier_code;
  double order_quantity = 0;
  double quantity = 0;
  Currency unit_price;
  Currency extension;
  Currency discount;
  double discount_rate = 0;  // percent
  Currency value;
  std::string tax_category;
  Currency tax_value;
};

// The heading of one document.
struct InvoiceHeading {
  std::int64_t document = 0;
  DocumentClass type = DocumentClass::None;
  std::string type_code;  // TransactionTypeId
  std::string party;
  std::string location;
  std::string reference;
  Variant date;
  std::string order_no;
  std::string address_kind;  // the delivery address's AddressId
  Currency ppd_allowed;
  Variant ppd_date;
  // Purchase orders only.
  Variant date_required;
  std::string comment;
  std::string internal_reference;
};

// A document the application holds in memory (an invoice being entered, before it is posted):
// its heading and its lines by index. The designer reads it in the same thread, during the run.
class InvoiceDocument {
 public:
  virtual ~InvoiceDocument() = default;
  // The heading; `type` is the document's TransactionType (30 a customer invoice, ...).
  [[nodiscard]] virtual InvoiceHeading Heading() const = 0;
  [[nodiscard]] virtual long LineCount() const = 0;
  // The line at 1-based `index` (1 to LineCount). Its discount rate is a fraction (0.1 for ten
  // per cent), as the document keeps it.
  [[nodiscard]] virtual InvoiceLine Line(long index) const = 0;
};

// What one printed line of a document carries, and what the walk has added up for it.
struct PrintedInvoiceLine {
  bool rolled_up = false;  // the "Other Items" line
  bool text_only = false;  // a visible line without an item
  bool figures = false;    // its figures were worked
  InvoiceLine line;
  Currency sub_total;
  Currency line_total;
  Currency total_value;
  int all_inclusive = 0;
};

// The sums of one document's printed lines.
struct InvoiceTotals {
  Currency sub_total;
  Currency tax;
  Currency total;
  Currency tax_includes;
  int inclusive = 0;  // the lines whose tax is added to their price
};

// The totals' captions of a document: `tax_name` is "GST". Empty texts print nothing.
struct InvoiceTotalsWording {
  std::string sub_total;
  std::string tax;
  std::string includes_tax;
  std::string total;
};
[[nodiscard]] InvoiceTotalsWording InvoiceTotalsWordingOf(DocumentClass type, bool purchase_order,
                                                          const InvoiceTotals& totals,
                                                          const std::string& tax_name);

class ardsInvoice : public Designer {
 public:
  ardsInvoice() : Designer("ardsInvoice") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The run's query by the flags, valid once the flags are read (at ReportStart, or after
  // ReadFlags). Throws what the range builder throws for a list it cannot read.
  [[nodiscard]] std::string GetSQL() const;
  [[nodiscard]] std::string GetSQLWhere() const;
  [[nodiscard]] std::string GetSQLOrderBy() const;
  // Reads the flags from the parameters; the flags that choose the table are the key's own
  // ("Sales Order" always reads the open batch, "PurchaseOrder" the purchase orders, the
  // invoices never the purchase orders) whatever was given.
  void ReadFlags();
  [[nodiscard]] InvoiceSource Source() const { return source_; }

  // A document in memory to print instead of running a query; set before the run.
  void UseDocument(std::shared_ptr<const InvoiceDocument> document) {
    document_ = std::move(document);
  }
  // The business objects of the run; by default the business layer's own. Set before the run.
  void UseObjects(std::unique_ptr<BusinessObjects> objects) { objects_ = std::move(objects); }
  // Every query the run sends; set before the run.
  void SetQueryLog(std::function<void(const std::string&)> log) { query_log_ = std::move(log); }
  // Told each document's key and totals as its totals print; set before the run.
  void SetTotalsLog(std::function<void(std::int64_t, const InvoiceTotals&)> log) {
    totals_log_ = std::move(log);
  }

 private:
  // --- the walk (ardsInvoice_walk.cpp) ---
  // Reads the line at the cursor; false at the end.
  [[nodiscard]] bool ReadCurrent(InvoiceLine& line);
  void Advance();
  [[nodiscard]] InvoiceHeading ReadHeading();
  // Works one line's figures (step 5 of the walk).
  [[nodiscard]] PrintedInvoiceLine Work(const InvoiceLine& line);
  void Deliver(const PrintedInvoiceLine& printed);
  void DeliverRollUp();

  // --- the bands (ardsInvoice.cpp) ---
  void HideEverything();
  void OtherPartyHeader_Format();
  void Detail_Format();
  void OtherPartyFooter_Format();
  void PageFooter_Format();
  [[nodiscard]] std::string PartyAddress(const OtherParty* party, const std::string& kind) const;

  std::string key_;
  const InvoiceKey* key_row_ = nullptr;
  bool is_draft_ = false;
  bool is_copy_ = false;
  bool is_open_ = false;
  bool packing_slip_ = false;
  bool purchase_order_ = false;
  InvoiceSource source_ = InvoiceSource::Posted;
  bool australian_ = false;
  std::string tax_name_;

  std::shared_ptr<const InvoiceDocument> document_;
  long line_index_ = 1;
  std::shared_ptr<Recordset> rows_;
  bool row_unused_ = false;
  bool started_ = false;
  std::int64_t last_key_ = 0;
  bool pending_ = false;
  InvoiceLine pending_line_;  // the sums of the rolled-up lines
  Currency pending_total_value_;
  Currency pending_line_total_;
  int pending_all_inclusive_ = 0;
  // The class of each document read and not yet totalled.
  std::map<std::int64_t, DocumentClass> types_;
  bool shade_ = false;
  bool first_line_ = true;
  std::vector<bool> labels_shown_;  // by the column labels, as the run's start left them
  std::map<std::int64_t, InvoiceHeading> headings_;
  std::map<std::int64_t, InvoiceTotals> totals_;  // of the documents not yet ended
  PrintedInvoiceLine current_;
  std::int64_t heading_document_ = 0;
  bool any_ = false;

  DocumentPages pages_;
  std::unique_ptr<BusinessObjects> objects_;
  std::function<void(const std::string&)> query_log_;
  std::function<void(std::int64_t, const InvoiceTotals&)> totals_log_;
};

[[nodiscard]] DesignerPtr CreateardsInvoice();

}  // namespace trellin
