// Times one entry page: the built-in template rendered as the page view renders it (HTML, track
// names linked to the player) for an entry of 30 tracks with most fields filled. The argument is
// the number of tracks in the player's library, which the links are checked against.
#include "Entry.h"
#include "MyController.h"
#include "NoDesktop.h"
#include "Settings.h"
#include "SilentWindowSystem.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

class LibraryDesktop : public NoDesktop {
 public:
  QVariantList musicLibraryTracks() override { return tracks; }
  QVariantList tracks;
};

void fill(Entry& e) {
  const QDateTime date(QDate(1959, 7, 1), QTime(12, 0), Qt::UTC);
  const std::pair<const char*, QVariant> values[] = {
      {"title", "Mingus Ah Um"}, {"artist", "Charles Mingus"}, {"composer", "Charles Mingus"}, {"producer", "Teo Macero"},
      {"label", "Columbia"}, {"genre", "Jazz"}, {"format", "CD"}, {"releaseDate", date}, {"originalReleaseDate", date},
      {"duration", "72:05"}, {"numberOfTracks", "30"}, {"discs", "2"}, {"catalogNumber", "CS 8171"}, {"myRating", 5},
      {"rating", "4.5"}, {"borrowedBy", "Ann <ann@example.org>"}, {"borrowedOn", date}, {"dueDate", date},
      {"purchasedAt", "Tower & Sons"}, {"purchasedOn", date}, {"paid", "9.99"}, {"price", "12.99"},
      {"summary", QString("A landmark record. ").repeated(20)}, {"comments", "First pressing; \"mint\" sleeve."},
      {"dateAdded", date}, {"dateEdited", date}};
  for (const auto& [key, value] : values) e.setPrimitiveValue(QString::fromLatin1(key), value);
  for (int i = 0; i < 30; ++i) {
    auto track = Store::newTrack();
    track->setPrimitiveValue("name", QStringLiteral("Track %1 — Better Git It in Your Soul").arg(i + 1));
    track->setPrimitiveValue("position", qint64(i < 15 ? i : 100 + i - 15));
    track->setPrimitiveValue("duration", QStringLiteral("%1:%2").arg(2 + i % 7).arg(10 + i, 2, 10, QLatin1Char('0')));
    if (i % 2) track->setPrimitiveValue("artist", "Charles Mingus & Jazz Workshop");
    e.addTrack(std::move(track));
  }
}

void renderDefaultPage(benchmark::State& state) {
  QTemporaryDir dir;
  Settings settings(dir.filePath("bench.conf"));
  SilentWindowSystem windowSystem;
  LibraryDesktop platform;
  for (int i = 0; i < state.range(0); ++i)
    platform.tracks << QVariantMap{{"Name", QStringLiteral("Song %1").arg(i)}, {"Album", QStringLiteral("Album %1").arg(i / 12)}};
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  if (!controller.openCatalogue(":memory:").ok()) {
    state.SkipWithError("no catalogue");
    return;
  }
  controller.addPanel().trackData().loadItunes();
  Entry* entry = controller.managedObjectContext().insertEntry();
  fill(*entry);
  const QString pageTemplate = controller.templateText(QStringLiteral("Collection.html"));
  qsizetype length = 0;
  for (auto _ : state) {
    QString page = pageTemplate;
    controller.replaceKeysInTemplate(page, *entry, true, true);
    length = page.size();
    benchmark::DoNotOptimize(page);
  }
  state.counters["characters"] = double(length);
}

}  // namespace

BENCHMARK(renderDefaultPage)->Arg(0)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
