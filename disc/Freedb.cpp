#include "Freedb.h"

#include "CdKeys.h"
#include "CddbReply.h"
#include "Http.h"
#include "Platform.h"
#include "StringTable.h"
#include "WebSearchPage.h"
#include "WindowSystem.h"

#include <cstdio>

Freedb::Freedb(Platform& platform, WindowSystem& windowSystem, const StringTable& strings)
    : platform_(platform), windowSystem_(windowSystem), strings_(strings) {}

Freedb::~Freedb() = default;

std::optional<TableOfContents> Freedb::tableOfContents(QString* foundAt, bool* inDrive) const {
  std::optional<QVariantMap> dictionary;
  QString where;
  bool drive = false;
  if (!source_.file.isEmpty()) {
    dictionary = platform_.propertyListDictionary(source_.file);
    where = source_.file;
  } else if (!source_.device.isEmpty()) {
    dictionary = platform_.driveTableOfContents(source_.device);
    where = source_.device;
    drive = true;
  } else {
    const QStringList volumes = source_.volume.isEmpty() ? platform_.mountedRemovableVolumes() : QStringList{source_.volume};
    bool found = false;
    for (const QString& volume : volumes) {
      const QString path = QStringLiteral("%1/%2").arg(volume, tocFileName);
      if (!platform_.fileExists(path)) continue;
      // The first volume with the file decides, readable or not.
      dictionary = platform_.propertyListDictionary(path);
      where = volume;
      found = true;
      break;
    }
    if (!found && source_.volume.isEmpty()) {
      dictionary = platform_.driveTableOfContents({});
      drive = true;
    }
  }
  if (!dictionary) return std::nullopt;
  auto toc = TableOfContents::fromDictionary(*dictionary);
  if (toc) {
    if (foundAt) *foundAt = where;
    if (inDrive) *inDrive = drive;
  }
  return toc;
}

std::optional<QString> Freedb::discIDStringWithTotalTracks(int* totalTracks, qint64* totalDuration, QString* startBlock,
                                                           QStringList* durationsArray) const {
  const auto toc = tableOfContents();
  if (!toc) return std::nullopt;
  return toc->discIdentifier(totalTracks, totalDuration, startBlock, durationsArray);
}

std::optional<QString> Freedb::discID() {
  queryResults_.clear();
  resultsTitle_.clear();
  QString offsets;
  durationsArray_ = QStringList();
  return discIDStringWithTotalTracks(nullptr, nullptr, &offsets, &*durationsArray_);
}

std::optional<QStringList> Freedb::getTrackDurations() {
  if (const auto toc = tableOfContents()) {
    durationsArray_ = toc->trackDurations();
    return durationsArray_;
  }
  if (durationsArray_) return durationsArray_;
  windowSystem_.runAlert(strings_.localizedString(QStringLiteral("Action Required")),
                         strings_.localizedString(QStringLiteral("NoCD"),
                                                  QStringLiteral("No audio CD with a readable table of contents was found.")),
                         {strings_.localizedString(QStringLiteral("OK"))});
  return std::nullopt;
}

QString Freedb::hello() const {
  // Words only: the hello never carries the user's real name or the machine's name, unless the
  // user typed them (a registered client name is often an e-mail address).
  auto word = [](const QString& text, const char* fallback) {
    QString cleaned;
    for (QChar c : text) {
      if (c.isLetterOrNumber() || QStringLiteral(".-_@").contains(c)) cleaned += c;
    }
    return cleaned.isEmpty() ? QString::fromLatin1(fallback) : cleaned.left(64);
  };
  return QStringLiteral("%1+%2+discary+1.0").arg(word(options_.helloUser, "discary"), word(options_.helloHost, "localhost"));
}

std::optional<QByteArray> Freedb::send(const QString& body) const {
  const QUrl url = Http::address(options_.server, endpointPath);
  if (url.isEmpty()) return std::nullopt;
  return Http::sendSynchronousRequest(url, body.toLatin1(), options_.timeoutSeconds);
}

std::optional<QStringList> Freedb::getDiscID() {
  lastError_.clear();
  queryResults_.clear();
  resultsTitle_.clear();
  QString offsets;
  durationsArray_ = QStringList();
  int tracks = 0;
  qint64 seconds = 0;
  unreachable_ = false;
  const auto identifier = discIDStringWithTotalTracks(&tracks, &seconds, &offsets, &*durationsArray_);
  if (!identifier) {
    windowSystem_.runAlert(strings_.localizedString(QStringLiteral("Action Required")),
                           strings_.localizedString(QStringLiteral("NoCD"),
                                                    QStringLiteral("No audio CD with a readable table of contents was found.")),
                           {strings_.localizedString(QStringLiteral("OK"))});
    return std::nullopt;
  }
  const QString body = QStringLiteral("cmd=cddb+query+%1+%2+%3%4&hello=%5&proto=6")
                           .arg(*identifier).arg(tracks).arg(offsets).arg(seconds).arg(hello());
  const QUrl url = Http::address(options_.server, endpointPath);
  const Http::Reply reply = Http::postAndWait(url, body.toLatin1(), options_.timeoutSeconds);
  unreachable_ = !reply.ok();
  if (!reply.error.isEmpty()) {
    lastError_ = reply.error;
  } else if (!reply.ok()) {
    lastError_ = QStringLiteral("HTTP status %1").arg(reply.status);
  } else if (const QString refusal = CddbReply::errorOfQuery(reply.body); !refusal.isEmpty()) {
    lastError_ = refusal;
  } else {
    const CddbReply::Matches matches = CddbReply::parseQuery(reply.body);
    queryResults_ = matches.keys;
    resultsTitle_ = matches.titles;
  }
  return resultsTitle_;
}

QVariantMap Freedb::resultNumber(int index) {
  if (index < 0 || index >= queryResults_.size()) {
    std::fprintf(stderr, "Error: Freedb number for requsted out of range number %d\n", index);
    return {{QStringLiteral("Title"), QStringLiteral("No Data Found on Freedb")}};
  }
  return readKey(queryResults_.at(index));
}

QVariantMap Freedb::readKey(const QString& key) const {
  const auto reply = send(QStringLiteral("cmd=cddb+read+%1&hello=%2&proto=6").arg(key, hello()));
  return reply ? CddbReply::parseRead(*reply) : QVariantMap();
}

void Freedb::resultNumber(int index, const std::function<void(const QVariantMap&)>& completion) {
  completion(resultNumber(index));
}

int Freedb::findPossibleDiscIDs(const QString& discID) {
  queryResults_.clear();
  resultsTitle_.clear();
  unreachable_ = true;
  for (const QString& category : categories) {
    const auto reply = send(QStringLiteral("cmd=cddb+read+%1+%2&hello=%3&proto=6").arg(category, discID, hello()));
    if (reply) unreachable_ = false;
    if (reply && CddbReply::isProbeHit(*reply)) {
      queryResults_ << category + QLatin1Char('+') + discID;
      resultsTitle_ << category;
    }
  }
  return int(resultsTitle_.size());
}

void Freedb::report(int count) {
  if (messageTarget_) messageTarget_(count, *this);
}

void Freedb::searchFor(const QVariantMap& search, SearchTarget target) {
  messageTarget_ = std::move(target);
  unreachable_ = false;
  resultsTitle_.clear();
  queryResults_.clear();
  const QString keyword = QStringLiteral("keyword"), discIDKey = CdKeys::discID;
  const QString artist = search.value(CdKeys::artist).toString();
  const QString title = search.value(CdKeys::title).toString();
  QString words;
  if (search.contains(keyword)) {
    words = search.value(keyword).toString();
    if (const auto key = WebSearchPage::keyOfResultPageAddress(words)) {
      resultsTitle_ << *key;
      queryResults_ << *key;
      report(1);
    }
  } else if (search.contains(discIDKey)) {
    report(findPossibleDiscIDs(search.value(discIDKey).toString()));
    return;
  } else if (search.contains(CdKeys::artist) && search.contains(CdKeys::title)) {
    words = QStringLiteral("%1 %2").arg(artist, title);
  } else if (search.contains(CdKeys::artist)) {
    words = artist;
  } else if (search.contains(CdKeys::title)) {
    words = title;
  } else {
    report(0);
    return;
  }
  const QUrl url = Http::address(options_.server, WebSearchPage::searchPath);
  const QByteArray body = WebSearchPage::formBody(words);
  if (!messageTarget_) {
    connectionDidFinishLoading(url.isEmpty() ? std::nullopt : Http::sendSynchronousRequest(url, body, options_.timeoutSeconds));
    return;
  }
  std::weak_ptr<bool> alive = alive_;
  Http::post(url, body, options_.timeoutSeconds, [this, alive](std::optional<QByteArray> page) {
    if (alive.lock()) connectionDidFinishLoading(page);
  });
}

void Freedb::connectionDidFinishLoading(const std::optional<QByteArray>& page) {
  unreachable_ = !page;
  if (!page || page->isEmpty()) {
    report(0);
    return;
  }
  const CddbReply::Matches matches = WebSearchPage::parse(*page);
  resultsTitle_ += matches.titles;
  queryResults_ += matches.keys;
  report(int(queryResults_.size()));
}

void Freedb::ejectCD() {
  if (!source_.file.isEmpty()) return;
  if (!source_.device.isEmpty()) {
    platform_.eject(source_.device);
    return;
  }
  if (const QString volume = discVolume(); !volume.isEmpty())
    platform_.eject(volume);
  else if (source_.volume.isEmpty() && platform_.driveTableOfContents({}))
    platform_.eject({});
}

bool Freedb::canEject() const {
  if (!source_.file.isEmpty()) return false;
  return !source_.device.isEmpty() || !discVolume().isEmpty() ||
         (source_.volume.isEmpty() && platform_.driveTableOfContents({}).has_value());
}

QString Freedb::discVolume() const {
  const QStringList volumes = source_.volume.isEmpty() ? platform_.mountedRemovableVolumes() : QStringList{source_.volume};
  for (const QString& volume : volumes)
    if (platform_.fileExists(QStringLiteral("%1/%2").arg(volume, tocFileName))) return volume;
  return {};
}
