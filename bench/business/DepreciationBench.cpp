// The depreciation calculator over many assets held in memory, as a projection uses it: for each
// asset one Calculate and thirteen DepreciationForPeriod calls (twelve months and the year).
// Target: 20,000 assets a second.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/business/AssetBook.h"
#include "platform/business/CompanyAssetDepreciation.h"

namespace trellin::business {
namespace {

constexpr int kAssets = 10'000;
constexpr int kYears = 10;

// Years ending 31 March, 2015/16 to 2026/27.
std::vector<FinancialYear> Years() {
  std::vector<FinancialYear> years;
  for (int y = 2015; y <= 2026; ++y) {
    years.push_back({y, std::to_string(y), Date::FromYmd(y, 4, 1), Date::FromYmd(y + 1, 3, 31)});
  }
  return years;
}

// Assets bought over 2015/16, half DV and half SL, each with ten year ends of posted
// depreciation and an addition in its third year.
std::shared_ptr<AssetBook> Book() {
  auto book = std::make_shared<AssetBook>();
  for (int a = 0; a < kAssets; ++a) {
    AssetRecord r;
    r.id = "A" + std::to_string(100000 + a);
    r.basis = 1 + a % 2;
    r.rate = 10 + a % 20;
    r.basis_tax = 2;
    r.rate_tax = 12.5;
    const Date bought = Date::FromYmd(2015, 4, 1).AddDays(a % 365);
    r.purchased = bought;
    const Currency cost = Currency::FromWhole(1000 + a % 50'000);
    r.movements.push_back({r.id, 10, bought, cost, cost});
    r.movements.push_back(
        {r.id, 11, bought.AddYears(2), Currency::FromWhole(500), Currency::FromWhole(500)});
    for (int y = 0; y < kYears; ++y) {
      const Currency depn = Currency::FromWhole(-(50 + a % 40));
      r.movements.push_back({r.id, 20, Date::FromYmd(2016 + y, 3, 31), depn, depn});
    }
    book->Add(std::move(r));
  }
  return book;
}

void BM_CalculateAndThirteenPeriods(benchmark::State& state) {
  const auto book = Book();
  const std::vector<FinancialYear> years = Years();
  const std::vector<const AssetRecord*> assets = book->All();
  const Date start = Date::FromYmd(2025, 4, 1);
  std::vector<Variant> month_ends;
  for (int m = 0; m < 12; ++m) month_ends.emplace_back(start.AddMonths(m + 1).AddDays(-1));
  std::size_t next = 0;
  std::string result;
  for (auto _ : state) {
    CompanyAssetDepreciation calc(book);
    benchmark::DoNotOptimize(
        calc.Calculate(assets[next]->id, Date::FromYmd(2026, 3, 31), false, years, result));
    Variant from(start);
    Currency total;
    for (const Variant& to : month_ends) {
      total += calc.DepreciationForPeriod(from, to, false);
      from = Variant(to.ToDate().AddDays(1));
    }
    total += calc.DepreciationForPeriod(Variant(start), month_ends.back(), true);
    benchmark::DoNotOptimize(total);
    next = (next + 1) % assets.size();
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["assets/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_CalculateAndThirteenPeriods);

}  // namespace
}  // namespace trellin::business
