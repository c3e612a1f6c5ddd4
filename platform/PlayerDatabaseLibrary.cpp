#include "PlayerDatabaseLibrary.h"

#include "SqliteDatabase.h"
#include "SqliteStatement.h"

#include <QSet>
#include <QStringList>
#include <QUrl>
#include <cmath>
#include <cstdio>

namespace {

enum class Kind { Text, Number, Nanoseconds, Fraction, Location, Flag, Real };

struct Column {
  const char* name;
  const char* key;
  Kind kind;
};

// Where two versions name a value differently, the first column found wins.
const Column columns[] = {
    {"title", "Name", Kind::Text},
    {"artist", "Artist", Kind::Text},
    {"album", "Album", Kind::Text},
    {"albumartist", "Album Artist", Kind::Text},
    {"composer", "Composer", Kind::Text},
    {"genre", "Genre", Kind::Text},
    {"comment", "Comments", Kind::Text},
    {"grouping", "Grouping", Kind::Text},
    {"track", "Track Number", Kind::Number},
    {"disc", "Disc Number", Kind::Number},
    {"year", "Year", Kind::Number},
    {"bitrate", "Bit Rate", Kind::Number},
    {"samplerate", "Sample Rate", Kind::Number},
    {"bpm", "BPM", Kind::Real},
    {"length", "Total Time", Kind::Nanoseconds},
    {"rating", "Rating", Kind::Fraction},
    {"url", "Location", Kind::Location},       // Strawberry
    {"filename", "Location", Kind::Location},  // Clementine
    {"compilation_effective", "Compilation", Kind::Flag},
    {"effective_compilation", "Compilation", Kind::Flag},
    {"compilation", "Compilation", Kind::Flag},
};

QVariant valueOf(const SqliteStatement& row, int col, Kind kind) {
  if (row.isNull(col)) return {};
  switch (kind) {
    case Kind::Text: {
      const QString text = row.text(col);
      return text.isEmpty() ? QVariant() : QVariant(text);
    }
    case Kind::Location: {
      const QString text = row.text(col);
      if (text.isEmpty()) return {};
      // Old versions kept a plain path.
      return text.startsWith(QLatin1Char('/')) ? QUrl::fromLocalFile(text).toString(QUrl::FullyEncoded) : text;
    }
    case Kind::Number: {
      const qint64 n = row.int64(col);
      return n > 0 ? QVariant(n) : QVariant();
    }
    case Kind::Real: {
      const double r = row.real(col);
      return r > 0 && r < 1e6 ? QVariant(qint64(std::lround(r))) : QVariant();
    }
    case Kind::Nanoseconds: {
      const qint64 ms = row.int64(col) / 1000000;
      return ms > 0 ? QVariant(ms) : QVariant();
    }
    case Kind::Fraction: {
      // Unrated is -1; rated is 0 to 1.
      const double r = row.real(col);
      return r >= 0 && r <= 1 ? QVariant(qint64(std::lround(r * 100))) : QVariant();
    }
    case Kind::Flag: return row.int64(col) > 0;
  }
  return {};
}

}  // namespace

QVariantList PlayerDatabaseLibrary::read(const QString& path) {
  SqliteDatabase db;
  const QString uri = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
  // Read-only never creates the file; "immutable" is the way in when the player's folder does
  // not let a reader make the shared-memory file beside it.
  bool open = db.open(uri + QStringLiteral("?mode=ro"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
  if (open) sqlite3_busy_timeout(db.handle(), 2000);
  QSet<QString> present;
  auto tableColumns = [&] {
    present.clear();
    SqliteStatement info(db.handle(), QStringLiteral("PRAGMA table_info(songs)"));
    while (info.isValid() && info.step() == SQLITE_ROW) present.insert(info.text(1).toLower());
    return !present.isEmpty();
  };
  if (!open || !tableColumns()) {
    QString why = open ? db.errorMessage() : QString();
    open = db.open(uri + QStringLiteral("?immutable=1"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI) && tableColumns();
    if (!open) {
      if (why.isEmpty()) why = db.errorMessage();
      if (db.errorCode() == SQLITE_OK) why = QStringLiteral("it has no table of songs");
      std::fprintf(stderr, "The music library %s cannot be read: %s\n", qPrintable(path), qPrintable(why));
      return {};
    }
  }

  QStringList selected;
  QList<const Column*> used;
  QSet<QString> keys;
  for (const Column& c : columns) {
    const QString key = QString::fromLatin1(c.key);
    if (!present.contains(QString::fromLatin1(c.name)) || keys.contains(key)) continue;
    keys.insert(key);
    selected << QString::fromLatin1(c.name);
    used << &c;
  }
  if (selected.isEmpty()) return {};
  const bool hasUnavailable = present.contains(QStringLiteral("unavailable"));
  SqliteStatement rows(db.handle(), QStringLiteral("SELECT %1 FROM songs%2 ORDER BY rowid")
                                        .arg(selected.join(QStringLiteral(", ")),
                                             hasUnavailable ? QStringLiteral(" WHERE NOT coalesce(unavailable, 0)") : QString()));
  QVariantList tracks;
  if (!rows.isValid()) return tracks;
  int rc;
  while ((rc = rows.step()) == SQLITE_ROW) {
    QVariantMap track;
    for (int i = 0; i < used.size(); ++i)
      if (const QVariant value = valueOf(rows, i, used[i]->kind); value.isValid()) track.insert(QString::fromLatin1(used[i]->key), value);
    if (!track.isEmpty()) tracks << track;
  }
  if (rc != SQLITE_DONE)
    std::fprintf(stderr, "The music library %s was read only in part: %s\n", qPrintable(path), qPrintable(db.errorMessage()));
  return tracks;
}
