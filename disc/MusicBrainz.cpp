#include "MusicBrainz.h"

#include "CdKeys.h"
#include "Http.h"
#include "MusicBrainzReply.h"
#include "RequestPacer.h"
#include "TableOfContents.h"

#include <QEventLoop>
#include <QTimer>

namespace {

// What a release answer must hold to fill an entry: credits, tracks, labels and genres.
const QString releaseIncludes = QStringLiteral("inc=artist-credits+recordings+labels+genres&fmt=json");

// The service allows one request a second from a client; the whole process shares the turn.
RequestPacer& pacer() {
  static RequestPacer shared(1000);
  return shared;
}

// A word of a search query with the query language's own characters made plain.
QString quoted(const QString& words) {
  QString escaped = words.trimmed().left(200);
  escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
  return QLatin1Char('"') + escaped + QLatin1Char('"');
}

// Free words with the query language's operators taken as plain characters.
QString plain(const QString& words) {
  static const QString special = QStringLiteral("+-&|!(){}[]^\"~*?:\\/");
  QString escaped;
  for (QChar c : words.simplified().left(200)) {
    if (special.contains(c)) escaped += QLatin1Char('\\');
    escaped += c;
  }
  return escaped;
}

void waitSeconds(double seconds) {
  QEventLoop loop;
  QTimer::singleShot(int(seconds * 1000), &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

QString MusicBrainz::userAgent() const {
  QString contact;
  for (QChar c : options_.contact.left(100)) {
    if (c.isPrint() && c != QLatin1Char('(') && c != QLatin1Char(')')) contact += c;
  }
  contact = contact.trimmed();
  const QString product = QStringLiteral("Discary/%1").arg(QStringLiteral(DISCARY_VERSION));
  return contact.isEmpty() ? product : QStringLiteral("%1 ( %2 )").arg(product, contact);
}

std::optional<QByteArray> MusicBrainz::fetch(const QString& pathAndQuery) {
  lastError_.clear();
  const QUrl url = Http::below(options_.server, pathAndQuery);
  if (url.isEmpty()) {
    lastError_ = QStringLiteral("the server address '%1' is no web address").arg(options_.server);
    return std::nullopt;
  }
  const Http::Headers headers{{"User-Agent", userAgent().toUtf8()}, {"Accept", "application/json"}};
  Http::Reply reply;
  for (int attempt = 0; attempt < 2; ++attempt) {
    pacer().waitForTurn();
    reply = Http::get(url, headers, options_.timeoutSeconds);
    if (reply.status != 503 || attempt > 0) break;
    // "Slow down": once more, after the wait it asks for (within the time-out).
    waitSeconds(std::clamp(reply.retryAfterSeconds < 0 ? 1.0 : double(reply.retryAfterSeconds), 0.0, options_.timeoutSeconds));
  }
  if (reply.ok()) return reply.body;
  if (reply.status == 404) return std::nullopt;
  if (!reply.error.isEmpty()) {
    lastError_ = reply.error;
  } else {
    const QString words = MusicBrainzReply::errorMessage(reply.body);
    lastError_ = words.isEmpty() ? QStringLiteral("HTTP status %1").arg(reply.status)
                                 : QStringLiteral("HTTP status %1: %2").arg(reply.status).arg(words);
  }
  return std::nullopt;
}

void MusicBrainz::keep(const QStringList& titles, const QStringList& keys, const QList<QVariantMap>& results) {
  titles_ = titles;
  keys_ = keys;
  results_ = results;
}

QStringList MusicBrainz::lookup(const TableOfContents& toc, const QString& discID, const QString& cddbDiscID) {
  keep({}, {}, {});
  discID_ = discID;
  cddbDiscID_ = cddbDiscID;
  trackCount_ = toc.trackCount();
  // The identifier is made of letters, digits and "._-" only; anything else is not sent.
  const bool usable = !discID.isEmpty() && discID.size() < 64 &&
                      std::all_of(discID.begin(), discID.end(), [](QChar c) {
                        return c.isLetterOrNumber() || c == QLatin1Char('.') || c == QLatin1Char('_') || c == QLatin1Char('-');
                      });
  std::optional<QByteArray> reply;
  if (usable) {
    reply = fetch(QStringLiteral("/ws/2/discid/%1?%2").arg(discID, releaseIncludes));
    if (!lastError_.isEmpty()) return {};
  }
  MusicBrainzReply::Releases releases;
  if (reply) releases = MusicBrainzReply::discReleases(*reply, discID, trackCount_);
  if (releases.keys.isEmpty()) {
    // Unknown by its identifier: the releases whose track lengths are close to this disc's.
    QStringList numbers{QStringLiteral("1"), QString::number(toc.trackCount()), QString::number(toc.leadout)};
    for (qint64 start : toc.starts) numbers << QString::number(start);
    reply = fetch(QStringLiteral("/ws/2/discid/-?toc=%1&cdstubs=no&%2").arg(numbers.join(QLatin1Char('+')), releaseIncludes));
    if (!lastError_.isEmpty()) return {};
    if (reply) releases = MusicBrainzReply::discReleases(*reply, discID, trackCount_);
  }
  for (QVariantMap& result : releases.results) {
    if (!cddbDiscID.isEmpty()) result[CdKeys::discID] = cddbDiscID;
  }
  keep(releases.titles, releases.keys, releases.results);
  return titles_;
}

void MusicBrainz::searchFor(const QVariantMap& search, const SearchTarget& target) {
  keep({}, {}, {});
  discID_.clear();
  cddbDiscID_.clear();
  trackCount_ = 0;
  QStringList terms;
  const QString keyword = search.value(QStringLiteral("keyword")).toString().trimmed();
  if (!keyword.isEmpty()) terms << plain(keyword);
  const QList<QPair<QString, QString>> fields{{CdKeys::artist, QStringLiteral("artist")},
                                              {CdKeys::title, QStringLiteral("release")},
                                              {CdKeys::upc, QStringLiteral("barcode")},
                                              {CdKeys::catalogNumber, QStringLiteral("catno")}};
  for (const auto& [key, field] : fields) {
    const QString value = search.value(key).toString().trimmed();
    if (!value.isEmpty()) terms << field + QLatin1Char(':') + quoted(value);
  }
  const QString discID = search.value(CdKeys::musicBrainzDiscID).toString().trimmed();
  std::optional<QByteArray> reply;
  if (!discID.isEmpty()) {
    discID_ = discID;
    reply = fetch(QStringLiteral("/ws/2/discid/%1?%2").arg(QString::fromLatin1(QUrl::toPercentEncoding(discID.left(64))),
                                                             releaseIncludes));
    if (reply) {
      const auto releases = MusicBrainzReply::discReleases(*reply, discID, 0);
      keep(releases.titles, releases.keys, releases.results);
    }
  } else if (!terms.isEmpty()) {
    const QByteArray query = QUrl::toPercentEncoding(terms.join(QStringLiteral(" AND ")));
    reply = fetch(QStringLiteral("/ws/2/release/?query=%1&limit=25&fmt=json").arg(QString::fromLatin1(query)));
    if (reply) {
      const auto releases = MusicBrainzReply::searchResults(*reply);
      keep(releases.titles, releases.keys, releases.results);
    }
  }
  if (target) target(int(keys_.size()), *this);
}

QVariantMap MusicBrainz::resultNumber(int index) {
  if (index < 0 || index >= keys_.size()) return {};
  QVariantMap result = results_.value(index);
  if (!result.contains(QStringLiteral("tracks"))) {
    // A search result names the release only: fetch the whole of it.
    const auto reply = fetch(QStringLiteral("/ws/2/release/%1?%2")
                                 .arg(QString::fromLatin1(QUrl::toPercentEncoding(keys_.at(index))), releaseIncludes));
    if (!reply) return {};
    result = MusicBrainzReply::release(*reply, discID_, trackCount_);
    if (result.isEmpty()) return {};
    if (!cddbDiscID_.isEmpty()) result[CdKeys::discID] = cddbDiscID_;
    results_[index] = result;
  }
  if (const QImage cover = frontCover(keys_.at(index)); !cover.isNull()) result[coverImageKey] = cover;
  return result;
}

void MusicBrainz::resultNumber(int index, const std::function<void(const QVariantMap&)>& completion) {
  completion(resultNumber(index));
}

QImage MusicBrainz::frontCover(const QString& releaseID) {
  const QUrl url = Http::below(options_.coverServer,
                               QStringLiteral("/release/%1/front-500").arg(QString::fromLatin1(QUrl::toPercentEncoding(releaseID))));
  if (url.isEmpty()) return {};
  const Http::Reply reply = Http::get(url, {{"User-Agent", userAgent().toUtf8()}}, options_.timeoutSeconds);
  // No cover is no error: the entry is made without one.
  if (!reply.ok()) return {};
  QImage image;
  if (!image.loadFromData(reply.body) || image.width() > 10000 || image.height() > 10000) return {};
  return image;
}
