#include "reports/ledger/arglAccountReportsGLSub.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr const char* kLineWholeFormat = "#,###,###,##0;(#,###,###,##0)";

bool NoText(const Variant& v) { return v.IsNull() || v.IsEmpty() || v.Text().empty(); }

Currency LineMoney(const Variant& v) {
  return v.IsNull() || v.IsEmpty() ? Currency() : v.ToCurrency();
}

}  // namespace

std::string LedgerLineMark(const Variant& tax_category, const Variant& bank_transaction_id,
                           const Variant& bank_sequence, const Variant& stmt_page) {
  if (!tax_category.IsNull() && tax_category.Text() == "*") return "*";
  if (bank_transaction_id.IsNull()) return " ";
  if (!bank_sequence.IsNull() && bank_sequence.ToLong() == 0) {
    return stmt_page.IsNull() ? "?" : "x";
  }
  return "b";
}

std::string LedgerLineComment(const Variant& comment, const Variant& bank_transaction_id,
                              const Variant& other_party_id, const Variant& other_party_name) {
  std::string text = comment.IsNull() ? std::string() : comment.Text();
  if (bank_transaction_id.IsNull() || NoText(other_party_id)) return text;
  if (!text.empty()) text += "; ";
  return text + other_party_id.Text() + ", " +
         (other_party_name.IsNull() ? std::string() : other_party_name.Text());
}

void arglAccountReportsGLSub::ActiveReport_ReportStart() {
  if (Rounding != 2) {
    for (const char* name : {"txtDebit", "txtCredit", "txtBalance"}) {
      if (Control* c = FindControl(name)) c->SetOutputFormat(kLineWholeFormat);
    }
  }
  if (Control* date = FindControl("txtDate")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
  if (Drilldown && !drilldown_) {
    drilldown_ = std::make_shared<arAccountDetailsSubTransactionsDrilldown>();
    if (Control* sub = FindControl("srptDrilldown")) sub->SetObject(drilldown_);
  }
  if (Queries) Queries(SQL);
  // The cheque account holds hundreds of thousands of lines at scale: they stream.
  rs_ = TrellinReportGlobals::RequireDatabase()->QueryForward(SQL);
  first_line_ = true;
}

void arglAccountReportsGLSub::ActiveReport_DataInitialize() {
  for (const char* name : {"AccountId", "glTransactionId", "Date", "Source", "Reference", "TType",
                           "Debit", "Credit", "Balance", "Comment", "TransactionId"}) {
    Fields().Add(name);
  }
}

void arglAccountReportsGLSub::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  Recordset& rs = *rs_;
  trellin::Fields& f = Fields();
  Currency value = LineMoney(rs.Value("Value"));
  if (TaxInclusive) value += LineMoney(rs.Value("TaxValue"));
  if (Rounding == -3) {
    Rounder& rounder = TrellinReportGlobals::RequireBusinessLayer().Utilities().Rounder();
    // A whole number of thousands, so the division is exact.
    value = Currency::FromRaw(rounder.Round(Variant(value), -3).ToCurrency().Raw() / 1000);
  }
  // Each line adds what it prints, so a balance in thousands may drift from the rounded true
  // balance; so the ledger has always read.
  mBalance += value;
  f["AccountId"].SetValue(first_line_ ? Variant(RTrim(AccountId)) : Variant(""));
  first_line_ = false;
  f["glTransactionId"].SetValue(rs.Value("glTransactionId"));
  f["Date"].SetValue(rs.Value("Date"));
  f["Source"].SetValue(rs.Value("glSourceId"));
  f["Reference"].SetValue(rs.Value("Reference"));
  const bool debit = value >= Currency();
  f["Debit"].SetValue(debit ? value : Currency());
  f["Credit"].SetValue(debit ? Currency() : -value);
  f["Balance"].SetValue(mBalance);
  const Variant& bank_id = rs.Value("glBankTransactionId");
  f["Comment"].SetValue(LedgerLineComment(rs.Value("Comment"), bank_id, rs.Value("OtherPartyId"),
                                          rs.Value("OPName")));
  f["TType"].SetValue(LedgerLineMark(rs.Value("TaxCategory"), bank_id,
                                     rs.Value("glBankTransactionSequence"), rs.Value("StmtPage")));
  f["TransactionId"].SetValue(Drilldown && rs.FieldIndex("TransactionId") >= 0
                                  ? rs.Value("TransactionId")
                                  : Variant::Null());
  rs.MoveNext();
  eof = false;
}

void arglAccountReportsGLSub::OnFormat(Section& section) {
  if (section.Type() != SectionType::Detail) return;
  // A zero debit or credit prints as an empty field.
  for (const char* name : {"txtDebit", "txtCredit"}) {
    Control* c = FindControl(name);
    if (c != nullptr && LineMoney(c->DataValue()) == Currency()) c->SetText(" ");
  }
  // The document behind the line, for a line that has one.
  if (Control* sub = FindControl("srptDrilldown")) {
    const Variant& document = Fields()["TransactionId"].Value();
    const bool show = Drilldown && drilldown_ && !document.IsNull() && !document.IsEmpty();
    sub->SetVisible(show);
    if (show) drilldown_->TransactionId = document.ToLong();
  }
}

void arglAccountReportsGLSub::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
