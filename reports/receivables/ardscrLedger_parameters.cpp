// The ledger's parameters, its data columns, and the first day of the period asked for.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "reports/receivables/ReceivablesShared.h"
#include "reports/receivables/ardscrLedger.h"

namespace trellin {

namespace {

constexpr const char* kGroupingsReceivables =
    "Employee,Location,Customer,Customer Category,Customer Type,Customer Payment Term,Status";
constexpr const char* kGroupingsPayables =
    "Employee,Location,Supplier,Supplier Category,Supplier Type,Supplier Payment Term,Status";

// The columns a data export of the ledger offers: caption, field, source column, kind.
struct LedgerColumn {
  const char* caption;
  const char* field;
  const char* source;
  int data_type;
};

constexpr LedgerColumn kColumns[] = {
    {"Code", "OtherPartyId", "OtherPartyId", kColumnCode},
    {"Name", "Name", "Name", kColumnText},
    {"Closing", "Closing", "Closing", kColumnMoney},
    {"Trans Id", "Trans", "TransactionId", kColumnNumber},
    {"Date", "Date", "Date", kColumnDate},
    {"Type", "Type", "Type", kColumnText},
    {"Batch", "Batch", "Batch", kColumnText},
    {"Reference", "Reference", "Reference", kColumnText},
    {"Original", "Original", "Original", kColumnMoney},
    {"Debit", "Debit", "Debit", kColumnMoney},
    {"Credit", "Credit", "Credit", kColumnMoney},
    {"Balance", "Balance", "Balance", kColumnMoney},
};

void AddSideParameter(Parameters& parameters, const SideParameter& row, bool primary) {
  CreateStandardParameter(row.index, parameters, primary, std::string(row.name),
                          std::string(row.caption));
}

}  // namespace

Variant LedgerDateFrom(const std::string& period, const Variant& date_to,
                       const Variant& custom_from, const FinancialCalendar& calendar) {
  if (period == "Custom") return HasDate(custom_from) ? custom_from : Variant::Null();
  if (!HasDate(date_to)) return Variant::Null();
  const Date to = date_to.ToDate().DateOnly();
  if (period == "MTD") return to.FirstOfMonth();
  if (period != "QTD" && period != "YTD") return Variant::Null();
  Date year_start = *Date::TryFromYmd(to.Year(), 1, 1);
  if (const std::int64_t id = calendar.YearIdFromDate(to)) {
    year_start = calendar.Year(id).DateStart.DateOnly();
  }
  if (period == "YTD") return year_start;
  // Quarters count from the year's first month, whatever month that is.
  const int months = (to.Year() - year_start.Year()) * 12 + (to.Month() - year_start.Month());
  return year_start.FirstOfMonth().AddMonths(months / 3 * 3);
}

void ardscrLedger::RefreshParameters(std::string& ReportName) {
  debtor_ = SideOfKey(DesignerName(), ReportName) == LedgerSideKind::Receivables;
  const LedgerSide& side = SideOfDebtor(debtor_);
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  const FinancialCalendar& calendar =
      TrellinReportGlobals::RequireApplication().FinancialCalendar();
  const Date current = debtor_ ? calendar.CurrentDateAR(true) : calendar.CurrentDateAP(true);

  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name,X Ref", false, "Order By");
  p.AddList("Period", "MTD", true, "", "MTD", "ALL,MTD,QTD,YTD,Custom,Outstanding", false,
            "Period");
  p.AddDate("DateFrom", Variant(), true, "", Variant(), false, "Date From");
  p.AddList("TransactionOrderBy", "Date", false, "", "Date", "Date,Entered,Reference", false,
            "Transaction Order By");
  p.AddNumber("OverdueFrom", kNumberRangeMinimum, false, "", kNumberRangeMinimum,
              kNumberRangeMinimum.Raw() / Currency::kScale, false, "Overdue From");
  p.AddNumber("OverdueTo", kNumberRangeMaximum, false, "", kNumberRangeMaximum,
              kNumberRangeMaximum.Raw() / Currency::kScale, false, "Overdue To");
  p.AddNumber("OverdueDays", 0, false, "", 0, 0, false, "Overdue Days");
  // Declared and shown, though no query reads it.
  p.AddBoolean("NilBalance", false, false, "", false, false, "Nil Balance");
  CreateStandardParameter(15, p, false);
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(25, p, false);
  p.AddDate("DateAsAt", current, true, "Date As At", std::string(side.current_date), false,
            "Date As At");
  // The payables ledger, too, resolves its DateTo by the receivables period; only its starting
  // value is the payables date.
  p.AddDate("DateTo", current, true, "", "ARCURRENT", false, "Date To");
  AddSideParameter(p, side.parties, true);
  AddSideParameter(p, side.categories, false);
  AddSideParameter(p, side.types, false);
  AddSideParameter(p, side.payment_terms, false);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 debtor_ ? kGroupingsReceivables : kGroupingsPayables, false, false, "Groupings");
  TrellinReportGlobals::RequireApplication().AddUserDefinedParametersOtherParty(p, false);
}

void ardscrLedger::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const LedgerColumn& c : kColumns) {
    columns.Add(c.field, c.source, c.data_type, c.caption, "", -1, -1, -1, -1, "(auto)", 0, 0, "",
                true, "", false, false);
  }
}

}  // namespace trellin
