// "InvoiceAR" on the scale-20 demo company, the customer invoices of one month:
//   InvoiceMonthToPdf       October 2025's invoices (about 5,000 documents) to a PDF file.
//   InvoiceTenthToPdf       the first three days of it (about 500), for the scale: the month
//                           must take within 11 times its time, memory staying flat.
//   InvoiceMonthToSink      the month into a dropping sink beside its queries run alone; apart
//                           from the PDF runs, so that their peaks are the PDF's alone.
// Targets: no query a line (the run's queries are the documents' one and a few look-ups a run),
// 5,000 documents within 11 times the time of 500, peak memory flat between the two.
//
//   receivables_bench --benchmark_filter=Invoice      one at a time, for its own peak
//
// Counters: MeasureReport's (bench/support/BenchCompany.h). What it measured: bench/README.md.

#include <benchmark/benchmark.h>

#include "bench/support/BenchCompany.h"

namespace {

void InvoiceMonthToPdf(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "InvoiceAR", {"DatedFrom=2025-10-01", "DatedTo=2025-10-31"},
                                {.sink = false});
}

void InvoiceMonthToSink(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "InvoiceAR", {"DatedFrom=2025-10-01", "DatedTo=2025-10-31"},
                                {.pdf = false});
}

void InvoiceTenthToPdf(benchmark::State& state) {
  trellin::bench::MeasureReport(state, "InvoiceAR", {"DatedFrom=2025-10-01", "DatedTo=2025-10-03"},
                                {.sink = false});
}

BENCHMARK(InvoiceMonthToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(InvoiceTenthToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(InvoiceMonthToSink)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
