#include "FileKind.h"
#include "ImportTestSupport.h"

namespace {

const QString notRecognized = "File format not recognized.";

class DispatcherTest : public ImportTestBase {};

QByteArray releases(const QByteArray& head) {
  return head + "<release id=\"7\"><title>Seven</title><tracklist><track><title>A</title></track></tracklist></release></releases>";
}

TEST_F(DispatcherTest, SniffsXmlInTheTableOrderAndFallsThrough) {
  auto controller = launch();
  auto open = [&](const QString& name, const QByteArray& bytes) {
    windowSystem.alerts.clear();
    windowSystem.alertMessages.clear();
    return controller->openFile(write(name, bytes));
  };
  // Capitals in the extension still sniff; the list import makes a collection named after the file.
  EXPECT_TRUE(open("Shelf.XML", releases("<releases num=\"1\">")));
  EXPECT_NE(controller->collections().collectionWithName("Shelf", true), nullptr);
  EXPECT_NE(entryTitled(*controller, "Seven"), nullptr);

  // "<releases num=" without any "<release id=" is no release list.
  EXPECT_FALSE(open("a.xml", "<releases num=\"3\"><other/></releases>"));
  EXPECT_EQ(windowSystem.alertMessages.value(0), notRecognized);

  // The library marker counts only in a text longer than 500 characters: a short one goes on to
  // the later tests, a long one goes to the music library import.
  const QByteArray marker = "<plist version=\"1.0\"><dict><key>Music Folder</key><string>x</string>";
  EXPECT_FALSE(open("short.xml", marker + "</dict></plist>"));
  EXPECT_EQ(windowSystem.alertMessages.value(0), notRecognized);
  auto library = [&](const QByteArray& track) {
    return marker + "<key>Tracks</key><dict><key>1</key><dict>" + track + "</dict></dict>" + QByteArray(600, ' ') +
           "</dict></plist>";
  };
  // Its one track becomes an entry in a collection named after the file, saved.
  EXPECT_TRUE(open("Library.plist", library("<key>Name</key><string>t</string>")));
  const Collection* named = controller->collections().collectionWithName("Library", true);
  ASSERT_NE(named, nullptr);
  EXPECT_EQ(controller->collections().entriesIn(named).size(), 1u);
  EXPECT_EQ(controller->collections().selectedCollection(), named);
  EXPECT_FALSE(controller->managedObjectContext().hasChanges());
  // A library read in full that holds only a movie is a success that makes no collection.
  EXPECT_TRUE(open("Movies.xml", library("<key>Name</key><string>m</string><key>Movie</key><true/>")));
  EXPECT_EQ(controller->collections().collectionWithName("Movies", true), nullptr);
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
  // The marker found with no tracks ends the sniffing with the alert, though a release follows.
  EXPECT_FALSE(open("Empty.xml", marker + "<key>Tracks</key><dict/>" + QByteArray(600, ' ') + "</dict></plist>" +
                                     "<!-- <releases num=\"1\"><release id=\"1\"> -->"));
  EXPECT_TRUE(windowSystem.alertMessages.value(0).startsWith(notRecognized));

  // Formats of other cataloguers are refused with a message that says so.
  EXPECT_FALSE(open("cds.xml", "<CDInfo count=\"2\"></CDInfo>"));
  EXPECT_TRUE(windowSystem.alertMessages.value(0).contains("cannot import"));
  EXPECT_FALSE(open("lib.plist", "<library uuid=\"1\">" + QByteArray(300, ' ') + "</library>"));
  EXPECT_TRUE(windowSystem.alertMessages.value(0).contains("cannot import"));
  EXPECT_FALSE(open("garbage.xml", QByteArray("\x00\x01\x02<xml", 7)));
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
  EXPECT_EQ(windowSystem.openSheets, 0);
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 2u);
}

TEST_F(DispatcherTest, ExtensionsAndFoldersReachTheirImporters) {
  auto controller = launch();
  // Audio by the extension in any case, MP4 included; no readable audio still makes a bare entry.
  for (const char* name : {"song.MP3", "song.mp4"}) {
    const QString path = write(name, "ID3");
    ASSERT_TRUE(controller->openFile(path)) << name;
    Entry* bare = controller->managedObjectContext().entryWithLink("file://" + path);
    ASSERT_NE(bare, nullptr) << name;
    EXPECT_EQ(bare->stringValue("format"), "Digital");
  }
  EXPECT_FALSE(controller->managedObjectContext().hasChanges());
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
  QDir().mkpath(dir.filePath("Music/Album"));
  EXPECT_FALSE(controller->openFile(dir.filePath("Music")));  // a folder without audio imports nothing

  // A "shelfmark" folder is not walked: it reaches the text test and is not text.
  QDir().mkpath(dir.filePath("Books.shelfmark"));
  EXPECT_FALSE(controller->openFile(dir.filePath("Books.shelfmark")));
  EXPECT_TRUE(windowSystem.alertMessages.last().contains("not a text file"));

  // "folioextras" anywhere in the path, in any case: templates are installed from a folder.
  write("My FolioExtras/pack/Card.html", "<html>[title]</html>");
  EXPECT_TRUE(controller->openFile(dir.filePath("My FolioExtras/pack")));
  EXPECT_TRUE(QFile::exists(controller->dataFolderPath() + "/Templates/Card.html"));
  EXPECT_FALSE(controller->openFile(write("x.FOLIOEXTRAS", "zip")));

  // A binary file named .txt is refused; a card imports and selects its entry; a lookup request
  // finds an entry by title.
  EXPECT_FALSE(controller->openFile(write("photo.txt", QByteArray("\x89PNG\r\n\x1a\n\0\0\0", 11))));
  EXPECT_TRUE(windowSystem.alertMessages.last().contains("not a text file"));
  EXPECT_TRUE(controller->openFile(write("one.discarycard",
                                         "<plist version=\"1.0\"><dict><key>1</key><dict><key>title</key>"
                                         "<string>Carded</string></dict></dict></plist>")));
  Entry* carded = entryTitled(*controller, "Carded");
  ASSERT_NE(carded, nullptr);
  EXPECT_EQ(controller->entriesController().selectedObjects(), std::vector<Entry*>{carded});
  controller->entriesController().setSelectedObjects({});
  EXPECT_TRUE(controller->openFile(write("find.folio_md_c",
                                         "<plist version=\"1.0\"><dict><key>title</key><string>carded</string></dict></plist>")));
  EXPECT_EQ(controller->entriesController().selectedObjects(), std::vector<Entry*>{carded});
  EXPECT_FALSE(controller->openFile(write("none.folio_md_c", "<plist version=\"1.0\"><array/></plist>")));
  EXPECT_EQ(windowSystem.openSheets, 0);
}

TEST_F(DispatcherTest, ImportPanelOffersTheTypesAndOpensEachChoice) {
  auto controller = launch();
  windowSystem.openPanelAnswer = {write("a.csv", "title\nFirst\n"), write("b.tab", "title\tartist\nSecond\tB\n")};
  controller->importCollection();
  EXPECT_EQ(windowSystem.openPanelTypes.mid(0, 3), (QStringList{"TEXT", "discary", "discarycard"}));
  EXPECT_EQ(windowSystem.openPanelTypes.mid(12, 6), (QStringList{"m4p", "mp3", "m4a", "flac", "aif", "aiff"}));
  EXPECT_TRUE(windowSystem.openPanelTypes.contains("ogg"));  // every audio file that an import takes
  EXPECT_NE(entryTitled(*controller, "First"), nullptr);
  ASSERT_NE(entryTitled(*controller, "Second"), nullptr);
  EXPECT_EQ(entryTitled(*controller, "Second")->stringValue("artist"), "B");
}

TEST(FileKindTest, NamesDecideBeforeContentsAndCaseNeverMatters) {
  EXPECT_EQ(FileKind::byName("/m/one.DiscaryCard", false), FileKind::Card);
  EXPECT_EQ(FileKind::byName("/m/Shelf.XML", false), FileKind::Xml);
  EXPECT_EQ(FileKind::byName("/m/Lib.plist", true), FileKind::Xml);  // a folder so named is still sniffed (and fails)
  EXPECT_EQ(FileKind::byName("/m/song.MP3", false), FileKind::AudioFile);
  EXPECT_EQ(FileKind::byName("/m/My FolioExtras/pack.xml", false), FileKind::ExtrasPackage);
  EXPECT_EQ(FileKind::byName("/m/Music", true), FileKind::Folder);
  EXPECT_EQ(FileKind::byName("/m/Books.shelfmark", true), FileKind::DelimitedText);
  // Wrong or missing extensions go by the name all the same: the text importer judges the bytes.
  EXPECT_EQ(FileKind::byName("/m/library.txt", false), FileKind::DelimitedText);
  EXPECT_EQ(FileKind::byName("/m/song.mp3.txt", false), FileKind::DelimitedText);
  EXPECT_EQ(FileKind::byName("/m/noextension", false), FileKind::DelimitedText);
  EXPECT_EQ(FileKind::byName("", false), FileKind::DelimitedText);
  EXPECT_EQ(FileKind::byName("/m/.", true), FileKind::Folder);
}

TEST(FileKindTest, HostileTextsSniffToNothingOrTheirKindWithoutReadingPastTheirEnd) {
  EXPECT_EQ(FileKind::ofXmlText(u""), FileKind::Unrecognised);
  const QString marker = "<key>Music Folder</key>";
  // The library marker counts only in the first 500 characters of a longer text.
  EXPECT_EQ(FileKind::ofXmlText(marker), FileKind::Unrecognised);
  EXPECT_EQ(FileKind::ofXmlText(marker + QString(500 - marker.size(), ' ')), FileKind::Unrecognised);
  EXPECT_EQ(FileKind::ofXmlText(marker + QString(501 - marker.size(), ' ')), FileKind::MusicLibrary);
  EXPECT_EQ(FileKind::ofXmlText(QString(490, ' ') + marker + QString(100, ' ')), FileKind::Unrecognised);
  // Truncated markers and binary noise.
  EXPECT_EQ(FileKind::ofXmlText(u"<releases num="), FileKind::Unrecognised);
  EXPECT_EQ(FileKind::ofXmlText(u"<release id"), FileKind::Unrecognised);
  EXPECT_EQ(FileKind::ofXmlText(u"<CDInfo count="), FileKind::Unrecognised);
  QString noise;
  for (int i = 0; i < 4096; ++i) noise += QChar(char16_t((i * 7919) % 0xD800));
  EXPECT_EQ(FileKind::ofXmlText(noise), FileKind::Unrecognised);
  // A megabyte on one line: markers anywhere still count, markers bound to the start do not.
  const QString line(1 << 20, 'x');
  EXPECT_EQ(FileKind::ofXmlText(line + "<release id=\"1\">"), FileKind::ReleaseList);
  EXPECT_EQ(FileKind::ofXmlText(line + "CD_APPLE_MAGIC_NUMBER_TAG"), FileKind::Unrecognised);
  EXPECT_EQ(FileKind::ofXmlText("<collectorz>" + line), FileKind::ForeignCollectionExport);
  // The table order: a scanner collection wins over the releases it may hold.
  EXPECT_EQ(FileKind::ofXmlText(u"<plist version=\"1.0\">>Lending Status>Bookmark Type<releases num=<release id="),
            FileKind::ScannerCollection);
  EXPECT_EQ(FileKind::ofXmlText(u"<releases num=\"2\"><release id=\"1\">"), FileKind::ReleaseList);
}

}  // namespace
