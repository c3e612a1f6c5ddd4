#include "TrackData.h"

#include "CdKeys.h"
#include "Platform.h"
#include "NumberText.h"
#include "TimeText.h"

QString TrackData::totalDuration(const QVariantList& tracks) {
  qint64 seconds = 0;
  bool any = false;
  for (const QVariant& t : tracks) {
    const QString duration = t.toMap().value(QStringLiteral("duration")).toString();
    if (duration.isEmpty()) continue;
    any = true;
    seconds = NumberText::saturatingAdd(seconds, TimeText::secondsAsTimeString(duration));
  }
  return any ? TimeText::timeStringWithSeconds(seconds) : QString();
}

QString TrackData::playerTotalDuration(const QVariantList& tracks) {
  // 32-bit unsigned on purpose: the sum wraps as it always has rather than go negative.
  const auto secondsOf = [](const QString& text) {
    const qsizetype colon = text.indexOf(QLatin1Char(':'));
    if (colon < 0) return quint32(NumberText::myIntValue(text));
    return 60u * quint32(NumberText::myIntValue(text.left(colon))) + quint32(NumberText::myIntValue(text.mid(colon + 1)));
  };
  quint32 seconds = 0;
  for (const QVariant& t : tracks) seconds += secondsOf(t.toMap().value(QStringLiteral("duration")).toString());
  return seconds ? TimeText::timeStringWithSeconds(seconds) : QString();
}

void TrackData::loadItunes() { loadLibrary(platform_.musicLibraryTracks()); }

void TrackData::loadLibrary(QVariantList library) {
  QHash<QPair<QString, QString>, QString> index;
  index.reserve(library.size());
  for (const QVariant& t : library) {
    const QVariantMap m = t.toMap();
    const QPair<QString, QString> key{m.value(QStringLiteral("Name")).toString().toCaseFolded(),
                                      m.value(QStringLiteral("Album")).toString().toCaseFolded()};
    // The first copy of a track in the library is the one played.
    if (!index.contains(key)) index.insert(key, m.value(QStringLiteral("Location")).toString());
  }
  std::lock_guard lock(libraryMutex_);
  library_ = std::move(library);
  nameAndAlbum_ = std::move(index);
  libraryLoaded_ = true;
}

bool TrackData::libraryLoaded() const {
  std::lock_guard lock(libraryMutex_);
  return libraryLoaded_;
}

int TrackData::libraryTrackCount() const {
  std::lock_guard lock(libraryMutex_);
  return int(library_.size());
}

bool TrackData::isTrackInItunes(const QVariantMap& track, const QVariantMap& mainEntry) const {
  const QPair<QString, QString> key{track.value(QStringLiteral("name")).toString().toCaseFolded(),
                                    mainEntry.value(CdKeys::title).toString().toCaseFolded()};
  std::lock_guard lock(libraryMutex_);
  return nameAndAlbum_.contains(key);
}

QString TrackData::libraryLocation(const QString& trackName, const QString& album) const {
  std::lock_guard lock(libraryMutex_);
  return nameAndAlbum_.value({trackName.toCaseFolded(), album.toCaseFolded()});
}

void TrackData::setDurationCD(const QStringList& durations) {
  for (qsizetype k = 0; k < durations.size(); ++k) {
    if (k < tracks_.size()) {
      QVariantMap track = tracks_.at(k).toMap();
      track[QStringLiteral("duration")] = durations.at(k);
      tracks_[k] = track;
    } else {
      tracks_ << QVariantMap{{QStringLiteral("duration"), durations.at(k)}};
    }
  }
}
