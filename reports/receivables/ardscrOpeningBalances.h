#pragma once
// "OpeningBalances": each party's balance brought forward into `DateAsAt`, on either side, as the
// items then open add up to it. A row per item processed before the date with a remainder on the
// day before it (what is open today with the allocations made since given back); a group per
// party, whose footer is the party's balance. Without `ShowItems` the parties' footers alone
// print. Under the report total stand the side's control account at the same point and the
// difference between the two.

#include <cstdint>
#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

struct LedgerSide;

class ardscrOpeningBalances : public ListDesigner {
 public:
  ardscrOpeningBalances();

  // The list's parameters, then `DateAsAt` (at first the financial year's first day, "BOY").
  void RefreshParameters(std::string& ReportName) override;
  // Original is not added up.
  void RefreshDataColumns() override;
  // Starts the list, reckons every item's remainder on the day before `DateAsAt` and each
  // party's balance from them, reads the control account and lays out the footer's lines.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  // Hides the items and parties the run leaves out (nil remainders; nil balances unless
  // `IncludeZero`).
  void OnFormat(Section& section) override;

  // The run's figures, once the report has started.
  [[nodiscard]] Currency LedgerTotal() const { return ledger_total_; }
  [[nodiscard]] Currency ControlAccount() const { return control_; }
  [[nodiscard]] Date OpenedOn() const { return opened_on_; }

 protected:
  // The side's range of types, processed before `DateAsAt`, open now or allocated since.
  [[nodiscard]] std::string ExtraCondition() override;

 private:
  [[nodiscard]] const LedgerSide& Side() const;
  // `DateAsAt`; throws std::invalid_argument when there is none.
  [[nodiscard]] Date AsAt() const;
  [[nodiscard]] std::string PartyOfRow() const;
  // Without the items: the party's footer as one line, its name beside its balance.
  void PartyFooterOnOneLine();

  std::map<std::int64_t, Currency> open_;                 // by transaction id, the side's sign
  std::map<std::string, Currency, std::less<>> parties_;  // by party code, upper-cased
  Currency ledger_total_;
  Currency control_;
  Date opened_on_;
  bool show_items_ = false;
  bool include_zero_ = false;
  std::map<std::string, bool, std::less<>> shown_;  // each section's visibility at the start
};

[[nodiscard]] DesignerPtr CreateardscrOpeningBalances();

}  // namespace trellin
