// Totals and footer over 100,000 entries: they are recomputed on every change of the list or
// the selection, so they must stay well under a frame.
#include "MyController.h"
#include "SampleCatalogue.h"
#include "Settings.h"

#include <benchmark/benchmark.h>

namespace {

SampleCatalogue& catalogue() {
  static SampleCatalogue c(100000);
  // Every total on, so that the footer does all the work it can.
  c.settings.setObject("Bottom Fields", QVariantList{true, true, true, true, true, true, true});
  return c;
}

void BM_Footer(benchmark::State& state) {
  MyController& controller = catalogue().controller;
  for (auto _ : state) {
    controller.refreshCollectionStatistics();
    benchmark::DoNotOptimize(controller.windowFooterString);
  }
}
BENCHMARK(BM_Footer)->Unit(benchmark::kMillisecond);

void BM_TotalsForExport(benchmark::State& state) {
  MyController& controller = catalogue().controller;
  for (auto _ : state)
    benchmark::DoNotOptimize(
        controller.collectionTotalsDictionaryFor(controller.entriesController().arrangedObjects(), false));
}
BENCHMARK(BM_TotalsForExport)->Unit(benchmark::kMillisecond);

}  // namespace
