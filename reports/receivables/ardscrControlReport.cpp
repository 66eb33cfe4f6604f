// The control report: parameters, the set-up, the one detail row and the page's controls.

#include "reports/receivables/ardscrControlReport.h"

#include <algorithm>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyFilters.h"

namespace trellin {

namespace {

// The controls of a category, by the parts of their names: `txt` + text, `num` + prefix + column,
// `numTotal` + prefix + column.
struct CategoryControls {
  const char* text;
  const char* prefix;
};

constexpr CategoryControls kCategoryControls[] = {
    {"Invoice", "Inv"},
    {"CreditNote", "CN"},
    {"PPDiscount", "PPD"},
    {"Receipt", "Rec"},
};

// The side's captions: control, receivables, payables. The tax name follows the last three.
struct SideCaption {
  const char* control;
  const char* receivables;
  const char* payables;
  bool tax_name;
};

constexpr SideCaption kSideCaptions[] = {
    {"lblDebtorsRec", "Accounts Receivable Reconciliation", "Accounts Payable Reconciliation",
     false},
    {"lblReceipts", "Receipts", "Payments", false},
    {"lblFutReceipts", "Receipts", "Payments", false},
    {"lblSalesSummary", "Sales Summary", "Purchases Summary", false},
    {"lblGrossSales", "Gross Sales", "Gross Purchases", false},
    {"lblSalesExTax", "Sales excl ", "Purchases excl ", true},
    {"lblTax", "", "", true},
    {"lblSalesincTax", "Sales incl ", "Purchases incl ", true},
};

// The ageing rows' control suffixes, oldest first.
constexpr const char* kAgeingRows[] = {"3", "2", "1", "Current", "Future"};

}  // namespace

ControlCategory ControlCategoryOf(long type) {
  switch (type) {
    case 21:
    case 31:
      return ControlCategory::CreditNotes;
    case 22:
    case 32:
      return ControlCategory::PromptPaymentDiscounts;
    case 25:
    case 35:
      return ControlCategory::Receipts;
    default:
      return ControlCategory::Invoices;
  }
}

Currency ControlBlock::Net() const {
  Currency sum;
  for (const ControlCategoryBlock& c : categories) sum += c.net_sum;
  return sum;
}

std::int64_t ControlBlock::Count() const {
  std::int64_t sum = 0;
  for (const ControlCategoryBlock& c : categories) sum += c.count;
  return sum;
}

Currency ControlBlock::Gross() const {
  Currency sum;
  for (const ControlCategoryBlock& c : categories) sum += c.gross_sum;
  return sum;
}

Currency ControlBlock::Discount() const {
  Currency sum;
  for (const ControlCategoryBlock& c : categories) sum += c.discount_sum;
  return sum;
}

Currency ControlAgeing::Total() const {
  Currency sum;
  for (const Currency& b : buckets) sum += b;
  return sum;
}

int ControlAgeingBucket(Date due, Date month) {
  const Date first = month.FirstOfMonth();
  if (due >= first.AddMonths(2)) return 4;
  if (due >= first.AddMonths(1)) return 3;
  if (due >= first) return 2;
  if (due >= first.AddMonths(-1)) return 1;
  return 0;
}

DesignerPtr CreateardscrControlReport() { return std::make_shared<ardscrControlReport>(); }

void ardscrControlReport::RefreshParameters(std::string& ReportName) {
  const std::optional<LedgerSideKind> kind = SideOfKey(DesignerName(), ReportName);
  has_side_ = kind.has_value();
  debtor_ = kind == LedgerSideKind::Receivables;
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddBoolean("ShowAgeingSummary", true, false, "", true, false, "Show Ageing Summary");
  p.AddBoolean("ShowSalesPurchaseSummary", true, false, "", true, false,
               debtor_ ? "Show Sales Summary" : "Show Purchases Summary");
  if (has_side_) {
    const LedgerSide& side = SideOfDebtor(debtor_);
    const FinancialCalendar& calendar =
        TrellinReportGlobals::RequireApplication().FinancialCalendar();
    const Date current = debtor_ ? calendar.CurrentDateAR(true) : calendar.CurrentDateAP(true);
    p.AddDate("DateAsAt", current, true, "Date As At", std::string(side.current_date), false,
              "Date As At");
  }
  CreateStandardParameter(15, p, false);
  CreateStandardParameter(23, p, false);
  if (has_side_) {
    const LedgerSide& side = SideOfDebtor(debtor_);
    CreateStandardParameter(debtor_ ? 11 : 36, p, false);
    CreateStandardParameter(side.categories.index, p, false, std::string(side.categories.name));
    CreateStandardParameter(side.types.index, p, false, std::string(side.types.name));
  }
  TrellinReportGlobals::RequireApplication().AddUserDefinedParametersOtherParty(p, false);
}

void ardscrControlReport::ActiveReport_ReportStart() {
  SetUp();
  TLReport()->SetupStandardHeader(true);
}

void ardscrControlReport::SetUp() {
  trellin::Parameters& p = TLReport()->Parameters();
  const Variant as_at = p.Value("DateAsAt", Variant::Null());
  if (!HasDate(as_at)) {
    throw std::invalid_argument("Date As At: the control report needs a month end to run to.");
  }
  as_at_ = as_at.ToDate().DateOnly();
  show_ageing_ = p.Value("ShowAgeingSummary", true).ToBool();
  show_sales_ = p.Value("ShowSalesPurchaseSummary", true).ToBool();

  const std::string tax_name = TrellinReportGlobals::RequireApplication().Tax().TaxName();
  for (const SideCaption& c : kSideCaptions) {
    if (Control* control = FindControl(c.control)) {
      // The heading is a field, so that the data exports keep it out of the columns' headings.
      const std::string text =
          std::string(debtor_ ? c.receivables : c.payables) + (c.tax_name ? tax_name : "");
      if (control->Class() == ControlClass::Label) {
        control->SetCaption(text);
      } else {
        control->SetText(text);
      }
    }
  }
  month_start_ = as_at_.FirstOfMonth();

  filter_.clear();
  description_.clear();
  AppendListParameterCondition(filter_, "OtherParty.LocationId",
                               debtor_ ? "CustomerLocations" : "SupplierLocations", p, description_,
                               kRangeText);
  AppendListParameterCondition(filter_, "Transactions.LocationId", "Locations", p, description_,
                               kRangeText);
  AppendListParameterCondition(filter_, "OtherParty.EmployeeId", "Employees", p, description_,
                               kRangeText);
  AppendPartyListFilters(filter_, p, description_);
  AppendUserDefinedFilters(filter_, p, description_, "OtherParty");
  filter_ = Trim(filter_);

  if (!show_ageing_) HideTagged("AGEING");
  if (!show_sales_) HideTagged("SALES");
  SetText("txtParameters", description_);
  SetText("txtDateAsAt",
          "As at " +
              Format(Variant(as_at_), TrellinReportGlobals::RequireBusinessLayer().DateFormat()));
}

void ardscrControlReport::HideTagged(const std::string& tag) {
  // The tagged controls of a section stand in one band; hiding them closes the band up, so the
  // blocks below move up rather than leave a gap on the page.
  for (Section& section : Sections()) {
    float top = section.Height();
    float bottom = 0;
    for (Control& control : section.Controls()) {
      if (control.Tag() != tag) continue;
      control.SetVisible(false);
      top = std::min(top, control.Top());
      bottom = std::max(bottom, control.Top() + control.Height());
    }
    if (bottom <= top) continue;
    const float band = bottom - top;
    for (Control& control : section.Controls()) {
      if (control.Tag() != tag && control.Top() >= bottom) control.SetTop(control.Top() - band);
    }
    section.SetHeight(section.Height() - band);
  }
}

void ardscrControlReport::ActiveReport_FetchData(bool& eof) {
  eof = fetched_;
  fetched_ = true;
}

void ardscrControlReport::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) Detail_Format();
}

void ardscrControlReport::Detail_Format() {
  const std::string bound = Database::SQLDate(as_at_.AddDays(1));
  WorkOutClosing();
  SetFigure("numClosingLastMonth", closing_last_month_);

  WorkOutBlock("Transactions.DateProcess>=" + Database::SQLDate(month_start_) +
                   " AND Transactions.DateProcess<" + bound,
               month_);
  ShowBlock(month_, "");
  SetText("numMthEndNoTrans", std::to_string(month_.Count()));
  SetFigure("numMthEndGross", month_.Gross());
  SetFigure("numMthEndDiscount", month_.Discount());
  SetFigure("numMthEndNet", MonthEnd());

  WorkOutControlAccount();
  SetFigure("numControlAccount", control_account_);
  SetFigure("numVariance", Variance());

  WorkOutBlock("Transactions.DateProcess>=" + bound, future_);
  if (future_.any) {
    ShowBlock(future_, "Fut");
    SetFigure("numCurrentBalanceNet", CurrentBalance());
  } else {
    HideTagged("V");
  }

  if (show_ageing_) {
    WorkOutAgeing(false, ageing_now_);
    WorkOutAgeing(true, ageing_month_end_);
    ShowAgeing(ageing_now_, "Now");
    ShowAgeing(ageing_month_end_, "MthEnd");
  }
  if (show_sales_) {
    const FinancialCalendar& calendar =
        TrellinReportGlobals::RequireApplication().FinancialCalendar();
    const std::int64_t year = calendar.YearIdFromDate(as_at_);
    // A date no financial year holds counts its year from 1 January.
    const Date year_start =
        year != 0 ? calendar.Year(year).DateStart : Date::FromYmd(as_at_.Year(), 1, 1);
    sales_month_ = WorkOutSales(month_start_);
    sales_year_ = WorkOutSales(year_start);
    ShowSales(sales_month_, "MTD");
    ShowSales(sales_year_, "YTD");
  }
}

void ardscrControlReport::ShowBlock(const ControlBlock& block, const std::string& prefix) {
  for (std::size_t i = 0; i < block.categories.size(); ++i) {
    const ControlCategoryBlock& c = block.categories[i];
    const CategoryControls& names = kCategoryControls[i];
    const std::string num = "num" + prefix + names.prefix;
    const std::string total = "num" + prefix + "Total" + names.prefix;
    SetText("txt" + prefix + names.text, Join(c.labels, "\r\n"));
    SetText(num + "NoTrans", Join(c.counts, "\r\n"));
    SetText(num + "Gross", Join(c.gross, "\r\n"));
    SetText(num + "Discount", Join(c.discount, "\r\n"));
    SetText(num + "Net", Join(c.net, "\r\n"));
    SetText(total + "NoTrans", std::to_string(c.count));
    SetFigure(total + "Gross", c.gross_sum);
    SetFigure(total + "Discount", c.discount_sum);
    SetFigure(total + "Net", c.net_sum);
  }
}

void ardscrControlReport::ShowAgeing(const ControlAgeing& ageing, const std::string& prefix) {
  const Currency total = ageing.Total();
  for (std::size_t i = 0; i < ageing.buckets.size(); ++i) {
    SetFigure("numAge" + prefix + kAgeingRows[i], ageing.buckets[i]);
    // A zero total leaves the shares empty.
    SetText("pctAge" + prefix + kAgeingRows[i],
            total == Currency()
                ? std::string()
                : Format(Variant(ageing.buckets[i].ToDouble() / total.ToDouble()), "##0.0%"));
  }
  SetFigure("numAge" + prefix + "Total", total);
  SetText("pctAge" + prefix + "Total", total == Currency() ? std::string() : "100.0%");
}

void ardscrControlReport::ShowSales(const ControlSales& sales, const std::string& prefix) {
  SetFigure("num" + prefix + "GrossSales", sales.Gross());
  SetFigure("num" + prefix + "Discount", sales.discount);
  SetFigure("num" + prefix + "SalesExTax", sales.excl);
  SetFigure("num" + prefix + "Tax", sales.tax);
  SetFigure("num" + prefix + "SalesIncTax", sales.Incl());
}

void ardscrControlReport::SetFigure(const std::string& control, Currency value) {
  if (Control* c = FindControl(control)) c->SetValue(Variant(value));
}

void ardscrControlReport::SetText(const std::string& control, const std::string& text) {
  if (Control* c = FindControl(control)) c->SetText(text);
}

}  // namespace trellin
