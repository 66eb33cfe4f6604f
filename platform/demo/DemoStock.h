#pragma once
// Stock on hand while the company trades: quantities, costs and the serial and batch numbers
// of each item at each location, so that every sale takes what is there at what it cost.

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace trellin::demo {

struct StockUnit {
  std::string number;  // serial or batch number; empty for plain stock
  double quantity = 0;
  std::int64_t cost = 0;  // of the whole quantity, ten-thousandths
};

struct StockPlace {
  double on_hand = 0;
  std::int64_t cost = 0;
  std::deque<StockUnit> units;  // first in, first out
  std::int64_t last_purchase_line = 0;
};

struct StockTake {
  std::string number;
  double quantity = 0;
  std::int64_t cost = 0;
};

class DemoStock {
 public:
  DemoStock(std::size_t items, std::size_t locations)
      : places_(items * locations), locations_(locations) {}

  [[nodiscard]] StockPlace& At(std::size_t item, std::size_t location) {
    return places_[item * locations_ + location];
  }
  // Adds a purchase of `quantity` costing `cost` in all, under `number` when tracked.
  void Receive(std::size_t item, std::size_t location, const std::string& number, double quantity,
               std::int64_t cost);
  // Takes up to `quantity` (never more than is on hand), first in first out; each part comes
  // back with its number and cost. The cost of plain stock is the average, to the cent, and
  // the last unit takes what cost is left, so that nothing on hand means no cost on hand.
  std::vector<StockTake> Take(std::size_t item, std::size_t location, double quantity,
                              bool tracked);

 private:
  std::vector<StockPlace> places_;
  std::size_t locations_;
};

}  // namespace trellin::demo
