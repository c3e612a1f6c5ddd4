// Reading the players' libraries the launch refresh and the page view read: a Rhythmbox
// rhythmdb.xml and a Strawberry database of 20,000 songs each, a large personal library.
#include "PlayerDatabaseLibrary.h"
#include "RhythmboxLibrary.h"
#include "SqliteDatabase.h"
#include "SqliteStatement.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int songs = 20000;

QString rhythmbox(const QTemporaryDir& dir) {
  QFile file(dir.filePath("rhythmdb.xml"));
  file.open(QIODevice::WriteOnly);
  file.write("<?xml version=\"1.0\" standalone=\"yes\"?>\n<rhythmdb version=\"2.0\">\n");
  for (int i = 0; i < songs; ++i) {
    const QByteArray n = QByteArray::number(i);
    file.write("  <entry type=\"song\">\n    <title>Song " + n + "</title>\n    <genre>Jazz</genre>\n"
               "    <artist>Artist " + QByteArray::number(i / 120) + "</artist>\n    <album>Album " +
               QByteArray::number(i / 12) + "</album>\n    <track-number>" + QByteArray::number(i % 12 + 1) +
               "</track-number>\n    <duration>245</duration>\n    <location>file:///home/user/Music/Album%20" +
               QByteArray::number(i / 12) + "/" + n + ".flac</location>\n    <first-seen>1262304000</first-seen>\n"
               "    <rating>4</rating>\n    <bitrate>900</bitrate>\n    <date>715326</date>\n  </entry>\n");
  }
  file.write("</rhythmdb>\n");
  return file.fileName();
}

QString strawberry(const QTemporaryDir& dir) {
  const QString path = dir.filePath("strawberry.db");
  SqliteDatabase db;
  db.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  db.exec(QStringLiteral("CREATE TABLE songs (title TEXT, album TEXT, artist TEXT, albumartist TEXT, track INTEGER,"
                         " disc INTEGER, year INTEGER, genre TEXT, compilation_effective INTEGER, composer TEXT,"
                         " length INTEGER, bitrate INTEGER, samplerate INTEGER, url TEXT, unavailable INTEGER, rating REAL)"));
  db.exec(QStringLiteral("BEGIN"));
  SqliteStatement insert(db.handle(), QStringLiteral("INSERT INTO songs VALUES (?, ?, ?, '', ?, 1, 1959, 'Jazz', 0, '',"
                                                     " 245000000000, 900, 44100, ?, 0, 0.8)"));
  for (int i = 0; i < songs; ++i) {
    insert.bind(1, QStringLiteral("Song %1").arg(i));
    insert.bind(2, QStringLiteral("Album %1").arg(i / 12));
    insert.bind(3, QStringLiteral("Artist %1").arg(i / 120));
    insert.bind(4, qint64(i % 12 + 1));
    insert.bind(5, QStringLiteral("file:///home/user/Music/Album%20%1/%2.flac").arg(i / 12).arg(i));
    insert.run();
    insert.reset();
  }
  db.exec(QStringLiteral("COMMIT"));
  return path;
}

void BM_Rhythmbox20000Songs(benchmark::State& state) {
  QTemporaryDir dir;
  const QString path = rhythmbox(dir);
  for (auto _ : state) benchmark::DoNotOptimize(RhythmboxLibrary::read(path));
  state.SetItemsProcessed(state.iterations() * songs);
}
BENCHMARK(BM_Rhythmbox20000Songs)->Unit(benchmark::kMillisecond);

void BM_Strawberry20000Songs(benchmark::State& state) {
  QTemporaryDir dir;
  const QString path = strawberry(dir);
  for (auto _ : state) benchmark::DoNotOptimize(PlayerDatabaseLibrary::read(path));
  state.SetItemsProcessed(state.iterations() * songs);
}
BENCHMARK(BM_Strawberry20000Songs)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
