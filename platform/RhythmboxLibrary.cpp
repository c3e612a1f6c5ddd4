#include "RhythmboxLibrary.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QHash>
#include <QXmlStreamReader>

namespace {

enum class Kind { Text, Number, Seconds, Stars, JulianDay, UnixTime };

struct Field {
  const char* key;
  Kind kind;
};

// Element of an entry -> key of the track dictionary.
const QHash<QString, Field>& fields() {
  static const QHash<QString, Field> map = {
      {QStringLiteral("title"), {"Name", Kind::Text}},
      {QStringLiteral("artist"), {"Artist", Kind::Text}},
      {QStringLiteral("album"), {"Album", Kind::Text}},
      {QStringLiteral("album-artist"), {"Album Artist", Kind::Text}},
      {QStringLiteral("composer"), {"Composer", Kind::Text}},
      {QStringLiteral("genre"), {"Genre", Kind::Text}},
      {QStringLiteral("comment"), {"Comments", Kind::Text}},
      {QStringLiteral("album-sortname"), {"Sort Album", Kind::Text}},
      {QStringLiteral("album-artist-sortname"), {"Sort Album Artist", Kind::Text}},
      {QStringLiteral("location"), {"Location", Kind::Text}},
      {QStringLiteral("track-number"), {"Track Number", Kind::Number}},
      {QStringLiteral("disc-number"), {"Disc Number", Kind::Number}},
      {QStringLiteral("bitrate"), {"Bit Rate", Kind::Number}},
      {QStringLiteral("beats-per-minute"), {"BPM", Kind::Number}},
      {QStringLiteral("duration"), {"Total Time", Kind::Seconds}},
      {QStringLiteral("rating"), {"Rating", Kind::Stars}},
      {QStringLiteral("date"), {"Year", Kind::JulianDay}},
      {QStringLiteral("first-seen"), {"Date Added", Kind::UnixTime}},
  };
  return map;
}

QVariant valueOf(Kind kind, const QString& text) {
  if (kind == Kind::Text) return text.isEmpty() ? QVariant() : QVariant(text);
  bool ok = false;
  const qint64 n = text.trimmed().toLongLong(&ok);
  if (!ok || n <= 0) return {};
  switch (kind) {
    case Kind::Seconds:
      // A day of music is the most any one file plays; more is a broken field.
      return n <= 86400 * 7 ? QVariant(n * 1000) : QVariant();
    case Kind::Stars: return n <= 5 ? QVariant(n * 20) : QVariant();
    case Kind::JulianDay: {
      // The player counts days from 1 January of year 1; Qt's day numbers start 1,721,425 days earlier.
      const QDate date = n < 5000000 ? QDate::fromJulianDay(n + 1721425) : QDate();
      return date.isValid() ? QVariant(qint64(date.year())) : QVariant();
    }
    case Kind::UnixTime: return QDateTime::fromSecsSinceEpoch(n, Qt::UTC);
    default: return n;
  }
}

}  // namespace

QVariantList RhythmboxLibrary::read(QIODevice& device) {
  QVariantList tracks;
  QXmlStreamReader xml(&device);
  if (!xml.readNextStartElement() || xml.name() != QLatin1String("rhythmdb")) return tracks;
  while (xml.readNextStartElement()) {
    if (xml.name() != QLatin1String("entry") || xml.attributes().value(QLatin1String("type")) != QLatin1String("song")) {
      xml.skipCurrentElement();
      continue;
    }
    QVariantMap track;
    bool hidden = false;
    while (xml.readNextStartElement()) {
      const QString name = xml.name().toString();
      const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
      if (name == QLatin1String("hidden")) hidden = text.trimmed() == QLatin1String("1");
      const auto field = fields().constFind(name);
      if (field == fields().cend()) continue;
      if (const QVariant value = valueOf(field->kind, text); value.isValid()) track.insert(QString::fromLatin1(field->key), value);
    }
    // An entry cut off by the end of the file is not a song read whole.
    if (xml.hasError()) break;
    if (!hidden && !track.isEmpty()) tracks << track;
  }
  return tracks;
}

QVariantList RhythmboxLibrary::read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return read(file);
}
