#include "LibraryTrackMapping.h"

#include "CdKeys.h"
#include "Entry.h"
#include "MyAudioMetadata.h"
#include "ImportServices.h"
#include "ImportSession.h"
#include "MyFieldsControllerShared.h"
#include "Picture.h"
#include "Platform.h"
#include "Store.h"
#include "StringTable.h"
#include "HtmlText.h"
#include "NaturalDate.h"
#include "NumberText.h"
#include "StringText.h"
#include "TimeText.h"

#include <QDateTime>
#include <QUrl>

namespace {

const QString kVariousArtists = QStringLiteral("Various Artists");
const QString kVariousComposers = QStringLiteral("Various Composers");

QString trimmed(const QVariant& v) { return StringText::stringByRemovingLeadingAndTrailingSpaces(v.toString()); }

// A number read leniently: the library gives integers, tags give texts such as "5/12".
qint64 integerOf(const QVariant& v) {
  if (v.typeId() == QMetaType::QString) return NumberText::myIntValue(v.toString());
  return v.toLongLong();
}

QString textOf(const QVariant& v) {
  if (v.typeId() == QMetaType::Double) return QString::number(v.toDouble());
  return v.toString();
}

struct Derived {
  std::optional<QString> name;
  QString album, artist;
  std::optional<QString> albumArtist;
  QVariant composer;
  qint64 seconds = 0, discNumber = 0;
  QString timeText;
  bool compilation = false;
  QString key;
};

Derived derive(const QVariantMap& t, const QString& unknown) {
  Derived d;
  if (t.contains(QStringLiteral("Name"))) d.name = trimmed(t.value(QStringLiteral("Name")));
  d.album = t.contains(QStringLiteral("Album")) ? trimmed(t.value(QStringLiteral("Album"))) : unknown;
  if (t.contains(QStringLiteral("Album Artist"))) d.albumArtist = trimmed(t.value(QStringLiteral("Album Artist")));
  if (t.contains(QStringLiteral("Artist"))) d.artist = trimmed(t.value(QStringLiteral("Artist")));
  else if (d.albumArtist && !d.albumArtist->isEmpty()) d.artist = *d.albumArtist;
  d.composer = t.value(QStringLiteral("Composer"));
  d.seconds = integerOf(t.value(QStringLiteral("Total Time"))) / 1000;
  d.timeText = TimeText::timeStringWithSeconds(d.seconds);
  d.discNumber = integerOf(t.value(QStringLiteral("Disc Number")));
  d.compilation = integerOf(t.value(QStringLiteral("Compilation"))) != 0 || t.value(QStringLiteral("Compilation")).toBool();
  d.key = LibraryTrackMapping::albumKey(t, unknown);
  return d;
}

std::unique_ptr<Track> newTrack(const Derived& d, qint64 position) {
  std::unique_ptr<Track> track = Store::newTrack();
  track->setValue(QStringLiteral("name"), *d.name);
  track->setValue(QStringLiteral("position"), position);
  track->setValue(QStringLiteral("duration"), d.timeText);
  return track;
}

void setTrackCount(Entry& entry) {
  entry.setValue(QStringLiteral("numberOfTracks"), QString::number(entry.tracksSet().size()));
}

void addToExisting(Entry& entry, const Derived& d, const QVariantMap& t) {
  const QVariant entryArtist = entry.value(CdKeys::artist);
  bool ownArtist = false, ownComposer = false;
  if (entryArtist.isNull() || d.artist != entryArtist.toString()) {
    ownArtist = true;
    const QString e = entryArtist.toString();
    if (e != kVariousArtists) {
      for (const auto& track : entry.tracksSet())
        if (track->value(QStringLiteral("artist")).isNull()) track->setValue(QStringLiteral("artist"), entryArtist);
      const QVariant given = t.value(QStringLiteral("Album Artist"));
      if (given.isNull() || entryArtist.isNull() || given.toString() != e)
        entry.setValue(CdKeys::artist, kVariousArtists);
    }
  }
  const QVariant entryComposer = entry.value(CdKeys::composer);
  if (!d.composer.isNull() && !entryComposer.isNull() && d.composer.toString() != entryComposer.toString()) {
    ownComposer = true;
    if (entry.tracksSet().size() == 1) {
      entry.tracksSet().front()->setValue(QStringLiteral("composer"), entryComposer);
      entry.setValue(CdKeys::composer, kVariousComposers);
    }
  }
  if (d.name) {
    const qint64 t0 = integerOf(t.value(QStringLiteral("Track Number")));
    qint64 p = qint64(entry.tracksSet().size());
    if (t0 != 0) {
      p = t0 - 1;
      if (d.discNumber > 1) p += (d.discNumber - 1) * 100;
    }
    std::unique_ptr<Track> track = newTrack(d, p);
    if (ownArtist) track->setValue(QStringLiteral("artist"), d.artist);
    if (ownComposer) track->setValue(QStringLiteral("composer"), d.composer);
    entry.addTrack(std::move(track));
    setTrackCount(entry);
  }
  const qint64 before = TimeText::secondsAsTimeString(entry.stringValue(CdKeys::duration));
  entry.setValue(CdKeys::duration, TimeText::timeStringWithSeconds(before + d.seconds));
}

Entry* newEntry(const ImportServices& c, ImportSession* session, const Derived& d, const QVariantMap& t, const QString& unknown) {
  Entry* entry = c.store.insertEntry();
  const QDateTime now = QDateTime::currentDateTimeUtc();
  entry->setValue(CdKeys::dateEdited, now);
  entry->setValue(CdKeys::dateAdded, now);
  entry->setValue(CdKeys::title, d.album);
  if (!d.artist.isEmpty()) entry->setValue(CdKeys::artist, d.artist);
  if (d.name) {
    const qint64 t0 = integerOf(t.value(QStringLiteral("Track Number")));
    qint64 p = 0;
    if (t0 != 0) {
      p = t0 - 1;
      if (d.discNumber >= 2 && d.discNumber <= 99) p += (d.discNumber - 1) * 100;
    }
    std::unique_ptr<Track> track = newTrack(d, p);
    const bool differs = d.albumArtist && *d.albumArtist != d.artist;
    if (!d.artist.isEmpty() && (d.albumArtist == unknown || d.albumArtist == kVariousArtists || differs)) {
      if (differs) entry->setValue(CdKeys::artist, kVariousArtists);
      track->setValue(QStringLiteral("artist"), d.artist);
    }
    entry->setValue(CdKeys::duration, d.timeText);
    entry->addTrack(std::move(track));
    setTrackCount(*entry);
  }
  entry->setValue(CdKeys::itunes, 1);
  const QVariant added = t.value(QStringLiteral("Date Added"));
  if (added.typeId() == QMetaType::QDateTime && added.toDateTime().isValid()) entry->setValue(CdKeys::dateAdded, added);
  if (session) session->albumsAdded.insert(d.key, entry->uid());
  return entry;
}

// A picture from the library (an image) or from a file's tags (its bytes); null otherwise.
QVariant pictureOf(const QVariant& v) { return Picture::sizeOf(v).isValid() ? v : QVariant(); }

// The library gives a track's file as a "file://" address.
QVariant pictureInFileAt(const ImportServices& c, const QVariant& location) {
  const QUrl url(location.toString());
  if (!url.isLocalFile()) return {};
  return pictureOf(MyAudioMetadata::getMetadataForPath(url.toLocalFile(), c.platform.tagReader()).value(QStringLiteral("image")));
}

void settleCover(const ImportServices& c, ImportSession* session, Entry& entry, const QVariantMap& t) {
  const qint64 uid = entry.uid();
  if (session && session->importedImages.contains(uid)) return;
  const auto settled = [&] {
    if (session) session->importedImages.append(uid);
  };
  if (const QVariant artwork = pictureOf(t.value(QStringLiteral("artwork"))); artwork.isValid()) {
    if (c.setCover(entry, artwork)) settled();
  } else if (t.contains(QStringLiteral("Persistent ID"))) {
    const QString id = t.value(QStringLiteral("Persistent ID")).toString();
    if (session && !session->entireLibrary) session->entireLibrary = c.platform.musicLibraryTracks();
    if (session && LibraryTrackMapping::lookForiTunesImage(c, id, entry, *session->entireLibrary)) settled();
    // With no player to ask, the picture embedded in the track's own file stands in.
    else if (const QVariant embedded = pictureInFileAt(c, t.value(QStringLiteral("Location")));
             embedded.isValid() && c.setCover(entry, embedded))
      settled();
  } else if (const QVariant image = pictureOf(t.value(QStringLiteral("image"))); image.isValid()) {
    c.setCover(entry, image);
  }
}

void fillWhenEmpty(Entry& entry, const QVariantMap& t) {
  const auto fill = [&](const char* key, const char* attribute, const QVariant& value) {
    if (t.contains(QString::fromLatin1(key)) && entry.value(QString::fromLatin1(attribute)).isNull())
      entry.setValue(QString::fromLatin1(attribute), value);
  };
  fill("Genre", "genre", HtmlText::stringByReplacingHTMLEncoding(t.value(QStringLiteral("Genre")).toString()));
  fill("Sort Album Artist", "sortArtist", t.value(QStringLiteral("Sort Album Artist")));
  fill("Disc Count", "discs", QString::number(integerOf(t.value(QStringLiteral("Disc Count")))));
  fill("Sort Album", "sortTitle", t.value(QStringLiteral("Sort Album")));
  fill("Comments", "comments", t.value(QStringLiteral("Comments")));
}

void setReleaseDate(Entry& entry, const QVariantMap& t) {
  const QVariant year = t.value(QStringLiteral("Year"));
  if (year.isNull() || !entry.value(CdKeys::releaseDate).isNull()) return;
  static const QDateTime sentinel = NaturalDate::myDateWithNaturalLanguageString(QStringLiteral("01/01/1001"))
                                        .value_or(QDateTime(QDate(1001, 1, 1), QTime(12, 0), Qt::UTC));
  const QString y = year.typeId() == QMetaType::QString ? year.toString() : QString::number(year.toLongLong());
  const auto parsed = NaturalDate::myDateWithNaturalLanguageString(y);
  if (!parsed) return;
  const QDateTime d = parsed->addSecs(-172800);
  if (d > sentinel && d.date().year() > 0) entry.setValue(CdKeys::releaseDate, d);
}

std::optional<QString> customFieldKey(const MyFieldsControllerShared& fields, ImportSession* session, const QString& title) {
  if (!session) return fields.customFieldWithTitle(title);
  auto it = session->customFieldKeys.constFind(title);
  if (it == session->customFieldKeys.constEnd())
    it = session->customFieldKeys.insert(title, fields.customFieldWithTitle(title).value_or(QString()));
  return it->isEmpty() ? std::nullopt : std::optional<QString>(*it);
}

void setCustomFields(const ImportServices& c, ImportSession* session, Entry& entry, const QVariantMap& t) {
  const MyFieldsControllerShared* fields = c.fields;
  if (!fields) return;
  for (const char* title : {"Grouping", "Bit Rate", "BPM", "Kind", "Encoded with", "Sample Rate", "Sample Size"}) {
    const QVariant v = t.value(QString::fromLatin1(title));
    if (v.isNull()) continue;
    const auto key = customFieldKey(*fields, session, QString::fromLatin1(title));
    if (!key || !entry.hasKey(*key) || !entry.value(*key).isNull()) continue;
    entry.setValue(*key, textOf(v));
  }
}

void poolRating(ImportSession* session, Entry& entry, const Derived& d, const QVariantMap& t) {
  if (!t.contains(QStringLiteral("Rating"))) return;
  const qint64 r = integerOf(t.value(QStringLiteral("Rating"))) / 10;
  if (r < 0 || r > 10) return;
  QVariantList ratings = session ? session->ratings.value(d.key).toList() : QVariantList();
  ratings << r;
  if (session) session->ratings.insert(d.key, ratings);
  qint64 sum = 0;
  for (const QVariant& v : std::as_const(ratings)) sum += v.toLongLong();
  entry.setValue(CdKeys::myRating, sum / ratings.size());
}

}  // namespace

QString LibraryTrackMapping::albumKey(const QVariantMap& t, const QString& unknown) {
  const QString album = t.contains(QStringLiteral("Album")) ? trimmed(t.value(QStringLiteral("Album"))) : unknown;
  const QString albumArtist = trimmed(t.value(QStringLiteral("Album Artist")));
  if (!albumArtist.isEmpty()) return album + albumArtist;
  const bool compilation = integerOf(t.value(QStringLiteral("Compilation"))) != 0 || t.value(QStringLiteral("Compilation")).toBool();
  if (compilation) return album;
  const QString artist = t.contains(QStringLiteral("Artist")) ? trimmed(t.value(QStringLiteral("Artist"))) : QString();
  return album + artist;
}

bool LibraryTrackMapping::lookForiTunesImage(const ImportServices& services, const QString& persistentID, Entry& entry,
                                             const QVariantList& library) {
  if (persistentID.isEmpty()) return false;
  for (const QVariant& v : library) {
    const QVariantMap track = v.toMap();
    if (track.value(QStringLiteral("Persistent ID")).toString() != persistentID) continue;
    const QVariant artwork = pictureOf(track.value(QStringLiteral("artwork")));
    return artwork.isValid() && services.setCover(entry, artwork);
  }
  return false;
}

Entry* LibraryTrackMapping::entryForTrack(const ImportServices& c, ImportSession* session, const QVariantMap& t,
                                          bool* wasExisting) {
  const QString unknown = c.strings.localizedString(QStringLiteral("Unknown"), QStringLiteral("Unknown"));
  const Derived d = derive(t, unknown);
  Entry* entry = nullptr;
  if (session && session->albumsAdded.contains(d.key))
    entry = c.store.entryWithUID(session->albumsAdded.value(d.key).toLongLong());
  if (entry) {
    if (wasExisting) *wasExisting = true;
    addToExisting(*entry, d, t);
  } else {
    entry = newEntry(c, session, d, t, unknown);
  }
  settleCover(c, session, *entry, t);
  // The entry's "disc" is not kept by this catalogue and reads as zero.
  if (d.discNumber > 0) entry->setValue(CdKeys::discs, QString::number(d.discNumber));
  if (t.contains(QStringLiteral("summary"))) entry->setValue(QStringLiteral("summary"), t.value(QStringLiteral("summary")));
  fillWhenEmpty(*entry, t);
  if (d.albumArtist) entry->setValue(CdKeys::artist, *d.albumArtist);
  setReleaseDate(*entry, t);
  if (!d.composer.isNull() && entry->value(CdKeys::composer).isNull())
    entry->setValue(CdKeys::composer, d.composer);
  setCustomFields(c, session, *entry, t);
  poolRating(session, *entry, d, t);
  return entry;
}
