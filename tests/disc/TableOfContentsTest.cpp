#include "Barcode.h"
#include "DiscDrive.h"
#include "PropertyListReader.h"
#include "TableOfContents.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString data = QStringLiteral(DISCARY_TEST_DATA "/disc/");

TableOfContents toc(qint64 leadout, QList<qint64> starts) {
  TableOfContents t;
  t.leadout = leadout;
  t.starts = starts;
  return t;
}

// libdiscid's numbers for the same table of contents: the lead-out first, then the tracks.
QString libdiscidIdentifier(const TableOfContents& t) {
  int offsets[100] = {};
  offsets[0] = int(t.leadout);
  for (int i = 0; i < t.trackCount(); ++i) offsets[i + 1] = int(t.starts.at(i));
  return DiscDrive::freedbIdentifier(1, t.trackCount(), offsets);
}

}  // namespace

TEST(TableOfContents, identifiesTheSharedDiscsAndAgreesWithLibdiscidWhereTrackOneStartsOnASecond) {
  struct Case {
    const char* file;
    const char* ours;
    bool libdiscidAgrees;
  };
  // The hidden-pregap disc differs: we truncate (lead-out − start) / 75 as one division, libdiscid
  // subtracts whole seconds (ad0be00d), so a track 1 not on a whole second can lose one. The
  // enhanced CD is read from its first session only (b40a310c); the freedb id of the pressed disc
  // (c60af50d) counts the data track of the second session too.
  const Case cases[] = {{"derived_9d09130b_11tracks.TOC.plist", "9d09130b", true},
                        {"derived_6a09f20a_10tracks.TOC.plist", "6a09f20a", true},
                        {"derived_ad0be00d_hidden-pregap-track1-at-15370.TOC.plist", "ad0bdf0d", false},
                        {"derived_c60af50d_enhanced-cd-2-sessions.TOC.plist", "b40a310c", true}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file);
    const auto dictionary = PropertyListReader::readDictionary(data + QLatin1String(c.file));
    ASSERT_TRUE(dictionary);
    const auto t = TableOfContents::fromDictionary(*dictionary);
    ASSERT_TRUE(t);
    EXPECT_EQ(t->discIdentifier(nullptr, nullptr, nullptr, nullptr), QLatin1String(c.ours));
    EXPECT_EQ(libdiscidIdentifier(*t) == QLatin1String(c.ours), c.libdiscidAgrees) << qPrintable(libdiscidIdentifier(*t));
  }
}

TEST(TableOfContents, writesOffsetsDurationsAndTotalsInBothShapes) {
  const auto t = toc(150 + 75 * 600, {150, 18120, 39005});
  int tracks = 0;
  qint64 seconds = 0;
  QString offsets;
  QStringList durations;
  t.discIdentifier(&tracks, &seconds, &offsets, &durations);
  EXPECT_EQ(tracks, 3);
  EXPECT_EQ(seconds, 600);
  EXPECT_EQ(offsets, QStringLiteral("150+18120+39005+"));
  EXPECT_EQ(durations, (QStringList{"0:00", "3:59", "4:38", "1:21"}));
  EXPECT_EQ(t.trackDurations(), (QStringList{"3:59", "4:38", "1:21"}));
  // One frame short of a whole second truncates.
  toc(150 + 75 * 600 - 1, {150}).discIdentifier(nullptr, &seconds, nullptr, nullptr);
  EXPECT_EQ(seconds, 599);
  // A one-track disc.
  durations.clear();
  toc(7650, {150}).discIdentifier(nullptr, nullptr, nullptr, &durations);
  EXPECT_EQ(durations, (QStringList{"0:00", "1:40"}));
  EXPECT_EQ(toc(7650, {150}).trackDurations(), QStringList{"1:40"});
}

TEST(TableOfContents, checksumWrapsAt255AndTheIdentifierKeepsEightDigits) {
  // Start 7499 frames is 99 seconds, digit sum 18; start 0 adds nothing.
  EXPECT_EQ(toc(7499, {0, 7499}).discIdentifier(nullptr, nullptr, nullptr, nullptr), QStringLiteral("12006302"));
  // 15 tracks each starting at 99999 seconds (digit sum 45): n = 675 → 675 mod 255 = 165.
  QList<qint64> starts(15, 99999 * 75);
  EXPECT_EQ(toc(99999 * 75, starts).discIdentifier(nullptr, nullptr, nullptr, nullptr).left(2), QStringLiteral("a5"));
  // n = 0 and under 16 seconds: four leading zeros.
  EXPECT_EQ(toc(10 * 75, {0}).discIdentifier(nullptr, nullptr, nullptr, nullptr), QStringLiteral("00000a01"));
}

TEST(TableOfContents, refusesHostileDictionariesInsteadOfReadingPastThem) {
  const QVariantMap good = toc(1000, {150, 500}).dictionary();
  ASSERT_TRUE(TableOfContents::fromDictionary(good));
  auto withSession = [&](const std::function<void(QVariantMap&)>& change) {
    QVariantMap session = good.value(QStringLiteral("Sessions")).toList().first().toMap();
    change(session);
    return TableOfContents::fromDictionary({{QStringLiteral("Sessions"), QVariantList{session}}});
  };
  EXPECT_FALSE(TableOfContents::fromDictionary({}));
  EXPECT_FALSE(TableOfContents::fromDictionary({{QStringLiteral("Sessions"), QStringLiteral("text")}}));
  EXPECT_FALSE(TableOfContents::fromDictionary({{QStringLiteral("Sessions"), QVariantList{}}}));
  EXPECT_FALSE(withSession([](QVariantMap& s) { s[QStringLiteral("Last Track")] = 3; }));  // beyond the array
  EXPECT_FALSE(withSession([](QVariantMap& s) { s[QStringLiteral("Last Track")] = 0; }));
  EXPECT_FALSE(withSession([](QVariantMap& s) { s[QStringLiteral("Last Track")] = QStringLiteral("two"); }));
  EXPECT_FALSE(withSession([](QVariantMap& s) { s[QStringLiteral("Leadout Block")] = -5; }));
  EXPECT_FALSE(withSession([](QVariantMap& s) { s[QStringLiteral("Leadout Block")] = qint64(1) << 40; }));
  EXPECT_FALSE(withSession([](QVariantMap& s) {
    s[QStringLiteral("Track Array")] = QVariantList{QVariantMap{{QStringLiteral("Start Block"), -1}}, QVariantMap{}};
  }));
  // A missing "Start Block" reads as 0.
  const auto missing = withSession([](QVariantMap& s) { s[QStringLiteral("Track Array")] = QVariantList{QVariantMap{}, 7}; });
  ASSERT_TRUE(missing);
  EXPECT_EQ(missing->starts, (QList<qint64>{0, 0}));
  // Thousands of tracks claimed and present: no CD holds more than 99.
  QVariantList many(5000, QVariantMap{{QStringLiteral("Start Block"), 150}});
  EXPECT_FALSE(withSession([&](QVariantMap& s) {
    s[QStringLiteral("Track Array")] = many;
    s[QStringLiteral("Last Track")] = 5000;
  }));
}

TEST(Barcode, checkDigitsOfEan8UpcAAndEan13) {
  using C = Barcode::Check;
  // Codes from real sleeves: EAN-13, UPC-A, EAN-8, and an EAN-13 written in groups.
  for (const char* good : {"4006381333931", "036000291452", "96385074", "0 75678 05062 6", "5-099750-442227"})
    EXPECT_EQ(Barcode::check(good), C::Valid) << good;
  EXPECT_EQ(Barcode::check("4006381333932"), C::WrongCheckDigit);
  EXPECT_EQ(Barcode::check("036000291453"), C::WrongCheckDigit);
  EXPECT_EQ(Barcode::check("96385075"), C::WrongCheckDigit);
  EXPECT_EQ(Barcode::check("12345"), C::WrongLength);
  EXPECT_EQ(Barcode::check(""), C::WrongLength);
  EXPECT_EQ(Barcode::check("40063813339X1"), C::NotDigits);
  EXPECT_EQ(Barcode::check("４００６３８１３３３９３１"), C::NotDigits);  // full-width digits are not on sleeves
  EXPECT_EQ(Barcode::digits(" 0 75678-05062 4 "), "075678050624");
  EXPECT_EQ(Barcode::problem("4006381333932"),
            "'4006381333932' is not a valid barcode: its check digit is 2, the other digits call for 1");
  EXPECT_TRUE(Barcode::problem("4006381333931").isEmpty());
}

TEST(TableOfContents, keepsTheDiscsCatalogueNumberOnlyWhenItIsABarcode) {
  QVariantMap dictionary = toc(1000, {150, 500}).dictionary();
  for (const auto& [given, kept] : std::vector<std::pair<QVariant, QString>>{{"4006381333931", "4006381333931"},
                                                                             {"0000000000000", ""},
                                                                             {"4006381333932", ""},
                                                                             {"400638133393", ""},
                                                                             {QVariantList{1, 2}, ""}}) {
    dictionary[TableOfContents::mediaCatalogNumberKey] = given;
    const auto read = TableOfContents::fromDictionary(dictionary);
    ASSERT_TRUE(read);  // the table of contents itself is good either way
    EXPECT_EQ(read->mediaCatalogNumber, kept) << qPrintable(given.toString());
  }
  TableOfContents withNumber = toc(1000, {150, 500});
  withNumber.mediaCatalogNumber = "4006381333931";
  EXPECT_EQ(TableOfContents::fromDictionary(withNumber.dictionary())->mediaCatalogNumber, "4006381333931");
}

TEST(PropertyListReader, readsNothingFromBrokenOrForeignFiles) {
  QTemporaryDir dir;
  auto write = [&](const char* name, const QByteArray& bytes) {
    QFile file(dir.filePath(QLatin1String(name)));
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return file.fileName();
  };
  QByteArray xml;
  {
    QFile file(data + QStringLiteral("derived_9d09130b_11tracks.TOC.plist"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    xml = file.readAll();
  }
  EXPECT_FALSE(PropertyListReader::readDictionary(dir.filePath(QStringLiteral("missing"))));
  EXPECT_FALSE(PropertyListReader::readDictionary(write("empty", {})));
  EXPECT_FALSE(PropertyListReader::readDictionary(write("truncated", xml.left(xml.size() / 2))));
  EXPECT_FALSE(PropertyListReader::readDictionary(write("garbage", QByteArray(4096, '\xff'))));
  EXPECT_FALSE(PropertyListReader::readDictionary(write("binary", QByteArray("bplist00") + QByteArray(64, '\x7f'))));
  EXPECT_FALSE(PropertyListReader::readDictionary(
      write("array", "<?xml version=\"1.0\"?><plist version=\"1.0\"><array><integer>1</integer></array></plist>")));
  QByteArray deep = "<?xml version=\"1.0\"?><plist version=\"1.0\">";
  for (int i = 0; i < 500; ++i) deep += "<array>";
  EXPECT_FALSE(PropertyListReader::readDictionary(write("deep", deep)));
  EXPECT_TRUE(PropertyListReader::readDictionary(write("good", xml)));
  // A NUL byte inside a string is no XML, but the parser takes it: the text ends there.
  const char withNul[] = "<plist><dict><key>a</key><string>b\0c</string></dict></plist>";
  const auto nul = PropertyListReader::read(QByteArray(withNul, sizeof withNul - 1));
  ASSERT_TRUE(nul);
  EXPECT_EQ(nul->toMap().value(QStringLiteral("a")).toString(), QStringLiteral("b"));
  // A binary list whose one key is the UTF-16 text "a", U+0000, "b", its value true.
  const char binaryKey[] = "bplist00\xd1\x01\x02\x63\x00\x61\x00\x00\x00\x62\x09\x08\x0b\x12"
                           "\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x03\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x13";
  const auto key = PropertyListReader::read(QByteArray(binaryKey, sizeof binaryKey - 1));
  ASSERT_TRUE(key);
  EXPECT_EQ(key->toMap(), (QVariantMap{{QStringLiteral("a"), true}}));
}
