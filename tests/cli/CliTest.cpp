#include "CliRunner.h"
#include "SqliteDatabase.h"
#include "StoreSchema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using Outcome = CliRunner::Outcome;

class CliTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  CliRunner cli{dir.path()};
  void SetUp() override {
    cli.environment = QProcessEnvironment::systemEnvironment();
    cli.environment.insert("LC_ALL", "C");  // numbers as 1,234.50 whatever the machine's language
  }
  Outcome discary(const QStringList& args, const QString& workingDirectory = {}) {
    return cli.run(args, workingDirectory);
  }
};

TEST_F(CliTest, AddListEditDeleteRoundTrip) {
  Outcome added = discary({"--json", "add", "title=Mingus Ah Um", "artist=Charles Mingus", "releaseDate=1959",
                       "price=9.99", "--track", "name=Better Git It in Your Soul;duration=7:23",
                       "--track", "name=Goodbye Pork Pie Hat;duration=5:44;position=5",
                       "--track", "name=Fables of \"Faubus\"\n;duration=0:30;position=1", "--collection", "Bass"});
  ASSERT_EQ(added.status, 0) << added.err.constData();
  const QJsonObject entry = added.json().toObject();
  const qint64 uid = entry["uid"].toInteger();
  EXPECT_EQ(entry["releaseDate"].toString(), "1959-07-01T12:00:00Z");
  EXPECT_EQ(entry["numberOfTracks"].toString(), "3");
  EXPECT_EQ(entry["duration"].toString(), "13:37");
  EXPECT_EQ(entry["tracks"].toArray()[2].toObject()["position"].toInteger(), 5);
  EXPECT_EQ(entry["collections"].toArray(), QJsonArray{"Bass"});
  EXPECT_FALSE(entry.contains("label"));  // absent values are absent keys

  Outcome dup = discary({"add", "title=Mingus Ah Um", "artist=Charles Mingus"});
  EXPECT_EQ(dup.status, 1);  // the first button, "Don't Add"
  Outcome again = discary({"--button", "2", "add", "title=Mingus Ah Um", "artist=Charles Mingus"});
  EXPECT_EQ(again.status, 0);

  Outcome edited = discary({"--json", "edit", QString::number(uid), "label=Columbia", "price=", "myRating=9"});
  ASSERT_EQ(edited.status, 0) << edited.err.constData();
  EXPECT_EQ(edited.json().toObject()["label"].toString(), "Columbia");
  EXPECT_EQ(edited.json().toObject()["myRating"].toInteger(), 9);  // out of 10, stored as given
  EXPECT_FALSE(edited.json().toObject().contains("price"));

  Outcome listed = discary({"--json", "list", "--collection", "Bass"});
  ASSERT_EQ(listed.status, 0);
  ASSERT_EQ(listed.json().toArray().size(), 1);
  EXPECT_EQ(listed.json().toArray()[0].toObject()["label"].toString(), "Columbia");
  // Listing reads the saved rows, not the loaded objects: the two must print alike.
  EXPECT_EQ(listed.json().toArray()[0].toObject()["tracks"], entry["tracks"]);
  Outcome table = discary({"list", "--columns", "title,label,myRating"});
  EXPECT_TRUE(table.out.contains("Mingus Ah Um")) << table.out.constData();
  EXPECT_TRUE(table.out.contains("Columbia"));
  EXPECT_TRUE(table.out.contains("★★★★½")) << table.out.constData();

  Outcome collections = discary({"--json", "collections"});
  EXPECT_EQ(collections.json().toArray().last().toObject()["count"].toInt(), 1);

  EXPECT_EQ(discary({"edit", "Mingus Ah Um", "label=x"}).status, 1);  // two entries share that title
  EXPECT_EQ(discary({"delete", QString::number(uid)}).status, 0);
  EXPECT_EQ(discary({"--json", "list"}).json().toArray().size(), 1);
  EXPECT_EQ(discary({"delete", QString::number(uid)}).status, 1);
}

TEST_F(CliTest, CommandsOnOneEntryFindItByUidOrExactTitle) {
  const auto uidOf = [](const Outcome& o) { return QString::number(o.json().toObject()["uid"].toInteger()); };
  const QString blue = uidOf(discary({"--json", "add", "title=Blue", "artist=Joni Mitchell", "--collection", "Folk"}));
  const QString cedilla = uidOf(discary({"--json", "add", QString::fromUtf8("title=Ça ira"), "artist=Etienne"}));
  // Duplicates are found ignoring case, beyond ASCII too; the title alone is not enough.
  EXPECT_EQ(discary({"add", "title=BLUE", "artist=joni mitchell"}).status, 1);
  EXPECT_EQ(discary({"add", QString::fromUtf8("title=ÇA IRA"), "artist=ETIENNE"}).status, 1);
  const QString blue2 = uidOf(discary({"--json", "add", "title=Blue", "artist=Someone else"}));
  ASSERT_NE(blue2, "0");

  Outcome twice = discary({"show", "Blue"});
  EXPECT_EQ(twice.status, 1);
  EXPECT_TRUE(twice.err.contains("several entries are titled 'Blue'")) << twice.err.constData();
  Outcome none = discary({"edit", "blue", "label=x"});
  EXPECT_EQ(none.status, 1);
  EXPECT_TRUE(none.err.contains("no entry 'blue'")) << none.err.constData();
  EXPECT_EQ(discary({"link", "add", "999999", "--url", "https://example.org"}).status, 1);

  Outcome shown = discary({"--json", "edit", blue, "label=Reprise"});
  ASSERT_EQ(shown.status, 0) << shown.err.constData();
  EXPECT_EQ(shown.json().toObject()["collections"].toArray(), QJsonArray{"Folk"});
  ASSERT_EQ(discary({"link", "add", QString::fromUtf8("Ça ira"), "--url", "https://example.org/ca"}).status, 0);
  ASSERT_EQ(discary({"delete", blue2}).status, 0);
  Outcome page = discary({"show", "Blue", "--html"});
  ASSERT_EQ(page.status, 0) << page.err.constData();
  EXPECT_TRUE(page.out.contains("Reprise"));

  const QJsonArray all = discary({"--json", "list"}).json().toArray();
  ASSERT_EQ(all.size(), 2);
  EXPECT_EQ(QString::number(all[0].toObject()["uid"].toInteger()), blue);
  EXPECT_EQ(all[0].toObject()["label"].toString(), "Reprise");
  EXPECT_EQ(all[1].toObject()["links"].toArray().size(), 1);
  EXPECT_EQ(QString::number(all[1].toObject()["uid"].toInteger()), cedilla);
  EXPECT_EQ(discary({"--json", "collections"}).json().toArray().last().toObject()["count"].toInt(), 1);
}

TEST_F(CliTest, TotalsOfTheListOrOfASelection) {
  ASSERT_EQ(discary({"add", "title=A", "price=1200", "duration=40:00", "status=1"}).status, 0);
  ASSERT_EQ(discary({"add", "title=B", "price=34.5", "paid=-2", "duration=50:00"}).status, 0);
  ASSERT_EQ(discary({"add", "title=C", "discs=3"}).status, 0);
  QJsonObject all = discary({"--json", "totals"}).json().toObject();
  EXPECT_EQ(all["footer"].toString(), "3 Albums | 1 Borrowed | Value: 1,234.50 | 1.50 Hours");
  EXPECT_EQ(all["totals"].toObject()["totalWanted"].toString(), "0");
  EXPECT_EQ(discary({"settings", "set", "Bottom Fields", "[false,false,false,true,false,false,true]"}).status, 0);
  QJsonObject two = discary({"--json", "totals", "--select", "A,B"}).json().toObject();
  EXPECT_EQ(two["footer"].toString(), QString("3 Albums | 2 Discs | Spent: ") + QChar(0x2212) + "2.00");
  // Huge values neither overflow nor print "inf".
  ASSERT_EQ(discary({"add", "title=D", "paid=" + QString(400, '9'), "discs=9223372036854775807"}).status, 0);
  ASSERT_EQ(discary({"add", "title=E", "discs=9223372036854775807"}).status, 0);
  const QJsonObject huge = discary({"--json", "totals"}).json().toObject()["totals"].toObject();
  EXPECT_EQ(huge["totalDiscs"].toString(), "9,223,372,036,854,775,807");
  EXPECT_EQ(huge["totalPaid"].toString(), "9,223,372,036,852.78");  // the most one amount counts for, less 2
  EXPECT_EQ(discary({"totals", "--select", "nosuch"}).status, 1);
  EXPECT_EQ(discary({"totals", "--collection", "nosuch"}).status, 1);
}

TEST_F(CliTest, LinkAddFinishesTheLink) {
  ASSERT_EQ(discary({"add", "title=Blue"}).status, 0);
  Outcome added = discary({"--json", "link", "add", "Blue", "--name", "Rolling Stone Review", "--url", "https://example.org/blue"});
  ASSERT_EQ(added.status, 0) << added.err.constData();
  EXPECT_EQ(added.json().toObject()["type"].toString(), "review");
  EXPECT_EQ(discary({"--json", "list"}).json().toArray()[0].toObject()["links"].toArray().size(), 1);
  EXPECT_EQ(discary({"link", "add", "Nothing", "--url", "https://example.org"}).status, 1);
  EXPECT_EQ(discary({"link", "add", "Blue", "--name", "x"}).status, 2);
}

TEST_F(CliTest, OpenHandsStringsToTheSearchPanelOrTheCatalogue) {
  const auto open = [this](const QString& text) { return discary({"--json", "open", text}); };
  QJsonObject words = open("Kind of Blue").json().toObject();
  EXPECT_EQ(words, (QJsonObject{{"handled", true}, {"site", "none"}, {"search", "Kind of Blue"}}));
  const QString result = "http://gnudb.gnudb.org/freedb_search_fmt.php?cat=jazz&id=6a0b5a08";
  EXPECT_EQ(open(result).json().toObject()["site"].toString(), "Freedb");
  EXPECT_EQ(open(result + "&next=https://www.prestomusic.com/classical/products/1").json().toObject()["site"].toString(),
            "Presto");
  // The result pages of the run's own server, with its port as the URL writes it.
  const QString local = "http://127.0.0.1:8631/freedb_search_fmt.php?cat=rock&id=9a0bed0d";
  EXPECT_EQ(discary({"--json", "--server", "127.0.0.1:8631", "open", local}).json().toObject()["site"].toString(), "Freedb");
  EXPECT_EQ(open(local).status, 1);  // without it, an address elsewhere
  ASSERT_EQ(discary({"settings", "set", "CDDB Server", "127.0.0.1:8631"}).status, 0);
  EXPECT_EQ(open(local).json().toObject()["site"].toString(), "Freedb");
  Outcome elsewhere = open("https://example.org/page");
  EXPECT_EQ(elsewhere.status, 1);
  EXPECT_EQ(elsewhere.json().toObject(), (QJsonObject{{"handled", false}}));
  const qint64 uid = discary({"--json", "add", "title=Blue"}).json().toObject()["uid"].toInteger();
  EXPECT_EQ(open(QString("discary://entry/%1").arg(uid)).json().toObject(), (QJsonObject{{"handled", true}}));
  EXPECT_EQ(open("discary://entry/999999").status, 1);
}

TEST_F(CliTest, UsageErrorsExitTwoWithOneLine) {
  const QList<QStringList> cases = {{"frobnicate"},        {"--frob"},           {"add", "nosuch=1"},
                                    {"add", "myRating=lots"}, {"list", "--what"},  {"fields", "--columns", "--feed"},
                                    {"add", "--track", "volume=11"}, {"--button", "zero", "list"}, {"collection"}};
  for (const QStringList& args : cases) {
    Outcome r = discary(args);
    EXPECT_EQ(r.status, 2) << qPrintable(args.join(' '));
    EXPECT_EQ(r.err.count('\n'), 1) << r.err.constData();
  }
}

TEST_F(CliTest, SettingsFieldsAndSearchTypesAnswerInJson) {
  EXPECT_EQ(discary({"--json", "settings", "get", "Bottom Fields"}).json().toArray(),
            (QJsonArray{true, true, false, false, true, true, false}));
  EXPECT_EQ(discary({"settings", "set", "CellSize", "200"}).status, 0);
  EXPECT_EQ(discary({"settings", "get", "CellSize"}).out.trimmed(), "200");
  EXPECT_EQ(discary({"settings", "unset", "CellSize"}).status, 0);
  EXPECT_EQ(discary({"settings", "get", "CellSize"}).out.trimmed(), "150");

  const QJsonArray fields = discary({"--json", "fields"}).json().toArray();
  ASSERT_EQ(fields.size(), 58);
  const QJsonObject duration = fields[13].toObject();
  EXPECT_EQ(duration["identifier"].toString(), "duration");
  EXPECT_EQ(duration["columnType"].toInt(), 7);
  EXPECT_EQ(duration["numberColumnType"].toInt(), 5);
  EXPECT_EQ(duration["width"].toDouble(), 40);
  const QJsonObject tag2 = fields[53].toObject();
  EXPECT_EQ(tag2["identifier"].toString(), "customTag2");
  EXPECT_TRUE(tag2["isOff"].toBool());
  EXPECT_EQ(tag2["location"].toString(), "extra");
  EXPECT_EQ(tag2["type"].toInt(), 11);
  EXPECT_EQ(discary({"--json", "fields", "--personal"}).json().toArray().size(), 39);

  const QJsonArray types = discary({"--json", "search-types"}).json().toArray();
  ASSERT_EQ(types.size(), 18);
  EXPECT_EQ(types[0].toObject(), (QJsonObject{{"type", 0}, {"label", "Search"}, {"identifier", "title"}}));
  EXPECT_EQ(types[10].toObject()["label"].toString(), "Search Genres");
  EXPECT_FALSE(types[17].toObject().contains("identifier"));  // 100: no field clicked on the command line
}

TEST_F(CliTest, EveryCommandAnswersHelpWithoutRunning) {
  for (const QString& command : {"add", "list", "import", "search-types", "help"}) {
    Outcome r = discary({command, "--help"});
    EXPECT_EQ(r.status, 0) << qPrintable(command);
    EXPECT_TRUE(r.out.contains(("`discary " + command).toUtf8())) << r.out.constData();
    EXPECT_TRUE(r.err.isEmpty()) << r.err.constData();
  }
  EXPECT_EQ(discary({"add", "title=Blue", "--help"}).status, 0);
  EXPECT_EQ(discary({"--json", "list"}).json().toArray().size(), 0);  // nothing was added
  Outcome whole = discary({"--help"});
  EXPECT_EQ(whole.status, 0);
  EXPECT_TRUE(whole.out.contains("### search-types"));
}

TEST_F(CliTest, AnAlertAnsweredInAdvanceIsStillSaid) {
  QFile odd(dir.filePath("odd.xml"));
  ASSERT_TRUE(odd.open(QIODevice::WriteOnly));
  odd.write("<?xml version=\"1.0\"?>\n<odd><thing/></odd>\n");
  odd.close();
  Outcome r = discary({"--button", "1", "import", odd.fileName()});
  EXPECT_EQ(r.status, 1);
  EXPECT_TRUE(r.err.contains("File format not recognized.")) << r.err.constData();
}

TEST_F(CliTest, CatalogueThatIsNotACatalogueIsRefused) {
  QFile bad(dir.filePath("c/Discary.sqlite"));
  QDir().mkpath(dir.filePath("c"));
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write(QByteArray(4096, 'x'));
  bad.close();
  Outcome r = discary({"list"});
  EXPECT_EQ(r.status, 1);
  EXPECT_TRUE(r.err.contains("not a Discary catalogue")) << r.err.constData();
  EXPECT_EQ(QFileInfo(bad.fileName()).size(), 4096);
}

TEST_F(CliTest, AnOlderCatalogueIsUpgradedByTheFirstCommandAndKeepsItsEntries) {
  const QString old = dir.filePath("old/Old.sqlite");
  ASSERT_TRUE(QDir().mkpath(dir.filePath("old")));
  {
    SqliteDatabase db;
    ASSERT_TRUE(db.open(old, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
    QStringList statements = StoreSchema::version5CreateStatements();
    statements << "INSERT INTO entries(uid,title,artist,format) VALUES(5,'Kind of Blue','Miles Davis','CD')"
               << "INSERT INTO tracks(entry_uid,name,position,duration) VALUES(5,'So What',0,'9:22')"
               << "INSERT INTO collections(id,name,position) VALUES(9,'Jazz',0)"
               << "INSERT INTO collection_entries(collection_id,entry_uid,position) VALUES(9,5,0)"
               << "PRAGMA user_version=5";
    for (const QString& sql : statements) ASSERT_TRUE(db.exec(sql)) << qPrintable(db.errorMessage());
  }
  Outcome listed = discary({"list", "--catalogue", old});
  ASSERT_EQ(listed.status, 0) << listed.err.constData();
  EXPECT_TRUE(listed.out.contains("Kind of Blue")) << listed.out.constData();
  EXPECT_TRUE(QFile::exists(old + ".version5"));

  Outcome edited = discary({"--json", "edit", "5", "releaseID=b8f1c7e6-0d1a-4b7e-9c1e-3f9a2d6c4e10",
                            "barcodeSource=sleeve", "--catalogue", old});
  ASSERT_EQ(edited.status, 0) << edited.err.constData();
  const QJsonObject entry = discary({"--json", "list", "--catalogue", old}).json().toArray()[0].toObject();
  EXPECT_EQ(entry["title"].toString(), "Kind of Blue");
  EXPECT_EQ(entry["releaseID"].toString(), "b8f1c7e6-0d1a-4b7e-9c1e-3f9a2d6c4e10");
  EXPECT_EQ(entry["barcodeSource"].toString(), "sleeve");
  EXPECT_FALSE(entry.contains("musicBrainzDiscID"));  // set only when known
  EXPECT_EQ(entry["tracks"].toArray()[0].toObject()["name"].toString(), "So What");
  EXPECT_EQ(entry["collections"].toArray(), QJsonArray{"Jazz"});
}

TEST_F(CliTest, ACollectionExportOfTheSiteImportsOnceIntoItsFolders) {
  const QString csv = QStringLiteral(DISCARY_TEST_DATA "/import/discogs-collection_qr-recordlabels_example.csv");
  Outcome imported = discary({"--json", "import", csv});
  ASSERT_EQ(imported.status, 0) << imported.err.constData();
  EXPECT_EQ(imported.object()["entries"].toArray().size(), 24);
  EXPECT_EQ(imported.object()["collections"].toArray(), QJsonArray{"verkoop"});

  const QJsonArray listed = discary({"--json", "list", "--collection", "verkoop"}).json().toArray();
  ASSERT_EQ(listed.size(), 24);
  QJsonObject silentKnight;
  for (const QJsonValue& e : listed)
    if (e.toObject()["title"] == "Silent Knight") silentKnight = e.toObject();
  EXPECT_EQ(silentKnight["artist"].toString(), "Saga");
  EXPECT_EQ(silentKnight["label"].toString(), "Bon Aire");
  EXPECT_EQ(silentKnight["catalogNumber"].toString(), "258 162, 258162-222");
  EXPECT_EQ(silentKnight["format"].toString(), "CD, Album, RE");
  EXPECT_EQ(silentKnight["dateAdded"].toString(), "2017-06-19T03:29:31Z");
  EXPECT_EQ(silentKnight["discogsReleaseID"].toString(), "1136064");
  EXPECT_EQ(silentKnight["links"].toArray()[0].toObject()["url"].toString(), "https://www.discogs.com/release/1136064");

  // Again: nothing new, the folder's collection is the same one.
  Outcome again = discary({"--json", "import", csv});
  ASSERT_EQ(again.status, 0) << again.err.constData();
  EXPECT_TRUE(again.object()["entries"].toArray().isEmpty());
  const QJsonArray collections = discary({"--json", "collections"}).json().toArray();
  int verkoop = 0;
  for (const QJsonValue& c : collections)
    if (c.toObject()["name"] == "verkoop") verkoop = c.toObject()["count"].toInt();
  EXPECT_EQ(verkoop, 24);
  EXPECT_EQ(collections.size(), 3);  // borrowed, wish list, verkoop

  // A file that is empty is no export at all.
  QFile empty(dir.filePath("empty.csv"));
  ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
  empty.close();
  EXPECT_EQ(discary({"import", empty.fileName()}).status, 1);
}

TEST_F(CliTest, OverdueLoansByTheInjectedClock) {
  ASSERT_EQ(discary({"add", "title=Upstairs", "status=1", "borrowedBy=Ann", "dueDate=2026-03-09"}).status, 0);
  ASSERT_EQ(discary({"add", "title=Bitches Brew", "status=1", "dueDate=2026-03-10"}).status, 0);
  ASSERT_EQ(discary({"add", "title=Zen Arcade", "status=0", "dueDate=2026-03-01"}).status, 0);
  cli.environment.insert("DISCARY_NOW", "2026-03-10T09:00:00Z");
  Outcome overdue = discary({"--json", "list", "--overdue"});
  ASSERT_EQ(overdue.status, 0) << overdue.err.constData();
  ASSERT_EQ(overdue.json().toArray().size(), 1);
  EXPECT_EQ(overdue.json().toArray()[0].toObject()["title"].toString(), "Upstairs");
  // The borrowed collection puts the late loan before the one due today.
  const QJsonArray borrowed = discary({"--json", "list", "--collection", "Borrowed"}).json().toArray();
  ASSERT_EQ(borrowed.size(), 2);
  EXPECT_EQ(borrowed[0].toObject()["title"].toString(), "Upstairs");

  cli.environment.insert("DISCARY_NOW", "2026-03-11T09:00:00Z");
  Outcome later = discary({"list", "--overdue", "--columns", "title,borrowedBy"});
  EXPECT_TRUE(later.out.contains("Upstairs") && later.out.contains("Bitches Brew")) << later.out.constData();
  EXPECT_FALSE(later.out.contains("Zen Arcade"));
  cli.environment.insert("DISCARY_NOW", "2026-03-01T09:00:00Z");
  EXPECT_TRUE(discary({"--json", "list", "--overdue"}).json().toArray().isEmpty());
}

TEST_F(CliTest, PrintListsTheLayoutsAndPrintsCollectionsToPdf) {
  const QJsonArray layouts = discary({"--json", "print", "--layouts"}).json().toArray();
  ASSERT_EQ(layouts.size(), 5);
  const QJsonArray infoColumns{"title", ".34", "artist", ".20", "genre", ".20", "myRating", ".16", "duration", ".10"};
  EXPECT_EQ(layouts[0].toObject(),
            (QJsonObject{{"name", "Info"},
                         {"description", "Prints Title, Artist, Genre, My Rating and Duration for the selected collection."},
                         {"columns", infoColumns}}));
  EXPECT_EQ(layouts[4].toObject().value("name").toString(), "Custom");
  EXPECT_FALSE(layouts[4].toObject().contains("columns"));
  EXPECT_TRUE(discary({"print", "--layouts"}).out.contains("Classical\n"));
  EXPECT_FALSE(QFile::exists(dir.filePath("c/Discary.sqlite")));  // the layouts need no catalogue

  ASSERT_EQ(discary({"add", "title=Kind of Blue", "artist=Miles Davis", "myRating=5", "--collection", "Jazz"}).status,
            0);
  ASSERT_EQ(discary({"add", "title=Blue Train", "artist=John Coltrane"}).status, 0);
  const QString pdf = dir.filePath("info.pdf");
  Outcome printed = discary({"--json", "print", "--layout", "info", "--pdf", pdf, "--collection", "Jazz"});
  ASSERT_EQ(printed.status, 0) << printed.err.constData();
  EXPECT_EQ(printed.json().toObject()["pages"].toInt(), 1);
  QFile file(pdf);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().startsWith("%PDF"));
  EXPECT_EQ(discary({"print", "--covers", "--landscape", "--pdf", dir.filePath("covers.pdf")}).status, 0);
  EXPECT_TRUE(QFile::exists(dir.filePath("covers.pdf")));

  Outcome unknown = discary({"print", "--layout", "Poster", "--pdf", pdf});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_EQ(unknown.err.count('\n'), 1) << unknown.err.constData();
  EXPECT_TRUE(unknown.err.contains("Poster"));
  const QString unwritable = dir.filePath("no/such/folder/out.pdf");
  Outcome failed = discary({"print", "--layout", "Info", "--pdf", unwritable});
  EXPECT_EQ(failed.status, 1);
  EXPECT_TRUE(failed.err.contains(unwritable.toUtf8())) << failed.err.constData();
  EXPECT_EQ(discary({"print", "--layout", "Info", "--pdf", pdf, "--collection", "Rock"}).status, 1);
  const QList<QStringList> usageErrors{{"print"}, {"print", "--layout", "Info"}, {"print", "--layouts", "--covers"}};
  for (const QStringList& args : usageErrors)
    EXPECT_EQ(discary(args).status, 2) << qPrintable(args.join(' '));
}

}  // namespace

namespace {

TEST_F(CliTest, ExportAndImportRoundTripInEveryForm) {
  ASSERT_EQ(discary({"add", "title=Kind of Blue", "artist=Miles Davis", "releaseDate=1959", "--track",
                     "name=So What;duration=9:22", "--collection", "Jazz"}).status, 0);
  ASSERT_EQ(discary({"add", "title=Other, \"quoted\"", "status=2"}).status, 0);
  for (const QStringList& form : {QStringList{"discary"}, QStringList{"discary", "--folder"}, QStringList{"csv"}}) {
    const QString out = dir.filePath(QString("out/jazz-%1.%2").arg(form.size()).arg(form[0]));
    Outcome exported = discary(QStringList{"--json", "export", "--format"} + form + QStringList{"--output", out, "--collection", "Jazz"});
    ASSERT_EQ(exported.status, 0) << exported.err.constData();
    EXPECT_EQ(exported.json().toObject()["entries"].toInt(), 1);
    Outcome imported = discary({"--json", "import", out});
    ASSERT_EQ(imported.status, 0) << imported.err.constData();
    const QJsonObject result = imported.json().toObject();
    EXPECT_EQ(result["results"].toArray()[0].toObject()["ok"].toBool(), true);
    ASSERT_EQ(result["entries"].toArray().size(), 1);
    EXPECT_EQ(result["collections"].toArray().size(), 1);
    Outcome listed = discary({"--json", "list", "--collection", result["collections"].toArray()[0].toString()});
    ASSERT_EQ(listed.json().toArray().size(), 1) << listed.out.constData();
    const QJsonObject entry = listed.json().toArray()[0].toObject();
    EXPECT_EQ(entry["uid"], result["entries"].toArray()[0]);
    EXPECT_EQ(entry["artist"].toString(), "Miles Davis");
    EXPECT_EQ(entry["releaseDate"].toString(), "1959-07-01T12:00:00Z");
    ASSERT_EQ(entry["tracks"].toArray().size(), 1);
    EXPECT_EQ(entry["tracks"].toArray()[0].toObject()["name"].toString(), "So What");
  }
  EXPECT_EQ(discary({"export", "--format", "pdf", "--output", dir.filePath("x")}).status, 2);
  EXPECT_EQ(discary({"export", "--format", "csv", "--folder", "--output", dir.filePath("x")}).status, 2);
  EXPECT_EQ(discary({"import"}).status, 2);
  Outcome missing = discary({"--json", "import", dir.filePath("nothing.csv")});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.json().toObject()["results"].toArray()[0].toObject()["ok"].toBool(), false);
}

QString copyAudio(const QString& name, const QString& target) {
  QDir().mkpath(QFileInfo(target).path());
  EXPECT_TRUE(QFile::copy(QStringLiteral(DISCARY_TEST_DATA "/audio/") + name, target));
  return target;
}

TEST_F(CliTest, ImportOfSingleAudioFilesIsSavedWithItsCover) {
  const QString m4a = copyAudio("music-metadata_issue-79.m4a", dir.filePath("in/01 Uprising.m4a"));
  Outcome imported = discary({"--json", "import", m4a});
  ASSERT_EQ(imported.status, 0) << imported.err.constData();
  const QJsonArray uids = imported.json().toObject()["entries"].toArray();
  ASSERT_EQ(uids.size(), 1);
  const QJsonArray listed = discary({"--json", "list", "--collection", "Imported Audio"}).json().toArray();
  ASSERT_EQ(listed.size(), 1);
  const QJsonObject entry = listed[0].toObject();
  EXPECT_EQ(entry["uid"], uids[0]);
  EXPECT_EQ(entry["title"].toString(), "The Resistance");
  EXPECT_EQ(entry["links"].toArray()[0].toObject()["url"].toString(), "file://" + m4a);
  EXPECT_TRUE(QFile::exists(dir.filePath(QString("c/Covers/%1.jpg").arg(uids[0].toInteger()))));

  // An MP4 is an audio file alone as much as inside a folder.
  const QString mp4 = copyAudio("music-metadata_pr-544.m4a", dir.filePath("in/song.mp4"));
  ASSERT_EQ(discary({"import", mp4}).status, 0);
  EXPECT_EQ(discary({"--json", "list", "--collection", "Imported Audio"}).json().toArray().size(), 2);
}

TEST_F(CliTest, ImportTakesEachFileOnceHoweverItsPathIsSpelled) {
  const QString root = QDir(dir.path()).canonicalPath();  // as the working folder reads
  copyAudio("mutagen_silence-44-s.mp3", root + "/lib/Album/01.mp3");
  copyAudio("mutagen_silence-44-s.mp3", root + "/lib/Album/02.mp3");
  Outcome first = discary({"import", "lib/Album"}, root);
  ASSERT_EQ(first.status, 0) << first.err.constData();
  for (const QString& spelling : {root + "/lib/Album", QString("./lib/Album/"), QString("lib/Album/..//Album/./01.mp3")})
    EXPECT_EQ(discary({"import", spelling}, root).status, 1) << qPrintable(spelling);  // skipped as duplicates

  const QJsonArray listed = discary({"--json", "list"}).json().toArray();
  ASSERT_EQ(listed.size(), 1);
  QStringList urls;
  for (const QJsonValue& link : listed[0].toObject()["links"].toArray()) urls << link.toObject()["url"].toString();
  urls.sort();
  EXPECT_EQ(urls, (QStringList{"file://" + root + "/lib/Album/01.mp3", "file://" + root + "/lib/Album/02.mp3"}));
}

}  // namespace

TEST_F(CliTest, OutputStaysEnglishUnderAGermanDesktop) {
  // Scripts read what the commands print; only the window follows the desktop's language.
  cli.environment.insert("LANGUAGE", "de");
  cli.environment.insert("LC_ALL", "de_DE.UTF-8");
  ASSERT_EQ(discary({"add", "title=A", "status=1"}).status, 0);
  const QJsonObject totals = discary({"--json", "totals"}).json().toObject();
  const QString footer = totals["footer"].toString();
  EXPECT_TRUE(footer.startsWith("1 Albums | 1 Borrowed | Value: ")) << footer.toStdString();
}
