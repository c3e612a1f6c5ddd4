#include "ImportTestSupport.h"
#include "CsvExporter.h"
#include "NativeExporter.h"
#include "PropertyList.h"

#include <QDateTime>
#include <QImage>
#include <QImageReader>

namespace {

class NativeRoundTrip : public ImportTestBase, public ::testing::WithParamInterface<NativeExporter::Form> {};

TEST_P(NativeRoundTrip, KeepsFieldsTracksLinksCoversDatesAndStatus) {
  const QDateTime released(QDate(1999, 3, 1), QTime(12, 0), Qt::UTC);
  const QDateTime added(QDate(2020, 5, 6), QTime(7, 8, 9), Qt::UTC);
  QString exportPath;
  {
    auto source = launch("source/Discary.sqlite");
    Store& store = source->managedObjectContext();
    Entry* first = store.insertEntry();
    first->setValue("title", "Stockholm");
    first->setValue("artist", "The Persuader \"Live\", 1999\nremix");
    first->setValue("releaseDate", released);
    first->setValue("dateAdded", added);
    first->setValue("myRating", 4);
    first->setValue("status", 1);
    first->setValue("customCheckbox1", true);
    for (int i = 0; i < 3; ++i) {
      auto track = Store::newTrack();
      track->setValue("name", QStringLiteral("Track %1 ÄÖ").arg(i + 1));
      track->setValue("position", 2 - i);
      track->setValue("duration", "4:45");
      first->addTrack(std::move(track));
    }
    auto link = Store::newLink();
    link->setValue("name", "review");
    link->setValue("url", "https://example.org/r?a=1&b=2");
    link->setValue("type", "review");
    first->addLink(std::move(link));
    Entry* second = store.insertEntry();
    second->setValue("title", "No cover");
    second->setValue("status", 2);
    Entry* third = store.insertEntry();
    third->setValue("title", "Blue");
    QImage blue(8, 6, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    for (Entry* e : {first, third}) {
      QDir().mkpath(QFileInfo(store.coverPathOf(e->uid())).path());
      ASSERT_TRUE(blue.save(store.coverPathOf(e->uid()), "JPG"));
    }
    ASSERT_TRUE(store.save());
    exportPath = dir.filePath("out/Old Shelf.discary");
    QString error;
    ASSERT_TRUE(NativeExporter::write(store, {first, second, third}, exportPath, GetParam(), &error)) << qPrintable(error);
  }

  auto controller = launch();
  ASSERT_TRUE(controller->openFile(exportPath));
  EXPECT_TRUE(windowSystem.alerts.isEmpty()) << qPrintable(windowSystem.alertMessages.join('\n'));
  EXPECT_EQ(windowSystem.openSheets, 0);
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 3u);
  Collection* collection = controller->collections().collectionWithName("Old Shelf", true);
  ASSERT_NE(collection, nullptr);
  EXPECT_EQ(collection->memberUIDs().size(), 3u);
  EXPECT_EQ(controller->collections().selectedCollection(), collection);

  Entry* first = entryTitled(*controller, "Stockholm");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->stringValue("artist"), "The Persuader \"Live\", 1999\nremix");
  EXPECT_EQ(first->value("releaseDate").toDateTime(), released);
  EXPECT_EQ(first->value("dateAdded").toDateTime(), added);
  EXPECT_EQ(first->value("myRating").toLongLong(), 4);
  EXPECT_EQ(first->value("status").toLongLong(), 1);
  EXPECT_TRUE(first->value("customCheckbox1").toBool());
  const auto tracks = first->tracksSortedByPosition();
  ASSERT_EQ(tracks.size(), 3u);
  EXPECT_EQ(tracks[0]->stringValue("name"), "Track 3 ÄÖ");
  EXPECT_EQ(tracks[2]->stringValue("duration"), "4:45");
  ASSERT_EQ(first->linksSet().size(), 1u);
  EXPECT_EQ(first->linksSet()[0]->stringValue("url"), "https://example.org/r?a=1&b=2");
  EXPECT_EQ(entryTitled(*controller, "No cover")->value("status").toLongLong(), 2);

  Store& store = controller->managedObjectContext();
  EXPECT_EQ(QImageReader(store.coverPathOf(first->uid())).size(), QSize(8, 6));
  EXPECT_EQ(QImageReader(store.coverPathOf(entryTitled(*controller, "Blue")->uid())).size(), QSize(8, 6));
  EXPECT_FALSE(QFile::exists(store.coverPathOf(entryTitled(*controller, "No cover")->uid())));
}

INSTANTIATE_TEST_SUITE_P(BothForms, NativeRoundTrip,
                         ::testing::Values(NativeExporter::Form::File, NativeExporter::Form::Folder));

QByteArray entries(const QVariantMap& top) { return PropertyList::write(top); }

class NativeImportTest : public ImportTestBase {};

TEST_F(NativeImportTest, GapsOldDatesGarbageCoversAndWrongTypesImportWhatTheyCan) {
  auto controller = launch();
  // Keys 1, 2 and 4: the gap ends the list. Entry 1's picture is garbage, entry 2 has none.
  QVariantMap top{
      {"1", QVariantMap{{"title", "One"}, {"DateAdded", "2004-05-06 07:08:09 +0200"}, {"Release", "not a date"},
                        {"myRating", "lots"}, {"Tracks", "not a list"}, {"QuickTime", "/movies/clip.mov"}}},
      {"2", QVariantMap{{"title", QVariantList{1, 2}}, {"artist", "Two"}}},
      {"4", QVariantMap{{"title", "Four"}}},
  };
  const QString folder = dir.filePath("Gappy.discary");
  write("Gappy.discary/info.xml", entries(top));
  write("Gappy.discary/Covers/1.jpg", "this is not a picture");
  ASSERT_TRUE(controller->openFile(folder));
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 2u);
  EXPECT_EQ(entryTitled(*controller, "Four"), nullptr);
  Entry* one = entryTitled(*controller, "One");
  ASSERT_NE(one, nullptr);
  EXPECT_EQ(one->value("dateAdded").toDateTime(), QDateTime(QDate(2004, 5, 6), QTime(5, 8, 9), Qt::UTC));
  EXPECT_FALSE(one->value("releaseDate").isValid());
  EXPECT_FALSE(one->value("myRating").isValid());
  ASSERT_EQ(one->linksSet().size(), 1u);
  EXPECT_EQ(one->linksSet()[0]->stringValue("type"), "QuickTime Movie");
  EXPECT_EQ(one->linksSet()[0]->stringValue("url"), "file:///movies/clip.mov");
  EXPECT_FALSE(QFile::exists(controller->managedObjectContext().coverPathOf(one->uid())));
  ASSERT_EQ(windowSystem.alerts.size(), 1);
  EXPECT_TRUE(windowSystem.alertMessages[0].contains("not a picture")) << qPrintable(windowSystem.alertMessages[0]);

  // A single file whose embedded cover is garbage, and one that is no property list at all.
  windowSystem.alerts.clear();
  write("Embedded.discary", entries({{"1", QVariantMap{{"title", "Embedded"}, {"image1", QByteArray("\xff\xd8junk")}}}}));
  EXPECT_TRUE(controller->openFile(dir.filePath("Embedded.discary")));
  EXPECT_NE(entryTitled(*controller, "Embedded"), nullptr);
  EXPECT_EQ(windowSystem.alerts.size(), 1);
  windowSystem.alerts.clear();
  write("Broken.discary", "<plist version=\"1.0\"><dict><key>1</key><dict><key>title</key><string>x");
  EXPECT_FALSE(controller->openFile(dir.filePath("Broken.discary")));
  EXPECT_EQ(windowSystem.alerts.size(), 1);
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 3u);
  EXPECT_EQ(windowSystem.openSheets, 0);
}

TEST(PropertyListTest, RefusesHostileInputWithAReason) {
  QByteArray deep = "<plist version=\"1.0\">";
  for (int i = 0; i < 10000; ++i) deep += "<array>";
  const QByteArray bomb =
      "<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
      "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;\">]><plist version=\"1.0\"><string>&c;&c;&c;&c;</string></plist>";
  const QList<QByteArray> hostile = {
      deep,
      bomb,
      "",
      "bplist00\x01\x02",
      "<html><body>hello</body></html>",
      "<plist version=\"1.0\"><dict><key>1</key></dict></plist>",
      "<plist version=\"1.0\"><dict><string>no key</string></dict></plist>",
      "<plist version=\"1.0\"><integer>twelve</integer></plist>",
      "<plist version=\"1.0\"><date>yesterday</date></plist>",
      "<plist version=\"1.0\"><dict><key>a</key><widget/></dict></plist>",
      "<plist version=\"1.0\"><array><string>truncated",
      QByteArray(5000, '\xff'),
  };
  for (const QByteArray& data : hostile) {
    QString error;
    EXPECT_FALSE(PropertyList::read(data, &error).has_value()) << data.left(60).constData();
    EXPECT_FALSE(error.isEmpty());
  }
  QTemporaryDir dir;
  QFile big(dir.filePath("big.plist"));
  ASSERT_TRUE(big.open(QIODevice::WriteOnly));
  big.write(PropertyList::write(QVariantList{QString(4096, 'x')}));
  big.close();
  QString error;
  EXPECT_FALSE(PropertyList::readFile(big.fileName(), &error, 1024));
  EXPECT_TRUE(error.contains("larger"));
  EXPECT_TRUE(PropertyList::readFile(big.fileName(), &error).has_value());
}

TEST(PropertyListTest, WritesWhatItReads) {
  const QVariantMap value{{"text", "a < b & \"c\""}, {"n", qint64(-7)}, {"x", 2.5}, {"yes", true},
                          {"when", QDateTime(QDate(2001, 2, 3), QTime(4, 5, 6), Qt::UTC)},
                          {"bytes", QByteArray("\0\1\2", 3)}, {"list", QVariantList{QVariantMap{}, QVariantList{}}}};
  const auto back = PropertyList::read(PropertyList::write(value));
  ASSERT_TRUE(back.has_value());
  EXPECT_EQ(back->toMap(), value);
}

}  // namespace

// Exports read every entry's tracks; on a large catalogue they must not all stay in memory
// afterwards, and an entry changed and not yet saved must keep its changes.
TEST_F(NativeImportTest, ExportsLetSavedTracksGoAgainAndKeepUnsavedOnes) {
  {
    auto source = launch("source/Discary.sqlite");
    Store& store = source->managedObjectContext();
    for (const char* title : {"Saved", "Changed"}) {
      Entry* e = store.insertEntry();
      e->setValue("title", title);
      auto track = Store::newTrack();
      track->setValue("name", QStringLiteral("%1 track").arg(title));
      e->addTrack(std::move(track));
    }
    ASSERT_TRUE(store.save());
  }
  auto controller = launch("source/Discary.sqlite");
  Store& store = controller->managedObjectContext();
  Entry* saved = entryTitled(*controller, "Saved");
  Entry* changed = entryTitled(*controller, "Changed");
  auto extra = Store::newTrack();
  extra->setValue("name", "Unsaved track");
  changed->addTrack(std::move(extra));
  ASSERT_FALSE(saved->relationshipsLoaded());

  const QString csv = QString::fromUtf8(CsvExporter::text(store.entries()));
  QString error;
  const QString path = dir.filePath("out.discary");
  ASSERT_TRUE(NativeExporter::write(store, store.entries(), path, NativeExporter::Form::File, &error)) << qPrintable(error);
  const QString native = QString::fromUtf8(PropertyList::write(*PropertyList::readFile(path)));
  for (const QString& text : {csv, native}) {
    EXPECT_TRUE(text.contains("Saved track"));
    EXPECT_TRUE(text.contains("Unsaved track"));
  }
  EXPECT_FALSE(saved->relationshipsLoaded());
  ASSERT_EQ(changed->tracksSet().size(), 2u);
  EXPECT_EQ(saved->tracksSet().size(), 1u);  // loaded again on demand
  EXPECT_TRUE(store.save());
}
