#include "DiscogsImporter.h"

#include "CdKeys.h"
#include "Entry.h"
#include "ImportRun.h"
#include "Store.h"
#include "WindowSystem.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

const QString releaseTag = QStringLiteral("release");

QString attribute(const QXmlStreamReader& xml, const char* name) {
  return xml.attributes().value(QLatin1String(name)).toString();
}

// The names of the <artist> children of the current element, joined as the database joins them.
QString artistNames(QXmlStreamReader& xml) {
  QString names;
  while (xml.readNextStartElement()) {
    if (xml.name() != QLatin1String("artist")) {
      xml.skipCurrentElement();
      continue;
    }
    QString name, join;
    while (xml.readNextStartElement()) {
      if (xml.name() == QLatin1String("name")) name = xml.readElementText(QXmlStreamReader::SkipChildElements);
      else if (xml.name() == QLatin1String("anv")) {
        const QString anv = xml.readElementText(QXmlStreamReader::SkipChildElements);
        if (!anv.isEmpty()) name = anv;
      } else if (xml.name() == QLatin1String("join")) join = xml.readElementText(QXmlStreamReader::SkipChildElements);
      else xml.skipCurrentElement();
    }
    // The database tells duplicate names apart as "Name (2)".
    name.remove(QRegularExpression(QStringLiteral(R"( \(\d+\)$)")));
    if (names.isEmpty()) names = name;
    else names += name;
    if (!join.isEmpty()) names += (join == QLatin1String(",") ? join : u' ' + join) + u' ';
  }
  return names.trimmed();
}

void readTracks(QXmlStreamReader& xml, Entry& entry) {
  qint64 position = 0;
  while (xml.readNextStartElement()) {
    if (xml.name() != QLatin1String("track")) {
      xml.skipCurrentElement();
      continue;
    }
    auto track = Store::newTrack();
    while (xml.readNextStartElement()) {
      const auto name = xml.name();
      if (name == QLatin1String("title"))
        track->setPrimitiveValue(QStringLiteral("name"), xml.readElementText(QXmlStreamReader::SkipChildElements));
      else if (name == QLatin1String("duration")) {
        const QString d = xml.readElementText(QXmlStreamReader::SkipChildElements);
        if (!d.isEmpty()) track->setPrimitiveValue(QStringLiteral("duration"), d);
      } else if (name == QLatin1String("artists")) {
        const QString a = artistNames(xml);
        if (!a.isEmpty()) track->setPrimitiveValue(QStringLiteral("artist"), a);
      } else {
        xml.skipCurrentElement();
      }
    }
    if (track->stringValue(QStringLiteral("name")).isEmpty()) continue;  // a heading without a title
    track->setPrimitiveValue(QStringLiteral("position"), position++);
    entry.addTrack(std::move(track));
  }
  entry.setPrimitiveValue(QStringLiteral("numberOfTracks"), QString::number(entry.tracksSet().size()));
}

void readRelease(QXmlStreamReader& xml, Entry& entry) {
  QStringList genres;
  QStringList formats;
  qint64 discs = 0;
  while (xml.readNextStartElement()) {
    const auto name = xml.name();
    if (name == QLatin1String("title")) {
      entry.setPrimitiveValue(CdKeys::title, xml.readElementText(QXmlStreamReader::SkipChildElements));
    } else if (name == QLatin1String("artists")) {
      entry.setPrimitiveValue(CdKeys::artist, artistNames(xml));
    } else if (name == QLatin1String("labels")) {
      while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("label") && entry.stringValue(QStringLiteral("label")).isEmpty()) {
          entry.setPrimitiveValue(CdKeys::label, attribute(xml, "name"));
          entry.setPrimitiveValue(CdKeys::catalogNumber, attribute(xml, "catno"));
        }
        xml.skipCurrentElement();
      }
    } else if (name == QLatin1String("formats")) {
      while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("format")) {
          if (!formats.contains(attribute(xml, "name"))) formats << attribute(xml, "name");
          discs += qBound(0, attribute(xml, "qty").toInt(), 1000);
        }
        xml.skipCurrentElement();
      }
    } else if (name == QLatin1String("genres") || name == QLatin1String("styles")) {
      while (xml.readNextStartElement()) genres << xml.readElementText(QXmlStreamReader::SkipChildElements);
    } else if (name == QLatin1String("released")) {
      const QDateTime date = DiscogsImporter::releaseDate(xml.readElementText(QXmlStreamReader::SkipChildElements));
      if (date.isValid()) entry.setPrimitiveValue(CdKeys::releaseDate, date);
    } else if (name == QLatin1String("notes")) {
      entry.setPrimitiveValue(CdKeys::comments,
                              xml.readElementText(QXmlStreamReader::SkipChildElements).replace(u'\r', QString()).trimmed());
    } else if (name == QLatin1String("identifiers")) {
      while (xml.readNextStartElement()) {
        if (attribute(xml, "type") == QLatin1String("Barcode") && entry.stringValue(CdKeys::upc).isEmpty())
          entry.setPrimitiveValue(CdKeys::upc, attribute(xml, "value").remove(u' '));
        xml.skipCurrentElement();
      }
    } else if (name == QLatin1String("tracklist")) {
      readTracks(xml, entry);
    } else {
      xml.skipCurrentElement();
    }
  }
  genres.removeAll(QString());
  genres.removeDuplicates();
  if (!genres.isEmpty()) entry.setPrimitiveValue(CdKeys::genre, genres.join(QStringLiteral(", ")));
  formats.removeAll(QString());
  if (!formats.isEmpty()) entry.setPrimitiveValue(CdKeys::format, formats.join(QStringLiteral(", ")));
  if (discs > 0) entry.setPrimitiveValue(CdKeys::discs, QString::number(discs));
}

}  // namespace

QDateTime DiscogsImporter::releaseDate(const QString& text) {
  const QStringList parts = text.trimmed().split(u'-');
  bool ok = false;
  const int year = parts.value(0).toInt(&ok);
  if (!ok || year < 1 || year > 9999) return {};
  const int month = std::clamp(parts.value(1).toInt(), 0, 12);
  const int day = std::clamp(parts.value(2).toInt(), 0, 31);
  QDate date(year, month ? month : 1, day ? day : 1);
  if (!date.isValid()) date = QDate(year, month ? month : 1, 1);
  return QDateTime(date, QTime(12, 0), Qt::UTC);
}

bool DiscogsImporter::import(ImportRun& run, const QString& text, QString* error) {
  QXmlStreamReader xml(text);
  WindowSystem& ws = run.windowSystem();
  ws.showProgressSheet(run.progressTitle, QString(), 0);
  const size_t before = run.entries().size();
  int depth = 0;
  while (!xml.atEnd() && !run.cancelled()) {
    const auto token = xml.readNext();
    if (token == QXmlStreamReader::DTD && !xml.entityDeclarations().isEmpty()) {
      xml.raiseError(QStringLiteral("entity declarations are not accepted"));
      break;
    }
    if (token == QXmlStreamReader::EndElement) --depth;
    if (token != QXmlStreamReader::StartElement) continue;
    // A release is the root or a child of <releases>; anything deeper is not a release list.
    if (xml.name() == releaseTag && depth <= 1) {
      Entry* entry = run.store().insertEntry();
      readRelease(xml, *entry);
      if (xml.hasError()) {
        run.store().deleteEntry(entry);
        break;
      }
      run.added(entry);
      ws.setProgressSubtitle(entry->stringValue(CdKeys::title));
      ws.increaseProgress();
    } else if (depth == 0 && xml.name() == QLatin1String("releases")) {
      ++depth;
    } else {
      xml.skipCurrentElement();
    }
  }
  ws.closeProgressSheet();
  const bool found = run.entries().size() > before;
  if (xml.hasError()) {
    if (!found) {
      if (error) *error = QStringLiteral("not a release list: %1 (line %2)").arg(xml.errorString()).arg(xml.lineNumber());
      return false;
    }
    run.warn(QStringLiteral("The release list is damaged at line %1 (%2); the releases before it were imported")
                 .arg(xml.lineNumber())
                 .arg(xml.errorString()));
  } else if (!found) {
    if (error) *error = QStringLiteral("the text holds no release");
    return false;
  }
  return true;
}
