#pragma once

#include "SitePlugin.h"
#include "TableOfContents.h"

#include <QByteArray>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>

class Platform;
class StringTable;
class WindowSystem;

// The disc lookup, registered with the plug-in manager as "Freedb": the table of contents and
// disc identifier of the inserted CD, the CDDB query, read and category probe, and the keyword
// search on the web database. Requests block the caller (a nested event loop) up to the
// time-out, except the keyword search with a target.
class Freedb : public SitePlugin {
 public:
  static inline const QString name = QStringLiteral("Freedb");
  static inline const QString endpointPath = QStringLiteral("/~cddb/cddb.cgi");
  static inline const QString tocFileName = QStringLiteral(".TOC.plist");
  static inline const QStringList categories = {
      QStringLiteral("blues"),   QStringLiteral("classical"), QStringLiteral("country"),    QStringLiteral("folk"),
      QStringLiteral("jazz"),    QStringLiteral("newage"),    QStringLiteral("reggae"),     QStringLiteral("rock"),
      QStringLiteral("soundtrack"), QStringLiteral("misc")};

  struct Options {
    QString server;                       // "host[:port]" of the CDDB endpoint and the web site
    QString helloUser = QStringLiteral("discary");
    QString helloHost = QStringLiteral("localhost");
    double timeoutSeconds = 30;
  };
  // Where the table of contents comes from. By default: the first mounted removable volume with
  // a ".TOC.plist", else the audio CD in the default drive (Linux mounts no audio CD).
  struct TocSource {
    QString file;    // a ".TOC.plist" file
    QString volume;  // only this volume
    QString device;  // only the audio CD in this drive
  };
  using SearchTarget = std::function<void(int count, Freedb& site)>;

  Freedb(Platform& platform, WindowSystem& windowSystem, const StringTable& strings);
  ~Freedb() override;
  QString pluginName() const override { return name; }
  void setOptions(const Options& options) { options_ = options; }
  const Options& options() const { return options_; }
  void setTocSource(const TocSource& source) { source_ = source; }
  const TocSource& tocSource() const { return source_; }

  // The identifier of the inserted disc; each output may be null. nullopt without a disc.
  std::optional<QString> discIDStringWithTotalTracks(int* totalTracks, qint64* totalDuration, QString* startBlock,
                                                     QStringList* durationsArray) const;
  std::optional<QString> discID();
  // One time text per track; without a disc the durations of the latest look at one, else the
  // no-CD sheet and nullopt.
  std::optional<QStringList> getTrackDurations();
  // The display texts of the CDDB matches of the inserted disc; nullopt (after the no-CD sheet)
  // without a disc. lastError() then tells whether the server answered at all.
  std::optional<QStringList> getDiscID();
  // Why the latest query got no answer, in the server's own words ("500 Unknown developer
  // email"); empty when the server answered, with matches or without.
  const QString& lastError() const { return lastError_; }
  QVariantMap resultNumber(int index);
  // The cddb read of one category+discid key, whatever the latest query found.
  QVariantMap readKey(const QString& key) const;
  void resultNumber(int index, const std::function<void(const QVariantMap&)>& completion) override;
  // The number of categories holding the identifier.
  int findPossibleDiscIDs(const QString& discID);
  QStringList resultsTitles() const override { return resultsTitle_; }
  const QStringList& queryResults() const { return queryResults_; }
  QStringList resultKeys() const override { return queryResults_; }
  const std::optional<QStringList>& durationsArray() const { return durationsArray_; }
  // Whether the latest query or search got no answer at all (no connection, an HTTP error, the
  // time-out), as opposed to an answer with no match.
  bool serverUnreachable() const { return unreachable_; }
  // A keyword search ("keyword", "discID", "artist", "title"). Without a target it blocks and
  // the outcome is read from resultsTitles(); with one, the target hears of every outcome.
  void searchFor(const QVariantMap& search, SearchTarget target);
  // Ejects the disc the table of contents was read from.
  void ejectCD();
  // Whether there is a disc to eject: a drive was named, or a mounted volume holds a disc.
  bool canEject() const;
  static QString countryCode() { return QStringLiteral("US"); }
  static QString languageCode() { return QStringLiteral("en"); }

  // The table of contents of the inserted disc, and where it was found (a volume or a drive).
  std::optional<TableOfContents> tableOfContents(QString* foundAt = nullptr, bool* inDrive = nullptr) const;

 private:
  // The mounted volume holding a disc's table of contents; empty when there is none.
  QString discVolume() const;
  QString hello() const;
  std::optional<QByteArray> send(const QString& body) const;
  void report(int count);
  void connectionDidFinishLoading(const std::optional<QByteArray>& page);

  Platform& platform_;
  WindowSystem& windowSystem_;
  const StringTable& strings_;
  Options options_;
  TocSource source_;
  QStringList queryResults_, resultsTitle_;
  std::optional<QStringList> durationsArray_;
  QString lastError_;
  bool unreachable_ = false;
  SearchTarget messageTarget_;
  // Replies of earlier searches may arrive after this object is gone; they check this first.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};
