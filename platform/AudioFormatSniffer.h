#pragma once

#include <QString>

class QIODevice;

// The audio formats whose tags are read by a reader of their own.
enum class AudioFormat { Unknown, Mpeg, Mp4, Flac, OggVorbis, OggOpus, OggFlac, OggSpeex, Aiff, Wav };

// Tells an audio file's format by its first bytes, so that a file named after another format
// still reaches the reader that understands it.
class AudioFormatSniffer {
 public:
  // The format the content announces; Unknown when it announces none of the above.
  static AudioFormat formatOf(QIODevice& file);
  // The format a file name's extension promises, for content that announces none.
  static AudioFormat formatOfSuffix(const QString& suffix);
};
