// Times imports end to end into a fresh catalogue: `import_bench folder CATALOGUE DIR` imports
// every audio file under DIR as the folder import does; `import_bench xml CATALOGUE FILE [INDEX]`
// imports one playlist of a library file (default the first). Prints: what, count, seconds.
// peers.sh runs it as an extra row (see README.md).
#include "Entry.h"
#include "HugePageHeap.h"
#include "LibraryXml.h"
#include "LinuxPlatform.h"
#include "MyController.h"
#include "Settings.h"
#include "SilentWindowSystem.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <limits>

int main(int argc, char** argv) {
  HugePageHeap::install();  // as the application does
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() < 4 || (args[1] != QLatin1String("folder") && args[1] != QLatin1String("xml"))) {
    std::fprintf(stderr, "usage: import_bench folder CATALOGUE DIR | xml CATALOGUE FILE [INDEX]\n");
    return 2;
  }
  QTemporaryDir dir;
  Settings settings(dir.filePath("bench.conf"));
  SilentWindowSystem windowSystem;
  LinuxPlatform platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  QFile::remove(args[2]);
  if (!controller.openCatalogue(args[2]).ok()) {
    std::fprintf(stderr, "cannot open %s\n", qPrintable(args[2]));
    return 1;
  }
  QElapsedTimer timer;
  timer.start();
  if (args[1] == QLatin1String("folder")) {
    controller.openDirectory(args[3]);
    qint64 links = 0;
    for (Entry* e : controller.managedObjectContext().entries()) links += e->countOfSet(QStringLiteral("linksSet"));
    std::printf("folder %lld files %zu entries %.3f s\n", links, controller.managedObjectContext().entries().size(),
                timer.nsecsElapsed() / 1e9);
    return 0;
  }
  if (qEnvironmentVariableIsSet("IMPORT_BENCH_PARSE_ONLY")) {
    LibraryXml library;
    if (qEnvironmentVariableIsSet("IMPORT_BENCH_ONE_THREAD")) library.setParallelFrom(std::numeric_limits<qint64>::max());
    library.read(args[3], true);
    std::printf("parse %lld tracks %.3f s\n", qint64(library.tracks().size()), timer.nsecsElapsed() / 1e9);
    return 0;
  }
  LibraryXml library;
  if (!library.read(args[3], true) || library.playlists().isEmpty()) {
    std::fprintf(stderr, "%s\n", qPrintable(library.error()));
    return 1;
  }
  const int index = args.size() > 4 ? args[4].toInt() : 0;
  if (!controller.importLibraryPlaylist(library, library.playlists().value(index).name)) return 1;
  std::printf("xml %zu entries %.3f s\n", controller.importedEntries().size(), timer.nsecsElapsed() / 1e9);
  return 0;
}
