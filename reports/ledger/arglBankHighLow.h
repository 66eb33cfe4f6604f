#pragma once
// "BankHighLow": for each bank, a row per day, week or month of the dates with the balance at its
// start, its lowest and highest day-end balance and their days, and the balance at its end;
// "Over limit" where the lowest is below the bank's overdraft. Each bank's lowest and highest of
// the whole run close its block. A fixed layout on the list base's parameters; the rows are made
// at report start from the banks' openings and daily movements, two grouped queries.

#include <cstddef>
#include <string>
#include <vector>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

class arglBankHighLow : public ListDesigner {
 public:
  arglBankHighLow();

  // One row of the report: a period of one bank, with its bank's figures for the whole run.
  struct PeriodRow {
    std::string bank;
    std::string account_name;
    std::string account;
    Currency overdraft_limit;
    Date from;
    Date to;
    Currency opening;
    Currency lowest;
    Date lowest_on;
    Currency highest;
    Date highest_on;
    Currency closing;
    Currency run_lowest;
    Date run_lowest_on;
    Currency run_highest;
    Date run_highest_on;
  };

  // Reads the banks through the list's query, then their openings and day-end balances, and makes
  // the rows; the report runs unbound over them.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

  [[nodiscard]] const std::vector<PeriodRow>& Rows() const { return rows_; }

 protected:
  // Rows alternate clear and shaded, the first clear.
  void Detail_Format() override;

 private:
  std::vector<PeriodRow> rows_;
  std::size_t next_ = 0;
};

[[nodiscard]] DesignerPtr CreatearglBankHighLow();

}  // namespace trellin
