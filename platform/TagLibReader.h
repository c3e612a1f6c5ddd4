#pragma once

#include "TagReader.h"

// Audio tags through TagLib: ID3v2 frames (MP3, AIFF, WAV) under their own frame ids, MP4 atoms,
// and the named fields of FLAC, Ogg and RIFF INFO tags under the ID3v2 ids of the same meaning,
// so that one set of rules reads every format. Common keys follow the usual media-framework
// mapping (title, artist, albumName, creator, subject, type, creationDate, copyrights, artwork...).
class TagLibReader : public TagReader {
 public:
  AudioAsset assetWithPath(const QString& path) const override;

  // A four-character code in the high 32 bits, most significant byte first.
  static quint64 fourCharKey(const QByteArray& code);
  // A three-character ID3v2.2 id in the low three bytes, first character highest as in
  // four-character codes; the key rule reads it back from the lowest byte ("TCP" as "PCT").
  static quint64 threeCharKey(const QByteArray& code);
};
