#include "MyAudioMetadata.h"
#include "Picture.h"
#include "TagLibReader.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <taglib/aifffile.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/textidentificationframe.h>

namespace {

QString sample(const char* name) { return QStringLiteral(DISCARY_TEST_DATA "/audio/") + QString::fromUtf8(name); }

// A writable copy of a sample, so the test can add the tags it needs.
QString copyOf(const QTemporaryDir& dir, const char* name, const char* as = nullptr) {
  const QString target = dir.filePath(QString::fromUtf8(as ? as : name));
  QFile::remove(target);
  EXPECT_TRUE(QFile::copy(sample(name), target));
  QFile(target).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  return target;
}

MetadataItem item(const QString& common, std::optional<quint64> key, const QVariant& string, const QVariant& number = {}) {
  MetadataItem i;
  i.commonKey = common;
  i.numericKey = key;
  i.stringValue = string;
  i.numberValue = number;
  return i;
}

quint64 four(const char* code) { return TagLibReader::fourCharKey(QByteArray(code)); }

class FixedReader : public TagReader {
 public:
  AudioAsset asset;
  AudioAsset assetWithPath(const QString&) const override { return asset; }
};

void addText(TagLib::ID3v2::Tag* tag, const char* id, const char* text) {
  auto* frame = new TagLib::ID3v2::TextIdentificationFrame(TagLib::ByteVector(id), TagLib::String::UTF8);
  frame->setText(TagLib::String(text, TagLib::String::UTF8));
  tag->addFrame(frame);
}

void addComment(TagLib::ID3v2::Tag* tag, const char* description, const char* text) {
  auto* frame = new TagLib::ID3v2::CommentsFrame(TagLib::String::UTF8);
  frame->setDescription(description);
  frame->setText(text);
  tag->addFrame(frame);
}

}  // namespace

TEST(MyAudioMetadataTest, KeyStringsAreTheCodesHeldInTheKey) {
  EXPECT_EQ(MyAudioMetadata::keyString(four("TPE2")), "TPE2");
  EXPECT_EQ(MyAudioMetadata::keyString(four("\xA9wrt")), QString::fromUtf8("©wrt"));
  // An ID3v2.2 id is held first character highest, so its three low bytes read it backwards.
  EXPECT_EQ(MyAudioMetadata::keyString(TagLibReader::threeCharKey("TCP")), "PCT");
  EXPECT_EQ(MyAudioMetadata::keyString(0), QString());
  // A four-character code in the low half reads as its three lowest bytes, lowest first.
  const quint64 lowTyer = four("TYER") >> 32;
  EXPECT_EQ(MyAudioMetadata::keyString(lowTyer), "REY");
  QVariantMap dict;
  MyAudioMetadata::processMetaData({item({}, lowTyer, "1999")}, dict);
  EXPECT_TRUE(dict.isEmpty());
  // Text keys match only through common keys.
  MetadataItem text = item("title", std::nullopt, "Song");
  text.textKey = "TYER";
  MyAudioMetadata::processMetaData({text}, dict);
  EXPECT_EQ(dict, (QVariantMap{{"Name", "Song"}}));
}

TEST(MyAudioMetadataTest, FoldingRulesOverwriteInListOrder) {
  QVariantMap dict;
  MetadataItem comment = item({}, four("COMM"), "x");
  comment.value = QVariantMap{{"text", " 00000A2B 00000C3D"}};
  MetadataItem realComment = item({}, four("COMM"), "x");
  realComment.value = QVariantMap{{"text", "Live at the Roxy"}};
  MyAudioMetadata::processMetaData({item("title", four("TIT2"), "Song"), realComment, comment,
                                    item("type", four("TCON"), "<Podcast>"), item({}, four("\xA9gen"), "(17)"),
                                    item({}, four("TSOT"), "Title Sort"), item({}, four("TCMP"), "1", 1),
                                    item({}, four("TRCK"), "9/12", 9), item({}, four("DISK"), {}, 3),
                                    item("software", four("TSSE"), "LAME"), item({}, four("keyw"), "live"),
                                    item("creator", four("TCOM"), "Bach"), item("copyrights", four("TCOP"), "(c) 1999")},
                                   dict);
  EXPECT_EQ(dict.value("Comments"), "Live at the Roxy");
  EXPECT_EQ(dict.value("Genre"), "(17)");
  EXPECT_EQ(dict.value("Sort Album"), "Title Sort");
  EXPECT_EQ(dict.value("Compilation"), 1);
  EXPECT_EQ(dict.value("Track Number"), 3);  // the disc code fills the track number
  EXPECT_EQ(dict.value("Composer"), "Bach");
  EXPECT_EQ(dict.value("label"), "(c) 1999");
  EXPECT_EQ(dict.value("Tags"), "live");
  EXPECT_FALSE(dict.contains("software"));
  // A later item without a string form removes what an earlier one set.
  MyAudioMetadata::processMetaData({item("title", four("TIT2"), {})}, dict);
  EXPECT_FALSE(dict.contains("Name"));
}

TEST(MyAudioMetadataTest, ListsFoldInOrderAndTheTrackByteWins) {
  FixedReader reader;
  MetadataItem trkn = item({}, four("trkn"), {}, 300);
  trkn.dataValue = QByteArray::fromHex("0000012c000c0000");
  MetadataItem disk = item({}, four("disk"), {}, 2);
  disk.dataValue = QByteArray::fromHex("000000020002");
  reader.asset.iTunesMetadata = {trkn, disk};
  reader.asset.quickTimeMetadata = {item({}, four("TPE2"), "QuickTime Artist")};
  reader.asset.id3Metadata = {item({}, four("TRCK"), "9", 9), item({}, four("TPE2"), "ID3 Artist")};
  reader.asset.durationCount = 212700;
  reader.asset.durationScale = 1000;
  QVariantMap dict = MyAudioMetadata::getMetadataForPath("x", &reader);
  EXPECT_EQ(dict.value("Track Number"), 44);  // only the low byte of 300
  EXPECT_EQ(dict.value("Disc Number"), 2);
  EXPECT_EQ(dict.value("Album Artist"), "ID3 Artist");
  EXPECT_EQ(dict.value("Total Time"), 212000);

  reader.asset = {};
  reader.asset.durationCount = 212700;
  reader.asset.durationScale = 1000;
  EXPECT_EQ(MyAudioMetadata::getMetadataForPath("x", &reader), (QVariantMap{{"Total Time", 212000}}));
  reader.asset.durationCount = 0;
  EXPECT_TRUE(MyAudioMetadata::getMetadataForPath("x", &reader).isEmpty());
  reader.asset.durationCount = 5;
  reader.asset.durationScale = 0;
  EXPECT_EQ(MyAudioMetadata::getMetadataForPath("x", &reader).value("Total Time"), 0);
  EXPECT_TRUE(MyAudioMetadata::getMetadataForPath("x", nullptr).isEmpty());
}

TEST(MyAudioMetadataTest, RealFilesOfEachFormat) {
  const TagLibReader reader;
  const QVariantMap m4a = MyAudioMetadata::getMetadataForPath(sample("music-metadata_issue-79.m4a"), &reader);
  EXPECT_EQ(m4a.value("Name"), "Uprising");
  EXPECT_EQ(m4a.value("Album"), "The Resistance");
  EXPECT_EQ(m4a.value("Artist"), "Muse");    // "aART" lands on "Artist"
  EXPECT_EQ(m4a.value("Composer"), "Muse");  // "©wrt"
  EXPECT_EQ(m4a.value("Compilation"), 0);    // "cpil"
  EXPECT_EQ(m4a.value("Track Number"), 1);
  EXPECT_EQ(m4a.value("Disc Number"), 1);
  EXPECT_EQ(m4a.value("Total Time"), 302000);
  EXPECT_EQ(m4a.value("image").value<Picture>().size.width(), 136);

  const QVariantMap mp4Extras = MyAudioMetadata::getMetadataForPath(sample("music-metadata_pr-544.m4a"), &reader);
  EXPECT_EQ(mp4Extras.value("Compilation"), 1);
  EXPECT_EQ(mp4Extras.value("summary"), "Long Description");
  EXPECT_EQ(mp4Extras.value("Tags"), "Podcast Keywords");

  const QVariantMap id3v24 = MyAudioMetadata::getMetadataForPath(sample("music-metadata_pr-544-id3v24.mp3"), &reader);
  EXPECT_EQ(id3v24.value("Compilation"), 1);             // "TCMP"
  EXPECT_EQ(id3v24.value("Sort Album"), "Title Sort");   // "TSOT" follows "TSOA" in the file
  EXPECT_EQ(id3v24.value("Sort Album Artist"), "Album Artist Sort");
  EXPECT_EQ(id3v24.value("Comments"), "Tagged with Mp3tag v3.01");

  const QVariantMap id3v23 = MyAudioMetadata::getMetadataForPath(sample("mutagen_silence-44-s.mp3"), &reader);
  EXPECT_EQ(id3v23.value("Album"), "Quod Libet Test Data");
  EXPECT_EQ(id3v23.value("Track Number"), 2);  // "02/10"
  EXPECT_EQ(id3v23.value("Year"), "2004");     // "TYER" of version 2.3
  EXPECT_EQ(id3v23.value("Grouping"), "Silence");

  const QVariantMap id3v22 = MyAudioMetadata::getMetadataForPath(sample("mutagen_id3v22-test.mp3"), &reader);
  EXPECT_EQ(id3v22.value("Year"), "2004");  // through the common key: "TYE" reads as "EYT"
  EXPECT_FALSE(id3v22.contains("Comments"));  // only iTunNORM and CDDB comments, " 000..." ones skipped
  EXPECT_EQ(id3v22.value("Album"), "Hymns for the Exiled");

  const QVariantMap itunes22 = MyAudioMetadata::getMetadataForPath(sample("taglib_itunes10.mp3"), &reader);
  EXPECT_EQ(itunes22.value("Composer"), "Composer");
  EXPECT_EQ(itunes22.value("Compilation"), 1);  // "TCP", read as "PCT"
  EXPECT_EQ(itunes22.value("Year"), "2011");
  EXPECT_EQ(itunes22.value("image").value<Picture>().size, QSize(48, 48));

  const QVariantMap flac = MyAudioMetadata::getMetadataForPath(sample("mutagen_silence-44-s.flac"), &reader);
  EXPECT_EQ(flac.value("Album"), "Quod Libet Test Data");
  EXPECT_EQ(flac.value("Artist"), "jzig");  // the later of "artist=piman" and "artist=jzig"
  EXPECT_EQ(flac.value("Track Number"), 2);
  EXPECT_EQ(flac.value("Total Time"), 3000);
  EXPECT_FALSE(flac.value("image").value<Picture>().toImage().isNull());

  const QVariantMap ogg = MyAudioMetadata::getMetadataForPath(sample("taglib_lowercase-fields.ogg"), &reader);
  EXPECT_EQ(ogg.value("Name"), "TEST TITLE");
  EXPECT_EQ(ogg.value("Artist"), "TEST ARTIST");
}

TEST(MyAudioMetadataTest, TagsWrittenByTagLibLandAsTheRulesSay) {
  QTemporaryDir dir;
  const QString mp3 = copyOf(dir, "mutagen_silence-44-s.mp3");
  {
    TagLib::MPEG::File file(QFile::encodeName(mp3).constData());
    TagLib::ID3v2::Tag* tag = file.ID3v2Tag(true);
    addText(tag, "TPE2", "Band");
    addText(tag, "TCMP", "1");
    addText(tag, "TSOA", "Album, The");
    tag->removeFrames("TCON");
    addText(tag, "TCON", "(17)");
    addComment(tag, "iTunNORM", " 000002C8 00000000 00001E4C");
    auto* picture = new TagLib::ID3v2::AttachedPictureFrame;
    picture->setMimeType("image/jpeg");
    picture->setPicture(TagLib::ByteVector("this is no picture at all"));
    tag->addFrame(picture);
    ASSERT_TRUE(file.save(TagLib::MPEG::File::ID3v2, TagLib::File::StripNone, TagLib::ID3v2::v4));
  }
  const TagLibReader reader;
  const QVariantMap dict = MyAudioMetadata::getMetadataForPath(mp3, &reader);
  EXPECT_EQ(dict.value("Album Artist"), "Band");
  EXPECT_EQ(dict.value("Compilation"), 1);
  EXPECT_EQ(dict.value("Sort Album"), "Album, The");
  EXPECT_EQ(dict.value("Genre"), "(17)");  // as written, not TagLib's "17"
  EXPECT_FALSE(dict.contains("Comments"));
  EXPECT_FALSE(dict.contains("image"));  // a "picture" that does not decode is dropped

  const QString m4a = copyOf(dir, "music-metadata_issue-79.m4a");
  {
    TagLib::MP4::File file(QFile::encodeName(m4a).constData());
    // Without a track artist, so that nothing else sets "Artist".
    file.tag()->removeItem("\251ART");
    file.tag()->setItem("aART", TagLib::StringList("Album Artist"));
    file.tag()->setItem("\251wrt", TagLib::StringList("Matthew Bellamy"));
    file.tag()->setItem("cpil", TagLib::MP4::Item(true));
    file.tag()->setItem("trkn", TagLib::MP4::Item(300, 301));
    ASSERT_TRUE(file.save());
  }
  const QVariantMap mp4 = MyAudioMetadata::getMetadataForPath(m4a, &reader);
  EXPECT_EQ(mp4.value("Artist"), "Album Artist");
  EXPECT_EQ(mp4.value("Composer"), "Matthew Bellamy");
  EXPECT_EQ(mp4.value("Compilation"), 1);
  EXPECT_EQ(mp4.value("Track Number"), 44);

  // TagLib reads the ID3 chunk of an AIFF file by itself; the genre must still stand as written.
  const QString aiff = copyOf(dir, "generated_silence-50ms.aiff");
  {
    TagLib::RIFF::AIFF::File file(QFile::encodeName(aiff).constData());
    addText(file.tag(), "TIT2", "Quiet");
    addText(file.tag(), "TCON", "(17)Rock");
    ASSERT_TRUE(file.save());
  }
  const QVariantMap riff = MyAudioMetadata::getMetadataForPath(aiff, &reader);
  EXPECT_EQ(riff.value("Name"), "Quiet");
  EXPECT_EQ(riff.value("Genre"), "(17)Rock");
}

TEST(MyAudioMetadataTest, HostileFilesGiveFewerKeysNeverACrash) {
  QTemporaryDir dir;
  const TagLibReader reader;
  const auto write = [&](const char* name, const QByteArray& bytes) {
    QFile f(dir.filePath(name));
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return f.fileName();
  };
  QFile m4a(sample("music-metadata_issue-79.m4a"));
  ASSERT_TRUE(m4a.open(QIODevice::ReadOnly));
  const QByteArray whole = m4a.readAll();
  // A frame header claiming 256 MB, then nothing.
  const QByteArray hugeFrame = QByteArray("ID3\x04\x00\x00\x7f\x7f\x7f\x7f" "TIT2\x7f\x7f\x7f\x7f\x00\x00", 20) + QByteArray(64, 'a');
  const QStringList paths = {sample("mutagen_emptyfile.mp3"),
                             write("truncated.m4a", whole.left(3000)),
                             write("garbage.mp3", QByteArray(70000, '\xff')),
                             write("text.flac", "This is a text file, not a FLAC stream.\n"),
                             write("huge-frame.mp3", hugeFrame),
                             dir.filePath("missing.mp3"),
                             dir.path()};
  for (const QString& path : paths) {
    const QVariantMap dict = MyAudioMetadata::getMetadataForPath(path, &reader);
    EXPECT_FALSE(dict.contains("Name")) << qPrintable(path);
  }
  // A real tag with a 4 MB frame among the others still reads.
  const QString big = copyOf(dir, "mutagen_silence-44-s.mp3", "big.mp3");
  {
    TagLib::MPEG::File file(QFile::encodeName(big).constData());
    addText(file.ID3v2Tag(true), "TEXT", std::string(4 << 20, 'x').c_str());
    ASSERT_TRUE(file.save());
  }
  EXPECT_EQ(MyAudioMetadata::getMetadataForPath(big, &reader).value("Album"), "Quod Libet Test Data");
}

TEST(MyAudioMetadataTest, TheContentChoosesTheReaderNotTheExtension) {
  QTemporaryDir dir;
  const TagLibReader reader;
  const auto tagsOf = [&](const QString& path) { return MyAudioMetadata::getMetadataForPath(path, &reader); };
  EXPECT_EQ(tagsOf(copyOf(dir, "mutagen_silence-44-s.flac", "flac.mp3")).value("Name"), "Silence");
  EXPECT_EQ(tagsOf(copyOf(dir, "music-metadata_issue-79.m4a", "m4a.mp3")).value("Name"), "Uprising");
  EXPECT_EQ(tagsOf(copyOf(dir, "taglib_lowercase-fields.ogg", "ogg.flac")).value("Name"), "TEST TITLE");
  EXPECT_EQ(tagsOf(copyOf(dir, "mutagen_silence-44-s.mp3", "mp3.m4a")).value("Album"), "Quod Libet Test Data");

  // A FLAC stream may follow an ID3v2 tag; its own comments still count.
  QFile flac(sample("mutagen_silence-44-s.flac"));
  ASSERT_TRUE(flac.open(QIODevice::ReadOnly));
  QFile tagged(dir.filePath("tagged-flac.mp3"));
  ASSERT_TRUE(tagged.open(QIODevice::WriteOnly));
  tagged.write(QByteArray("ID3\x04\0\0\0\0\0\x10", 10) + QByteArray(16, '\0') + flac.readAll());
  tagged.close();
  EXPECT_EQ(tagsOf(tagged.fileName()).value("Artist"), "jzig");
}
