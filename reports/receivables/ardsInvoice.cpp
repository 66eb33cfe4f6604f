// The life of one run of documents: the start, each document's heading, its lines' look, its
// totals and the page furniture that puts them on its last page.

#include "reports/receivables/ardsInvoice.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr const char* kDocumentLineBreak = "\r\n";

// The price columns a packing slip leaves out.
constexpr const char* kPriceColumns[] = {"lblUnitPricePH", "lblUnitPrice", "numUnitPrice",
                                         "lblDiscountPH",  "lblDiscount",  "numDiscount",
                                         "lblUnitTotalPH", "lblUnitTotal", "numTotalValue"};
// The totals of the page footer, which print on a document's last page only.
constexpr const char* kTotals[] = {"lblSubTotal",    "numSubTotal",   "lblTax",
                                   "numTax",         "lblTotal",      "numTotal",
                                   "lblIncludesTax", "numTaxIncludes"};
// The controls that follow lblOrderQty.
constexpr const char* kOrderQty[] = {"lblOrderQty", "lblOrderQtyPH", "numOrderQty"};
// The columns that make room for the description when the supplier's code is not shown.
constexpr std::pair<const char*, const char*> kDescriptionColumns[] = {
    {"lblDescription", "lblSupplierCode"},
    {"lblDescriptionPH", "lblSupplierCodePH"},
    {"txtDescription", "txtSupplierCode"}};

// The column labels at the head of a document's first line, and the line's own controls.
constexpr const char* kLabelRow[] = {
    "lblUnderline", "lblCode",      "lblSupplierCode", "lblDescription", "lblOrderQty",
    "lblQuantity",  "lblUnitPrice", "lblDiscount",     "lblUnitTotal",   "linLabels"};
constexpr const char* kLineRow[] = {
    "txtCode", "txtSupplierCode", "txtDescription", "txtLineDescription", "numOrderQty",
    "numQty",  "numUnitPrice",    "numDiscount",    "numTotalValue"};
// Where the line's controls stand under the labels, and without them.
constexpr float kUnderLabels = 360;
constexpr float kWithoutLabels = 30;

bool IsSupplierClass(DocumentClass type) {
  const auto n = static_cast<std::int16_t>(type);
  return (n >= 20 && n <= 29) || type == DocumentClass::PurchaseOrder;
}

bool IsGiven(const Variant& value) {
  return !value.IsNull() && !value.IsEmpty() && !(value.IsString() && Trim(value.Text()).empty());
}

}  // namespace

InvoiceTotalsWording InvoiceTotalsWordingOf(DocumentClass type, bool purchase_order,
                                            const InvoiceTotals& totals,
                                            const std::string& tax_name) {
  InvoiceTotalsWording wording;
  if (totals.tax != Currency()) {
    if (totals.inclusive == 0) {
      // Every line's price holds its tax: the total says how much of it is tax.
      if (type == DocumentClass::SupplierCredit) {
        wording.includes_tax = "This Credit Note includes " + tax_name + " of:";
      } else if (type == DocumentClass::SupplierFurther) {
        wording.includes_tax = "Includes " + tax_name + " of:";
      } else {
        wording.includes_tax = "This Invoice includes " + tax_name + " of:";
      }
    } else {
      wording.sub_total = "Sub Total:";
      wording.tax = "Plus " + tax_name + " of:";
    }
  }
  if (purchase_order) {
    wording.total = "Order Total:";
  } else if (type == DocumentClass::SupplierCredit) {
    wording.total = "Credit Total:";
  } else if (type == DocumentClass::SupplierFurther) {
    wording.total = "Total:";
  } else {
    // A customer credit (31) has no wording of its own and reads as an invoice.
    wording.total = "Invoice Total:";
  }
  return wording;
}

void ardsInvoice::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardsInvoice::ActiveReport_DataInitialize() {
  for (const char* name : {"TransactionId", "ItemId", "SupplierCode", "Description",
                           "OrderQuantity", "Quantity", "UnitPrice", "DiscountRate", "Discount",
                           "TaxValue", "LineTotal", "SubTotal", "TotalValue", "AllInclusive"}) {
    Fields().Add(name);
  }
}

void ardsInvoice::ActiveReport_ReportStart() {
  trellin::Parameters& p = TLReport()->Parameters();
  ReadFlags();
  line_index_ = 1;
  started_ = false;
  row_unused_ = false;
  pending_ = false;
  last_key_ = 0;
  any_ = false;
  headings_.clear();
  types_.clear();
  totals_.clear();
  pages_ = DocumentPages();
  if (!objects_) objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  Application& application = TrellinReportGlobals::RequireApplication();
  australian_ = application.Options().Country() == "AU";
  tax_name_ = application.Tax().TaxName();
  TLReport()->SetupStandardHeader(true);
  Field("phContd").SetVisible(false);
  Field("lblContinued").SetVisible(false);

  bool order_quantities = false;
  if (document_) {
    order_quantities = document_->Heading().type == DocumentClass::SalesOrder;
  } else if (key_ == "Delivery Docket" &&
             (!IsGiven(p.Value("TransactionId", 0)) ||
              p.Value("TransactionId", 0).ToCurrency() == Currency())) {
    // With no type or party filter and no range of its own, a docket is printed for one
    // document named by its id; without one there is nothing to print.
    HideEverything();
    return;
  } else {
    const std::string sql = GetSQL();
    if (query_log_) query_log_(sql);
    // Read as the walk moves on, never held whole: a month's documents are thousands of lines,
    // and each line is read once, forwards.
    rows_ = TrellinReportGlobals::RequireDatabase()->QueryForward(sql);
    if (rows_->Eof()) {
      HideEverything();
      return;
    }
    order_quantities =
        !purchase_order_ && IsGiven(rows_->Value("Type")) && rows_->Value("Type").ToLong() == 90;
    const Variant id = p.Value("TransactionId", 0);
    if (IsGiven(id) && id.ToCurrency() != Currency()) {
      // One document: the caption names it.
      const std::string table = source_ == InvoiceSource::OpenBatch        ? "acBatchTransaction"
                                : source_ == InvoiceSource::PurchaseOrders ? "PurchaseOrder"
                                                                           : "Transactions";
      const std::string column = source_ == InvoiceSource::OpenBatch        ? "acBatchTransactionId"
                                 : source_ == InvoiceSource::PurchaseOrders ? "PurchaseOrderId"
                                                                            : "TransactionId";
      std::shared_ptr<Recordset> reference = TrellinReportGlobals::RequireDatabase()->Query(
          "SELECT Reference FROM " + table + " WHERE " + column + "=" +
          std::to_string(id.ToLong()));
      if (!reference->Eof()) SetCaption(Caption() + " " + reference->Value("Reference").Text());
    }
  }
  for (const char* name : kOrderQty) Field(name).SetVisible(order_quantities);
  if (!order_quantities) {
    // The description takes the order quantity's room.
    const float room = Field("lblQuantity").Left() - Field("lblOrderQty").Left();
    for (const char* name : {"lblDescription", "lblDescriptionPH", "txtDescription"}) {
      Field(name).SetWidth(Field(name).Width() + room);
    }
  }
  if (!purchase_order_) {
    for (auto [description, code] : kDescriptionColumns) {
      Control& d = Field(description);
      Control& c = Field(code);
      d.SetWidth(d.Width() + d.Left() - c.Left());
      d.SetLeft(c.Left());
      c.SetVisible(false);
    }
  }
  if (australian_) {
    Field("lblRegn").SetCaption("ABN: ");
    Field("lblBuyerCreated").SetCaption("Buyer Created ATO Approved");
  } else {
    Field("lblRegn").SetCaption(tax_name_ + " Regn: ");
  }
  const Options& options = application.Options();
  const auto decimals = [](int n) {
    return n <= 0 ? std::string("#,##0") : "#,##0." + std::string(n, '0');
  };
  Field("numOrderQty").SetOutputFormat(decimals(options.QuantityDecimals()));
  Field("numQty").SetOutputFormat(decimals(options.QuantityDecimals()));
  Field("numUnitPrice").SetOutputFormat(decimals(options.PriceDecimals()));
  Field("lblPPDiscount").SetVisible(options.PromptPaymentDiscount());
  Field("lblCopy").SetVisible(is_copy_);
  if (packing_slip_) {
    Field("lblBuyerCreated").SetVisible(false);
    for (const char* name : kPriceColumns) Field(name).SetVisible(false);
    // The quantity moves to the right-hand edge of the table: code, description, quantity.
    const Control& rule = Field("lblUnderlinePH");
    const float left = rule.Left() + rule.Width() - Field("lblQuantityPH").Width();
    for (const char* name : {"lblQuantityPH", "lblQuantity", "numQty"}) {
      Field(name).SetLeft(left);
    }
    for (const char* name : {"lblDescription", "lblDescriptionPH", "txtDescription"}) {
      Control& d = Field(name);
      d.SetWidth(left - 100 - d.Left());
    }
  }
  if (purchase_order_) Field("lblChargeTo").SetCaption("Order To:");
  Field("txtDate").SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  labels_shown_.clear();
  for (const char* name : kLabelRow) labels_shown_.push_back(Field(name).Visible());
}

void ardsInvoice::HideEverything() {
  for (const char* name :
       {"PageHeader", "OtherPartyHeader", "Detail", "OtherPartyFooter", "PageFooter"}) {
    Sections()[name].SetVisible(false);
  }
}

void ardsInvoice::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::GroupHeader:
      OtherPartyHeader_Format();
      break;
    case SectionType::Detail:
      Detail_Format();
      break;
    case SectionType::GroupFooter:
      OtherPartyFooter_Format();
      break;
    case SectionType::PageHeader:
      Field("phPage").SetText(pages_.PageText());
      break;
    case SectionType::PageFooter:
      PageFooter_Format();
      break;
    default:
      break;
  }
}

std::string ardsInvoice::PartyAddress(const OtherParty* party, const std::string& kind) const {
  if (party == nullptr) return {};
  std::vector<std::string> lines{party->name};
  const trellin::PartyAddress* address = party->Address(kind);
  if (address == nullptr || address->lines.empty()) address = party->Address("Postal");
  if (address != nullptr) lines.insert(lines.end(), address->lines.begin(), address->lines.end());
  return Join(lines, kDocumentLineBreak);
}

void ardsInvoice::OtherPartyHeader_Format() {
  if (!any_) return;
  heading_document_ = Fields()["TransactionId"].Value().ToLong();
  const auto found = headings_.find(heading_document_);
  if (found == headings_.end()) return;
  const InvoiceHeading& h = found->second;
  const DocumentClass type = h.type;
  const auto n = static_cast<std::int16_t>(type);
  const bool supplier_doc = IsSupplierClass(type);
  const bool is_po = purchase_order_ || type == DocumentClass::PurchaseOrder;

  // The label beside the order number.
  // A purchase order's date required is a date (a spreadsheet sorts it as one), in the
  // company's date format.
  std::string order_label;
  Variant order_value(h.order_no);
  std::string order_format;
  if (is_po) {
    if (IsGiven(h.date_required)) {
      order_label = "Date Required:";
      order_value = Variant(h.date_required.ToDate());
      order_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
    }
  } else if (!h.order_no.empty()) {
    order_label = type == DocumentClass::SupplierCredit || type == DocumentClass::CustomerCredit
                      ? "Original Invoice:"
                      : "Order Number:";
  }
  Field("lblOrderNo").SetCaption(order_label);
  Field("txtOrderNo").SetOutputFormat(order_format);
  Field("txtOrderNo").SetValue(order_label.empty() ? Variant(std::string()) : order_value);
  Field("lblInternalReference").SetVisible(!h.internal_reference.empty());
  Field("txtInternalReference").SetText(h.internal_reference);
  Field("lblOPCode").SetCaption(supplier_doc ? "Supplier:" : "Customer:");
  Field("txtOtherPartyId").SetText(h.party);
  Field("lblBuyerCreated").SetVisible(supplier_doc && !is_po && !packing_slip_);
  Field("txtReference").SetText(h.reference);
  Field("txtDate").SetDataValue(h.date);

  const DocumentType* doc_type = objects_->FindDocumentType(h.type_code);
  std::string title = packing_slip_         ? "Packing Slip"
                      : doc_type != nullptr ? doc_type->description
                                            : std::string();
  if (is_draft_) title = "DRAFT - " + title;
  Field("txtTitle").SetText(title);
  std::string message = TLReport()->Parameters().Value("Message", "").Text();
  if (Trim(message).empty() && doc_type != nullptr) message = doc_type->message;
  if (is_po && !h.comment.empty())
    message = h.comment + (message.empty() ? "" : kDocumentLineBreak + message);
  Field("txtMessage").SetText(message);

  const Branch* branch = objects_->FindLocationBranch(h.location);
  const BranchBlock block =
      BranchBlockOf(branch, australian_, branch == nullptr ? std::string() : branch->tax_number);
  Field("txtBranchName").SetText(block.name);
  Field("txtBranchAddress").SetText(block.address);
  Field("txtBranchContactMethods").SetText(block.contact_methods);
  Field("txtBranchContactDetails").SetText(block.contact_details);
  std::string regn = branch != nullptr ? branch->tax_number : std::string();
  if (regn.empty()) regn = TrellinReportGlobals::RequireApplication().Tax().TaxNumber();
  Field("txtTaxRegn").SetText(regn);
  Field("lblRegn").SetVisible(!regn.empty());

  Field("lblChargeTo").SetVisible(!(n == 18 || n == 20 || n == 21 || n == 22));
  const OtherParty* party = objects_->FindOtherParty(h.party);
  std::string address = PartyAddress(party, "Postal");
  if (party != nullptr && !party->tax_number.empty() &&
      (australian_ || (n >= 20 && n <= 29) || n == 80)) {
    address += std::string(kDocumentLineBreak) + kDocumentLineBreak +
               (australian_ ? "ABN: " : tax_name_ + " Regn: ") + party->tax_number;
  }
  Field("txtAddress").SetText(address);
  const bool delivery = !(n == 18 || n == 20 || n == 22);
  Field("lblDeliverTo").SetVisible(delivery);
  Field("txtDelivery").SetVisible(delivery);
  std::string contacts;
  if (n == 80) {
    // A purchase order is delivered to the branch that orders; the supplier's ways of contact
    // stand under its address.
    std::vector<std::string> lines{block.name};
    if (!block.address.empty()) lines.push_back(block.address);
    Field("txtDelivery").SetText(Join(lines, kDocumentLineBreak));
    if (party != nullptr) {
      std::vector<std::string> methods;
      for (const ContactMethod& method : party->contact_methods) {
        if (!method.detail.empty()) methods.push_back(method.kind + ": " + method.detail);
      }
      contacts = Join(methods, kDocumentLineBreak);
    }
  } else if (delivery) {
    Field("txtDelivery")
        .SetText(PartyAddress(party, h.address_kind.empty() ? "Postal" : h.address_kind));
  }
  Field("txtContactMethods").SetText(contacts);
  Field("txtContactMethods").SetVisible(!contacts.empty());

  // Prompt payment, shown positive whatever the document's sign.
  Currency ppd = h.ppd_allowed;
  if (type == DocumentClass::SupplierCredit || type == DocumentClass::CustomerInvoice) ppd = -ppd;
  std::string ppd_text;
  if (TrellinReportGlobals::RequireApplication().Options().PromptPaymentDiscount() &&
      ppd != Currency()) {
    ppd_text = "Prompt payment discount of " + Format(Variant(ppd), "Currency") +
               " applies if paid before " +
               Format(h.ppd_date, TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
  Field("lblPPDiscount").SetCaption(ppd_text);

  // The document's first page carries its heading and column labels in the body; the page
  // header is for the pages its lines run on to.
  Sections()["PageHeader"].SetVisible(false);
  pages_.Start();
  shade_ = false;
  first_line_ = true;
  headings_.erase(found);
}

void ardsInvoice::Detail_Format() {
  const bool text_only = current_.text_only && !current_.rolled_up;
  Field("txtLineDescription").SetVisible(text_only);
  Field("txtLineDescription").SetText(text_only ? current_.line.description : std::string());
  Field("txtDescription").SetVisible(!text_only);
  Field("txtSupplierCode").SetVisible(purchase_order_ && !text_only);
  // The column labels head the document's first line.
  for (std::size_t i = 0; i < std::size(kLabelRow) && i < labels_shown_.size(); ++i) {
    Field(kLabelRow[i]).SetVisible(first_line_ && labels_shown_[i]);
  }
  for (const char* name : kLineRow) Field(name).SetTop(first_line_ ? kUnderLabels : kWithoutLabels);
  first_line_ = false;
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(shade_ ? 1 : 0);
  shade_ = !shade_;
}

void ardsInvoice::OtherPartyFooter_Format() {
  if (!any_) return;
  pages_.End();
  // A document's totals are let go as it ends: a run of thousands of documents holds only the
  // one it prints.
  InvoiceTotals totals;
  if (const auto found = totals_.find(heading_document_); found != totals_.end()) {
    totals = found->second;
    totals_.erase(found);
  }
  if (totals_log_) totals_log_(heading_document_, totals);
  DocumentClass type = purchase_order_ ? DocumentClass::PurchaseOrder : DocumentClass::None;
  if (const auto t = types_.find(heading_document_); t != types_.end()) {
    type = t->second;
    types_.erase(t);
  }
  const InvoiceTotalsWording wording =
      InvoiceTotalsWordingOf(type, purchase_order_, totals, tax_name_);
  Field("numGFSubTotal").SetDataValue(totals.sub_total);
  Field("numGFTax").SetDataValue(totals.tax);
  Field("numGFTotal").SetDataValue(totals.total);
  Field("numGFTaxIncludes").SetDataValue(totals.tax_includes);
  Field("numInclusive").SetDataValue(Variant(static_cast<long>(totals.inclusive)));
  // The page footer of this last page is formatted before the next document's heading, so the
  // controls keep this document's figures.
  Field("lblSubTotal").SetCaption(wording.sub_total);
  Field("numSubTotal")
      .SetText(wording.sub_total.empty() ? "" : Format(Variant(totals.sub_total), "#,##0.00"));
  Field("lblTax").SetCaption(wording.tax);
  Field("numTax").SetText(wording.tax.empty() ? "" : Format(Variant(totals.tax), "#,##0.00"));
  Field("lblIncludesTax").SetCaption(wording.includes_tax);
  Field("numTaxIncludes")
      .SetText(wording.includes_tax.empty() ? ""
                                            : Format(Variant(totals.tax_includes), "#,##0.00"));
  Field("lblTotal").SetCaption(wording.total);
  Field("numTotal").SetText(Format(Variant(totals.total), "#,##0.00"));
  Sections()["PageHeader"].SetVisible(false);
}

void ardsInvoice::PageFooter_Format() {
  Section& footer = Sections()["PageFooter"];
  if (!any_) return;
  const bool last = pages_.FooterOfPage(footer);
  for (const char* name : kTotals) Field(name).SetVisible(last && !packing_slip_);
  Field("lblPPDiscount")
      .SetVisible(last && !packing_slip_ && !Field("lblPPDiscount").Caption().empty());
  Field("txtMessage").SetVisible(last && !Field("txtMessage").Text().empty());
  Field("lblContinued").SetVisible(!last);
  Field("phContd").SetVisible(!last);
  Sections()["PageHeader"].SetVisible(!last);
}

void ardsInvoice::ActiveReport_ReportEnd() {
  rows_.reset();
  objects_.reset();
}

}  // namespace trellin
