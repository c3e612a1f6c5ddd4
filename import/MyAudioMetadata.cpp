#include "MyAudioMetadata.h"

#include "Picture.h"
#include "TagReader.h"

namespace {

const QString kName = QStringLiteral("Name"), kAlbum = QStringLiteral("Album"), kArtist = QStringLiteral("Artist");
const QString kComposer = QStringLiteral("Composer"), kGrouping = QStringLiteral("Grouping");
const QString kYear = QStringLiteral("Year"), kComments = QStringLiteral("Comments"), kGenre = QStringLiteral("Genre");
const QString kTrackNumber = QStringLiteral("Track Number"), kDiscNumber = QStringLiteral("Disc Number");
const QString kSortAlbum = QStringLiteral("Sort Album"), kSortAlbumArtist = QStringLiteral("Sort Album Artist");

// Latin-1 is the 8-bit encoding in which the byte 0xA9 reads as "©".
QString latin1Until0(const char* bytes, int max) {
  int n = 0;
  while (n < max && bytes[n] != 0) ++n;
  return QString::fromLatin1(bytes, n);
}

// Storing a null value removes the key, as the dictionaries of the library do.
void put(QVariantMap& dict, const QString& key, const QVariant& value) {
  if (value.isNull() || !value.isValid()) dict.remove(key);
  else dict.insert(key, value);
}

std::optional<Picture> pictureFrom(const MetadataItem& item) {
  std::optional<Picture> picture;
  if (item.dataValue.typeId() == QMetaType::QByteArray) picture = Picture::fromData(item.dataValue.toByteArray());
  if (!picture && item.value.typeId() == QMetaType::QVariantMap) {
    const QVariant data = item.value.toMap().value(QStringLiteral("data"));
    if (data.typeId() == QMetaType::QByteArray) picture = Picture::fromData(data.toByteArray());
  }
  return picture;
}

// The low byte of the big-endian number in the first four bytes of the first item of that key.
std::optional<int> fourthByteOf(const QList<MetadataItem>& items, const QString& code) {
  for (const MetadataItem& item : items) {
    if (!item.numericKey || MyAudioMetadata::keyString(*item.numericKey) != code) continue;
    const QByteArray data = item.dataValue.toByteArray();
    if (data.size() < 4) return std::nullopt;
    return int(quint8(data[3]));
  }
  return std::nullopt;
}

}  // namespace

QString MyAudioMetadata::keyString(quint64 key) {
  if (key == 0) return {};
  // The key's bytes from the most significant one down, else its three lowest bytes, lowest first.
  char high[4], low[3];
  for (int i = 0; i < 4; ++i) high[i] = char((key >> (56 - 8 * i)) & 0xFF);
  for (int i = 0; i < 3; ++i) low[i] = char((key >> (8 * i)) & 0xFF);
  const QString text = latin1Until0(high, 4);
  return text.isEmpty() ? latin1Until0(low, 3) : text;
}

void MyAudioMetadata::processMetaData(const QList<MetadataItem>& items, QVariantMap& dict) {
  for (const MetadataItem& item : items) {
    const QString code = item.numericKey ? keyString(*item.numericKey) : QString();
    const QString& common = item.commonKey;
    const auto is = [&](std::initializer_list<const char*> codes) {
      if (code.isEmpty()) return false;
      for (const char* c : codes)
        if (code == QString::fromUtf8(c)) return true;
      return false;
    };
    const QVariant string = item.stringValue.isNull() ? QVariant() : QVariant(item.stringValue.toString());
    if (common == u"title") put(dict, kName, string);
    else if (common == u"copyrights") put(dict, QStringLiteral("label"), string);
    else if (common == u"albumName") put(dict, kAlbum, string);
    else if (common == u"artist" || is({"aART"})) put(dict, kArtist, string);
    else if (common == u"composer" || is({"©wrt"})) put(dict, kComposer, string);
    else if (common == u"creator") put(dict, kComposer, string);
    else if (common == u"subject" || is({"©grp"})) put(dict, kGrouping, string);
    else if (is({"desc", "ldes", "©des"})) put(dict, QStringLiteral("summary"), string);
    else if (is({"TYER", "TYE"})) put(dict, kYear, string);
    else if (is({"COMM"})) {
      const QString text = item.value.toMap().value(QStringLiteral("text")).toString();
      if (!text.startsWith(QLatin1String(" 000"))) put(dict, kComments, item.value.toMap().value(QStringLiteral("text")));
    } else if (is({"©cmt"})) put(dict, kComments, string);
    else if (is({"keyw"})) put(dict, QStringLiteral("Tags"), string);
    else if (common == u"creationDate" || is({"©day"})) put(dict, kYear, string);
    else if (is({"TPE2"})) put(dict, QStringLiteral("Album Artist"), string);
    else if (is({"TCMP", "cpil", "PCT"})) put(dict, QStringLiteral("Compilation"), item.numberValue);
    else if (is({"TSOT", "TSOA"})) put(dict, kSortAlbum, string);
    else if (is({"TSOP", "TSO2"})) put(dict, kSortAlbumArtist, string);
    else if (is({"TRCK", "DISK"})) put(dict, kTrackNumber, item.numberValue);
    else if (common == u"artwork") {
      if (const auto picture = pictureFrom(item)) dict.insert(QStringLiteral("image"), QVariant::fromValue(*picture));
    } else if (common == u"software" || is({"TBPM", "TLEN", "TBP"})) continue;
    else if (common == u"type" || is({"©gen", "gnre"})) {
      if (!string.toString().startsWith(QLatin1Char('<'))) put(dict, kGenre, string);
    }
  }
}

QVariantMap MyAudioMetadata::getMetadataForPath(const QString& path, const TagReader* reader) {
  QVariantMap dict;
  if (!reader) return dict;
  const AudioAsset asset = reader->assetWithPath(path);
  processMetaData(asset.commonMetadata, dict);
  processMetaData(asset.iTunesMetadata, dict);
  processMetaData(asset.id3Metadata, dict);
  processMetaData(asset.quickTimeMetadata, dict);
  // ID3 once more, so that its values win over QuickTime's.
  processMetaData(asset.id3Metadata, dict);
  if (asset.durationCount != 0) {
    const qint64 seconds = asset.durationScale == 0 ? 0 : asset.durationCount / asset.durationScale;
    dict.insert(QStringLiteral("Total Time"), seconds * 1000);
  }
  if (const auto track = fourthByteOf(asset.iTunesMetadata, QStringLiteral("trkn"))) dict.insert(kTrackNumber, *track);
  if (const auto disc = fourthByteOf(asset.iTunesMetadata, QStringLiteral("disk"))) dict.insert(kDiscNumber, *disc);
  return dict;
}
