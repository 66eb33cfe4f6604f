#pragma once
// "SCPriceChange" ("Price Change Schedule"): what a change to the selling prices would give, item
// by item, for approval before anyone keys it in: cost, the current and the new price before tax,
// the change and the margins before and after. Nothing is written. A column list on the list
// base.

#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

// How the new price is worked out.
enum class PriceChangeMethod { Percent, Amount, MarkupOnCost };

// The new price before tax from the current price and cost before tax, by `method` with
// `change` (a percentage, or an amount of money), rounded to `round_to` (zero: not rounded).
[[nodiscard]] Currency NewPrice(PriceChangeMethod method, double change, Currency current,
                                Currency cost, Currency round_to);

class arscPriceChange : public ListDesigner {
 public:
  arscPriceChange();

  // The list's parameters, then Change.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;
  // Reads the method, change and rounding, and says them in the description.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  PriceChangeMethod method_ = PriceChangeMethod::Percent;
  double change_ = 0;
  Currency round_to_;
};

[[nodiscard]] DesignerPtr CreatearscPriceChange();

}  // namespace trellin
