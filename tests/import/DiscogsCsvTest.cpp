#include "Collection.h"
#include "DiscogsCsvImporter.h"
#include "ImportTestSupport.h"
#include "Link.h"
#include "MyFieldsControllerShared.h"

#include <QDateTime>

namespace {

const QString realExport = QString(DISCARY_TEST_DATA) + "/import/discogs-collection_qr-recordlabels_example.csv";
const QByteArray header =
    "Catalog#,Artist,Title,Label,Format,Rating,Released,release_id,CollectionFolder,Date Added,"
    "Collection Media Condition,Collection Sleeve Condition,Collection Notes";

class DiscogsCsvTest : public ImportTestBase {
 protected:
  static std::vector<Entry*> titled(MyController& controller, const QString& title) {
    std::vector<Entry*> found;
    for (Entry* e : controller.managedObjectContext().entries())
      if (e->stringValue("title") == title) found.push_back(e);
    return found;
  }
  static QStringList urls(Entry& e) {
    QStringList list;
    for (Link* link : e.linksSortedByPosition()) list << link->stringValue("url");
    return list;
  }
};

TEST(DiscogsCsvNamesTest, NumbersAfterNamesGoAndOtherBracketsStay) {
  EXPECT_EQ(DiscogsCsvImporter::withoutNameNumbers("Saga (3)"), "Saga");
  EXPECT_EQ(DiscogsCsvImporter::withoutNameNumbers("Chameleon Records (2), Elektra"), "Chameleon Records, Elektra");
  EXPECT_EQ(DiscogsCsvImporter::withoutNameNumbers("Alias (13) & Sahara (4)"), "Alias & Sahara");
  EXPECT_EQ(DiscogsCsvImporter::withoutNameNumbers("Live (In Concert)"), "Live (In Concert)");
  EXPECT_EQ(DiscogsCsvImporter::withoutNameNumbers("1999 (2)x"), "1999 (2)x");
  EXPECT_EQ(DiscogsCsvImporter::separatorOf(header + "\n"), u',');
  EXPECT_EQ(DiscogsCsvImporter::separatorOf(QString(header).replace(',', ';')), u';');
  EXPECT_FALSE(DiscogsCsvImporter::separatorOf("title,artist\nA,B\n"));
  EXPECT_FALSE(DiscogsCsvImporter::separatorOf(""));
}

TEST_F(DiscogsCsvTest, TheRealExportImportsEveryRowOnceIntoItsFolder) {
  auto controller = launch();
  ASSERT_TRUE(controller->openFile(realExport));
  EXPECT_TRUE(windowSystem.alertMessages.isEmpty()) << qPrintable(windowSystem.alertMessages.join('\n'));
  Store& store = controller->managedObjectContext();
  ASSERT_EQ(store.entries().size(), 24u);
  // The folder is the collection; no second one is named after the file.
  ASSERT_EQ(store.collections().size(), 1u);
  EXPECT_EQ(store.collections()[0]->name(), "verkoop");
  EXPECT_EQ(store.collections()[0]->memberUIDs().size(), 24u);
  EXPECT_EQ(controller->collections().selectedCollection(), store.collections()[0]);

  Entry* first = titled(*controller, "Damn The Machine").at(0);
  EXPECT_EQ(first->stringValue("artist"), "Damn The Machine");
  EXPECT_EQ(first->stringValue("label"), "A&M Records");
  EXPECT_EQ(first->stringValue("catalogNumber"), "31454 0103 2");
  EXPECT_EQ(first->stringValue("format"), "CD, Album");
  EXPECT_EQ(first->value("releaseDate").toDateTime().date().year(), 1993);
  EXPECT_EQ(first->value("dateAdded").toDateTime(), QDateTime(QDate(2017, 6, 19), QTime(3, 33, 36), Qt::UTC));
  EXPECT_EQ(first->stringValue("discogsReleaseID"), "4620147");
  EXPECT_EQ(urls(*first), QStringList{"https://www.discogs.com/release/4620147"});
  for (const char* empty : {"myRating", "comments", "mediaCondition", "sleeveCondition"})
    EXPECT_FALSE(first->value(empty).isValid()) << empty;

  int sagas = 0;
  for (Entry* e : store.entries()) sagas += e->stringValue("artist") == "Saga";
  EXPECT_EQ(sagas, 3);
  EXPECT_EQ(titled(*controller, "From Out Of Nowhere").at(0)->stringValue("artist"), "The Works");
  Entry* kingsX = titled(*controller, "King's X").at(0);
  EXPECT_EQ(kingsX->stringValue("label"), "Atlantic");  // "Atlantic, Atlantic": one label, two numbers
  EXPECT_EQ(kingsX->stringValue("catalogNumber"), "7567-80506-2, 7567-80506-2 YS");
  EXPECT_EQ(titled(*controller, "Wallflower").at(0)->stringValue("label"), "Chameleon Records, Elektra");
  EXPECT_EQ(titled(*controller, "Every Beat Of My Heart").at(0)->stringValue("label"),
            "Intercord Record Service, L.A. Records");
  EXPECT_EQ(titled(*controller, "Rock Hits - 17 Classic Rock Songs").at(0)->stringValue("artist"), "Various");

  // The same export again adds nothing and fills the same collection.
  ASSERT_TRUE(controller->openFile(realExport));
  EXPECT_EQ(store.entries().size(), 24u);
  EXPECT_EQ(store.collections().size(), 1u);
  EXPECT_EQ(store.collections()[0]->memberUIDs().size(), 24u);
  ASSERT_FALSE(windowSystem.notices.isEmpty());
  EXPECT_TRUE(windowSystem.notices.last().startsWith("24 releases were in the catalogue already"));
}

TEST_F(DiscogsCsvTest, HostileExportsImportAsFarAsTheyGo) {
  auto controller = launch();
  Store& store = controller->managedObjectContext();
  // A spreadsheet's copy: byte order mark, semicolons, CRLF, quoted separators and line breaks, a
  // custom field of the site, two copies of one release, a ragged row and bad values.
  QByteArray text = "\xef\xbb\xbf" + QByteArray(header).replace(',', ';') + ";Collection Shelf\r\n";
  text += "\"CAT 1; CAT 2\";\"Björk (2)\";\"Title; with \"\"quotes\"\"\";Label (4);LP;4;1997-03-00;42;"
          "\"Jazz, Vocal\";2020-01-02 10:20:30;Near Mint (NM or M-);Very Good (VG);\"first line\nsecond line\";A3\r\n";
  text += "none;Second;Second;L;CD;9;sometime;42;;;;;;\r\n";
  text += "X;Short;Short Row\r\n";
  text += "Y;Z;No Id;L;CD;;1980;abc;Jazz, Vocal;;;;;\r\n";
  ASSERT_TRUE(controller->openFile(write("collection.csv", text)));
  ASSERT_EQ(store.entries().size(), 4u);
  Entry* first = titled(*controller, "Title; with \"quotes\"").at(0);
  EXPECT_EQ(first->stringValue("artist"), "Björk");
  EXPECT_EQ(first->stringValue("label"), "Label");
  EXPECT_EQ(first->stringValue("catalogNumber"), "CAT 1; CAT 2");
  EXPECT_EQ(first->value("myRating").toLongLong(), 8);  // four stars of five
  EXPECT_EQ(first->value("releaseDate").toDateTime().date(), QDate(1997, 3, 1));
  EXPECT_EQ(first->stringValue("comments"), "first line\nsecond line");
  EXPECT_EQ(first->stringValue("mediaCondition"), "Near Mint (NM or M-)");
  EXPECT_EQ(first->stringValue("sleeveCondition"), "Very Good (VG)");
  // The site's custom field takes the first free custom field and names it.
  const auto shelf = controller->fieldsController()->customFieldWithTitle("Shelf");
  ASSERT_TRUE(shelf.has_value());
  EXPECT_EQ(first->stringValue(*shelf), "A3");
  Entry* second = titled(*controller, "Second").at(0);
  EXPECT_FALSE(second->value("myRating").isValid());
  EXPECT_FALSE(second->value("catalogNumber").isValid());  // "none"
  EXPECT_EQ(second->stringValue("discogsReleaseID"), "42");  // a second copy of one release
  EXPECT_FALSE(titled(*controller, "No Id").at(0)->value("discogsReleaseID").isValid());
  EXPECT_EQ(controller->collections().collectionWithName("Jazz, Vocal", true)->memberUIDs().size(), 2u);
  EXPECT_EQ(controller->collections().collectionWithName("Uncategorized", true)->memberUIDs().size(), 2u);
  ASSERT_EQ(windowSystem.alertMessages.size(), 1);
  const QString& problems = windowSystem.alertMessages[0];
  for (const char* said : {"Row 3: '9' is not a rating of 1 to 5", "Row 3: 'sometime' is not a release date",
                           "Row 4 has 3 fields where the header has 14", "Row 5: 'abc' is not a release id"})
    EXPECT_TRUE(problems.contains(said)) << said << "\n" << qPrintable(problems);

  // Again with a third copy of release 42 added: only that one is new.
  windowSystem.alertMessages.clear();
  text += "C;Third;Third;L;CD;;;42;;;;;;\r\n";
  ASSERT_TRUE(controller->openFile(write("collection.csv", text)));
  // The third copy is new; so are, again, the two rows that name no release.
  EXPECT_EQ(store.entries().size(), 7u);
  EXPECT_EQ(titled(*controller, "Third").size(), 1u);
  EXPECT_EQ(titled(*controller, "Second").size(), 1u);
}

TEST_F(DiscogsCsvTest, MissingColumnsHeaderOnlyAndEmptyFiles) {
  auto controller = launch();
  Store& store = controller->managedObjectContext();
  // No Rating and no Format column: the rest is read by name.
  ASSERT_TRUE(controller->openFile(write("old.csv", "Catalog#,Artist,Title,Label,Released,release_id\nC1,A,T,L,2001,7\n")));
  ASSERT_EQ(store.entries().size(), 1u);
  EXPECT_EQ(store.entries()[0]->stringValue("title"), "T");
  EXPECT_EQ(store.entries()[0]->value("releaseDate").toDateTime().date().year(), 2001);
  ASSERT_EQ(windowSystem.alertMessages.size(), 1);
  EXPECT_TRUE(windowSystem.alertMessages[0].contains("The file has no column 'Rating'"));
  EXPECT_TRUE(windowSystem.alertMessages[0].contains("The file has no column 'CollectionFolder'"));

  windowSystem.alertMessages.clear();
  EXPECT_TRUE(controller->openFile(write("header.csv", header + "\n")));  // read in full, nothing in it
  EXPECT_TRUE(windowSystem.alertMessages.isEmpty());
  EXPECT_FALSE(controller->openFile(write("empty.csv", "")));
  EXPECT_TRUE(windowSystem.alertMessages.value(0).startsWith("File format not recognized."));
  EXPECT_EQ(store.entries().size(), 1u);
  EXPECT_EQ(store.collections().size(), 1u);
}

TEST_F(DiscogsCsvTest, AHundredThousandRowsAllArriveInTheirFolders) {
  auto controller = launch();
  QByteArray text = header + "\n";
  const int rows = 100000;
  for (int i = 0; i < rows; ++i)
    text += "C" + QByteArray::number(i) + ",Artist (2),Album " + QByteArray::number(i) + ",\"L (3), M\",CD,5,1999," +
            QByteArray::number(i + 1) + ",F" + QByteArray::number(i % 4) + ",,,,\n";
  ASSERT_TRUE(controller->openFile(write("big.csv", text)));
  Store& store = controller->managedObjectContext();
  ASSERT_EQ(store.entries().size(), size_t(rows));
  EXPECT_EQ(store.collections().size(), 4u);
  for (const Collection* folder : store.collections()) EXPECT_EQ(folder->memberUIDs().size(), size_t(rows / 4));
  EXPECT_EQ(store.entries().back()->stringValue("label"), "L, M");
  EXPECT_EQ(store.entries().back()->stringValue("discogsReleaseID"), QString::number(rows));
  EXPECT_FALSE(store.hasChanges());
}

TEST_F(DiscogsCsvTest, ColumnsGoToCustomFieldsByTitleUntilNoneIsFree) {
  auto controller = launch();
  settings.setObject(MyFieldsControllerShared::customTitlesKey, QVariantMap{{"custom2", "Shelf"}});
  QByteArray text = header;
  for (int n = 0; n <= 10; ++n) text += ",Collection F" + QByteArray::number(n);
  text += ",Collection Shelf\n1,A,T,L,CD,,,5,,,,,";
  for (int n = 0; n <= 10; ++n) text += ",v" + QByteArray::number(n);
  text += ",B2\n";
  ASSERT_TRUE(controller->openFile(write("fields.csv", text)));
  Entry* e = titled(*controller, "T").at(0);
  EXPECT_EQ(e->stringValue("custom2"), "B2");  // the field the user named
  EXPECT_EQ(e->stringValue("custom1"), "v0");
  EXPECT_EQ(e->stringValue("custom3"), "v1");
  EXPECT_EQ(e->stringValue("custom10"), "v8");
  ASSERT_EQ(windowSystem.alertMessages.size(), 1);
  EXPECT_TRUE(windowSystem.alertMessages[0].contains("The column 'Collection F9' was left out"));
  EXPECT_TRUE(settings.objectForKey(MyFieldsControllerShared::fieldsOnKey).toStringList().contains("custom10"));
}

}  // namespace
