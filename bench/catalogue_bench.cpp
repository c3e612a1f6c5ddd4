// Times the catalogue at scale: `catalogue_bench create PATH [N]` writes N entries with 10 tracks
// and 2 links each, and 8 collections, in one save; `catalogue_bench open PATH` opens it until the
// list's arranged entries are ready. Each prints one line: what, count, seconds.
#include "CollectionsController.h"
#include "Entry.h"
#include "HugePageHeap.h"
#include "MyController.h"
#include "NoDesktop.h"
#include "Settings.h"
#include "SilentWindowSystem.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

namespace {

const char* genres[] = {"Jazz", "Rock", "Classical", "Folk", "Electronic", "Blues", "Soul", "Pop"};

}  // namespace

int main(int argc, char** argv) {
  HugePageHeap::install();  // as the application does
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() < 3) {
    std::fprintf(stderr, "usage: catalogue_bench create|open PATH [N]\n");
    return 2;
  }
  QTemporaryDir dir;
  Settings settings(dir.filePath("bench.conf"));
  SilentWindowSystem windowSystem;
  NoDesktop platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();

  QElapsedTimer timer;
  timer.start();
  if (args[1] == QLatin1String("create")) {
    const int n = args.size() > 3 ? args[3].toInt() : 100000;
    QFile::remove(args[2]);
    if (!controller.openCatalogue(args[2]).ok()) return 1;
    Store& store = controller.managedObjectContext();
    const QDateTime added = QDateTime::currentDateTimeUtc();
    for (int i = 0; i < n; ++i) {
      Entry* e = store.insertEntry();
      e->setPrimitiveValue("title", QStringLiteral("Album %1").arg(i));
      e->setPrimitiveValue("artist", QStringLiteral("Artist %1").arg(i % 5000));
      e->setPrimitiveValue("label", QStringLiteral("Label %1").arg(i % 300));
      e->setPrimitiveValue("genre", QString::fromLatin1(genres[i % 8]));
      e->setPrimitiveValue("releaseDate", QDateTime(QDate(1950 + i % 70, 7, 1), QTime(12, 0), Qt::UTC));
      e->setPrimitiveValue("price", QStringLiteral("%1.99").arg(5 + i % 20));
      e->setPrimitiveValue("paid", QStringLiteral("%1.50").arg(3 + i % 15));
      e->setPrimitiveValue("myRating", qint64(i % 6));
      e->setPrimitiveValue("status", qint64(i % 17 == 0 ? 1 : i % 23 == 0 ? 2 : 0));
      e->setPrimitiveValue("numberOfTracks", QStringLiteral("10"));
      e->setPrimitiveValue("duration", QStringLiteral("41:40"));
      e->setPrimitiveValue("dateAdded", added);
      for (int t = 0; t < 10; ++t) {
        auto track = Store::newTrack();
        track->setPrimitiveValue("name", QStringLiteral("Track %1 of album %2").arg(t + 1).arg(i));
        track->setPrimitiveValue("position", qint64(t));
        track->setPrimitiveValue("duration", QStringLiteral("4:10"));
        e->addTrack(std::move(track));
      }
      for (int l = 0; l < 2; ++l) {
        auto link = Store::newLink();
        link->setPrimitiveValue("name", l ? QStringLiteral("Review") : QStringLiteral("Album %1").arg(i));
        link->setPrimitiveValue("url", l ? QStringLiteral("https://example.org/reviews/%1").arg(i)
                                         : QStringLiteral("file:///music/Artist%20%1/Album%20%2").arg(i % 5000).arg(i));
        link->setPrimitiveValue("type", l ? QStringLiteral("review") : QStringLiteral("Audio"));
        link->setPrimitiveValue("position", qint64(l));
        e->addLink(std::move(link));
      }
    }
    // A few collections, as people keep them: by genre, each a slice of the catalogue.
    const std::vector<Entry*>& all = store.entries();
    for (int c = 0; c < 8; ++c) {
      std::vector<Entry*> members;
      for (size_t i = c; i < all.size(); i += 40) members.push_back(all[i]);
      controller.collections().createCollectionNamed(QStringLiteral("%1 favourites").arg(QString::fromLatin1(genres[c])), members);
    }
    QString error;
    if (!store.save(&error)) {
      std::fprintf(stderr, "%s\n", qPrintable(error));
      return 1;
    }
    std::printf("create\t%d\t%.3f\n", n, timer.elapsed() / 1000.0);
  } else {
    if (!controller.openCatalogue(args[2]).ok()) return 1;
    const size_t n = controller.entriesController().arrangedObjects().size();
    std::printf("open\t%zu\t%.3f\n", n, timer.elapsed() / 1000.0);
  }
  return 0;
}
