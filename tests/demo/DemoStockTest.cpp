// Stock on hand during the build: what a sale takes and what it costs.

#include <gtest/gtest.h>

#include "platform/demo/DemoStock.h"

namespace trellin::demo {
namespace {

TEST(DemoStock, PlainStockAtAverageCostLeavesNoCostWhenEmpty) {
  DemoStock stock(1, 1);
  stock.Receive(0, 0, "", 3, 300000);  // three at 10.00
  stock.Receive(0, 0, "", 1, 200000);  // one at 20.00: average 12.50
  struct Step {
    double wanted;
    double taken;
    std::int64_t cost;
  } steps[] = {
      {1, 1, 125000},  // the average, to the cent
      {5, 3, 375000},  // never more than is there; the rest of the cost goes with the last
      {1, 0, 0},       // nothing left
  };
  for (const Step& step : steps) {
    const auto taken = stock.Take(0, 0, step.wanted, false);
    double quantity = 0;
    std::int64_t cost = 0;
    for (const StockTake& t : taken) {
      quantity += t.quantity;
      cost += t.cost;
    }
    EXPECT_EQ(quantity, step.taken) << "wanted " << step.wanted;
    EXPECT_EQ(cost, step.cost) << "wanted " << step.wanted;
  }
  EXPECT_EQ(stock.At(0, 0).on_hand, 0);
  EXPECT_EQ(stock.At(0, 0).cost, 0);
}

TEST(DemoStock, AverageCostRoundsToWholeCents) {
  DemoStock stock(1, 1);
  stock.Receive(0, 0, "", 3, 100000);  // 10.00 for three: 3.3333 each
  const auto taken = stock.Take(0, 0, 1, false);
  ASSERT_EQ(taken.size(), 1u);
  EXPECT_EQ(taken[0].cost, 33300);
  EXPECT_EQ(stock.At(0, 0).cost, 66700);
}

TEST(DemoStock, TrackedStockGoesFirstInFirstOutWithItsNumbers) {
  DemoStock stock(2, 2);
  stock.Receive(1, 1, "B-OLD", 2, 20000);
  stock.Receive(1, 1, "B-NEW", 4, 60000);
  const auto taken = stock.Take(1, 1, 3, true);
  ASSERT_EQ(taken.size(), 2u);
  EXPECT_EQ(taken[0].number, "B-OLD");
  EXPECT_EQ(taken[0].quantity, 2);
  EXPECT_EQ(taken[0].cost, 20000);
  EXPECT_EQ(taken[1].number, "B-NEW");
  EXPECT_EQ(taken[1].quantity, 1);
  EXPECT_EQ(taken[1].cost, 15000);
  EXPECT_EQ(stock.At(1, 1).on_hand, 3);
  EXPECT_EQ(stock.At(1, 1).cost, 45000);
  EXPECT_EQ(stock.At(0, 1).on_hand, 0) << "places are kept apart";
}

}  // namespace
}  // namespace trellin::demo
