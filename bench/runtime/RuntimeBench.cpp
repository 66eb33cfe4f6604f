// Reports format millions of cells: each of these should cost well under a microsecond.

#include <benchmark/benchmark.h>

#include "platform/runtime/DateText.h"
#include "platform/runtime/Format.h"

namespace trellin {
namespace {

void BM_MoneyThroughCompiledMask(benchmark::State& state) {
  auto mask = FormatMask::Get(kDefaultCurrencyFormat);
  Variant value(Currency::FromRaw(-12345678912));
  for (auto _ : state) benchmark::DoNotOptimize(mask->Apply(value));
}
BENCHMARK(BM_MoneyThroughCompiledMask);

void BM_DateThroughCompiledMask(benchmark::State& state) {
  auto mask = FormatMask::Get("d/m/yyyy");
  Variant value(Date::FromYmd(2024, 3, 5));
  for (auto _ : state) benchmark::DoNotOptimize(mask->Apply(value));
}
BENCHMARK(BM_DateThroughCompiledMask);

void BM_DoubleThroughCompiledMask(benchmark::State& state) {
  auto mask = FormatMask::Get("#,###,##0;(#,###,##0)");
  Variant value(-1234567.891);
  for (auto _ : state) benchmark::DoNotOptimize(mask->Apply(value));
}
BENCHMARK(BM_DoubleThroughCompiledMask);

void BM_FormatSameMask(benchmark::State& state) {
  Variant value(Currency::FromRaw(12345678912));
  for (auto _ : state) benchmark::DoNotOptimize(Format(value, "Currency"));
}
BENCHMARK(BM_FormatSameMask);

// Two masks in turn, as a row of money and date cells does: each call misses the per-thread
// memo and goes to the shared cache.
void BM_FormatAlternatingMasks(benchmark::State& state) {
  Variant money(Currency::FromRaw(12345678912));
  Variant date(Date::FromYmd(2024, 3, 5));
  for (auto _ : state) {
    benchmark::DoNotOptimize(Format(money, "$#,##0.00;($#,##0.00)"));
    benchmark::DoNotOptimize(Format(date, "d mmmm yyyy"));
  }
}
BENCHMARK(BM_FormatAlternatingMasks);

void BM_ParseDateText(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(ParseDateText("31/12/2030 2:05pm"));
}
BENCHMARK(BM_ParseDateText);

void BM_CurrencySum(benchmark::State& state) {
  Currency step = Currency::FromRaw(1);
  for (auto _ : state) {
    Currency sum;
    for (int i = 0; i < 1000; ++i) sum += step;
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_CurrencySum);

}  // namespace
}  // namespace trellin
