#include "CollectionsController.h"
#include "ImportFixture.h"
#include "LibraryXml.h"

#include <QFile>
#include <limits>

namespace {

const QString beets = QStringLiteral(DISCARY_TEST_DATA "/library-xml/beets_itunes_library_unix.xml");

class LibraryXmlTest : public ImportFixture {
 protected:
  QString write(const char* name, const QByteArray& bytes) {
    QFile f(dir.filePath(name));
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return f.fileName();
  }
  static QByteArray plist(const QByteArray& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + body + "</dict></plist>\n";
  }
};

}  // namespace

TEST_F(LibraryXmlTest, ReadsPlaylistsAndTracksOfARealLibrary) {
  LibraryXml library;
  ASSERT_TRUE(library.read(beets, false)) << qPrintable(library.error());
  ASSERT_EQ(library.playlists().size(), 2);
  EXPECT_EQ(library.playlists()[0].name, "Library");
  EXPECT_EQ(library.playlists()[1].name, "Music");
  EXPECT_TRUE(library.tracks().isEmpty());

  ASSERT_TRUE(library.read(beets, true));
  const QVariantList tracks = library.tracksOfPlaylistNamed("Music");
  ASSERT_EQ(tracks.size(), 3);
  const QVariantMap first = tracks.first().toMap();
  EXPECT_EQ(first.value("Album"), "An Awesome Wave");
  EXPECT_EQ(first.value("Date Added").toDateTime(), QDateTime(QDate(2014, 4, 24), QTime(9, 28, 38), Qt::UTC));
  EXPECT_EQ(tracks[2].toMap().value("Name").toString(), QString::fromUtf8("❦ (Ripe & Ruin)"));
}

TEST_F(LibraryXmlTest, APlaylistBecomesOneEntryPerAlbumInTheCollectionNone) {
  ASSERT_TRUE(controller->importLibraryPlaylist(beets, "Music"));
  ASSERT_EQ(controller->importedEntries().size(), 1u);
  Entry* entry = controller->importedEntries().front();
  EXPECT_EQ(entry->stringValue("title"), "An Awesome Wave");
  EXPECT_EQ(entry->stringValue("artist"), "alt-J");
  EXPECT_EQ(entry->tracksSet().size(), 3u);
  EXPECT_EQ(entry->value("myRating"), 9);  // ratings 80 and 100; a track without rating adds none
  Collection* none = controller->collections().collectionWithName("None", false);
  ASSERT_TRUE(none);
  EXPECT_EQ(controller->collections().entriesIn(none).size(), 1u);
  EXPECT_FALSE(controller->managedObjectContext().hasChanges());
  EXPECT_EQ(windowSystem.progressTitles, QStringList{"Importing from iTunes..."});
  EXPECT_FALSE(controller->importLibraryPlaylist(beets, "No Such Playlist"));
}

TEST_F(LibraryXmlTest, SkipsMoviesAndPodcastsAndCountsOnlyWhatItImports) {
  const QVariantList tracks{QVariantMap{{"Album", "A"}, {"Name", "1"}}, QVariantMap{{"Album", "A"}, {"Name", "2"}, {"Podcast", true}},
                            QVariantMap{{"Album", "B"}, {"Name", "3"}, {"Movie", true}}, QVariant("not a track"),
                            QVariantMap{{"Album", "A"}, {"Name", "4"}}};
  EXPECT_TRUE(controller->importItunesFromTracks(tracks));
  EXPECT_EQ(windowSystem.progressSteps, 2);
  ASSERT_EQ(controller->importedEntries().size(), 1u);
  EXPECT_EQ(controller->importedEntries().front()->tracksSet().size(), 2u);
}

TEST_F(LibraryXmlTest, HostileFilesAreRefusedOrReadInPart) {
  LibraryXml library;
  EXPECT_FALSE(library.read(dir.filePath("missing.xml"), true));
  EXPECT_FALSE(library.error().isEmpty());
  EXPECT_FALSE(library.read(write("garbage.xml", QByteArray(4096, '\x9c')), true));
  EXPECT_FALSE(library.read(write("html.xml", "<html><body>no plist</body></html>"), true));
  QFile real(beets);
  ASSERT_TRUE(real.open(QIODevice::ReadOnly));
  EXPECT_FALSE(library.read(write("truncated.xml", real.readAll().left(3000)), true));

  QByteArray deep;
  for (int i = 0; i < 100000; ++i) deep += "<array>";
  EXPECT_FALSE(library.read(write("deep.xml", plist("<key>Tracks</key><dict><key>1</key><dict><key>x</key>" + deep)), true));

  // Wrong types: a string track id, a playlist that is no dictionary, items without ids,
  // tracks that are no dictionaries: what can be read is read.
  const QByteArray lying = plist(
      "<key>Tracks</key><dict>"
      "<key>7</key><dict><key>Name</key><string>Seven</string><key>Album</key><integer>12</integer>"
      "<key>Track Number</key><string>three</string></dict>"
      "<key>eight</key><dict><key>Name</key><string>Eight</string></dict>"
      "<key>9</key><string>not a dict</string></dict>"
      "<key>Playlists</key><array><string>odd</string>"
      "<dict><key>Name</key><string>Mix</string><key>Playlist Items</key><array>"
      "<dict><key>Track ID</key><integer>7</integer></dict><dict><key>Track ID</key><string>7</string></dict>"
      "<dict/><dict><key>Track ID</key><integer>404</integer></dict><string>x</string></array></dict>"
      "<dict><key>Name</key><array/></dict></array>");
  ASSERT_TRUE(library.read(write("lying.xml", lying), true)) << qPrintable(library.error());
  ASSERT_EQ(library.playlists().size(), 3);
  EXPECT_EQ(library.playlists()[1].trackIDs, (QList<qint64>{7, 7, 404}));
  EXPECT_EQ(library.tracks().size(), 1);
  const QVariantList mix = library.tracksOfPlaylistNamed("Mix");
  ASSERT_EQ(mix.size(), 2);
  EXPECT_TRUE(controller->importItunesFromTracks(mix));
  Entry* entry = controller->importedEntries().front();
  EXPECT_EQ(entry->stringValue("title"), "12");
  EXPECT_EQ(entry->tracksSet().size(), 2u);
}

namespace {

QByteArray tracksXml(int from, int to) {
  QByteArray xml;
  for (int id = from; id < to; ++id) {
    xml += "\n\t\t<key>" + QByteArray::number(id) + "</key>\n\t\t<dict>\n\t\t\t<key>Track ID</key><integer>" +
           QByteArray::number(id) + "</integer>\n\t\t\t<key>Name</key><string>Caf\xc3\xa9 &amp; " + QByteArray::number(id) +
           "</string>\n\t\t\t<key>Album</key><string>Album " + QByteArray::number(id / 10) +
           "</string>\n\t\t\t<key>Total Time</key><integer>" + QByteArray::number(100000 + id) +
           "</integer>\n\t\t\t<key>Date Added</key><date>2014-04-24T09:28:38Z</date>\n\t\t</dict>";
  }
  return xml;
}

QByteArray playlistsXml(int count) {
  QByteArray xml = "<key>Playlists</key><array><dict><key>Name</key><string>Library</string><key>Playlist Items</key><array>";
  for (int id = 0; id < count; ++id) xml += "<dict><key>Track ID</key><integer>" + QByteArray::number(id) + "</integer></dict>";
  return xml + "</array></dict></array>";
}

// The file with blanks added before its tracks so that an "é" straddles the end of the reader's
// first 256 KB piece.
QByteArray acrossChunks(QByteArray file) {
  const qsizetype chunk = 256 * 1024;
  const qsizetype at = file.indexOf("\xc3\xa9", chunk - 400);
  file.insert(file.indexOf("<key>0</key>"), QByteArray(chunk - 1 - at, ' '));
  return file;
}

}  // namespace

// Large files are read by two threads from a point in the middle of the tracks; whatever stands
// there, the result must be that of one reader.
TEST_F(LibraryXmlTest, TwoReadersGiveWhatOneReaderGives) {
  const QByteArray head = "<key>Major Version</key><integer>1</integer><key>Tracks</key><dict>";
  QByteArray fakeTracks = tracksXml(1000, 1400);
  const QByteArray decoy = fakeTracks.replace("--", "");
  const QList<QPair<const char*, QByteArray>> files{
      {"plain", plist(head + tracksXml(0, 300) + "</dict>" + playlistsXml(300))},
      {"comment", plist(head + tracksXml(0, 50) + "\n<!-- " + decoy + " -->" + tracksXml(50, 100) + "</dict>" + playlistsXml(100))},
      {"cdata", plist(head + tracksXml(0, 50) + "<key>60</key><dict><key>Name</key><string><![CDATA[" + decoy +
                      "]]></string></dict>" + tracksXml(70, 100) + "</dict>" + playlistsXml(100))},
      {"nested", plist(head + tracksXml(0, 50) + "<key>60</key><dict><key>Extra</key><dict>" + tracksXml(1000, 1300) +
                       "</dict></dict>" + tracksXml(70, 100) + "</dict>" + playlistsXml(100))},
      {"truncated", plist(head + tracksXml(0, 300)).left(40000)},
      {"broken tail", plist(head + tracksXml(0, 300) + "</dict>" + playlistsXml(300)).replace("<key>250</key>", "<key>250</kex>")},
      {"latin1", QByteArray(plist(head + tracksXml(0, 300) + "</dict>" + playlistsXml(300)))
                     .replace("UTF-8", "ISO-8859-1")
                     .replace("\xc3\xa9", "\xe9")},
      {"entity", QByteArray(plist(head + tracksXml(0, 300) + "</dict>" + playlistsXml(300)))
                     .replace("<plist", "<!DOCTYPE plist [<!ENTITY cafe \"Caf\xc3\xa9\">]>\n<plist")
                     .replace("Caf\xc3\xa9 &amp; 2", "&cafe; 2")},
      // Bytes that are no UTF-8, in the tracks and after the library.
      {"bad byte", plist(head + tracksXml(0, 300) + "</dict>" + playlistsXml(300)).replace("<key>250</key>", "<key>250\xff</key>")},
      {"bad byte after", plist(head + tracksXml(0, 300) + "</dict>" + playlistsXml(300)) + "\xb6\xb6\n"},
      {"character across chunks", acrossChunks(plist(head + tracksXml(0, 1300) + "</dict>" + playlistsXml(1300)))},
  };
  for (const auto& [name, bytes] : files) {
    SCOPED_TRACE(name);
    const QString path = write("library.xml", bytes);
    LibraryXml one, two;
    one.setParallelFrom(std::numeric_limits<qint64>::max());
    two.setParallelFrom(0);
    const bool read = one.read(path, true);
    EXPECT_EQ(two.read(path, true), read);
    EXPECT_EQ(two.error(), one.error());
    EXPECT_EQ(two.tracks().size(), one.tracks().size());
    EXPECT_TRUE(two.tracks() == one.tracks());
    ASSERT_EQ(two.playlists().size(), one.playlists().size());
    for (qsizetype i = 0; i < one.playlists().size(); ++i) {
      EXPECT_EQ(two.playlists()[i].name, one.playlists()[i].name);
      EXPECT_EQ(two.playlists()[i].trackIDs, one.playlists()[i].trackIDs);
    }
  }
  // A fault in the encoding is met where it stands: the tracks before it are kept and the error
  // names its line, not the start of the piece of file the reader had in hand.
  LibraryXml one;
  const QByteArray& bad = files[8].second;
  EXPECT_FALSE(one.read(write("library.xml", bad), true));
  EXPECT_EQ(one.tracks().size(), 250);
  EXPECT_TRUE(one.error().contains(QStringLiteral("line %1:").arg(bad.left(bad.indexOf('\xff')).count('\n') + 1)))
      << qPrintable(one.error());
  EXPECT_TRUE(one.read(write("library.xml", files[9].second), true)) << qPrintable(one.error());
  ASSERT_TRUE(one.read(write("library.xml", files[10].second), true)) << qPrintable(one.error());
  EXPECT_EQ(one.tracks().size(), 1300);

  LibraryXml library;
  library.setParallelFrom(0);
  ASSERT_TRUE(library.read(write("library.xml", files[0].second), true));
  EXPECT_EQ(library.tracksOfPlaylistNamed("Library").size(), 300);
  EXPECT_EQ(library.tracks().value(299).value("Name"), QString::fromUtf8("Café & 299"));
}
