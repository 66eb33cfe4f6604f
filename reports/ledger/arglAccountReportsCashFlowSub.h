#pragma once
// The cash lines at the end of the Budget Cash Flow: the opening bank balance, the budget's total
// cash movement and the closing bank balance, in each of the statement's columns. A sub-report in
// the statement's report footer; the statement feeds it the opening and each column's movement.

#include <array>
#include <string>

#include "core/host/ActiveReport.h"
#include "platform/runtime/Currency.h"

namespace trellin {

// The two rows a column of the cash lines keeps.
enum class CashRow { Opening = 0, Movement = 1 };

class arglAccountReportsCashFlowSub : public ActiveReport {
 public:
  static constexpr int kColumns = 20;

  arglAccountReportsCashFlowSub() : ActiveReport("arglAccountReportsCashFlowSub") {}

  // Set by the statement once for the run.
  std::string Period;  // the statement's Frequency
  bool ShowTotal = false;
  int TotalColumn = 0;  // the column of ShowTotal, 0 when none
  int Columns = 0;      // value columns the statement prints
  int Rounding = 2;     // the statement's digits: 2 normal, 0 whole, -3 thousands

  // Stores `value` in a column's row (columns 1 to kColumns), then opens the next column at
  // this column's opening plus its movement, so that the columns run on.
  void Update_Array(CashRow row, int column, Currency value);
  [[nodiscard]] Currency Opening(int column) const;
  [[nodiscard]] Currency Movement(int column) const;

  void ActiveReport_ReportStart() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 private:
  std::int16_t LineIndex = 1;
  std::array<std::array<Currency, 2>, kColumns + 2> values_{};
};

}  // namespace trellin
