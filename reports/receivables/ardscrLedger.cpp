// The life of one ledger run: report start, the parties' rows and the events.

#include "reports/receivables/ardscrLedger.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "reports/receivables/ReceivablesShared.h"

namespace trellin {

DesignerPtr CreateardscrLedger() { return std::make_shared<ardscrLedger>(); }

void ardscrLedger::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardscrLedger::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  BuildSQL();
  TLReport()->SetupGroupSections(false, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (Control* heading = FindControl("txtHeading")) heading->SetText(heading_);
  if (query_log_) query_log_(sql_);
  DataControl().SetSource(sql_);
}

void ardscrLedger::ActiveReport_DataInitialize() { Fields().Add("Closing"); }

void ardscrLedger::ActiveReport_FetchData(bool&) {
  const ReportField* sum = Fields().Find("SumOfValue");
  const ReportField* opening = Fields().Find("Opening");
  Currency closing;
  if (sum != nullptr && !sum->Value().IsNull()) closing += sum->Value().ToCurrency();
  if (opening != nullptr && !opening->Value().IsNull()) closing += opening->Value().ToCurrency();
  Fields()["Closing"].SetValue(closing);
}

void ardscrLedger::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    Detail_Format();
  } else {
    FormatGroupSection(section);
  }
}

void ardscrLedger::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void ardscrLedger::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof() || !sub_) return;
  sub_->OtherPartyId = Fields()["OtherPartyId"].Value().Text();
  // The party's closing balance opens the same ledger for that party alone.
  if (Control* closing = FindControl("txtClosing")) {
    LinkTarget link{debtor_ ? "LedgerAR" : "LedgerAP",
                    {{std::string(SideOfDebtor(debtor_).parties.name), sub_->OtherPartyId},
                     {"Period", period_},
                     {"DateAsAt", date_as_at_.ToDate().DateOnly().ToIso()}}};
    if (!date_to_.IsNull()) link.values.emplace_back("DateTo", date_to_.ToDate().ToIso());
    if (period_ == "Custom" && !date_from_.IsNull()) {
      link.values.emplace_back("DateFrom", date_from_.ToDate().ToIso());
    }
    closing->SetLink(std::move(link));
  }
}

void ardscrLedger::ActiveReport_ReportEnd() { DataControl().SetRecordset(nullptr); }

}  // namespace trellin
