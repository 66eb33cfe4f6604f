#pragma once
// The cost of an issue of stock, read from the company's stock lines: by the number's own lines,
// the average on hand, the last purchase, or the item's cost price, in that order.

#include <memory>

#include "core/host/Application.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Database.h"

namespace trellin::business {

class CompanyItemCosting : public ItemCosting {
 public:
  // `database` must not be null; `tax` must outlive the object.
  CompanyItemCosting(std::shared_ptr<trellin::Database> database, const Tax& tax);

  [[nodiscard]] ItemCost Cost(std::string_view item_id, double quantity, std::optional<Date> date,
                              std::string_view location_id, std::string_view serial_number,
                              bool include_undated) override;

 private:
  std::shared_ptr<trellin::Database> database_;
  const Tax& tax_;
};

}  // namespace trellin::business
