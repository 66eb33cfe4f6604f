#pragma once
// Stock levels read from the company file: quantities and costs on hand from the stock lines,
// what is on purchase order, and what the unposted documents hold.

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/host/BusinessObjects.h"
#include "core/host/Database.h"

namespace trellin::business {

class CompanyItemStockLevel : public ItemStockLevel {
 public:
  // `database` must not be null; nothing is read until the first call.
  explicit CompanyItemStockLevel(std::shared_ptr<trellin::Database> database);

  [[nodiscard]] StockFigures Load(std::string_view item_id, std::string_view location_id,
                                  std::string_view serial_number) override;
  [[nodiscard]] double QuantityAvailableAt(std::string_view item_id, std::string_view location_id,
                                           std::string_view serial_number, std::optional<Date> date,
                                           bool exclude_allocated) override;

 private:
  // The figures of one item at one location for one serial number; codes upper-cased, trimmed,
  // "" for none.
  struct Place {
    std::string location;
    std::string serial;
    StockFigures figures;
  };
  void ReadOnce();
  void ReadOnHand();
  // The on-hand sums of `item`'s serial-numbered lines, by location and number; read once.
  [[nodiscard]] const std::vector<Place>& SerialsOf(const std::string& item);
  void ReadPurchaseOrders();
  void ReadOpenDocuments();
  [[nodiscard]] StockFigures& PlaceOf(const Variant& item, const Variant& location,
                                      const Variant& serial);

  std::shared_ptr<trellin::Database> database_;
  bool read_ = false;
  std::map<std::string, std::vector<Place>, std::less<>> items_;
  std::map<std::string, std::vector<Place>, std::less<>> serials_;
};

}  // namespace trellin::business
