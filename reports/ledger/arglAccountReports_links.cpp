// The account line's figures as links to the General Ledger of the same account and period.

#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

std::string IsoText(const Variant& date) {
  return date.IsNull() ? std::string() : date.ToDate().DateOnly().ToIso();
}

// The ledger from `from` to `to`; with no start, every date, as the statement's ALL is.
LinkTarget LedgerLink(const std::string& account_id, const Variant& from, const Variant& to) {
  LinkTarget link{"GeneralLedger", {{"Accounts", account_id}}};
  if (from.IsNull() || to.IsNull()) {
    link.values.emplace_back("Period", "ALL");
  } else {
    link.values.emplace_back("Period", "Custom");
    link.values.emplace_back("FromDate", IsoText(from));
    link.values.emplace_back("ToDate", IsoText(to));
  }
  return link;
}

}  // namespace

void arglAccountReports::ClearLinks() {
  for (Control* c : num_fields_) {
    if (c != nullptr) c->SetLink({});
  }
}

void arglAccountReports::LinkFigures(const std::string& account_id) {
  // The General Ledger would open itself; the five years and last year's columns are of other
  // periods than the statement's dates name.
  if (report_ == LedgerReport::GeneralLedger || report_ == LedgerReport::FiveYearSummary ||
      report_ == LedgerReport::LastYearComparison || account_id.empty()) {
    return;
  }
  const LinkTarget whole = LedgerLink(account_id, from_date_, to_date_);
  for (int n = 1; n <= kMaxColumns; ++n) {
    Control* c = num_fields_[static_cast<std::size_t>(n)];
    if (c == nullptr) continue;
    // A period column opens its own months; the total column and the others the whole span.
    const auto i = static_cast<std::size_t>(n);
    if (IsPeriodColumns() && n != total_column_ && i < period_ends_.size()) {
      c->SetLink(LedgerLink(account_id, Variant(period_ends_[i - 1].AddDays(1)),
                            Variant(period_ends_[i])));
    } else {
      c->SetLink(whole);
    }
  }
}

}  // namespace trellin
