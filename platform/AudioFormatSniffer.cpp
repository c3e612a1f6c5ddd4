#include "AudioFormatSniffer.h"

#include <QByteArray>
#include <QHash>
#include <QIODevice>

namespace {

// The codec of an Ogg stream is named at the start of the first packet of its first page.
AudioFormat oggCodec(const QByteArray& head) {
  if (head.size() < 27) return AudioFormat::Unknown;
  const QByteArray packet = head.mid(27 + quint8(head[26]));
  if (packet.startsWith("\x01vorbis")) return AudioFormat::OggVorbis;
  if (packet.startsWith("OpusHead")) return AudioFormat::OggOpus;
  if (packet.startsWith("\x7F" "FLAC")) return AudioFormat::OggFlac;
  if (packet.startsWith("Speex   ")) return AudioFormat::OggSpeex;
  return AudioFormat::Unknown;
}

bool startsWithFrameSync(const QByteArray& bytes) {
  return bytes.size() >= 2 && quint8(bytes[0]) == 0xFF && (quint8(bytes[1]) & 0xE0) == 0xE0;
}

// An ID3v2 tag leads MPEG audio mostly, but FLAC streams (and others) may carry one too.
AudioFormat afterId3v2(QIODevice& file, const QByteArray& head) {
  if (head.size() < 10) return AudioFormat::Unknown;
  qint64 size = 0;
  for (int i = 6; i < 10; ++i) size = (size << 7) | (quint8(head[i]) & 0x7F);
  const bool footer = quint8(head[5]) & 0x10;
  if (!file.seek(10 + size + (footer ? 10 : 0))) return AudioFormat::Unknown;
  const QByteArray next = file.read(4);
  if (next == "fLaC") return AudioFormat::Flac;
  return startsWithFrameSync(next) ? AudioFormat::Mpeg : AudioFormat::Unknown;
}

}  // namespace

AudioFormat AudioFormatSniffer::formatOf(QIODevice& file) {
  if (!file.seek(0)) return AudioFormat::Unknown;
  // An Ogg page header with the longest segment table, and a packet's first bytes after it.
  const QByteArray head = file.read(27 + 255 + 8);
  const QByteArray chunkType = head.mid(8, 4);
  if (head.startsWith("ID3")) return afterId3v2(file, head);
  if (head.startsWith("fLaC")) return AudioFormat::Flac;
  if (head.mid(4, 4) == "ftyp") return AudioFormat::Mp4;
  if (head.startsWith("OggS")) return oggCodec(head);
  if (head.startsWith("RIFF") && chunkType == "WAVE") return AudioFormat::Wav;
  if (head.startsWith("FORM") && (chunkType == "AIFF" || chunkType == "AIFC")) return AudioFormat::Aiff;
  return startsWithFrameSync(head) ? AudioFormat::Mpeg : AudioFormat::Unknown;
}

AudioFormat AudioFormatSniffer::formatOfSuffix(const QString& suffix) {
  static const QHash<QString, AudioFormat> formats = {
      {"mp3", AudioFormat::Mpeg},      {"mp2", AudioFormat::Mpeg},      {"aac", AudioFormat::Mpeg},
      {"m4a", AudioFormat::Mp4},       {"m4b", AudioFormat::Mp4},       {"m4p", AudioFormat::Mp4},
      {"mp4", AudioFormat::Mp4},       {"flac", AudioFormat::Flac},     {"ogg", AudioFormat::OggVorbis},
      {"oga", AudioFormat::OggVorbis}, {"opus", AudioFormat::OggOpus},  {"spx", AudioFormat::OggSpeex},
      {"aif", AudioFormat::Aiff},      {"aiff", AudioFormat::Aiff},     {"aifc", AudioFormat::Aiff},
      {"wav", AudioFormat::Wav}};
  return formats.value(suffix.toLower(), AudioFormat::Unknown);
}
