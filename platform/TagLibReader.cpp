#include "TagLibReader.h"

#include "AudioFormatSniffer.h"
#include "LiteralGenreFrameFactory.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QVariantMap>

#include <memory>

#include <taglib/aifffile.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/id3v1genres.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/tpropertymap.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/urllinkframe.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

namespace {

QString qstr(const TagLib::String& s) { return QString::fromStdWString(s.toWString()); }
QByteArray bytes(const TagLib::ByteVector& v) { return QByteArray(v.data(), int(v.size())); }

// The common key of a tag named by its ID3v2.4 frame id.
QString commonKeyForFrame(const QByteArray& id) {
  static const QHash<QByteArray, QString> keys = {
      {"TIT2", "title"},        {"TPE1", "artist"},       {"TALB", "albumName"},  {"TCOM", "creator"},
      {"TIT1", "subject"},      {"TCON", "type"},         {"TDRC", "creationDate"}, {"TYER", "creationDate"},
      {"TCOP", "copyrights"},   {"APIC", "artwork"},      {"TENC", "software"},   {"TSSE", "software"},
      {"TPUB", "publisher"},    {"TLAN", "language"},     {"TIT3", "description"}};
  return keys.value(id);
}

QString commonKeyForAtom(const QByteArray& atom) {
  static const QHash<QByteArray, QString> keys = {
      {"\xA9nam", "title"},     {"\xA9" "ART", "artist"}, {"\xA9" "alb", "albumName"}, {"\xA9wrt", "creator"},
      {"\xA9" "day", "creationDate"}, {"\xA9gen", "type"},   {"gnre", "type"},          {"cprt", "copyrights"},
      {"covr", "artwork"},      {"\xA9too", "software"},  {"desc", "description"}};
  return keys.value(atom);
}

// ID3v2.2 files are read by TagLib under the ids of version 2.4; these are the ids the file holds.
QByteArray id3v22Id(const QByteArray& id) {
  static const QHash<QByteArray, QByteArray> ids = {
      {"TIT1", "TT1"}, {"TIT2", "TT2"}, {"TIT3", "TT3"}, {"TPE1", "TP1"}, {"TPE2", "TP2"}, {"TPE3", "TP3"},
      {"TPE4", "TP4"}, {"TALB", "TAL"}, {"TCOM", "TCM"}, {"TCON", "TCO"}, {"TRCK", "TRK"}, {"TPOS", "TPA"},
      {"TDRC", "TYE"}, {"TYER", "TYE"}, {"TBPM", "TBP"}, {"TLEN", "TLE"}, {"TENC", "TEN"}, {"TSSE", "TSS"},
      {"TCOP", "TCR"}, {"TPUB", "TPB"}, {"TCMP", "TCP"}, {"COMM", "COM"}, {"APIC", "PIC"}, {"TXXX", "TXX"},
      {"USLT", "ULT"}, {"TLAN", "TLA"}, {"TSOA", "TSA"}, {"TSOP", "TSP"}, {"TSOT", "TST"}, {"TSO2", "TS2"}};
  return ids.value(id);
}

QVariant leadingNumber(const QString& text) {
  const QString t = text.trimmed();
  qsizetype n = 0;
  while (n < t.size() && n < 18 && t[n].isDigit()) ++n;
  if (n == 0) return {};
  return t.left(n).toLongLong();
}

MetadataItem pictureItem(quint64 key, const QByteArray& data, const QString& mimeType) {
  MetadataItem item;
  item.commonKey = QStringLiteral("artwork");
  item.numericKey = key;
  item.dataValue = data;
  item.value = QVariantMap{{QStringLiteral("data"), data}, {QStringLiteral("MIMEtype"), mimeType}};
  return item;
}

MetadataItem textItem(const QByteArray& id3Id, quint64 key, const QString& text) {
  MetadataItem item;
  item.commonKey = commonKeyForFrame(id3Id);
  item.numericKey = key;
  item.stringValue = text;
  item.numberValue = leadingNumber(text);
  if (id3Id == "COMM") item.value = QVariantMap{{QStringLiteral("text"), text}};
  return item;
}

void readId3v2(const TagLib::ID3v2::Tag* tag, AudioAsset& asset) {
  if (!tag || tag->isEmpty()) return;
  const uint version = tag->header()->majorVersion();
  for (const TagLib::ID3v2::Frame* frame : tag->frameList()) {
    // The genre frame was built under a stand-in id so that its text stayed as written.
    const QByteArray id =
        frame->frameID() == LiteralGenreFrameFactory::genreId ? QByteArray("TCON") : bytes(frame->frameID());
    if (id.size() != 4) continue;
    quint64 key;
    if (version <= 2) {
      const QByteArray old = id3v22Id(id);
      key = old.isEmpty() ? 0 : TagLibReader::threeCharKey(old);
    } else {
      // Version 2.3 files say TYER; TagLib hands the year over as TDRC.
      key = TagLibReader::fourCharKey(version == 3 && id == "TDRC" ? QByteArray("TYER") : id);
    }
    if (key == 0) continue;
    MetadataItem item;
    item.commonKey = commonKeyForFrame(id);
    item.numericKey = key;
    if (auto* picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*>(frame)) {
      item = pictureItem(key, bytes(picture->picture()), qstr(picture->mimeType()));
    } else if (auto* comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame*>(frame)) {
      item.stringValue = qstr(comment->text());
      item.value = QVariantMap{{QStringLiteral("text"), qstr(comment->text())},
                               {QStringLiteral("identifier"), qstr(comment->description())},
                               {QStringLiteral("language"), QString::fromLatin1(bytes(comment->language()))}};
    } else if (dynamic_cast<const TagLib::ID3v2::TextIdentificationFrame*>(frame) ||
               dynamic_cast<const TagLib::ID3v2::UrlLinkFrame*>(frame) ||
               dynamic_cast<const TagLib::ID3v2::UnsynchronizedLyricsFrame*>(frame)) {
      item.stringValue = qstr(frame->toString());
      item.numberValue = leadingNumber(item.stringValue.toString());
    } else {
      continue;
    }
    asset.id3Metadata << item;
  }
}

// FLAC, Ogg and RIFF INFO fields, under the ID3v2 frame of the same meaning.
void readNamedFields(const TagLib::PropertyMap& properties, AudioAsset& asset) {
  static const QHash<QString, QByteArray> frames = {
      {"TITLE", "TIT2"},       {"ARTIST", "TPE1"},          {"ALBUM", "TALB"},       {"ALBUMARTIST", "TPE2"},
      {"COMPOSER", "TCOM"},    {"GENRE", "TCON"},           {"DATE", "TDRC"},        {"TRACKNUMBER", "TRCK"},
      {"DISCNUMBER", "TPOS"},  {"COMPILATION", "TCMP"},     {"ALBUMSORT", "TSOA"},   {"ARTISTSORT", "TSOP"},
      {"TITLESORT", "TSOT"},   {"ALBUMARTISTSORT", "TSO2"}, {"COMMENT", "COMM"},     {"COPYRIGHT", "TCOP"},
      {"GROUPING", "TIT1"},    {"BPM", "TBPM"},             {"ENCODEDBY", "TENC"},   {"ENCODING", "TSSE"},
      {"LABEL", "TPUB"},       {"LANGUAGE", "TLAN"}};
  for (auto it = properties.begin(); it != properties.end(); ++it) {
    const QByteArray id = frames.value(qstr(it->first));
    if (id.isEmpty()) continue;
    // One item per value, in the file's order, so that a repeated field gives its last value.
    for (const TagLib::String& value : it->second)
      asset.id3Metadata << textItem(id, TagLibReader::fourCharKey(id), qstr(value));
  }
}

void readPictures(const TagLib::List<TagLib::FLAC::Picture*>& pictures, AudioAsset& asset) {
  for (const TagLib::FLAC::Picture* p : pictures)
    asset.id3Metadata << pictureItem(TagLibReader::fourCharKey("APIC"), bytes(p->data()), qstr(p->mimeType()));
}

QByteArray numberPairData(int number, int total, int trailingZeros) {
  QByteArray data(2, '\0');
  data.append(char((number >> 8) & 0xFF)).append(char(number & 0xFF));
  data.append(char((total >> 8) & 0xFF)).append(char(total & 0xFF));
  data.append(QByteArray(trailingZeros, '\0'));
  return data;
}

void readMp4(const TagLib::MP4::Tag* tag, AudioAsset& asset) {
  if (!tag) return;
  static const QList<QByteArray> flags = {"cpil", "pgap", "pcst", "hdvd"};
  static const QList<QByteArray> integers = {"tmpo", "rtng", "stik", "tves", "tvsn", "cnID", "sfID",
                                             "akID", "geID", "atID", "plID", "cmID", "shwm"};
  const TagLib::MP4::ItemMap items = tag->itemMap();
  for (auto it = items.begin(); it != items.end(); ++it) {
    const QByteArray atom = bytes(it->first.data(TagLib::String::Latin1));
    const TagLib::MP4::Item& value = it->second;
    MetadataItem item;
    item.commonKey = commonKeyForAtom(atom);
    if (atom.startsWith("----")) {
      item.textKey = QString::fromLatin1(atom.mid(5)).replace(QLatin1Char(':'), QLatin1Char('.'));
      if (!value.toStringList().isEmpty()) item.stringValue = qstr(value.toStringList().front());
      asset.iTunesMetadata << item;
      continue;
    }
    if (atom.size() != 4) continue;
    item.numericKey = TagLibReader::fourCharKey(atom);
    if (atom == "covr") {
      for (const TagLib::MP4::CoverArt& art : value.toCoverArtList())
        asset.iTunesMetadata << pictureItem(*item.numericKey, bytes(art.data()),
                                            art.format() == TagLib::MP4::CoverArt::PNG ? "image/png" : "image/jpeg");
      continue;
    }
    if (atom == "trkn" || atom == "disk") {
      const auto pair = value.toIntPair();
      item.numberValue = pair.first;
      item.dataValue = numberPairData(pair.first, pair.second, atom == "trkn" ? 2 : 0);
    } else if (flags.contains(atom)) {
      item.numberValue = value.toBool() ? 1 : 0;
      item.dataValue = QByteArray(1, value.toBool() ? '\1' : '\0');
    } else if (integers.contains(atom)) {
      item.numberValue = value.toInt();
    } else if (atom == "gnre") {
      // Stored as the ID3v1 genre number plus one.
      item.numberValue = value.toInt();
      const TagLib::String name = TagLib::ID3v1::genre(value.toInt() - 1);
      if (!name.isEmpty()) item.stringValue = qstr(name);
    } else if (!value.toStringList().isEmpty()) {
      item.stringValue = qstr(value.toStringList().toString(" / "));
      item.numberValue = leadingNumber(item.stringValue.toString());
    } else {
      const TagLib::ByteVectorList data = value.toByteVectorList();
      if (!data.isEmpty()) item.dataValue = bytes(data.front());
    }
    asset.iTunesMetadata << item;
  }
}

// TagLib reads the ID3 chunk of AIFF and WAV files with its own frame factory and takes no other,
// so these files read the chunk once more with ours.
template <class Riff>
class RiffFile : public Riff {
 public:
  explicit RiffFile(TagLib::FileName name) : Riff(name, true, TagLib::AudioProperties::Average) {}
  std::unique_ptr<TagLib::ID3v2::Tag> literalId3v2Tag() {
    for (unsigned i = 0; i < this->chunkCount(); ++i) {
      const TagLib::ByteVector chunk = this->chunkName(i);
      if (chunk == "ID3 " || chunk == "id3 ")
        return std::make_unique<TagLib::ID3v2::Tag>(this, this->chunkOffset(i), LiteralGenreFrameFactory::instance());
    }
    return nullptr;
  }
};
using AiffFile = RiffFile<TagLib::RIFF::AIFF::File>;
using WavFile = RiffFile<TagLib::RIFF::WAV::File>;

TagLib::File* openFile(TagLib::FileName name, AudioFormat format) {
  constexpr auto style = TagLib::AudioProperties::Average;
  LiteralGenreFrameFactory* id3v2 = LiteralGenreFrameFactory::instance();
  switch (format) {
    case AudioFormat::Mpeg: return new TagLib::MPEG::File(name, id3v2, true, style);
    case AudioFormat::Flac: return new TagLib::FLAC::File(name, id3v2, true, style);
    case AudioFormat::Mp4: return new TagLib::MP4::File(name, true, style);
    case AudioFormat::OggVorbis: return new TagLib::Ogg::Vorbis::File(name, true, style);
    case AudioFormat::OggOpus: return new TagLib::Ogg::Opus::File(name, true, style);
    case AudioFormat::OggFlac: return new TagLib::Ogg::FLAC::File(name, true, style);
    case AudioFormat::OggSpeex: return new TagLib::Ogg::Speex::File(name, true, style);
    case AudioFormat::Aiff: return new AiffFile(name);
    case AudioFormat::Wav: return new WavFile(name);
    case AudioFormat::Unknown: break;
  }
  return nullptr;
}

// The content decides the reader; the extension only where the content names no format, and
// TagLib's own guess where neither does.
TagLib::FileRef openByContent(const QString& path) {
  QFile device(path);
  AudioFormat format = device.open(QIODevice::ReadOnly) ? AudioFormatSniffer::formatOf(device) : AudioFormat::Unknown;
  device.close();
  if (format == AudioFormat::Unknown) format = AudioFormatSniffer::formatOfSuffix(QFileInfo(path).suffix());
  const QByteArray name = QFile::encodeName(path);
  if (format == AudioFormat::Unknown) return TagLib::FileRef(name.constData(), true, TagLib::AudioProperties::Average);
  return TagLib::FileRef(openFile(name.constData(), format));
}

}  // namespace

quint64 TagLibReader::fourCharKey(const QByteArray& code) {
  quint64 key = 0;
  for (int i = 0; i < 4; ++i) key |= quint64(quint8(i < code.size() ? code[i] : 0)) << (56 - 8 * i);
  return key;
}

quint64 TagLibReader::threeCharKey(const QByteArray& code) {
  quint64 key = 0;
  for (int i = 0; i < 3; ++i) key |= quint64(quint8(i < code.size() ? code[i] : 0)) << (16 - 8 * i);
  return key;
}

AudioAsset TagLibReader::assetWithPath(const QString& path) const {
  AudioAsset asset;
  if (!QFileInfo(path).isFile()) return asset;
  const TagLib::FileRef ref = openByContent(path);
  if (ref.isNull()) return asset;
  TagLib::File* file = ref.file();
  if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file)) {
    if (mpeg->hasID3v2Tag()) readId3v2(mpeg->ID3v2Tag(), asset);
  } else if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(file)) {
    readMp4(mp4->tag(), asset);
  } else if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file)) {
    readNamedFields(file->properties(), asset);
    readPictures(flac->pictureList(), asset);
  } else if (dynamic_cast<TagLib::Ogg::File*>(file)) {
    readNamedFields(file->properties(), asset);
    if (auto* xiph = dynamic_cast<TagLib::Ogg::XiphComment*>(file->tag())) readPictures(xiph->pictureList(), asset);
  } else if (auto* aiff = dynamic_cast<AiffFile*>(file)) {
    if (const auto tag = aiff->literalId3v2Tag()) readId3v2(tag.get(), asset);
  } else if (auto* wav = dynamic_cast<WavFile*>(file)) {
    if (const auto tag = wav->literalId3v2Tag()) readId3v2(tag.get(), asset);
    else readNamedFields(file->properties(), asset);
  } else {
    readNamedFields(file->properties(), asset);
  }
  for (const MetadataItem& item : std::as_const(asset.iTunesMetadata))
    if (!item.commonKey.isEmpty()) asset.commonMetadata << item;
  for (const MetadataItem& item : std::as_const(asset.id3Metadata))
    if (!item.commonKey.isEmpty()) asset.commonMetadata << item;
  if (const TagLib::AudioProperties* properties = file->audioProperties()) {
    asset.durationCount = properties->lengthInMilliseconds();
    asset.durationScale = 1000;
  }
  return asset;
}
