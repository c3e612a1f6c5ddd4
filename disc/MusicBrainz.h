#pragma once

#include "HostKeys.h"
#include "SitePlugin.h"

#include <QImage>
#include <QList>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <optional>

struct TableOfContents;

// The MusicBrainz web service, registered with the plug-in manager as "MusicBrainz": a disc
// looked up by its disc identifier (then by its table of contents), releases searched by words,
// and the chosen release's front cover from the cover-art service. Requests block the caller (a
// nested event loop) up to the time-out, at most one a second to the web service.
class MusicBrainz : public SitePlugin {
 public:
  static inline const QString name = QStringLiteral("MusicBrainz");
  static inline const QString defaultServer = QStringLiteral("https://musicbrainz.org");
  static inline const QString defaultCoverServer = QStringLiteral("https://coverartarchive.org");
  // The key of the front cover (a QImage) in a result dictionary.
  static inline const QString coverImageKey = MKCoverImage;

  struct Options {
    QString server = defaultServer;
    QString coverServer = defaultCoverServer;
    QString contact;  // the address named in the User-Agent
    double timeoutSeconds = 30;
  };
  using SearchTarget = std::function<void(int count, MusicBrainz& site)>;

  QString pluginName() const override { return name; }
  void setOptions(const Options& options) { options_ = options; }
  const Options& options() const { return options_; }
  // "Discary/VERSION ( contact )", as the service asks every client to name itself.
  QString userAgent() const;

  // The releases holding the disc: by its identifier, else by its track lengths. Each result
  // also carries the CDDB identifier. Empty with lastError() set when the service did not answer.
  QStringList lookup(const TableOfContents& toc, const QString& discID, const QString& cddbDiscID);
  // A search ("keyword", "artist", "title", "upc", "catalogNumber", or "musicBrainzDiscID");
  // the target, when given, hears the count once.
  void searchFor(const QVariantMap& search, const SearchTarget& target);
  QStringList resultsTitles() const override { return titles_; }
  QStringList resultKeys() const override { return keys_; }
  // The chosen release with its front cover; empty when it cannot be fetched.
  QVariantMap resultNumber(int index);
  void resultNumber(int index, const std::function<void(const QVariantMap&)>& completion) override;
  // The release's front cover; a null image when there is none or it is no image.
  QImage frontCover(const QString& releaseID);
  // Why the latest request got no usable answer, in the service's words where it gave some.
  const QString& lastError() const { return lastError_; }

 private:
  // One paced GET of the web service, retried once after the wait a 503 asks for. nullopt with
  // lastError_ set; a 404 is an answer (nothing known), given as nullopt without an error.
  std::optional<QByteArray> fetch(const QString& pathAndQuery);
  void keep(const QStringList& titles, const QStringList& keys, const QList<QVariantMap>& results);

  Options options_;
  QStringList titles_, keys_;
  QList<QVariantMap> results_;
  QString discID_, cddbDiscID_;
  int trackCount_ = 0;
  QString lastError_;
};
