// Totals and footer over 100,000 entries: they are recomputed on every change of the list or
// the selection, so they must stay well under a frame.
#include "Entry.h"
#include "MyController.h"
#include "NoDesktop.h"
#include "SilentWindowSystem.h"
#include "Settings.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

struct Catalogue {
  QTemporaryDir dir;
  Settings settings{dir.filePath("bench.conf")};
  SilentWindowSystem windowSystem;
  NoDesktop platform;
  MyController controller{settings, windowSystem, platform};

  explicit Catalogue(int n) {
    controller.applicationWillFinishLaunching();
    controller.openCatalogue(QStringLiteral(":memory:"));
    Store& store = controller.managedObjectContext();
    for (int i = 0; i < n; ++i) {
      Entry* e = store.insertEntry();
      e->setPrimitiveValue("title", QStringLiteral("Album %1").arg(i));
      e->setPrimitiveValue("price", QStringLiteral("%1.99").arg(5 + i % 20));
      e->setPrimitiveValue("paid", QStringLiteral("%1.50").arg(3 + i % 15));
      e->setPrimitiveValue("status", qint64(i % 17 == 0 ? 1 : i % 23 == 0 ? 2 : 0));
      e->setPrimitiveValue("duration", QStringLiteral("%1:%2").arg(30 + i % 40).arg(i % 60, 2, 10, QLatin1Char('0')));
      if (i % 9 == 0) e->setPrimitiveValue("discs", QStringLiteral("2"));
    }
    controller.entriesController().rearrangeObjects();
    // Every total on, so that the footer does all the work it can.
    settings.setObject("Bottom Fields", QVariantList{true, true, true, true, true, true, true});
  }
};

Catalogue& catalogue() {
  static Catalogue c(100000);
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

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
