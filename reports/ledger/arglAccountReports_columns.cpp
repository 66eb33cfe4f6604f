// The columns of each statement: captions over the page, generated value fields in the
// Detail, their widths and formats, and the statement's title.

#include <algorithm>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

struct ColumnCaption {
  std::string text;
  int first;
  int last;
};

constexpr float kCodeWidth = 900;
constexpr float kGap = 60;
constexpr float kMinDescription = 2400;
constexpr float kMaxColumnWidth = 1500;
constexpr float kCommentWidth = 2600;
constexpr float kNarrowType = 8;
constexpr float kNarrowestType = 7;
constexpr float kWarningWidth = 3400;

constexpr const char* kNumberFormat = "#,##0.00;(#,##0.00)";
constexpr const char* kWholeFormat = "#,###,###,##0;(#,###,###,##0)";
constexpr const char* kPercentFormat = "##,##0.0;(###,##0.0)";

// Captions of FinancialStatement by Period: over columns 1 and 2, and over column 3.
struct PeriodCaption {
  const char* period;
  const char* current;
  const char* last_year;
};

constexpr PeriodCaption kStatementCaptions[] = {
    {"MTD", "This Month", "MTD Last Year"},
    {"QTD", "This Quarter", "QTD Last Year"},
    {"YTD", "This Year", "YTD Last Year"},
};

}  // namespace

void arglAccountReports::CreateColumns() {
  Section& detail = Sections()["Detail"];
  Section& header = Sections()["PageHeader"];
  std::vector<ColumnCaption> captions;
  float comment_width = 0;
  std::string comment_caption;

  switch (report_) {
    case LedgerReport::TrialBalance:
      captions = {{"Opening", 1, 1},
                  {"Debits", 2, 2},
                  {"Credits", 3, 3},
                  {"Movement", 4, 4},
                  {"Closing", 5, 5}};
      break;
    case LedgerReport::EndOfYearTrialBalance:
      captions = {{"Closing", 1, 1}, {"Adjustments", 2, 2}, {"Opening", 3, 3}};
      // Room for "Cost of Sales accounts must be zero." on one line.
      comment_width = kWarningWidth;
      comment_caption = "Comments";
      break;
    case LedgerReport::FinancialStatement: {
      const PeriodCaption* found = &kStatementCaptions[2];
      for (const PeriodCaption& c : kStatementCaptions) {
        if (period_ == c.period) found = &c;
      }
      captions = {{found->current, 1, 2}, {found->last_year, 3, 3}};
      break;
    }
    case LedgerReport::LastYearComparison:
      captions = {{"This Year", 1, 2}, {"%Sales", 3, 3}, {"Last Year", 4, 5}, {"%Change", 6, 6}};
      break;
    case LedgerReport::VarianceReport:
      captions = {{"Actual", 1, 1},    {budget_column_, 2, 2}, {"Variance", 3, 3}, {"%Var", 4, 4},
                  {"Last Year", 5, 5}, {"Variance", 6, 6},     {"%Var", 7, 7}};
      break;
    case LedgerReport::BudgetVarianceReport:
      captions = {{"Actual", 1, 1}, {budget_column_, 2, 2}, {"Variance", 3, 3}, {"%Var", 4, 4}};
      break;
    case LedgerReport::MovementReport:
      captions = {{"MTD", 1, 1}, {"YTD", 2, 2}, {"Last MTD", 3, 3}, {"Last YTD", 4, 4}};
      break;
    case LedgerReport::FiveYearSummary: {
      const std::vector<FinancialYear> years =
          TrellinReportGlobals::RequireApplication().FinancialCalendar().Years();
      for (int i = 1; i <= 5; ++i) {
        const std::int64_t index = fiscal_year_ + i - 5;
        std::string caption;
        if (index >= 1 && index <= static_cast<std::int64_t>(years.size())) {
          caption = years[static_cast<std::size_t>(index - 1)].Name;
        }
        captions.push_back({caption, i, i});
      }
      break;
    }
    case LedgerReport::PeriodSummary:
    case LedgerReport::BudgetSummary:
    case LedgerReport::BudgetCashFlow: {
      const Date to =
          to_date_.IsNull()
              ? TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateGL(true)
              : to_date_.ToDate();
      if (to_date_.IsNull()) to_date_ = to;
      const FinancialCalendar& calendar =
          TrellinReportGlobals::RequireApplication().FinancialCalendar();
      const std::int64_t year = calendar.YearIdFromDate(to);
      const Date year_end = year != 0 ? calendar.Year(year).DateEnd : to.LastOfMonth();
      period_ends_ = PeriodEnds(frequency_, to, year_end);
      const char* mask = frequency_ == "Yearly" ? "yyyy" : "mmmyy";
      const int periods = static_cast<int>(period_ends_.size()) - 1;
      const bool quarterly = frequency_ == "Quarterly";
      for (int i = 1; i <= periods; ++i) {
        const int n = quarterly && i > 4 ? i + 1 : i;
        captions.push_back(
            {Format(Variant(period_ends_[static_cast<std::size_t>(i)]), mask), n, n});
      }
      if (quarterly) {
        captions.push_back({"Total", 5, 5});
        captions.push_back({"Total", 10, 10});
      }
      total_column_ = 0;
      if (show_total_) {
        total_column_ = quarterly ? 11 : periods + 1;
        captions.push_back({"Total", total_column_, total_column_});
      }
      break;
    }
    case LedgerReport::GeneralLedger:
      captions = {{"Debit", 1, 1}, {"Credit", 2, 2}, {"Balance", 3, 3}};
      comment_width = kCommentWidth;
      comment_caption = "Comment/Other Party";
      break;
  }
  column_count_ = 0;
  for (const ColumnCaption& c : captions) column_count_ = std::max(column_count_, c.last);

  SetPage();
  const float width = PrintWidth();
  const float code_width = include_code_ ? kCodeWidth : 0;
  // The ledger's own columns sit between the description and the figures.
  const float ledger_width = report_ == LedgerReport::GeneralLedger ? 3400 : 0;
  const float room = width - code_width - kMinDescription - comment_width - ledger_width;
  // The budget variance's actual figure stands in two places, an inner one for the lines below
  // the total level and an outer one for the rest: its column is two figures wide.
  wide_first_column_ = report_ == LedgerReport::BudgetVarianceReport;
  const int units = column_count_ + (wide_first_column_ ? 1 : 0);
  column_width_ = std::min(kMaxColumnWidth, room / static_cast<float>(std::max(units, 1)));
  const float values_left = width - comment_width - column_width_ * static_cast<float>(units);
  values_left_ = values_left;
  // Figures are set in the type of the descriptions while their columns have their full width.
  // Narrower columns take a smaller type, twelve months and a total a smaller one still, and
  // the codes and descriptions beside them take it too.
  figure_font_size_ = Field("txtDescription").Font().Size;
  if (column_width_ < kMaxColumnWidth) {
    figure_font_size_ = column_count_ > 8 ? kNarrowestType : kNarrowType;
    for (const char* name : {"txtCode", "txtDescription", "txtDescription2"}) {
      Field(name).Font().Size = figure_font_size_;
    }
  }
  description_left_ = code_width;
  description_width_ = values_left - ledger_width - description_left_ - kGap;

  for (const char* name : {"txtCode", "lblCode"}) {
    if (Control* c = FindControl(name)) c->SetVisible(include_code_);
  }
  for (const char* name : {"txtDescription", "txtDescription2", "lblDescription"}) {
    if (Control* c = FindControl(name)) {
      c->SetLeft(description_left_);
      c->SetWidth(values_left - ledger_width - description_left_ - kGap);
    }
  }
  for (Control& c : header.Controls()) {
    if (c.Class() == ControlClass::Line) c.SetWidth(width);
  }
  for (Control& c : Sections()["PageFooter"].Controls()) {
    if (c.Class() == ControlClass::Line) c.SetWidth(width);
    if (c.Name() == "txtPage") c.SetLeft(width - c.Width());
  }
  if (Control* dated = FindControl("phDated")) dated->SetLeft(width - dated->Width());
  if (Control* title = FindControl("lblReportTitle")) title->SetWidth(width);

  num_fields_.fill(nullptr);
  for (int n = 1; n <= column_count_; ++n) {
    AddValueField(n, ColumnLeft(n), ColumnLeft(n + 1) - ColumnLeft(n) - kColumnGap);
  }
  for (const ColumnCaption& c : captions) {
    AddCaption(c.first, c.text, ColumnLeft(c.first),
               ColumnLeft(c.last + 1) - ColumnLeft(c.first) - kColumnGap);
  }
  if (report_ == LedgerReport::GeneralLedger) {
    // Trans, Date, Source and Reference head the ledger lines; the opening line says
    // "Opening" under Trans.
    const std::pair<const char*, float> ledger[] = {
        {"Trans", 700}, {"Date", 900}, {"Source", 700}, {"Reference", 1100}};
    float left = values_left - ledger_width;
    int i = 0;
    for (const auto& [caption, w] : ledger) {
      Control& label =
          header.Controls().Add(ControlClass::Label, "lblLedger" + std::to_string(++i));
      label.SetCaption(caption);
      label.SetLeft(left);
      label.SetTop(Field("lblDescription").Top());
      label.SetWidth(w);
      label.SetHeight(Field("lblDescription").Height());
      label.Font().Size = Field("lblDescription").Font().Size;
      label.Font().Bold = true;
      if (i == 1) {
        Control& opening = detail.Controls().Add(ControlClass::Field, "txtField1");
        opening.SetLeft(left);
        opening.SetWidth(w);
        opening.SetTop(Field("txtDescription").Top());
        opening.SetHeight(Field("txtDescription").Height());
        opening.Font().Size = figure_font_size_;
      }
      left += w;
    }
  }
  if (comment_width > 0) {
    const float left = width - comment_width + kGap * 2;
    Control& label = header.Controls().Add(ControlClass::Label, "lblComments");
    label.SetCaption(comment_caption);
    label.SetLeft(left);
    label.SetTop(Field("lblDescription").Top());
    label.SetWidth(comment_width - kGap * 2);
    label.SetHeight(Field("lblDescription").Height());
    label.Font().Size = Field("lblDescription").Font().Size;
    label.Font().Bold = true;
    if (report_ == LedgerReport::EndOfYearTrialBalance) {
      Control& comment = detail.Controls().Add(ControlClass::Field, "txtField1");
      comment.SetLeft(left);
      comment.SetWidth(comment_width - kGap * 2);
      comment.SetTop(Field("txtDescription").Top());
      comment.SetHeight(Field("txtDescription").Height());
      comment.Font().Size = 8;
      comment.SetCanGrow(true);
    }
  }
  if (Section* footer = Sections().FindType(SectionType::ReportFooter)) {
    Control& warning = footer->Controls().Add(ControlClass::Field, "txtWarning");
    warning.SetLeft(0);
    warning.SetTop(0);
    warning.SetWidth(width);
    warning.SetHeight(260);
    warning.Font().Bold = true;
    warning.SetCanShrink(true);
  }
}

float arglAccountReports::ColumnLeft(int n) const {
  const int units = n - 1 + (wide_first_column_ && n > 1 ? 1 : 0);
  return values_left_ + column_width_ * static_cast<float>(units);
}

Control& arglAccountReports::AddValueField(int n, float left, float width) {
  const Control& model = Field("txtDescription");
  Control& c =
      Sections()["Detail"].Controls().Add(ControlClass::Field, "numField" + std::to_string(n));
  c.SetLeft(left);
  c.SetWidth(width);
  c.SetTop(model.Top());
  c.SetHeight(model.Height());
  c.SetAlignment(TextAlignment::Right);
  c.Font().Size = figure_font_size_;
  num_fields_[static_cast<std::size_t>(n)] = &c;
  return c;
}

void arglAccountReports::AddCaption(int n, const std::string& caption, float left, float width) {
  const Control& model = Field("lblDescription");
  Control& label =
      Sections()["PageHeader"].Controls().Add(ControlClass::Label, "lblField" + std::to_string(n));
  label.SetCaption(caption);
  label.SetLeft(left);
  label.SetWidth(width);
  label.SetTop(model.Top());
  label.SetHeight(model.Height());
  label.SetAlignment(TextAlignment::Right);
  label.Font().Size = model.Font().Size;
  label.Font().Bold = true;
}

void arglAccountReports::SetPage() {
  // The page is laid out before the run starts, so the statement's orientation is set as soon
  // as its key is known.
  static constexpr LedgerReport kLandscape[] = {
      LedgerReport::GeneralLedger,  LedgerReport::EndOfYearTrialBalance,
      LedgerReport::VarianceReport, LedgerReport::LastYearComparison,
      LedgerReport::PeriodSummary,  LedgerReport::BudgetSummary,
      LedgerReport::BudgetCashFlow};
  if (std::find(std::begin(kLandscape), std::end(kLandscape), report_) == std::end(kLandscape)) {
    return;
  }
  PageSettings().Orientation = PageOrientation::Landscape;
  SetPrintWidth(PageSettings().PaperHeight - PageSettings().LeftMargin -
                PageSettings().RightMargin);
}

void arglAccountReports::SetColumnFormats() {
  const char* mask = round_digits_ == 2 ? kNumberFormat : kWholeFormat;
  for (int n = 1; n <= column_count_; ++n) {
    if (Control* c = NumField(n)) c->SetOutputFormat(mask);
  }
  std::vector<int> percents;
  if (report_ == LedgerReport::LastYearComparison) percents = {3, 6};
  if (report_ == LedgerReport::VarianceReport) percents = {4, 7};
  if (report_ == LedgerReport::BudgetVarianceReport) percents = {4};
  for (int n : percents) {
    if (Control* c = NumField(n)) c->SetOutputFormat(kPercentFormat);
  }
}

void arglAccountReports::SetTitle() {
  const std::string suffix = tax_inclusive_ ? " (" + tax_name_ + " inclusive)" : "";
  const std::string to_text = to_date_.IsNull() ? "" : DateText(to_date_);
  std::string title;
  switch (report_) {
    case LedgerReport::EndOfYearTrialBalance: {
      title = title_;
      const std::vector<FinancialYear> years =
          TrellinReportGlobals::RequireApplication().FinancialCalendar().Years();
      if (fiscal_year_ >= 1 && fiscal_year_ <= static_cast<std::int64_t>(years.size())) {
        title += " (" + years[static_cast<std::size_t>(fiscal_year_ - 1)].Name + ")";
      }
      break;
    }
    case LedgerReport::MovementReport:
      title = title_ + " ending " + to_text + suffix;
      break;
    case LedgerReport::PeriodSummary:
      title = frequency_ + " Summary ending " + to_text + suffix;
      break;
    case LedgerReport::BudgetSummary:
      title = frequency_ + " Budgets ending " + to_text;
      break;
    case LedgerReport::BudgetCashFlow:
      title = frequency_ + " Cash Flow Budget ending " + to_text;
      break;
    default:
      title = FormatPeriodTitle(title_, period_) + suffix;
      break;
  }
  if (Control* label = FindControl("lblReportTitle")) label->SetCaption(title);
}

}  // namespace trellin
