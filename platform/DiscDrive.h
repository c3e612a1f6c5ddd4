#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>
#include <optional>

// The table of contents of the audio CD in a drive, read with libdiscid.
class DiscDrive {
 public:
  // The ".TOC.plist" shape: "Sessions" with one session of "Leadout Block", "Last Track" and a
  // "Track Array" of "Start Block" frames (track 1 of a normal disc at 150, the offsets libdiscid
  // gives). The system's default drive when the device is empty; nullopt when no audio CD reads.
  static std::optional<QVariantMap> tableOfContents(const QString& device);
  // The same shape from libdiscid's own numbers: the first and last track and the offsets, the
  // lead-out first (offsets[0]), as discid_put takes them.
  static QVariantMap dictionaryFromOffsets(int first, int last, const int* offsets);
  // libdiscid's MusicBrainz identifier of a lead-out and the track starts (track 1 first, at most
  // 99); empty when it refuses them.
  static QString musicBrainzIdentifier(qint64 leadout, const QList<qint64>& starts);
  // libdiscid's freedb identifier of those numbers, for comparison; empty when it refuses them.
  static QString freedbIdentifier(int first, int last, int* offsets);
};
