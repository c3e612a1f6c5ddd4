// The catalogue shared with another process, at scale (default 100,000 entries):
//  - save: one field of one entry changed and saved, 200 times (median, 99th percentile, slowest; ms);
//  - idle: the window's CPU over 10 s while nothing changes (percent of one core);
//  - add: `discary add` run in another process until its row is painted in the window, timed from
//    the command's start and from its exit (its save done), five times (seconds).
// Usage: live_bench [ENTRIES]
#include "EntryTableModel.h"
#include "HugePageHeap.h"
#include "LinuxPlatform.h"
#include "MainWindow.h"
#include "QtWindowSystem.h"
#include "SampleCatalogue.h"

#include "SqliteDatabase.h"
#include "SqliteStatement.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>

namespace {
double cpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Runs the event loop, sleeping between events, as the application does.
void runFor(int ms) {
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
}

// The file's change number, read through a connection of its own.
qint64 revisionOf(SqliteDatabase& db) {
  SqliteStatement q(db.handle(), QStringLiteral("SELECT value FROM meta WHERE key='revision'"));
  return q.step() == SQLITE_ROW ? q.int64(0) : 0;
}
}  // namespace

int main(int argc, char** argv) {
  HugePageHeap::install();
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  const int n = argc > 1 ? std::atoi(argv[1]) : 100000;
  QTemporaryDir dir;
  const QString path = dir.filePath("c/Discary.sqlite");
  {
    Store store;
    if (!store.open(path).ok()) return 1;
    SampleCatalogue::fill(store, n);
    if (!store.save()) return 1;
  }

  Settings settings(dir.filePath("bench.conf"));
  QtWindowSystem windowSystem;
  LinuxPlatform platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  if (!controller.openCatalogue(path).ok()) return 1;
  Store& store = controller.managedObjectContext();
  store.deferCheckpoints();  // as the window does
  std::vector<double> saves;
  for (int i = 0; i < 200; ++i) {
    // A person's edits come with pauses, in which the window folds the log in.
    store.checkpointWhenIdle();
    store.checkpointWhenIdle();
    store.entries()[size_t(i * 397 % n)]->setValue(QStringLiteral("comments"), QStringLiteral("Edit %1").arg(i));
    QElapsedTimer t;
    t.start();
    if (!store.save()) return 1;
    saves.push_back(double(t.nsecsElapsed()) / 1e6);
  }
  std::sort(saves.begin(), saves.end());
  std::printf("save one field\t%d entries\tmedian %.3f ms\t99th percentile %.3f ms\tslowest %.3f ms\n", n,
              saves[saves.size() / 2], saves[saves.size() * 99 / 100], saves.back());

  MainWindow window(controller, windowSystem);
  window.resize(1280, 800);
  window.show();
  window.grab();
  runFor(1000);
  const double cpu = cpuSeconds();
  QElapsedTimer idle;
  idle.start();
  runFor(10000);
  std::printf("idle window\t%d entries\t%.2f %% CPU over %.1f s\n", n, 100 * (cpuSeconds() - cpu) / (idle.elapsed() / 1000.0),
              idle.elapsed() / 1000.0);

  SqliteDatabase watcher;
  if (!watcher.open(path, SQLITE_OPEN_READONLY)) return 1;
  for (int run = 0; run < 5; ++run) {
    // Sorts just below the first row, so it is painted where the user is looking.
    const QString title = QStringLiteral("Album 0 take %1").arg(run);
    auto painted = [&] {
      for (int row = 0; row < 40; ++row)
        if (Entry* e = window.listModel()->entryAt(row); e && e->stringValue(QStringLiteral("title")) == title) return true;
      return false;
    };
    const qint64 before = revisionOf(watcher);
    QElapsedTimer clock;
    clock.start();
    QProcess add;
    add.start(DISCARY_BINARY, {"--catalogue", path, "--settings", dir.filePath("cli.conf"), "--quiet", "add",
                               "title=" + title});
    // Looks for the add's commit every millisecond, the window running meanwhile.
    double saved = -1;
    while (!painted() && clock.elapsed() < 30000) {
      QApplication::processEvents(QEventLoop::AllEvents, 1);
      if (saved < 0 && revisionOf(watcher) > before) saved = clock.nsecsElapsed() / 1e9;
    }
    window.grab();
    const double shown = clock.nsecsElapsed() / 1e9;
    add.waitForFinished();
    std::printf("add to painted\t%d entries\t%.3f s from the command's start\t%.3f s from its save\n", n, shown,
                shown - saved);
    runFor(300);
  }
  return 0;
}
