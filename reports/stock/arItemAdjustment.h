#pragma once
// "ItemAdjustments": the stocktakes, adjustments, revaluations and carried costs of a period,
// with each line's reason, quantity and value. A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

class arItemAdjustment : public ListDesigner {
 public:
  arItemAdjustment();

  void RefreshDataColumns() override;
  void ActiveReport_DataInitialize() override;
  // Names the row's type of adjustment.
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearItemAdjustment();

}  // namespace trellin
