// One level's figures into the Detail's value fields: rounding, rules, the statement's own
// column rules and the credit adjustment.

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

constexpr std::string_view kNumberPrefix = "numField";
constexpr std::string_view kTextPrefix = "txtField";

bool StartsWith(const std::string& name, std::string_view prefix) {
  return name.size() > prefix.size() && EqualsIgnoreCase(name.substr(0, prefix.size()), prefix);
}

void Hide(Control* c) {
  if (c == nullptr) return;
  c->SetText(" ");
  c->SetVisible(false);
}

void Rule(Control* c, bool last_line) {
  if (c == nullptr) return;
  c->Border().TopStyle = 1;
  c->Border().BottomStyle = last_line ? 6 : 0;
}

}  // namespace

Control* arglAccountReports::NumField(int n) const {
  if (n < 1 || n > kMaxColumns) return nullptr;
  return (split_code_ != nullptr ? split_fields_ : num_fields_)[static_cast<std::size_t>(n)];
}

Control* arglAccountReports::TextField1() const {
  return split_code_ != nullptr ? split_text_field_ : FindControl("txtField1");
}

void arglAccountReports::ShowValueFields(bool showNumbers, bool showTexts) {
  for (Control& c : Sections()["Detail"].Controls()) {
    if (StartsWith(c.Name(), kNumberPrefix)) c.SetVisible(showNumbers);
    if (StartsWith(c.Name(), kTextPrefix)) c.SetVisible(showTexts);
  }
}

bool arglAccountReports::ShowLevelValues(int level, bool lastLine) {
  Rounder& rounder = TrellinReportGlobals::RequireBusinessLayer().Utilities().Rounder();
  const AccountLevel& values = AccountLevels[static_cast<std::size_t>(level)];
  const bool statement_rules =
      report_ == LedgerReport::FinancialStatement || report_ == LedgerReport::LastYearComparison;
  bool any_non_zero = false;
  for (int n = 1; n <= kMaxColumns; ++n) {
    Control* c = NumField(n);
    if (c == nullptr) continue;
    const Currency value = values.Values[static_cast<std::size_t>(n)];
    double shown = rounder.Round(Variant(value.ToDouble()), round_digits_).ToDouble();
    if (round_digits_ == -3) shown /= 1000.0;
    c->SetDataValue(Variant(shown));
    if (value != Currency()) any_non_zero = true;
    if (level == kRowLevel || statement_rules) {
      c->Border().TopStyle = 0;
      c->Border().BottomStyle = 0;
    } else if (level < account_summary_level_) {
      Rule(c, lastLine);
    }
  }
  StatementRule(level, lastLine, level != kRowLevel);
  if (adjust_credits_ && any_non_zero && IsCreditType(CurrentType)) {
    for (int n = 1; n <= kMaxColumns; ++n) {
      Control* c = NumField(n);
      if (c == nullptr || c->Text() == " ") continue;
      // The budget variance's percentage says how far off the budget is, whatever the side.
      if (report_ == LedgerReport::BudgetVarianceReport && n == 4) continue;
      const double shown = c->DataValue().ToDouble();
      if (shown != 0) c->SetDataValue(Variant(-shown));
    }
  }
  return any_non_zero;
}

void arglAccountReports::ShowWhenNonZero(int n) {
  Control* c = NumField(n);
  if (c != nullptr && c->DataValue().ToDouble() == 0) c->SetVisible(false);
}

void arglAccountReports::ShowPercent(int n, double numerator, double denominator) {
  Control* c = NumField(n);
  if (c == nullptr) return;
  if (denominator == 0) {
    c->SetDataValue(Variant(0.0));
    c->SetText(" ");
    return;
  }
  c->SetDataValue(Variant(numerator / denominator * 100.0));
}

void arglAccountReports::StatementRule(int level, bool lastLine, bool total_line) {
  const auto& v = AccountLevels[static_cast<std::size_t>(level)].Values;
  auto d = [&v](int n) { return v[static_cast<std::size_t>(n)].ToDouble(); };
  // Where a pair of columns holds one figure, details stand in the inner column and totals
  // at or above the total level in the outer one; a total's rule goes on the column its
  // accounts stood in.
  // The inner column of an outer line stays visible with a blank text, so that a total's rule
  // under the inner column still prints.
  auto pair_rule = [&](int inner, int outer) {
    if (CurrentLevel > account_total_level_) {
      Hide(NumField(outer));
    } else if (Control* blank = NumField(inner)) {
      blank->SetText(" ");
    }
    if (total_line) Rule(NumField(LastLevel > account_total_level_ ? inner : outer), lastLine);
  };
  switch (report_) {
    case LedgerReport::TrialBalance:
      for (int n : {1, 2, 3}) ShowWhenNonZero(n);
      break;
    case LedgerReport::EndOfYearTrialBalance: {
      ShowWhenNonZero(2);
      Control* comment = TextField1();
      if (comment != nullptr) {
        const bool flag = !total_line && IsProfitAndLoss(CurrentType) && d(3) != 0;
        comment->SetText(flag ? std::string(ClosingName(CurrentType)) + " accounts must be zero."
                              : "");
      }
      break;
    }
    case LedgerReport::FinancialStatement:
      pair_rule(1, 2);
      if (total_line) Rule(NumField(3), lastLine);
      break;
    case LedgerReport::LastYearComparison:
      pair_rule(1, 2);
      pair_rule(4, 5);
      ShowPercent(3, d(1), sales_total_.ToDouble());
      ShowPercent(6, d(1) - d(4), d(4));
      break;
    case LedgerReport::VarianceReport:
      ShowWhenNonZero(2);
      ShowPercent(4, d(1) - d(2), d(2));
      ShowWhenNonZero(6);
      ShowPercent(7, d(1) - d(5), d(5));
      break;
    case LedgerReport::BudgetVarianceReport: {
      ShowWhenNonZero(2);
      ShowPercent(4, d(1) - d(2), d(2));
      if (Control* actual = NumField(1)) {
        // The column is two figures wide: half of it is the inner place.
        const float whole = ColumnLeft(2) - ColumnLeft(1);
        actual->SetWidth((CurrentLevel > account_total_level_ ? whole / 2 : whole) - kColumnGap);
      }
      break;
    }
    case LedgerReport::MovementReport:
    case LedgerReport::FiveYearSummary:
      for (int n = 1; n <= column_count_; ++n) ShowWhenNonZero(n);
      break;
    case LedgerReport::PeriodSummary:
    case LedgerReport::BudgetSummary:
    case LedgerReport::BudgetCashFlow:
      PeriodVisibility();
      break;
    case LedgerReport::GeneralLedger:
      ShowWhenNonZero(1);
      ShowWhenNonZero(2);
      if (Control* opening = TextField1()) {
        opening->SetText(total_line ? "" : "Opening");
        opening->SetVisible(!total_line);
      }
      break;
  }
}

void arglAccountReports::PeriodVisibility() {
  const bool quarterly = frequency_ == "Quarterly";
  for (int n = 1; n <= column_count_; ++n) {
    Control* c = NumField(n);
    if (c == nullptr) continue;
    const bool non_zero = c->DataValue().ToDouble() != 0;
    bool visible = non_zero;
    if (n == total_column_) visible = show_total_ && non_zero;
    // The second quarter's sub-total is the one place the test reaches type 6.
    if (quarterly && n == 10) visible = non_zero && CurrentType <= AccountType::Appropriation;
    if (quarterly && n == 11) visible = show_total_ && non_zero;
    c->SetVisible(visible);
  }
}

}  // namespace trellin
