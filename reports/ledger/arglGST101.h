#pragma once
// The GST 101 return, the New Zealand style form of "GST101Return" and "BASReturn" for every
// country but "AU": boxes 5 to 15 by the Income Method (sales and purchases grossed up and divided
// by the tax fraction) and, with ShowTaxMethod, beside them by the Tax Method (the tax recorded on
// the lines), the warning when the two disagree by more than a dollar, and the calculation sheet
// of the adjustments.

#include <functional>
#include <string_view>
#include <vector>

#include "platform/runtime/Currency.h"
#include "reports/ledger/TaxReturn.h"

namespace trellin {

// The figures of one GST 101 form.
struct GST101Boxes {
  // The sums the lines are added into.
  Currency ZeroRated, Taxable, OutputTax, OutAdjustA, OutAdjustF;
  Currency Purchases, InputTax, InAdjust;
  // Boxes 5 to 15 (index 0 is box 5), Income Method and Tax Method.
  Currency Income[11];
  Currency Tax[11];
};

// Adds up the two sides and works out the boxes. `category_rate` gives a category's rate in the
// company's tax list (0 for one it lacks); `divisor` is 0 at a nil rate.
[[nodiscard]] GST101Boxes ComputeGST101(
    const std::vector<TaxAmount>& output, const std::vector<TaxAmount>& input, double divisor,
    const std::function<double(std::string_view)>& category_rate);

class arglGST101 : public TaxReturnForm {
 public:
  arglGST101() : TaxReturnForm("arglGST101") {}
  void OnFormat(Section& section) override;
  // The boxes of the last form printed, for checks.
  [[nodiscard]] const GST101Boxes& Boxes() const { return boxes_; }

 private:
  void Detail_Format();
  GST101Boxes boxes_;
};

}  // namespace trellin
