// The business layer's per-report and per-row work: list conditions from long pasted lists, and
// rounding of every money field of a large report.

#include <benchmark/benchmark.h>

#include <string>

#include "platform/business/CompanyRangeBuilder.h"
#include "platform/business/CompanyRounder.h"

namespace trellin::business {
namespace {

// A list of `count` customer codes with a range every tenth item, as a user pastes it.
std::string PastedList(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    if (!text.empty()) text += ", ";
    text += "C" + std::to_string(10000 + i);
    if (i % 10 == 0) text += "..C" + std::to_string(10005 + i);
  }
  return text;
}

void BM_BuildRangeCondition(benchmark::State& state) {
  const std::string value = PastedList(static_cast<int>(state.range(0)));
  CompanyRangeBuilder builder;
  for (auto _ : state) {
    benchmark::DoNotOptimize(builder.BuildRangeCondition("OtherParty.OtherPartyId", value, 8));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_BuildRangeCondition)->Arg(10)->Arg(1000)->Arg(10000);

void BM_RoundCurrencyToThousands(benchmark::State& state) {
  CompanyRounder rounder;
  std::int64_t raw = 123456789;
  for (auto _ : state) {
    benchmark::DoNotOptimize(rounder.Round(Variant(Currency::FromRaw(raw++)), -3));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RoundCurrencyToThousands);

void BM_RoundDouble(benchmark::State& state) {
  CompanyRounder rounder;
  double value = 2.675;
  for (auto _ : state) {
    benchmark::DoNotOptimize(rounder.Round(Variant(value), 2));
    value += 0.001;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RoundDouble);

}  // namespace
}  // namespace trellin::business
