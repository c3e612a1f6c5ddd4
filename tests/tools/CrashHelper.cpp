// The catalogue side of tools/crash-test: builds the stores that get interrupted and checks what
// is left after a kill.
//   crash_helper make-v4 PATH N      a version-4 catalogue of N entries, 10 tracks and 2 links each
//   crash_helper check-migration PATH N
//       PATH must pass the integrity check and hold either the untouched version-4 catalogue or
//       all N entries converted, each with its tracks and links; a kill between two upgrade steps
//       leaves a version in between
//   crash_helper snapshot PATH
//       prints "uid tracks links" for every saved entry of PATH (read while another process writes)
//   crash_helper check-import PATH SNAPSHOT
//       PATH must pass the integrity and foreign key checks, still hold every entry of SNAPSHOT with
//       at least its tracks and links, and hold no entry without a link, no link twice, and no track
//       or link or collection member whose entry is gone
#include "SqliteDatabase.h"
#include "SqliteStatement.h"
#include "SqliteTransaction.h"
#include "StoreSchema.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QStringList>
#include <cstdio>

namespace {

int fail(const char* what) {
  std::fprintf(stderr, "crash_helper: %s\n", what);
  return 1;
}

qint64 count(SqliteDatabase& db, const QString& sql) {
  SqliteStatement q(db.handle(), sql);
  return q.step() == SQLITE_ROW ? q.int64(0) : -1;
}

bool whole(SqliteDatabase& db) {
  SqliteStatement check(db.handle(), QStringLiteral("PRAGMA integrity_check"));
  if (check.step() != SQLITE_ROW || check.text(0) != QLatin1String("ok")) return false;
  SqliteStatement keys(db.handle(), QStringLiteral("PRAGMA foreign_key_check"));
  return keys.step() == SQLITE_DONE;
}

int makeVersion4(const QString& path, int n) {
  SqliteDatabase db;
  if (!db.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) return fail("cannot create");
  SqliteTransaction t(db);
  for (const QString& sql : StoreSchema::version4CreateStatements())
    if (!db.exec(sql)) return fail("cannot create the version-4 tables");
  SqliteStatement entry(db.handle(), QStringLiteral("INSERT INTO entries(uid,title,artist,releaseDate) VALUES(?,?,?,?)"));
  SqliteStatement track(db.handle(), QStringLiteral("INSERT INTO tracks(entry_uid,name,position,duration) VALUES(?,?,?,?)"));
  SqliteStatement link(db.handle(), QStringLiteral("INSERT INTO links(entry_uid,name,url) VALUES(?,?,?)"));
  for (int i = 1; i <= n; ++i) {
    entry.bind(1, qint64(i));
    entry.bind(2, QStringLiteral("Album %1").arg(i));
    entry.bind(3, QStringLiteral("Artist %1").arg(i % 700));
    entry.bind(4, double(-978307200 + i * 86400));
    if (!entry.run()) return fail("cannot insert an entry");
    for (int p = 0; p < 10; ++p) {
      track.bind(1, qint64(i));
      track.bind(2, QStringLiteral("Track %1").arg(p + 1));
      track.bind(3, qint64(p));
      track.bind(4, QStringLiteral("3:%1").arg(10 + p));
      if (!track.run()) return fail("cannot insert a track");
    }
    for (int l = 0; l < 2; ++l) {
      link.bind(1, qint64(i));
      link.bind(2, QStringLiteral("Link %1").arg(l));
      link.bind(3, QStringLiteral("https://example.org/%1/%2").arg(i).arg(l));
      if (!link.run()) return fail("cannot insert a link");
    }
  }
  if (!db.exec(QStringLiteral("PRAGMA user_version=%1").arg(StoreSchema::version4))) return fail("cannot set the version");
  return t.commit() ? 0 : fail("cannot commit");
}

int checkMigration(const QString& path, int n) {
  SqliteDatabase db;
  if (!db.open(path, SQLITE_OPEN_READWRITE)) return fail("cannot open");
  if (!whole(db)) return fail("integrity or foreign key check failed");
  const qint64 version = db.userVersion();
  if (version < StoreSchema::version4 || version > StoreSchema::currentVersion) return fail("unexpected version");
  if (count(db, QStringLiteral("SELECT count(*) FROM entries")) != n) return fail("entries missing");
  if (count(db, QStringLiteral("SELECT count(*) FROM tracks")) != qint64(n) * 10) return fail("tracks missing");
  if (count(db, QStringLiteral("SELECT count(*) FROM links")) != qint64(n) * 2) return fail("links missing");
  if (version == StoreSchema::currentVersion)
    std::printf("migrated\n");
  else
    std::printf("version %lld\n", version);
  return 0;
}

const QString perEntry = QStringLiteral(
    "SELECT e.uid, (SELECT count(*) FROM tracks t WHERE t.entry_uid=e.uid), "
    "(SELECT count(*) FROM links l WHERE l.entry_uid=e.uid) FROM entries e ORDER BY e.uid");

int snapshot(const QString& path) {
  SqliteDatabase db;
  if (!db.open(path, SQLITE_OPEN_READONLY)) return fail("cannot open");
  SqliteStatement q(db.handle(), perEntry);  // one statement: one snapshot, whatever commits meanwhile
  while (q.step() == SQLITE_ROW) std::printf("%lld %lld %lld\n", q.int64(0), q.int64(1), q.int64(2));
  return 0;
}

int checkImport(const QString& path, const QString& snapshotPath) {
  SqliteDatabase db;
  if (!db.open(path, SQLITE_OPEN_READWRITE)) return fail("cannot open");
  if (!whole(db)) return fail("integrity or foreign key check failed");
  QHash<qint64, QPair<qint64, qint64>> now;
  SqliteStatement q(db.handle(), perEntry);
  while (q.step() == SQLITE_ROW) {
    if (q.int64(2) == 0) return fail("an entry without its links");
    now.insert(q.int64(0), {q.int64(1), q.int64(2)});
  }
  QFile saved(snapshotPath);
  if (!saved.open(QIODevice::ReadOnly)) return fail("cannot read the snapshot");
  while (!saved.atEnd()) {
    const QList<QByteArray> fields = saved.readLine().simplified().split(' ');
    if (fields.size() != 3) continue;
    const auto it = now.constFind(fields[0].toLongLong());
    if (it == now.constEnd()) return fail("a saved entry is gone");
    if (it->first < fields[1].toLongLong() || it->second < fields[2].toLongLong()) return fail("a saved entry lost tracks or links");
  }
  if (count(db, QStringLiteral("SELECT count(*) FROM links")) != count(db, QStringLiteral("SELECT count(DISTINCT url) FROM links")))
    return fail("a file was linked twice");
  if (count(db, QStringLiteral("SELECT count(*) FROM tracks WHERE entry_uid NOT IN (SELECT uid FROM entries)")) != 0 ||
      count(db, QStringLiteral("SELECT count(*) FROM links WHERE entry_uid NOT IN (SELECT uid FROM entries)")) != 0 ||
      count(db, QStringLiteral("SELECT count(*) FROM collection_entries WHERE entry_uid NOT IN (SELECT uid FROM entries)")) != 0)
    return fail("rows left without their entry");
  std::printf("%lld entries\n", qint64(now.size()));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() == 4 && args[1] == QLatin1String("make-v4")) return makeVersion4(args[2], args[3].toInt());
  if (args.size() == 4 && args[1] == QLatin1String("check-migration")) return checkMigration(args[2], args[3].toInt());
  if (args.size() == 3 && args[1] == QLatin1String("snapshot")) return snapshot(args[2]);
  if (args.size() == 4 && args[1] == QLatin1String("check-import")) return checkImport(args[2], args[3]);
  std::fprintf(stderr, "usage: crash_helper make-v4|check-migration PATH N | snapshot PATH | check-import PATH SNAPSHOT\n");
  return 2;
}
