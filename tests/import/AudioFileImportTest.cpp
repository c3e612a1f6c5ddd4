#include "AudioFileImport.h"
#include "CollectionsController.h"
#include "ImportFixture.h"
#include "StringTable.h"

#include <QDir>
#include <QFile>

namespace {

class AudioFileImportTest : public ImportFixture {
 protected:
  QString copy(const char* name, const QString& as) {
    const QString target = dir.filePath(as);
    QDir().mkpath(QFileInfo(target).absolutePath());
    EXPECT_TRUE(QFile::copy(QStringLiteral(DISCARY_TEST_DATA "/audio/") + QString::fromUtf8(name), target));
    return target;
  }
  Collection* imported() { return controller->collections().collectionWithName("Imported Audio", true); }
};

}  // namespace

TEST_F(AudioFileImportTest, OneFileBecomesAnEntryWithAnAudioLink) {
  const QString path = copy("music-metadata_issue-79.m4a", "Mü sic/01 Uprising.m4a");
  ASSERT_TRUE(controller->importAudioFile(path));
  EXPECT_FALSE(controller->managedObjectContext().hasChanges());
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  Entry* entry = controller->managedObjectContext().entries().front();
  EXPECT_EQ(entry->stringValue("title"), "The Resistance");
  EXPECT_EQ(entry->stringValue("format"), "Digital");
  ASSERT_EQ(entry->linksSet().size(), 1u);
  const Link* link = entry->linksSet().front().get();
  EXPECT_EQ(link->stringValue("url"), "file://" + path);  // blanks and accents as they stand
  EXPECT_EQ(link->stringValue("type"), "Audio");
  EXPECT_EQ(link->stringValue("name"), "01 Uprising");
  EXPECT_EQ(link->value("position"), 1);
  ASSERT_TRUE(imported());
  EXPECT_TRUE(controller->collections().contains(imported(), *entry));
  EXPECT_EQ(controller->collections().selectedCollection(), imported());

  EXPECT_FALSE(controller->importAudioFile(path));  // a duplicate, however the path is spelled
  EXPECT_FALSE(controller->importAudioFile(dir.filePath("Mü sic/../Mü sic//./01 Uprising.m4a")));
  EXPECT_EQ(entry->linksSet().size(), 1u);
  EXPECT_EQ(entry->tracksSet().size(), 1u);
  settings.setObject("Import Duplicates", true);
  EXPECT_TRUE(controller->importAudioFile(path));
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 2u);  // no album table: an entry of its own
}

TEST_F(AudioFileImportTest, UntaggedFilesAreNamedAfterTheFileAndNumberedInOrder) {
  ASSERT_TRUE(controller->openImportRun());
  const QString a = copy("mutagen_emptyfile.mp3", "Demo Take.mp3");
  const QString b = copy("mutagen_emptyfile.mp3", "Other Take.mp3");
  EXPECT_TRUE(controller->importAudioFile(a));
  EXPECT_TRUE(controller->importAudioFile(b));
  controller->closeImportRun();
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  Entry* entry = controller->managedObjectContext().entries().front();
  // No album tag: the album is "Unknown", and both files share it.
  EXPECT_EQ(entry->stringValue("title"), "Unknown");
  QStringList positions;
  for (Link* l : entry->linksSortedByPosition()) positions << l->stringValue("position") + ":" + l->stringValue("name");
  EXPECT_EQ(positions, (QStringList{"0:Demo Take", "1:Other Take"}));
}

TEST_F(AudioFileImportTest, FolderImportGroupsAlbumsSkipsBadFilesAndSaves) {
  const QString folder = dir.filePath("Music");
  copy("mutagen_silence-44-s.mp3", "Music/Quod/02 Silence.mp3");
  copy("mutagen_silence-44-s.flac", "Music/Quod/03 Silence.flac");
  copy("music-metadata_issue-79.m4a", "Music/Muse/01.m4a");
  copy("mutagen_emptyfile.mp3", "Music/Broken/empty.mp3");
  QFile junk(dir.filePath("Music/Broken/not audio.ogg"));
  ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
  junk.write(QByteArray(5000, '\x01'));
  junk.close();
  QFile text(dir.filePath("Music/notes.txt"));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.close();

  EXPECT_EQ(AudioFileImport::audioFilesIn(folder).size(), 5);
  controller->frameworkBundle().insert(StringTable::defaultTable, "AddingEntries", "Einträge werden hinzugefügt …");
  ASSERT_TRUE(controller->openDirectory(folder));
  EXPECT_EQ(windowSystem.progressTitles, QStringList{"Einträge werden hinzugefügt …"});
  QStringList titles;
  for (Entry* e : controller->managedObjectContext().entries()) titles << e->stringValue("title") + "/" + QString::number(e->linksSet().size());
  titles.sort();
  // The MP3 and the FLAC both name "jzig" last of their two artists, so they make one album; both
  // broken files have no album: they share the "Unknown" entry.
  EXPECT_EQ(titles, (QStringList{"Quod Libet Test Data/2", "The Resistance/1", "Unknown/2"}));
  EXPECT_FALSE(controller->managedObjectContext().hasChanges());
  EXPECT_EQ(windowSystem.openSheets, 0);
  EXPECT_FALSE(controller->importSession());  // the import session lives only for the folder
}

TEST_F(AudioFileImportTest, CancelStopsAfterTheCurrentFileKeepingWhatWasImported) {
  for (int i = 0; i < 6; ++i) copy("mutagen_silence-44-s.mp3", QStringLiteral("Many/%1.mp3").arg(i));
  windowSystem.cancelAfterSteps = 2;
  EXPECT_TRUE(controller->openDirectory(dir.filePath("Many")));
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  EXPECT_EQ(controller->managedObjectContext().entries().front()->linksSet().size(), 2u);
  EXPECT_FALSE(controller->managedObjectContext().hasChanges());
}

TEST_F(AudioFileImportTest, TheEnglishCollectionIsFoundWhenTheWindowSpeaksAnotherLanguage) {
  // Made by an earlier English session or the command line, then imported into in German.
  Collection* english = controller->collections().createCollectionNamed("Imported Audio", {});
  controller->frameworkBundle().insert(StringTable::defaultTable, "Imported Audio", "Importierte Audiodateien");
  ASSERT_TRUE(controller->importAudioFile(copy("music-metadata_issue-79.m4a", "a/01 Uprising.m4a")));
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  EXPECT_TRUE(controller->collections().contains(english, *controller->managedObjectContext().entries().front()));
  EXPECT_EQ(controller->collections().selectedCollection(), english);
  EXPECT_FALSE(controller->collections().collectionWithName("Importierte Audiodateien", true));
}
