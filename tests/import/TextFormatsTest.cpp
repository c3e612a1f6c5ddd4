#include "CsvExporter.h"
#include "DelimitedText.h"
#include "ImportTestSupport.h"

#include <QDateTime>

namespace {

class TextFormatsTest : public ImportTestBase {};

TEST(DelimitedTextTest, QuotesSeparatorsNewlinesAndRaggedRows) {
  const QString text = "title,artist,comments\r\n\"A, \"\"quoted\"\"\",B,\"two\nlines\"\r\n\nshort\r\nx,y,z,extra";
  bool unterminated = true;
  const auto rows = DelimitedText::parse(text, u',', &unterminated);
  EXPECT_FALSE(unterminated);
  ASSERT_EQ(rows.size(), 4);
  EXPECT_EQ(rows[1], (QStringList{"A, \"quoted\"", "B", "two\nlines"}));
  EXPECT_EQ(rows[2], QStringList{"short"});
  EXPECT_EQ(rows[3].size(), 4);
  EXPECT_EQ(DelimitedText::parse("a,,\n", u','), (QList<QStringList>{{"a", "", ""}}));
  DelimitedText::parse("a\n\"open", u',', &unterminated);
  EXPECT_TRUE(unterminated);
  EXPECT_EQ(DelimitedText::guessSeparator("title\tartist,x\n1,2"), u'\t');
  for (const QString& field : {QString("plain"), QString("a,b"), QString("say \"hi\""), QString("1\r\n2")})
    EXPECT_EQ(DelimitedText::parse(DelimitedText::quoted(field, u','), u',').value(0).value(0), field);
}

TEST_F(TextFormatsTest, TabAndCommaFilesImportPartlyWithWarnings) {
  auto controller = launch();
  // Latin-1 instead of UTF-8, a ragged row, a bad rating and an unknown column.
  QByteArray latin1 = "Title,ARTIST,myRating,Shelf\nCaf\xe9,Bj\xf6rk,5,3\nSecond,,many\nThird,C,1,x,y\n";
  ASSERT_TRUE(controller->openFile(write("Old list.csv", latin1)));
  EXPECT_EQ(entryTitled(*controller, "Café")->stringValue("artist"), "Björk");
  EXPECT_EQ(entryTitled(*controller, "Café")->value("myRating").toLongLong(), 5);
  EXPECT_FALSE(entryTitled(*controller, "Second")->value("myRating").isValid());
  EXPECT_NE(entryTitled(*controller, "Third"), nullptr);
  ASSERT_EQ(windowSystem.alertMessages.size(), 1);
  EXPECT_TRUE(windowSystem.alertMessages[0].contains("Row 3 has 3 fields where the header has 4"));
  EXPECT_TRUE(windowSystem.alertMessages[0].contains("'many' is not a valid myRating"));
  EXPECT_EQ(controller->collections().collectionWithName("Old list", true)->memberUIDs().size(), 3u);

  // Text that names no field is not this format.
  windowSystem.alertMessages.clear();
  EXPECT_FALSE(controller->openFile(write("notes.txt", "Dear diary,\ntoday I bought a record.\n")));
  EXPECT_TRUE(windowSystem.alertMessages.value(0).startsWith("File format not recognized."));
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 3u);
}

TEST_F(TextFormatsTest, CsvExportReimportsWithTracksAndDates) {
  QByteArray csv;
  {
    auto source = launch("source/Discary.sqlite");
    Entry* e = source->managedObjectContext().insertEntry();
    e->setValue("title", "Line\nbreak, \"quoted\"");
    e->setValue("releaseDate", QDateTime(QDate(1999, 7, 13), QTime(12, 0), Qt::UTC));
    e->setValue("status", 2);
    for (const char* name : {"One", "Two"}) {
      auto track = Store::newTrack();
      track->setValue("name", name);
      track->setValue("duration", "3:10");
      track->setValue("position", qint64(e->tracksSet().size()));
      e->addTrack(std::move(track));
    }
    source->managedObjectContext().insertEntry()->setValue("title", "Ünïcode");
    csv = CsvExporter::text(source->managedObjectContext().entries());
  }
  EXPECT_TRUE(csv.startsWith("title,releaseDate,status,tracks\r\n"));
  auto controller = launch();
  ASSERT_TRUE(controller->openFile(write("export.csv", csv)));
  EXPECT_TRUE(windowSystem.alerts.isEmpty()) << qPrintable(windowSystem.alertMessages.join('\n'));
  Entry* e = entryTitled(*controller, "Line\nbreak, \"quoted\"");
  ASSERT_NE(e, nullptr);
  EXPECT_EQ(e->value("releaseDate").toDateTime(), QDateTime(QDate(1999, 7, 13), QTime(12, 0), Qt::UTC));
  EXPECT_EQ(e->value("status").toLongLong(), 2);
  const auto tracks = e->tracksSortedByPosition();
  ASSERT_EQ(tracks.size(), 2u);
  EXPECT_EQ(tracks[1]->stringValue("name"), "Two");
  EXPECT_EQ(tracks[1]->stringValue("duration"), "3:10");
  EXPECT_NE(entryTitled(*controller, "Ünïcode"), nullptr);
}

TEST_F(TextFormatsTest, CancelKeepsWhatWasImported) {
  auto controller = launch();
  QByteArray csv = "title\n";
  for (int i = 0; i < 10; ++i) csv += "Entry " + QByteArray::number(i) + "\n";
  windowSystem.cancelAfterSteps = 3;
  ASSERT_TRUE(controller->openFile(write("many.csv", csv)));
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 3u);
  EXPECT_FALSE(controller->managedObjectContext().hasChanges());
  EXPECT_EQ(windowSystem.notices.size(), 1);
}

TEST_F(TextFormatsTest, ReleaseListsFromTheDatabaseDumps) {
  auto controller = launch();
  ASSERT_TRUE(controller->openFile(QString(DISCARY_TEST_DATA) + "/import/discogs-dump_20200806_releases_EXCERPT.xml"));
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 7u);
  Entry* stockholm = entryTitled(*controller, "Stockholm");
  ASSERT_NE(stockholm, nullptr);
  EXPECT_EQ(stockholm->stringValue("artist"), "The Persuader");
  EXPECT_EQ(stockholm->stringValue("label"), "Svek");
  EXPECT_EQ(stockholm->stringValue("catalogNumber"), "SK032");
  EXPECT_EQ(stockholm->stringValue("format"), "Vinyl");
  EXPECT_EQ(stockholm->stringValue("discs"), "2");
  EXPECT_EQ(stockholm->stringValue("genre"), "Electronic, Deep House");
  EXPECT_EQ(stockholm->value("releaseDate").toDateTime().date(), QDate(1999, 3, 1));
  const auto tracks = stockholm->tracksSortedByPosition();
  ASSERT_FALSE(tracks.empty());
  EXPECT_EQ(tracks[0]->stringValue("name"), "Östermalm");
  EXPECT_EQ(tracks[0]->stringValue("duration"), "4:45");

  ASSERT_TRUE(controller->openFile(QString(DISCARY_TEST_DATA) + "/import/discogs-xml2db_release_3_single-pretty.xml"));
  Entry* profound = entryTitled(*controller, "Profound Sounds Vol. 1");
  ASSERT_NE(profound, nullptr);
  EXPECT_EQ(profound->stringValue("artist"), "Josh Wink");
  EXPECT_EQ(profound->value("releaseDate").toDateTime().date(), QDate(1999, 7, 13));
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
}

TEST_F(TextFormatsTest, DamagedReleaseListsKeepTheReleasesBeforeTheDamage) {
  auto controller = launch();
  QFile dump(QString(DISCARY_TEST_DATA) + "/import/discogs-dump_20200806_releases_EXCERPT.xml");
  ASSERT_TRUE(dump.open(QIODevice::ReadOnly));
  const QByteArray whole = dump.readAll();
  const qsizetype third = whole.indexOf("<release id=", whole.indexOf("<release id=", 20) + 1);
  EXPECT_TRUE(controller->openFile(write("cut.xml", whole.left(third + 200))));
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 2u);
  EXPECT_TRUE(windowSystem.alertMessages.value(0).contains("damaged"));

  windowSystem.alertMessages.clear();
  QByteArray deep = "<releases num=\"1\"><release id=\"1\"><title>";
  for (int i = 0; i < 20000; ++i) deep += "<x>";
  EXPECT_FALSE(controller->openFile(write("deep.xml", deep)));
  const QByteArray bomb = "<!DOCTYPE r [<!ENTITY a \"aaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;\">]>"
                          "<releases num=\"1\"><release id=\"1\"><title>&b;&b;&b;</title></release></releases>";
  EXPECT_FALSE(controller->openFile(write("bomb.xml", bomb)));
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 2u);
  EXPECT_EQ(windowSystem.openSheets, 0);
}

}  // namespace
