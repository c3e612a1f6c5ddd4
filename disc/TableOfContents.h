#pragma once

#include <QList>
#include <QStringList>
#include <QVariantMap>
#include <optional>

// The first session of a disc's table of contents, in frames of 1/75 second, as a ".TOC.plist"
// holds it. Frames are used exactly as read: no lead-in is added or taken away.
struct TableOfContents {
  static inline const QString sessionsKey = QStringLiteral("Sessions");
  static inline const QString leadoutKey = QStringLiteral("Leadout Block");
  static inline const QString lastTrackKey = QStringLiteral("Last Track");
  static inline const QString trackArrayKey = QStringLiteral("Track Array");
  static inline const QString startBlockKey = QStringLiteral("Start Block");
  // Beside "Sessions": the disc's media catalogue number, the release's EAN-13, when the drive
  // reads one.
  static inline const QString mediaCatalogNumberKey = QStringLiteral("Media Catalog Number");
  // A CD holds at most 99 tracks; a file claiming more is not a disc's.
  static constexpr int maximumTracks = 99;
  // The frame count of about 100 hours, far beyond any disc, so sums stay within 32 bits.
  static constexpr qint64 maximumBlock = 27'000'000;

  qint64 leadout = 0;
  QList<qint64> starts;  // one per track, track 1 first
  // Empty unless the disc holds one that is a barcode (many hold thirteen zeros instead).
  QString mediaCatalogNumber;

  // nullopt when the dictionary is not a table of contents this program can use: no session,
  // no track, a "Last Track" beyond the "Track Array", or blocks out of range. A missing
  // "Start Block" reads as 0.
  static std::optional<TableOfContents> fromDictionary(const QVariantMap& dictionary);
  QVariantMap dictionary() const;
  int trackCount() const { return int(starts.size()); }

  // The CDDB disc identifier ("%08lx"). Each output may be null. offsets gets "start+" per track;
  // durations gets N+1 time texts, the first of zero length, then one per track.
  QString discIdentifier(int* totalTracks, qint64* totalSeconds, QString* offsets, QStringList* durations) const;
  // One time text per track, track 1 first.
  QStringList trackDurations() const;
};
