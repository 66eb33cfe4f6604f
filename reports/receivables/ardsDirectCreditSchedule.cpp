#include "reports/receivables/ardsDirectCreditSchedule.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

DesignerPtr CreateardsDirectCreditSchedule() {
  return std::make_shared<ardsDirectCreditSchedule>();
}

std::string DirectCreditBankText(const DirectCreditRun& run) {
  std::vector<std::string> parts;
  for (const std::string& part : {run.BankName, run.BankNumber}) {
    if (!Trim(part).empty()) parts.push_back(Trim(part));
  }
  return Join(parts, ", ");
}

void ardsDirectCreditSchedule::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  const Date current =
      TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateAP(true);
  // Empty: the company's first bank account.
  p.AddSQLList("BankId", "", true, "", "", "SELECT BankId,AccountName FROM Bank ORDER BY BankId",
               "BankId", false, "Bank");
  p.AddDate("PaymentDate", current, true, "Payment Date", "APCURRENT", false, "Payment Date");
}

void ardsDirectCreditSchedule::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardsDirectCreditSchedule::ActiveReport_ReportStart() {
  trellin::Parameters& p = TLReport()->Parameters();
  TLReport()->SetupStandardHeader(true);
  std::string bank = Trim(p.Value("BankId", "").Text());
  if (bank.empty()) {
    auto first = TrellinReportGlobals::RequireDatabase()->Query(
        "SELECT TOP 1 BankId FROM Bank ORDER BY BankId");
    if (!first->Eof()) bank = first->Value("BankId").Text();
  }
  const Variant dated = p.Value("PaymentDate", Variant::Null());
  if (!HasDate(dated)) {
    throw std::invalid_argument("Payment Date: the schedule needs the date of the bank run.");
  }
  run_ = TrellinReportGlobals::RequireApplication().DirectCreditPayments(bank,
                                                                         dated.ToDate().DateOnly());
  index_ = 0;
  Field("txtBank").SetText(DirectCreditBankText(run_));
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  Field("txtDated").SetOutputFormat(date_format);
  Field("txtDated").SetDataValue(run_.RunDate);
  Field("txtDate").SetOutputFormat(date_format);
}

void ardsDirectCreditSchedule::ActiveReport_DataInitialize() {
  for (const char* name : {"TransactionId", "OtherParty", "TDate", "Amount", "Reference",
                           "CardNumber", "BankDetails"}) {
    Fields().Add(name);
  }
}

void ardsDirectCreditSchedule::ActiveReport_FetchData(bool& eof) {
  if (index_ >= run_.Count()) {
    eof = true;
    return;
  }
  const DirectCreditPayment& payment = run_.Item(index_++);
  trellin::Fields& f = Fields();
  f["TransactionId"].SetValue(Variant(static_cast<long>(payment.TransactionId)));
  f["OtherParty"].SetValue(payment.OtherPartyId + ", " + payment.OtherPartyName);
  f["TDate"].SetValue(Variant(payment.TDate));
  f["Amount"].SetValue(Variant(payment.Amount));
  f["Reference"].SetValue(payment.Reference);
  f["CardNumber"].SetValue(payment.CardNumber);
  f["BankDetails"].SetValue(payment.BankDetails);
  eof = false;
}

}  // namespace trellin
