#include "TrackData.h"

#include "Platform.h"
#include "TextHelpers.h"

QString TrackData::calculateTotalDuration() const {
  qint64 seconds = 0;
  bool any = false;
  for (const QVariant& t : tracks_) {
    const QString duration = t.toMap().value(QStringLiteral("duration")).toString();
    if (duration.isEmpty()) continue;
    any = true;
    seconds += TextHelpers::secondsAsTimeString(duration);
  }
  return any ? TextHelpers::timeStringWithSeconds(seconds) : QString();
}

void TrackData::loadItunes() {
  QVariantList library = platform_.musicLibraryTracks();
  std::lock_guard lock(libraryMutex_);
  library_ = std::move(library);
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
  const QString name = track.value(QStringLiteral("name")).toString();
  const QString album = mainEntry.value(QStringLiteral("title")).toString();
  std::lock_guard lock(libraryMutex_);
  for (const QVariant& t : library_) {
    const QVariantMap m = t.toMap();
    if (m.value(QStringLiteral("Name")).toString().compare(name, Qt::CaseInsensitive) == 0 &&
        m.value(QStringLiteral("Album")).toString().compare(album, Qt::CaseInsensitive) == 0)
      return true;
  }
  return false;
}
