// The aged report's parameters and its data columns.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/receivables/ReceivablesShared.h"
#include "reports/receivables/ardscrAgedOverdueReport.h"

namespace trellin {

namespace {

constexpr const char* kAgedGroupingsReceivables =
    "Employee,Location,Customer Category,Customer Type,Customer Payment Term,Status,Transaction "
    "Employee,Transaction Location,Stop Credit";
constexpr const char* kAgedGroupingsPayables =
    "Employee,Location,Supplier Category,Supplier Type,Supplier Payment Term,Status,Transaction "
    "Employee,Transaction Location";

// When a column is laid out.
enum class Shown {
  Always,
  ShowXRefId,
  ShowName,
  ShowCreditLimit,
  LastPayment,
  ShowEmail,
  ShowStopCredit
};
// Which side declares it.
enum class Sides { Both, Receivables };

struct AgedColumn {
  const char* name;
  const char* field;
  int data_type;
  const char* caption;  // nullptr: the ageing column's own caption
  float width;          // twips; -1 shares what is left
  bool totalled;
  Shown shown;
  Sides sides;
};

// The columns in print order. The footer's total stands under "Total" and includes Future, so
// that column has no sum of its own.
// clang-format off
constexpr AgedColumn kAgedColumns[] = {
    {"Code", "OtherPartyId", kColumnCode, "Code", 1150, false, Shown::Always, Sides::Both},
    {"X Ref", "XRefId", kColumnText, "X Ref", 1050, false, Shown::ShowXRefId, Sides::Both},
    {"Name", "Name", kColumnText, "Name", -1, false, Shown::ShowName, Sides::Both},
    {"Cr Limit", "CustomerCreditLimit", kColumnMoney, "Credit Limit", 1200, false, Shown::ShowCreditLimit, Sides::Receivables},
    {"LastDate", "LastDate", kColumnDate, "Date", 1050, false, Shown::LastPayment, Sides::Both},
    {"LastAmount", "LastValue", kColumnMoney, "Amount", 1150, false, Shown::LastPayment, Sides::Both},
    {"Column1", "Column1", kColumnMoney, nullptr, 1200, true, Shown::Always, Sides::Both},
    {"Column2", "Column2", kColumnMoney, nullptr, 1200, true, Shown::Always, Sides::Both},
    {"Column3", "Column3", kColumnMoney, nullptr, 1200, true, Shown::Always, Sides::Both},
    {"Column4", "Column4", kColumnMoney, nullptr, 1200, true, Shown::Always, Sides::Both},
    {"Total", "TotalOverdue", kColumnMoney, "Total", 1300, false, Shown::Always, Sides::Both},
    {"Email", "Email", kColumnText, "Email", 2400, false, Shown::ShowEmail, Sides::Receivables},
    {"Future", "Future", kColumnMoney, "Future", 1200, true, Shown::Always, Sides::Both},
    {"Stop", "CustomerStopCredit", kColumnBoolean, "Stop Cr", 750, false, Shown::ShowStopCredit, Sides::Receivables},
};
// clang-format on

// The party's name shares what the figures leave, but no less than this.
constexpr float kNameLeast = 2000;

void AddAgedSideParameter(Parameters& parameters, const SideParameter& row, bool primary) {
  CreateStandardParameter(row.index, parameters, primary, std::string(row.name),
                          std::string(row.caption));
}

}  // namespace

DesignerPtr CreateardscrAgedOverdueReport() { return std::make_shared<ardscrAgedOverdueReport>(); }

void ardscrAgedOverdueReport::RefreshParameters(std::string& ReportName) {
  debtor_ = SideOfKey(DesignerName(), ReportName) == LedgerSideKind::Receivables;
  const LedgerSide& side = SideOfDebtor(debtor_);
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  const FinancialCalendar& calendar =
      TrellinReportGlobals::RequireApplication().FinancialCalendar();
  const Date current = debtor_ ? calendar.CurrentDateAR(true) : calendar.CurrentDateAP(true);

  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name,X Ref,Overdue", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddList("Frequency", "EOM", true, "", "EOM", std::string(kAgeingFrequencies), false,
            "Frequency");
  p.AddBoolean("BackDate", false, false, "", false, false, "Back Date Allocations");
  p.AddBoolean("ShowNil", false, false, "", false, false, "Show Nil Balances");
  p.AddBoolean("ShowXRefId", false, false, "", false, false, "Show X Ref");
  p.AddBoolean("ShowName", true, false, "", true, false, "Show Name");
  p.AddBoolean("ApplyTransactionDate", false, false, "", false, false, "Apply Invoice Date");
  p.AddNumber("OverdueFrom", kNumberRangeMinimum, false, "", kNumberRangeMinimum,
              kNumberRangeMinimum.Raw() / Currency::kScale, false, "Overdue From");
  p.AddNumber("OverdueTo", kNumberRangeMaximum, false, "", kNumberRangeMaximum,
              kNumberRangeMaximum.Raw() / Currency::kScale, false, "Overdue To");
  p.AddNumber("OverdueDays", 0, false, "", 0, 0, false, "Overdue Days");
  CreateStandardParameter(15, p, false);
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(25, p, false);
  CreateStandardParameter(15, p, false, "TransactionEmployees", "Transaction Employees");
  CreateStandardParameter(23, p, false, "TransactionLocations", "Transaction Locations");
  p.AddList("StopCreditOption", "", false, "", "", ",On Stop Credit,Not on Stop Credit", false,
            "Stop Credit");
  if (debtor_) {
    p.AddBoolean("ShowLastReceipt", false, false, "", false, false, "Show Last Receipt");
    p.AddBoolean("ShowCreditLimit", false, false, "", false, false, "Show Credit Limit");
    p.AddBoolean("ShowStopCredit", false, false, "", false, false, "Show Stop Credit");
    p.AddBoolean("ShowEmail", false, false, "", false, false, "Show Email");
  }
  p.AddDate("DateAsAt", current, true, "Date As At", std::string(side.current_date), false,
            "Date As At");
  AddAgedSideParameter(p, side.parties, true);
  AddAgedSideParameter(p, side.categories, false);
  AddAgedSideParameter(p, side.types, false);
  AddAgedSideParameter(p, side.payment_terms, false);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 debtor_ ? kAgedGroupingsReceivables : kAgedGroupingsPayables, false, false,
                 "Groupings");
  Application& application = TrellinReportGlobals::RequireApplication();
  application.AddUserDefinedParametersOtherParty(p, false);
  application.AddUserDefinedParametersTransactions(p, false);
}

void ardscrAgedOverdueReport::RefreshDataColumns() {
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  auto is_set = [&](const char* name) { return p.Value(name, false).ToBool(); };
  for (const AgedColumn& c : kAgedColumns) {
    if (c.sides == Sides::Receivables && !debtor_) continue;
    bool shown = true;
    switch (c.shown) {
      case Shown::Always:
        break;
      case Shown::ShowXRefId:
        shown = is_set("ShowXRefId");
        break;
      case Shown::ShowName:
        shown = is_set("ShowName");
        break;
      case Shown::ShowCreditLimit:
        shown = is_set("ShowCreditLimit");
        break;
      case Shown::LastPayment:
        shown = !debtor_ || is_set("ShowLastReceipt");
        break;
      case Shown::ShowEmail:
        shown = is_set("ShowEmail");
        break;
      case Shown::ShowStopCredit:
        shown = is_set("ShowStopCredit");
        break;
    }
    std::string caption = c.caption == nullptr ? std::string() : c.caption;
    if (c.caption == nullptr) {
      // Before the run the ends are those of the defaults; the run sets them again.
      const int column = c.name[6] - '0';
      caption = AgeingColumnCaption(frequency_, column, ends_, date_format);
    }
    const bool last_pair = c.shown == Shown::LastPayment;
    // Where "Credit Limit" or "Stop Cr" is too wide for its column, the column's name stands in.
    const std::string short_caption =
        c.shown == Shown::ShowCreditLimit || c.shown == Shown::ShowStopCredit ? c.name : "";
    DataColumn& column = columns.Add(
        c.name, c.field, c.data_type, caption, short_caption, c.width,
        c.width < 0 ? kNameLeast : -1, -1, -1, "(auto)", 0, 0, "", true,
        last_pair ? (debtor_ ? "Last Receipt" : "Last Payment") : "", c.totalled, false);
    column.Hidden = !shown;
  }
}

}  // namespace trellin
