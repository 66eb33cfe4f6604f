#pragma once
// "TransactionTypeDetails": a card per transaction type: its code, description, class and
// message, what was posted of it in the dates and in the same dates a year before (count and
// value), how many open batches hold documents of it, and the first and last dates it was used.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class ardsTransactionTypeDetail : public ListDesigner {
 public:
  ardsTransactionTypeDetail();

  // No figure of the card is added up: types of different classes do not sum.
  void RefreshDataColumns() override;
  // Starts the list, reads every listed type's figures with one grouped query each, and puts
  // the message under the card's line.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  struct Figures {
    Variant posted = Variant(std::int64_t{0});
    Currency value;
    Variant prior_posted = Variant(std::int64_t{0});
    Currency prior_value;
    Variant open_batches = Variant(std::int64_t{0});
    Variant first_used = Variant::Null();
    Variant last_used = Variant::Null();
  };
  std::map<std::string, Figures, std::less<>> figures_;  // by type code, upper-cased
};

[[nodiscard]] DesignerPtr CreateardsTransactionTypeDetail();

}  // namespace trellin
