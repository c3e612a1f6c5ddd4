#include "LibraryXml.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace {

// Beyond this, nesting is no library but an attack on the stack.
constexpr int maximumDepth = 64;

class PlistStream {
 public:
  explicit PlistStream(QIODevice* device) : xml_(device) {}

  QXmlStreamReader& xml() { return xml_; }

  // Moves to the next start element inside the current one; false at its end.
  bool nextChild() {
    while (!xml_.atEnd()) {
      const QXmlStreamReader::TokenType token = xml_.readNext();
      if (token == QXmlStreamReader::StartElement) return true;
      if (token == QXmlStreamReader::EndElement) return false;
    }
    return false;
  }

  // The value whose start element is current, read up to its end element.
  QVariant readValue(int depth = 0) {
    if (depth > maximumDepth) {
      xml_.raiseError(QStringLiteral("nesting deeper than %1 levels").arg(maximumDepth));
      return {};
    }
    const QStringView name = xml_.name();
    if (name == u"dict") {
      QVariantMap map;
      readDict([&](const QString& key) { map.insert(key, readValue(depth + 1)); });
      return map;
    }
    if (name == u"array") {
      QVariantList list;
      while (nextChild()) list << readValue(depth + 1);
      return list;
    }
    if (name == u"true" || name == u"false") {
      const bool value = name == u"true";
      xml_.skipCurrentElement();
      return value;
    }
    const QString text = elementText();
    if (name == u"integer") {
      bool ok = false;
      const qint64 n = text.trimmed().toLongLong(&ok);
      return ok ? QVariant(n) : QVariant();
    }
    if (name == u"real") {
      bool ok = false;
      const double d = text.trimmed().toDouble(&ok);
      return ok ? QVariant(d) : QVariant();
    }
    if (name == u"date") {
      QDateTime date = QDateTime::fromString(text.trimmed(), Qt::ISODate);
      if (!date.isValid()) return {};
      return date.toUTC();
    }
    if (name == u"data") return QByteArray::fromBase64(text.toLatin1());
    return text;
  }

  // Calls readEntry for each key of the current dict, positioned on the value's start element.
  template <typename F> void readDict(F readEntry) {
    while (nextChild()) {
      if (xml_.name() != u"key") {
        xml_.skipCurrentElement();
        continue;
      }
      const QString key = internedElementText();
      if (!nextChild()) return;
      readEntry(key);
    }
  }

  // The text of the current element up to its end; nested elements are skipped. Most elements
  // hold one run of characters, taken without building the text piece by piece.
  QString elementText() {
    QString text;
    int runs = 0;
    while (!xml_.atEnd()) {
      const QXmlStreamReader::TokenType token = xml_.readNext();
      if (token == QXmlStreamReader::Characters || token == QXmlStreamReader::EntityReference) {
        if (runs++ == 0) text = xml_.text().toString();
        else text += xml_.text();
      } else if (token == QXmlStreamReader::StartElement) {
        xml_.skipCurrentElement();
      } else if (token == QXmlStreamReader::EndElement) {
        break;
      }
    }
    return text;
  }

  // Every track repeats the same few dozen keys: share one copy of each.
  QString internedElementText() {
    while (!xml_.atEnd()) {
      const QXmlStreamReader::TokenType token = xml_.readNext();
      if (token == QXmlStreamReader::Characters) {
        const QStringView view = xml_.text();
        auto it = keys_.constFind(view);
        QString key = it != keys_.constEnd() ? *it : view.toString();
        if (it == keys_.constEnd() && keys_.size() < 4096) keys_.insert(QStringView(key), key);
        // The rest of the element, if it is more than one run, is rare enough to read plainly.
        QString rest = elementText();
        return rest.isEmpty() ? key : key + rest;
      }
      if (token == QXmlStreamReader::EndElement) return {};
      if (token == QXmlStreamReader::StartElement) xml_.skipCurrentElement();
    }
    return {};
  }

 private:
  QXmlStreamReader xml_;
  QHash<QStringView, QString> keys_;  // each view looks into its own value
};

}  // namespace

bool LibraryXml::read(const QString& path, bool withTracks) {
  playlists_.clear();
  tracks_.clear();
  error_.clear();
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    error_ = QStringLiteral("cannot open %1: %2").arg(path, file.errorString());
    return false;
  }
  PlistStream plist(&file);
  QXmlStreamReader& xml = plist.xml();
  bool sawPlist = false;
  while (plist.nextChild()) {
    if (xml.name() == u"plist") {
      sawPlist = true;
      continue;
    }
    if (!sawPlist || xml.name() != u"dict") {
      xml.skipCurrentElement();
      continue;
    }
    plist.readDict([&](const QString& key) {
      if (key == u"Tracks" && xml.name() == u"dict") {
        plist.readDict([&](const QString& id) {
          bool ok = false;
          const qint64 trackID = id.toLongLong(&ok);
          if (!withTracks || !ok || xml.name() != u"dict") {
            xml.skipCurrentElement();
            return;
          }
          QVariantMap track;
          plist.readDict([&](const QString& k) { track.insert(k, plist.readValue(1)); });
          tracks_.insert(trackID, track);
        });
      } else if (key == u"Playlists" && xml.name() == u"array") {
        while (plist.nextChild()) {
          Playlist playlist;
          if (xml.name() != u"dict") {
            xml.skipCurrentElement();
            playlists_ << playlist;
            continue;
          }
          plist.readDict([&](const QString& k) {
            if (k == u"Name") {
              playlist.name = plist.readValue(1).toString();
            } else if (k == u"Playlist Items" && xml.name() == u"array") {
              // Items are read one by one: a playlist of the whole library holds every track.
              while (plist.nextChild()) {
                if (xml.name() != u"dict") {
                  xml.skipCurrentElement();
                  continue;
                }
                plist.readDict([&](const QString& itemKey) {
                  const QVariant value = plist.readValue(2);
                  bool ok = false;
                  const qint64 n = value.toLongLong(&ok);
                  if (itemKey == u"Track ID" && ok) playlist.trackIDs << n;
                });
              }
            } else {
              xml.skipCurrentElement();
            }
          });
          playlists_ << playlist;
        }
      } else {
        xml.skipCurrentElement();
      }
    });
    break;
  }
  if (xml.hasError()) {
    error_ = QStringLiteral("%1 is not a readable library file (line %2: %3)")
                 .arg(path)
                 .arg(xml.lineNumber())
                 .arg(xml.errorString());
    return false;
  }
  if (!sawPlist) {
    error_ = QStringLiteral("%1 is not a library file").arg(path);
    return false;
  }
  return true;
}

QVariantList LibraryXml::tracksOfPlaylistNamed(const QString& name) const {
  QVariantList result;
  for (const Playlist& playlist : playlists_) {
    if (playlist.name != name) continue;
    for (qint64 id : playlist.trackIDs) {
      const auto it = tracks_.constFind(id);
      if (it != tracks_.constEnd()) result << *it;
    }
    break;
  }
  return result;
}

QVariantList LibraryXml::allTracks() const {
  QList<qint64> ids = tracks_.keys();
  std::sort(ids.begin(), ids.end());
  QVariantList result;
  result.reserve(ids.size());
  for (qint64 id : ids) result << tracks_.value(id);
  return result;
}

QString LibraryXml::defaultPath() {
  for (const char* name : {"Music/iTunes/iTunes Library.xml", "Music/iTunes/iTunes Music Library.xml"}) {
    const QString path = QDir::home().filePath(QString::fromLatin1(name));
    if (QFileInfo(path).isFile()) return path;
  }
  return {};
}
