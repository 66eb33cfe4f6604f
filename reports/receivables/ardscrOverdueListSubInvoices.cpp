#include "reports/receivables/ardscrOverdueListSubInvoices.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

std::string ardscrOverdueListSubInvoices::InvoicesSQL() const {
  // No range of types: a party that is customer and supplier shows its open items of both.
  std::string sql =
      Debtor ? "SELECT Date,Reference,-Value AS InvValue,-ValueRemaining AS InvRemaining,-Held AS "
               "InvHeld,-(ValueRemaining-Held)AS InvOverdue,DatePayment "
             : "SELECT Date,Reference,Value AS InvValue,ValueRemaining AS InvRemaining,Held AS "
               "InvHeld,(ValueRemaining-Held) AS InvOverdue,DatePayment ";
  sql += "FROM Transactions WHERE OtherPartyId=" + Database::SQLString(OtherPartyId) +
         " AND ValueRemaining<>0";
  if (!Filter.empty()) sql += " AND " + Filter;
  if (!GroupFilter.empty()) sql += " AND " + GroupFilter;
  return sql + " ORDER BY DatePayment";
}

void ardscrOverdueListSubInvoices::ActiveReport_ReportStart() {
  const std::string sql = InvoicesSQL();
  if (Queries) Queries(sql);
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(sql);
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  for (const char* name : {"txtDate", "txtDatePayment"}) {
    if (Control* date = FindControl(name)) date->SetOutputFormat(date_format);
  }
  Sections()["Detail"].SetBackStyle(1);
}

void ardscrOverdueListSubInvoices::ActiveReport_DataInitialize() {
  for (const char* name : {"Date", "Reference", "InvValue", "InvRemaining", "InvHeld", "InvOverdue",
                           "DatePayment", "Days"}) {
    Fields().Add(name);
  }
  Fields().Add("InvBalance").SetValue(Currency());
}

void ardscrOverdueListSubInvoices::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  for (const char* name :
       {"Date", "Reference", "InvValue", "InvRemaining", "InvHeld", "InvOverdue", "DatePayment"}) {
    f[name].SetValue(rs_->Value(name));
  }
  auto money = [&](const char* name) {
    const Variant& v = rs_->Value(name);
    return v.IsNull() ? Currency() : v.ToCurrency();
  };
  const Currency balance = f["InvBalance"].Value().ToCurrency();
  f["InvBalance"].SetValue(balance + money("InvRemaining") - money("InvHeld"));
  // Whole days from the due date to the as-at date; a due date still to come counts negative.
  const Variant& due = rs_->Value("DatePayment");
  f["Days"].SetValue(due.IsNull() ? Variant::Null()
                                  : Variant(std::int64_t{DateAsAt.DateOnly().Serial() -
                                                         due.ToDate().DateOnly().Serial()}));
  rs_->MoveNext();
  eof = false;
}

void ardscrOverdueListSubInvoices::OnFormat(Section& section) {
  if (section.Type() != SectionType::Detail) return;
  section.SetBackStyle(1 - section.BackStyle());
  // Nothing held prints nothing.
  if (Control* held = FindControl("numHeld")) {
    const Variant& value = Fields()["InvHeld"].Value();
    held->SetVisible(!value.IsNull() && value.ToCurrency() != Currency());
  }
}

void ardscrOverdueListSubInvoices::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
