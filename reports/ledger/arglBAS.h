#pragma once
// The business activity statement, the Australian form of "GST101Return" and "BASReturn" for a
// company of country "AU": the G boxes of the calculation sheet and the summary 1A to 9 in whole
// dollars, by the Income Method and, with ShowTaxMethod, beside them by the Tax Method; the
// warning when field 9 of the two differs by more than a dollar.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/runtime/Currency.h"
#include "reports/ledger/TaxReturn.h"

namespace trellin {

// The sums of one BAS form, as its lines add up.
struct BASSums {
  Currency SalesTotal, GSTSales, G2, G3, G4, G7;
  Currency PurchaseTotal, GSTPurchases, GSTCapital, G10, G13, G14, G18;
  Currency W2, C1, D1, E1, F1;  // boxes 1C to 1F: nothing adds to them
};

// Every printed field of one method by its box name ("G1", "1A", "9"), whole dollars.
using BASFields = std::map<std::string, std::int64_t>;

struct BASBoxes {
  BASSums Sums;
  BASFields Income;
  BASFields Tax;
};

// The fields in the order they are worked out, each later one from the printed earlier ones.
extern const std::vector<std::string> kBASFieldOrder;

// Adds up the sides and works out both methods. `divisor` is 0 at a nil rate: the divisions and
// the tax method's gross-ups are then 0.
[[nodiscard]] BASBoxes ComputeBAS(const std::vector<TaxAmount>& output,
                                  const std::vector<TaxAmount>& input, double divisor);

class arglBAS : public TaxReturnForm {
 public:
  arglBAS() : TaxReturnForm("arglBAS") {}
  void OnFormat(Section& section) override;
  [[nodiscard]] const BASBoxes& Boxes() const { return boxes_; }

 private:
  void Detail_Format();
  BASBoxes boxes_;
};

}  // namespace trellin
