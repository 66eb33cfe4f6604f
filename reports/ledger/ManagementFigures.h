#pragma once
// The figures of the management report: its twelve periods, the table of 51 rows a period that
// one group's ledger loads into, the rows computed from the loaded ones, and the scale the money
// rows print in. Plain data and arithmetic, apart from the loading queries.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/Database.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

inline constexpr int kManagementPeriods = 12;
inline constexpr int kManagementRows = 50;
inline constexpr std::string_view kManagementFrequencies = "Monthly,Quarterly,Yearly";

// Entries 0 to 12: entry 12 ends on the last day of the as-at month, each earlier one a step of
// 1, 3 or 12 months before on a month's last day; each starts the day after the one before ends.
// Entry 0 is loaded for the averages of the first column and never printed.
struct ManagementPeriods {
  std::array<Date, kManagementPeriods + 1> start{};
  std::array<Date, kManagementPeriods + 1> end{};
  // The period's end less its start: 29 for November.
  [[nodiscard]] int Days(int period) const { return end[period].Serial() - start[period].Serial(); }
  // The period holding the month yyyymm: 0 for entry 0 and every month before it, -1 after the
  // last.
  [[nodiscard]] int PeriodOfMonth(int yyyymm) const;
};

// Months a column for "Monthly", "Quarterly" and "Yearly" (case ignored); nullopt for others.
[[nodiscard]] std::optional<int> ManagementStep(std::string_view frequency);
[[nodiscard]] ManagementPeriods MakeManagementPeriods(const Date& as_at, int step_months);

enum class ManagementRowKind { Spacer, Money, Ratio };
struct ManagementRow {
  int number;
  std::string_view caption;  // "" on a spacer
  ManagementRowKind kind;
};
// Rows 1 to 50 in order, spacers included.
[[nodiscard]] const std::array<ManagementRow, kManagementRows>& ManagementRows();

// [period][row]: periods 0 to 12, rows 1 to 50 (index 0 unused).
using ManagementValues =
    std::array<std::array<Currency, kManagementRows + 1>, kManagementPeriods + 1>;

// One row of the loading query: an account type, a month (yyyymm) and the sums.
struct LoadedSum {
  int type = 0;
  int month = 0;
  Currency value;
  Currency ratio;
};
// One month's movement of a control account.
struct ControlMovement {
  int month = 0;
  Currency value;
};

// The loading query of one group: `filter` is " AND glTransaction.BranchId=..." or "".
[[nodiscard]] std::string ManagementLoadSQL(const ManagementPeriods& periods,
                                            const std::string& filter);
[[nodiscard]] std::string ManagementControlSQL(const std::string& account_id,
                                               const ManagementPeriods& periods,
                                               const std::string& filter);

// Puts the loaded sums into their rows by account type: profit and loss types (1 to 5) in their
// period only, balance-sheet types in theirs and every later one.
void LoadSums(const ManagementPeriods& periods, const std::vector<LoadedSum>& sums,
              ManagementValues& values);
// The balances of a control account at each period's end, from its months (entries 0 to 12).
[[nodiscard]] std::array<Currency, kManagementPeriods + 1> ControlBalances(
    const ManagementPeriods& periods, const std::vector<ControlMovement>& months);
// Rows 19, 20 and 25 from the receivables, stock and payables balances (payables turned round),
// each the average of a period's end and the end of the period before, then every computed row
// of periods 1 to 12 in the table's order. A zero denominator leaves 0.
void ComputeRows(const ManagementPeriods& periods,
                 const std::array<Currency, kManagementPeriods + 1>& receivables,
                 const std::array<Currency, kManagementPeriods + 1>& stock,
                 const std::array<Currency, kManagementPeriods + 1>& payables,
                 ManagementValues& values);

// Reads one group's table: the loading query and the three control accounts ("" when a link is
// not set).
[[nodiscard]] ManagementValues LoadManagementValues(Database& db, const ManagementPeriods& periods,
                                                    const std::string& filter);

struct ManagementScale {
  double scale = 0;  // 1, 1000, 1000000, or 0 when the greatest figure is too large for any
  std::string note;
};
// From the greatest absolute figure of rows 1 to 50 over columns 1 to 12, in fixed-point money.
[[nodiscard]] ManagementScale ScaleOf(const ManagementValues& values);

}  // namespace trellin
