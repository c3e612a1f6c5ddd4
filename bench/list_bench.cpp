// Search as you type over 100,000 entries: each keystroke searches, arranges the list and
// rebuilds the footer, as the window does.
#include "MyController.h"
#include "SampleCatalogue.h"

#include <benchmark/benchmark.h>

namespace {

SampleCatalogue& catalogue() {
  static SampleCatalogue c(100000);
  return c;
}

void BM_Keystroke(benchmark::State& state, int searchType) {
  MyController& controller = catalogue().controller;
  const QString typed = QStringLiteral("artist 42");
  int length = 0;
  for (auto _ : state) {
    length = length % int(typed.size()) + 1;
    controller.search(typed.left(length), searchType);
    controller.refreshCollectionStatistics();
    benchmark::DoNotOptimize(controller.windowFooterString);
  }
}
BENCHMARK_CAPTURE(BM_Keystroke, all_fields, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Keystroke, artists, 4)->Unit(benchmark::kMillisecond);

void BM_SortByArtist(benchmark::State& state) {
  MyController& controller = catalogue().controller;
  controller.search(QString(), 1);
  bool ascending = true;
  for (auto _ : state) {
    ascending = !ascending;
    controller.entriesController().setSortKey(QStringLiteral("artist"), ascending);
    controller.entriesController().rearrangeObjects();
  }
}
BENCHMARK(BM_SortByArtist)->Unit(benchmark::kMillisecond);

}  // namespace
