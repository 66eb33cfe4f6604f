#pragma once
// "PenaltyInterests": the interest each customer on a penalty type owes on what it left overdue
// at `DateAsAt`. A row per item more than the type's grace days past due, its interest the
// outstanding value at the type's yearly rate for the days past grace (to the cent); a group per
// customer, whose charge is raised to the type's minimum when `MinimumInterest` is ticked.

#include <cstdint>
#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

// Interest on `outstanding` at `rate` per cent a year for `days`, to the cent.
[[nodiscard]] Currency PenaltyInterestOn(Currency outstanding, double rate, long days);

class ardsPenaltyInterests : public ListDesigner {
 public:
  ardsPenaltyInterests();

  // The list's parameters and `DateAsAt` (at first the receivables' current date).
  void RefreshParameters(std::string& ReportName) override;
  // Rate and days are not added up.
  void RefreshDataColumns() override;
  // Starts the list, then works out what each item owed at `DateAsAt` (RemainderAsAt) and every
  // customer's charge in one pass over its rows.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  // The customer's charge under its items, and the run's under the report total.
  void OnFormat(Section& section) override;

 protected:
  // Each penalty type's items more than its grace days past due at `DateAsAt`, processed by then
  // and open then (open today, or allocated since).
  [[nodiscard]] std::string ExtraCondition() override;

 private:
  struct Charge {
    Currency interest;
    Currency charged;  // raised to the minimum where asked
  };
  [[nodiscard]] Date AsAt() const;
  std::map<std::string, Charge, std::less<>> charges_;  // by customer code, upper-cased
  std::map<std::int64_t, Currency> owed_;               // by transaction id, owed at the date
  Currency total_;
};

[[nodiscard]] DesignerPtr CreateardsPenaltyInterests();

}  // namespace trellin
