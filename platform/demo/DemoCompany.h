#pragma once
// The demo company: a complete company file, as the accounts application would leave it after
// some years of trading, for a first run with no data of the user's, for the end-to-end tests
// and, scaled up, for measuring the reports on very large ledgers.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/runtime/Date.h"

namespace trellin::demo {

struct DemoOptions {
  // Volume multiplier: 1 is a believable small business (a few hundred parties, some fifty
  // thousand sub-ledger documents over five and a half years); the volume grows linearly.
  int scale = 1;
  // The same seed always gives the same file, byte for byte.
  std::uint64_t seed = 1;
  // "NZ" (31 March balance date, GST 15% two-monthly) or "AU" (30 June, GST 10% quarterly).
  std::string country = "NZ";
  // The last day of the company's latest month: it has traded for five full years and the
  // current one up to the end of this date's month. Without one, a fixed date of the country's
  // (NZ 30 November 2025, AU 28 February 2026), so the file is the same whenever it is built.
  std::optional<Date> present;
  // Where the file goes; it is built beside it and moved into place when complete.
  std::string path;
  // Called with the fraction done, 0 to 1, as the build goes; may be empty.
  std::function<void(double)> progress;
};

// What was built, for the caller's message and for checks.
struct DemoSummary {
  Date present;    // the company's "today": the last day of its latest period
  Date first_day;  // first day of the first financial year
  int financial_years = 0;
  std::int64_t parties = 0;
  std::int64_t transactions = 0;       // sub-ledger documents and payments
  std::int64_t transaction_lines = 0;  // document lines and stock movements
  std::int64_t gl_lines = 0;
};

// The deliberate differences between a control account and its sub-ledger, which the control
// and exception reports are there to find: a hand journal on the receivables control account
// and one on the payables control account, both dated in the current month. In ten-thousandths,
// as the ledger sums them (debit positive).
inline constexpr std::int64_t kReceivablesControlDifference = 2'504'500;  // 250.45 debit
inline constexpr std::int64_t kPayablesControlDifference = -875'000;      // 87.50 credit

// Builds the company file at options.path. Throws std::invalid_argument for bad options (no
// path, scale outside 1..200, an unknown country) and trellin::DatabaseError when the file
// cannot be written; on failure nothing is left at the path, and a file already there is kept.
DemoSummary BuildDemoCompany(const DemoOptions& options);

}  // namespace trellin::demo
