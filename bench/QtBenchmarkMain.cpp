#include <QCoreApplication>
#include <benchmark/benchmark.h>

// The main of the Google Benchmark programs that need a Qt application for the catalogue.
int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
