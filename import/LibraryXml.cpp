#include "LibraryXml.h"

#include "PlistStream.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <atomic>
#include <optional>
#include <thread>

namespace {

// Where a second thread can start reading: a track's "<key>" after the middle of the file.
struct Split {
  qint64 at = -1;          // the byte where the second reader starts
  qint64 plistStart = -1;  // the end of the prolog
};

// What stands open in the library at a split: the second reader starts its document with it.
const QByteArray openAtSplit = QByteArrayLiteral("<plist><dict><key>Tracks</key><dict>");

// Reads the music library's top-level dict: its tracks and playlists.
class LibraryReader {
 public:
  LibraryReader(QIODevice* device, bool withTracks, const QByteArray& prefix = {})
      : plist_(device, prefix), xml_(plist_.xml()), withTracks_(withTracks) {}

  PlistStream& stream() { return plist_; }
  // From the start of the document, or on from between two tracks after a pause.
  void read() {
    if (!plist_.paused()) return readDocument();
    plist_.resume();
    readTracks();
    readLibrary();
  }
  bool complete() const { return sawPlist && !xml_.hasError(); }

  QList<LibraryXml::Playlist> playlists;
  QHash<qint64, QVariantMap> tracks;
  bool sawPlist = false;

 private:
  void readDocument() {
    while (plist_.nextChild()) {
      if (xml_.name() == u"plist") {
        sawPlist = true;
        continue;
      }
      if (!sawPlist || xml_.name() != u"dict") {
        plist_.skipElement();
        continue;
      }
      readLibrary();
      return;
    }
  }

  void readLibrary() {
    plist_.readDict([&](const QString& key) {
      if (key == u"Tracks" && xml_.name() == u"dict") readTracks();
      else if (key == u"Playlists" && xml_.name() == u"array") readPlaylists();
      else plist_.skipElement();
    });
  }

  // Between two tracks is the one place where reading may pause.
  void readTracks() {
    for (;;) {
      plist_.setPausable(true);
      const bool more = plist_.nextChild();
      plist_.setPausable(false);
      if (!more) return;
      if (xml_.name() != u"key") {
        plist_.skipElement();
        continue;
      }
      bool ok = false;
      const qint64 trackID = plist_.keyText().toLongLong(&ok);
      if (!plist_.nextChild()) return;
      if (!withTracks_ || !ok || xml_.name() != u"dict") {
        plist_.skipElement();
        continue;
      }
      QVariantMap track;
      plist_.readDict([&](const QString& k) { track.insert(k, plist_.readValue(1)); });
      tracks.insert(trackID, track);
    }
  }

  void readPlaylists() {
    while (plist_.nextChild()) {
      LibraryXml::Playlist playlist;
      if (xml_.name() != u"dict") {
        plist_.skipElement();
        playlists << playlist;
        continue;
      }
      plist_.readDict([&](const QString& k) {
        if (k == u"Name") {
          playlist.name = plist_.readValue(1).toString();
        } else if (k == u"Playlist Items" && xml_.name() == u"array") {
          // Items are read one by one: a playlist of the whole library holds every track.
          while (plist_.nextChild()) {
            if (xml_.name() != u"dict") {
              plist_.skipElement();
              continue;
            }
            plist_.readDict([&](const QString& itemKey) {
              const QVariant value = plist_.readValue(2);
              bool ok = false;
              const qint64 n = value.toLongLong(&ok);
              if (itemKey == u"Track ID" && ok) playlist.trackIDs << n;
            });
          }
        } else {
          plist_.skipElement();
        }
      });
      playlists << playlist;
    }
  }

  PlistStream plist_;
  QXmlStreamReader& xml_;
  bool withTracks_;
};

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// A track's key in the "Tracks" dict, right after the previous track: "</dict> <key>ID</key> <dict>".
bool startsTrack(QByteArrayView window, qsizetype at) {
  qsizetype before = at;
  while (before > 0 && isSpace(window[before - 1])) --before;
  if (!window.first(before).endsWith("</dict>")) return false;
  qsizetype i = at + 5;
  const qsizetype digits = i;
  while (i < window.size() && window[i] >= '0' && window[i] <= '9') ++i;
  if (i == digits || !window.sliced(i).startsWith("</key>")) return false;
  i += 6;
  while (i < window.size() && isSpace(window[i])) ++i;
  return window.sliced(i).startsWith("<dict>");
}

// Only a UTF-8 file with no declared entities reads the same from a split as from its start.
Split findSplit(QFile& file) {
  Split split;
  const qint64 size = file.size();
  const QByteArray head = file.read(64 * 1024);
  if (!PlistStream::isUtf8(head)) return split;
  const qsizetype plistStart = head.indexOf("<plist");
  if (plistStart < 0 || head.first(plistStart).contains("<!ENTITY")) return split;
  if (!file.seek(size / 2)) return split;
  const QByteArray window = file.read(1024 * 1024);
  for (qsizetype at = window.indexOf("<key>"); at >= 0; at = window.indexOf("<key>", at + 1)) {
    if (!startsTrack(window, at)) continue;
    split.at = size / 2 + at;
    split.plistStart = plistStart;
    break;
  }
  return split;
}

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
  // A large library is read by two threads, one from the middle of its tracks. The first checks
  // that it got to that place between two tracks; if not, or if the second met anything it
  // could not read, the first reads on alone, so the result is always that of one reader.
  const bool twoThreads = withTracks && file.size() >= parallelFrom_ && QThread::idealThreadCount() > 1;
  const Split split = twoThreads ? findSplit(file) : Split();
  LibraryReader reader(&file, withTracks);
  QFile tailFile(path);
  std::optional<LibraryReader> tail;
  std::atomic_bool cancel = false;
  std::thread worker;
  if (split.at > 0 && file.seek(0) && tailFile.open(QIODevice::ReadOnly) && tailFile.seek(split.at)) {
    reader.stream().setLimit(split.at);
    reader.stream().watchForSpecialMarkupFrom(split.plistStart);
    // Made on its own thread, so that the reader's buffers come from that thread's heap.
    worker = std::thread([&] {
      tail.emplace(&tailFile, true, openAtSplit);
      tail->stream().setCancelFlag(&cancel);
      tail->read();
    });
  } else {
    file.seek(0);
  }
  reader.read();
  bool joined = false;
  if (worker.joinable()) {
    const bool atSplit = reader.stream().paused() && !reader.stream().sawSpecialMarkup();
    if (!atSplit) cancel = true;
    worker.join();
    if (atSplit && tail->complete()) {
      for (auto it = tail->tracks.cbegin(); it != tail->tracks.cend(); ++it) reader.tracks.insert(it.key(), it.value());
      reader.playlists += tail->playlists;
      tail.reset();
      joined = true;
    } else if (reader.stream().paused()) {
      tail.reset();
      reader.read();
    }
  }
  playlists_ = std::move(reader.playlists);
  tracks_ = std::move(reader.tracks);
  const QXmlStreamReader& xml = reader.stream().xml();
  // A first reader that stopped at the split waits there for data it no longer needs.
  if (xml.hasError() && !joined) {
    error_ = QStringLiteral("%1 is not a readable library file (line %2: %3)")
                 .arg(path)
                 .arg(xml.lineNumber())
                 .arg(xml.errorString());
    return false;
  }
  if (!reader.sawPlist) {
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
