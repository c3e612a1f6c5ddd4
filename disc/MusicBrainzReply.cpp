#include "MusicBrainzReply.h"

#include "CdKeys.h"
#include "NaturalDate.h"
#include "TimeText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString tracksKey = QStringLiteral("tracks");
const QString nameKey = QStringLiteral("name");
const QString durationKey = QStringLiteral("duration");
// A medium holds at most a few hundred tracks; more is no disc's.
constexpr qsizetype maximumTracks = 999;

QJsonObject objectOf(const QByteArray& reply) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(reply, &error);
  return error.error == QJsonParseError::NoError && document.isObject() ? document.object() : QJsonObject();
}

QString text(const QJsonObject& object, const char* key) { return object.value(QLatin1String(key)).toString().trimmed(); }

// "Artist A & Artist B": each credited name followed by its join phrase.
QString creditedArtist(const QJsonObject& object) {
  QString artist;
  for (const QJsonValue& credit : object.value(QLatin1String("artist-credit")).toArray()) {
    const QJsonObject c = credit.toObject();
    QString name = c.value(QLatin1String("name")).toString();
    if (name.isEmpty()) name = c.value(QLatin1String("artist")).toObject().value(QLatin1String("name")).toString();
    artist += name + c.value(QLatin1String("joinphrase")).toString();
  }
  return artist.trimmed();
}

bool mediumHoldsDisc(const QJsonObject& medium, const QString& discID) {
  if (discID.isEmpty()) return false;
  for (const QJsonValue& disc : medium.value(QLatin1String("discs")).toArray()) {
    if (disc.toObject().value(QLatin1String("id")).toString() == discID) return true;
  }
  return false;
}

QJsonObject chosenMedium(const QJsonArray& media, const QString& discID, int trackCount) {
  for (const QJsonValue& medium : media)
    if (mediumHoldsDisc(medium.toObject(), discID)) return medium.toObject();
  for (const QJsonValue& medium : media)
    if (trackCount > 0 && medium.toObject().value(QLatin1String("track-count")).toInt() == trackCount) return medium.toObject();
  return media.isEmpty() ? QJsonObject() : media.first().toObject();
}

QVariantList tracksOf(const QJsonObject& medium, const QString& releaseArtist, qint64* totalSeconds) {
  QVariantList tracks;
  const QJsonArray list = medium.value(QLatin1String("tracks")).toArray();
  for (qsizetype i = 0; i < list.size() && i < maximumTracks; ++i) {
    const QJsonObject track = list.at(i).toObject();
    QVariantMap entry;
    QString name = text(track, "title");
    if (name.isEmpty()) name = text(track.value(QLatin1String("recording")).toObject(), "title");
    entry[nameKey] = name;
    const QString artist = creditedArtist(track);
    if (!artist.isEmpty() && artist != releaseArtist) entry[CdKeys::artist] = artist;
    double length = track.value(QLatin1String("length")).toDouble(-1);
    if (length < 0) length = track.value(QLatin1String("recording")).toObject().value(QLatin1String("length")).toDouble(-1);
    // Whole seconds of a sane length; a day per track is far beyond any disc.
    if (length >= 0 && length < 86'400'000) {
      const qint64 seconds = qint64(length) / 1000;
      entry[durationKey] = TimeText::timeStringWithSeconds(seconds);
      *totalSeconds += seconds;
    }
    tracks << entry;
  }
  return tracks;
}

QString mostCountedGenre(const QJsonObject& release) {
  QString genre;
  int best = -1;
  for (const QJsonValue& value : release.value(QLatin1String("genres")).toArray()) {
    const QJsonObject g = value.toObject();
    const int count = g.value(QLatin1String("count")).toInt();
    if (count > best && !text(g, "name").isEmpty()) {
      best = count;
      genre = text(g, "name");
    }
  }
  return genre;
}

QVariantMap resultOf(const QJsonObject& release, const QString& discID, int trackCount) {
  QVariantMap result;
  const QString id = text(release, "id");
  if (id.isEmpty()) return result;
  result[CdKeys::releaseID] = id;
  result[CdKeys::title] = text(release, "title");
  const QString artist = creditedArtist(release);
  if (!artist.isEmpty()) result[CdKeys::artist] = artist;
  const QString date = text(release, "date");
  // The CDDB read's year text, and the date the entry keeps.
  result[QStringLiteral("release")] = date.left(4);
  if (const auto parsed = NaturalDate::myDateWithNaturalLanguageString(date); parsed && !date.isEmpty())
    result[CdKeys::releaseDate] = *parsed;
  if (const QString genre = mostCountedGenre(release); !genre.isEmpty()) result[CdKeys::genre] = genre;
  const QString barcode = text(release, "barcode");
  if (!barcode.isEmpty()) {
    result[CdKeys::upc] = barcode;
    result[CdKeys::barcodeSource] = QStringLiteral("MusicBrainz");
  }
  if (const QString asin = text(release, "asin"); !asin.isEmpty()) result[CdKeys::asin] = asin;
  const QJsonArray labels = release.value(QLatin1String("label-info")).toArray();
  if (!labels.isEmpty()) {
    const QJsonObject info = labels.first().toObject();
    if (const QString label = text(info.value(QLatin1String("label")).toObject(), "name"); !label.isEmpty())
      result[CdKeys::label] = label;
    if (const QString number = text(info, "catalog-number"); !number.isEmpty()) result[CdKeys::catalogNumber] = number;
  }
  const QJsonArray media = release.value(QLatin1String("media")).toArray();
  if (media.size() > 1) result[CdKeys::discs] = QString::number(media.size());
  const QJsonObject medium = chosenMedium(media, discID, trackCount);
  if (const QString format = text(medium, "format"); !format.isEmpty()) result[CdKeys::format] = format;
  if (!discID.isEmpty()) result[CdKeys::musicBrainzDiscID] = discID;
  qint64 seconds = 0;
  const QVariantList tracks = tracksOf(medium, artist, &seconds);
  if (!tracks.isEmpty()) {
    result[tracksKey] = tracks;
    if (seconds > 0) result[durationKey] = TimeText::timeStringWithSeconds(seconds);
  }
  return result;
}

// "Artist: Title (2007, GB)", as the web search shows its results.
QString displayTitle(const QJsonObject& release) {
  QString title = text(release, "title");
  if (const QString artist = creditedArtist(release); !artist.isEmpty()) title = artist + QStringLiteral(": ") + title;
  QStringList details;
  if (const QString year = text(release, "date").left(4); !year.isEmpty()) details << year;
  if (const QString country = text(release, "country"); !country.isEmpty()) details << country;
  const QString disambiguation = text(release, "disambiguation");
  if (!disambiguation.isEmpty()) details << disambiguation;
  return details.isEmpty() ? title : QStringLiteral("%1 (%2)").arg(title, details.join(QStringLiteral(", ")));
}

MusicBrainzReply::Releases releasesOf(const QByteArray& reply, bool withResults, const QString& discID, int trackCount) {
  MusicBrainzReply::Releases releases;
  for (const QJsonValue& value : objectOf(reply).value(QLatin1String("releases")).toArray()) {
    const QJsonObject release = value.toObject();
    const QString id = text(release, "id");
    if (id.isEmpty()) continue;
    releases.keys << id;
    releases.titles << displayTitle(release);
    releases.results << (withResults ? resultOf(release, discID, trackCount) : QVariantMap());
  }
  return releases;
}

}  // namespace

namespace MusicBrainzReply {

Releases discReleases(const QByteArray& reply, const QString& discID, int trackCount) {
  return releasesOf(reply, true, discID, trackCount);
}

Releases searchResults(const QByteArray& reply) { return releasesOf(reply, false, {}, 0); }

QVariantMap release(const QByteArray& reply, const QString& discID, int trackCount) {
  return resultOf(objectOf(reply), discID, trackCount);
}

QString errorMessage(const QByteArray& reply) { return text(objectOf(reply), "error").left(300); }

}  // namespace MusicBrainzReply
