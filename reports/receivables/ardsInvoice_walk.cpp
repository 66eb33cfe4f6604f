// The line walk: each fetch gives the next printed line of the run, worked from a row of the
// query or a line of the document object. Hidden lines print nothing but go into one "Other
// Items" line that stands last in their document; lines on hold are skipped; a line without an
// item prints its text alone.

#include <algorithm>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardsInvoice.h"

namespace trellin {

namespace {

constexpr const char* kWalkLineBreak = "\r\n";

std::string RowText(Recordset& rs, const char* name) {
  const Variant& value = rs.Value(name);
  return value.IsNull() || value.IsEmpty() ? std::string() : Trim(value.Text());
}

Currency RowMoney(Recordset& rs, const char* name) {
  const Variant& value = rs.Value(name);
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

double RowNumber(Recordset& rs, const char* name) {
  const Variant& value = rs.Value(name);
  return value.IsNull() || value.IsEmpty() ? 0.0 : value.ToDouble();
}

bool RowBoolean(Recordset& rs, const char* name) {
  const Variant& value = rs.Value(name);
  return !value.IsNull() && !value.IsEmpty() && value.ToBool();
}

// A figure field of a line that shows nothing.
const Variant kBlankFigure = Variant(std::string(" "));

}  // namespace

bool ardsInvoice::ReadCurrent(InvoiceLine& line) {
  if (document_) {
    if (line_index_ > document_->LineCount()) return false;
    line = document_->Line(line_index_);
    line.document = document_->Heading().document;
    line.discount_rate *= 100;
    if (types_.find(line.document) == types_.end()) {
      InvoiceHeading heading = document_->Heading();
      types_[line.document] = heading.type;
      headings_[line.document] = std::move(heading);
    }
    if (purchase_order_) line.hidden = false;
    return true;
  }
  if (!rows_ || rows_->Eof()) return false;
  Recordset& rs = *rows_;
  const char* key = source_ == InvoiceSource::OpenBatch        ? "acBatchTransactionId"
                    : source_ == InvoiceSource::PurchaseOrders ? "PurchaseOrderId"
                                                               : "TransactionId";
  line = InvoiceLine();
  line.document = rs.Value(key).ToLong();
  line.item = RowText(rs, "ItemId");
  if (source_ != InvoiceSource::PurchaseOrders) line.hidden = RowBoolean(rs, "Hidden");
  if (source_ == InvoiceSource::OpenBatch) {
    line.hold = RowBoolean(rs, "Hold");
    line.order_quantity = RowNumber(rs, "OrderQuantity");
  }
  if (source_ == InvoiceSource::PurchaseOrders) line.supplier_code = RowText(rs, "SupplierCode");
  line.description = RowText(rs, "Description");
  line.serial_number = RowText(rs, "SerialNumber");
  line.quantity = RowNumber(rs, "Quantity");
  line.unit_price = RowMoney(rs, "UnitPrice");
  line.extension = RowMoney(rs, "Extension");
  line.discount = RowMoney(rs, "Discount");
  line.discount_rate = RowNumber(rs, "DiscountRate");
  line.value = RowMoney(rs, "Value");
  line.tax_category = RowText(rs, "TaxCategory");
  line.tax_value = RowMoney(rs, "TaxValue");
  if (line.document != last_key_ && headings_.find(line.document) == headings_.end()) {
    InvoiceHeading heading = ReadHeading();
    types_[line.document] = heading.type;
    headings_[line.document] = std::move(heading);
  }
  return true;
}

InvoiceHeading ardsInvoice::ReadHeading() {
  if (document_) return document_->Heading();
  Recordset& rs = *rows_;
  InvoiceHeading heading;
  heading.party = RowText(rs, "OtherPartyId");
  heading.location = RowText(rs, "LocationId");
  heading.type_code = RowText(rs, "TransactionTypeId");
  heading.reference = RowText(rs, "Reference");
  heading.date = rs.Value("Date");
  heading.address_kind = RowText(rs, "AddressId");
  if (source_ == InvoiceSource::PurchaseOrders) {
    heading.type = DocumentClass::PurchaseOrder;
    heading.date_required = rs.Value("DateRequired");
    heading.comment = RowText(rs, "Comment");
    heading.internal_reference = RowText(rs, "InternalReference");
    heading.document = rs.Value("PurchaseOrderId").ToLong();
    return heading;
  }
  heading.document =
      rs.Value(source_ == InvoiceSource::OpenBatch ? "acBatchTransactionId" : "TransactionId")
          .ToLong();
  const Variant& type = rs.Value("Type");
  heading.type = type.IsNull() ? DocumentClass::None : static_cast<DocumentClass>(type.ToLong());
  heading.order_no = RowText(rs, "OrderNo");
  heading.ppd_allowed = RowMoney(rs, "PPDAllowed");
  heading.ppd_date = rs.Value("PPDDate");
  return heading;
}

void ardsInvoice::Advance() {
  if (document_) {
    ++line_index_;
  } else if (rows_ && !rows_->Eof()) {
    rows_->MoveNext();
  }
}

PrintedInvoiceLine ardsInvoice::Work(const InvoiceLine& line) {
  PrintedInvoiceLine printed;
  printed.line = line;
  printed.text_only = line.item.empty();
  if (!((!line.item.empty() && !line.hold) || line.hidden)) return printed;
  printed.figures = true;
  InvoiceLine& l = printed.line;
  printed.sub_total = l.value;
  printed.line_total = l.extension - l.discount;
  // Posted customer invoices and supplier credits are stored with the sign the ledger gives
  // them; the document shows them positive.
  const auto found = types_.find(l.document);
  const DocumentClass type = found == types_.end() ? DocumentClass::None : found->second;
  if (source_ == InvoiceSource::Posted && !document_ &&
      (type == DocumentClass::SupplierCredit || type == DocumentClass::CustomerInvoice)) {
    l.quantity = -l.quantity;
    l.discount = -l.discount;
    l.tax_value = -l.tax_value;
    printed.sub_total = -printed.sub_total;
    printed.line_total = -printed.line_total;
  }
  printed.total_value = l.tax_value + printed.sub_total;
  const TaxCategory* category = objects_->FindTaxCategory(l.tax_category);
  printed.all_inclusive = category != nullptr && !category->inclusive ? 1 : 0;
  return printed;
}

void ardsInvoice::ActiveReport_FetchData(bool& eof) {
  for (;;) {
    if (started_ && !row_unused_) Advance();
    started_ = true;
    row_unused_ = false;
    InvoiceLine line;
    if (!ReadCurrent(line)) {
      if (pending_) {
        // The end of the rows with a roll-up owed: it prints, and the next fetch ends the run.
        DeliverRollUp();
        row_unused_ = true;
        eof = false;
        return;
      }
      eof = true;
      if (!any_) HideEverything();
      return;
    }
    if (line.document != last_key_ && pending_) {
      // The last document's rolled-up lines print before this one's first line.
      row_unused_ = true;
      DeliverRollUp();
      eof = false;
      return;
    }
    last_key_ = line.document;
    Fields()["TransactionId"].SetValue(Variant(static_cast<long>(line.document)));
    if (line.hold && !line.hidden) continue;
    const PrintedInvoiceLine printed = Work(line);
    if (line.hidden) {
      pending_line_.document = line.document;
      pending_line_.value += printed.sub_total;
      pending_line_.tax_value += printed.line.tax_value;
      pending_total_value_ += printed.total_value;
      pending_line_total_ += printed.line_total;
      pending_all_inclusive_ = std::max(pending_all_inclusive_, printed.all_inclusive);
      pending_ = true;
      continue;
    }
    Deliver(printed);
    eof = false;
    return;
  }
}

void ardsInvoice::DeliverRollUp() {
  PrintedInvoiceLine printed;
  printed.rolled_up = true;
  printed.figures = true;
  printed.line.document = pending_line_.document;
  printed.line.description = "Other Items";
  printed.line.tax_value = pending_line_.tax_value;
  printed.sub_total = pending_line_.value;
  printed.total_value = pending_total_value_;
  printed.line_total = pending_line_total_;
  printed.all_inclusive = pending_all_inclusive_;
  pending_ = false;
  pending_line_ = InvoiceLine();
  pending_total_value_ = Currency();
  pending_line_total_ = Currency();
  pending_all_inclusive_ = 0;
  Deliver(printed);
}

void ardsInvoice::Deliver(const PrintedInvoiceLine& printed) {
  any_ = true;
  current_ = printed;
  const InvoiceLine& l = printed.line;
  trellin::Fields& f = Fields();
  f["TransactionId"].SetValue(Variant(static_cast<long>(l.document)));
  const bool numbers = printed.figures && !printed.rolled_up;
  f["ItemId"].SetValue(printed.rolled_up ? kBlankFigure : Variant(l.item));
  f["SupplierCode"].SetValue(printed.rolled_up ? kBlankFigure : Variant(l.supplier_code));
  std::string description = l.description;
  if (!printed.rolled_up && !l.item.empty() && !l.serial_number.empty()) {
    const StockItem* item = objects_->FindItem(l.item);
    const bool batch = item != nullptr && item->tracking == ItemTracking::Batch;
    description += kWalkLineBreak + std::string(batch ? "Batch/No " : "S/No ") + l.serial_number;
  }
  f["Description"].SetValue(description);
  f["OrderQuantity"].SetValue(numbers ? Variant(l.order_quantity) : kBlankFigure);
  f["Quantity"].SetValue(numbers ? Variant(l.quantity) : kBlankFigure);
  f["UnitPrice"].SetValue(numbers ? Variant(l.unit_price) : kBlankFigure);
  f["DiscountRate"].SetValue(numbers ? Variant(l.discount_rate) : kBlankFigure);
  f["Discount"].SetValue(numbers && l.discount != Currency() ? Variant(l.discount) : kBlankFigure);
  f["TaxValue"].SetValue(printed.figures ? Variant(l.tax_value) : kBlankFigure);
  f["SubTotal"].SetValue(printed.figures ? Variant(printed.sub_total) : kBlankFigure);
  f["TotalValue"].SetValue(printed.figures ? Variant(printed.total_value) : kBlankFigure);
  f["LineTotal"].SetValue(printed.figures &&
                                  (!printed.rolled_up || printed.line_total != Currency())
                              ? Variant(printed.line_total)
                              : kBlankFigure);
  f["AllInclusive"].SetValue(Variant(static_cast<long>(printed.all_inclusive)));
  if (printed.figures) {
    InvoiceTotals& totals = totals_[l.document];
    totals.sub_total += printed.sub_total;
    totals.tax += l.tax_value;
    totals.total += printed.total_value;
    totals.tax_includes += l.tax_value;
    totals.inclusive += printed.all_inclusive;
  } else {
    totals_.try_emplace(l.document);
  }
}

}  // namespace trellin
