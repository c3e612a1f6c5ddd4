// From launch to a usable window: opens the catalogue, builds the main window and waits until it
// has been painted once, as `discary` does on start. Prints the milliseconds.
// Usage: window_bench CATALOGUE
#include "HugePageHeap.h"
#include "LinuxPlatform.h"
#include "MainWindow.h"
#include "MyController.h"
#include "QtWindowSystem.h"
#include "Settings.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

int main(int argc, char** argv) {
  HugePageHeap::install();  // as the application does
  QElapsedTimer timer;
  timer.start();
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: window_bench CATALOGUE\n");
    return 2;
  }
  QTemporaryDir dir;
  Settings settings(dir.filePath("bench.conf"));
  QtWindowSystem windowSystem;
  LinuxPlatform platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  if (!controller.openCatalogue(QString::fromLocal8Bit(argv[1])).ok()) return 1;
  controller.applicationDidFinishLaunching();
  MainWindow window(controller, windowSystem);
  window.resize(1280, 800);
  window.show();
  window.grab();  // one full paint of every visible row and the footer
  QApplication::processEvents();
  std::printf("window\t%zu\t%.3f\n", controller.managedObjectContext().entries().size(), timer.elapsed() / 1000.0);
  return 0;
}
