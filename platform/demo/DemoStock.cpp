#include "platform/demo/DemoStock.h"

#include <algorithm>
#include <cmath>

namespace trellin::demo {

void DemoStock::Receive(std::size_t item, std::size_t location, const std::string& number,
                        double quantity, std::int64_t cost) {
  StockPlace& place = At(item, location);
  place.on_hand += quantity;
  place.cost += cost;
  place.units.push_back({number, quantity, cost});
}

std::vector<StockTake> DemoStock::Take(std::size_t item, std::size_t location, double quantity,
                                       bool tracked) {
  StockPlace& place = At(item, location);
  std::vector<StockTake> taken;
  double wanted = std::min(quantity, place.on_hand);
  if (wanted <= 0) return taken;
  if (!tracked) {
    std::int64_t cost = place.cost;
    if (wanted < place.on_hand) {
      cost = std::llround(static_cast<double>(place.cost) * wanted / place.on_hand / 100.0) * 100;
    }
    place.on_hand -= wanted;
    place.cost -= cost;
    place.units.clear();
    if (place.on_hand > 0) place.units.push_back({"", place.on_hand, place.cost});
    taken.push_back({"", wanted, cost});
    return taken;
  }
  while (wanted > 0 && !place.units.empty()) {
    StockUnit& unit = place.units.front();
    const double part = std::min(wanted, unit.quantity);
    std::int64_t cost = unit.cost;
    if (part < unit.quantity) {
      cost = std::llround(static_cast<double>(unit.cost) * part / unit.quantity / 100.0) * 100;
    }
    taken.push_back({unit.number, part, cost});
    unit.quantity -= part;
    unit.cost -= cost;
    place.on_hand -= part;
    place.cost -= cost;
    wanted -= part;
    if (unit.quantity <= 0) place.units.pop_front();
  }
  return taken;
}

}  // namespace trellin::demo
