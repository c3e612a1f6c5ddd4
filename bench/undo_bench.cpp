// What keeping a change for Undo costs on a 100,000-entry catalogue: recording a one-field edit
// (the uids and collections noted before, the entry kept in full), and an undo with its redo.
#include "CatalogueHistory.h"
#include "MyController.h"
#include "SampleCatalogue.h"

#include <benchmark/benchmark.h>

namespace {

SampleCatalogue& catalogue() {
  static SampleCatalogue c(100000);
  // Saved once, so that each undo saves only its own change.
  static const bool saved = c.controller.saveManagedObjectContext();
  Q_UNUSED(saved);
  return c;
}

void BM_RecordOneFieldEdit(benchmark::State& state) {
  MyController& controller = catalogue().controller;
  CatalogueHistory history(controller);
  Entry* entry = controller.managedObjectContext().entries()[50000];
  int n = 0;
  for (auto _ : state) {
    history.record({}, {entry}, [&] { entry->setValue(QStringLiteral("label"), QStringLiteral("Label %1").arg(++n)); });
  }
}
BENCHMARK(BM_RecordOneFieldEdit)->Unit(benchmark::kMillisecond);

void BM_UndoAndRedoOneFieldEdit(benchmark::State& state) {
  MyController& controller = catalogue().controller;
  CatalogueHistory history(controller);
  Entry* entry = controller.managedObjectContext().entries()[50000];
  // Google Benchmark calls this more than once: each call records a change of its own.
  static int calls = 0;
  history.record({}, {entry}, [&] { entry->setValue(QStringLiteral("label"), QStringLiteral("Undone %1").arg(++calls)); });
  if (!history.stack().canUndo()) state.SkipWithError("nothing was recorded");
  for (auto _ : state) {
    history.stack().undo();
    history.stack().redo();
  }
}
BENCHMARK(BM_UndoAndRedoOneFieldEdit)->Unit(benchmark::kMillisecond);

}  // namespace
