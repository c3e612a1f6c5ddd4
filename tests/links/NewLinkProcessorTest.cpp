#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "FileMover.h"
#include "MyController.h"
#include "NewLinkProcessor.h"
#include "Settings.h"
#include "Store.h"
#include "StringTable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class NewLinkProcessorTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;  // holds the catalogue, so it is the data folder
  QTemporaryDir elsewhere;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};
  Entry* entry = nullptr;

  void SetUp() override {
    controller.applicationWillFinishLaunching();
    ASSERT_TRUE(controller.openCatalogue(dir.filePath("Discary.sqlite")).ok());
    entry = controller.managedObjectContext().insertEntry();
  }
  QString file(const QString& name, const QByteArray& bytes) {
    const QString path = elsewhere.filePath(name);
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return path;
  }
  Link* link(const QString& name, const QString& url, const QString& type = {}) {
    auto made = Store::newLink();
    made->setPrimitiveValue("name", name);
    made->setPrimitiveValue("url", url);
    if (!type.isEmpty()) made->setPrimitiveValue("type", type);
    Link* added = entry->addLink(std::move(made));
    controller.processNewLink(*added);
    return added;
  }
  QByteArray contents(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
  }
};

TEST_F(NewLinkProcessorTest, MoviesMoveIntoTheDataFolderOnlyWhenAskedAndNeverGetLost) {
  const QString clip = file("live at the hall.mov", "moving pictures");
  Link* kept = link("Live", "file://" + clip, "Movie");
  EXPECT_EQ(kept->stringValue("url"), "file://" + clip);  // "Move Movies" is off

  settings.setObject("Move Movies", true);
  Link* moved = link("Live", "file://" + clip, "Movie");
  EXPECT_EQ(moved->stringValue("url"), "[Data Folder]/QuickTime/live at the hall.mov");
  EXPECT_EQ(contents(dir.filePath("QuickTime/live at the hall.mov")), "moving pictures");
  EXPECT_FALSE(QFile::exists(clip));

  Link* inPlace = link("Again", "[Data Folder]/QuickTime/live at the hall.mov", "Movie");
  EXPECT_EQ(inPlace->stringValue("url"), "[Data Folder]/QuickTime/live at the hall.mov");

  // Same name at the destination: Cancel keeps both files and the link as it was, untyped.
  const QString second = file("live at the hall.mov", "another take");
  windowSystem.alertAnswers = {1};
  Link* cancelled = link("Live", "file://" + second, "Movie");
  EXPECT_EQ(windowSystem.alerts.last(), "File Exist");
  EXPECT_EQ(cancelled->stringValue("url"), "file://" + second);
  EXPECT_EQ(contents(second), "another take");
  EXPECT_EQ(contents(dir.filePath("QuickTime/live at the hall.mov")), "moving pictures");
  // OK replaces it.
  windowSystem.alertAnswers = {0};
  link("Live", "file://" + second, "Movie");
  EXPECT_EQ(contents(dir.filePath("QuickTime/live at the hall.mov")), "another take");

  // A file that vanished: the sheet, the link unchanged, the file already there untouched.
  Link* vanished = link("Gone", "file://" + elsewhere.filePath("live at the hall.mov"), "Movie");
  EXPECT_EQ(windowSystem.alerts.last(), "File Error");
  EXPECT_EQ(vanished->stringValue("url"), "file://" + elsewhere.filePath("live at the hall.mov"));
  EXPECT_EQ(contents(dir.filePath("QuickTime/live at the hall.mov")), "another take");
}

TEST_F(NewLinkProcessorTest, UntypedLinksAreTypedByNameOrApplication) {
  const QString letter = file("liner notes.odt", "words");
  platform.applications[letter] = "libreoffice-writer";
  EXPECT_EQ(link("The Guardian Review", "https://example.org/r")->stringValue("type"), "review");
  EXPECT_EQ(link("making of (quicktime)", "https://example.org/m")->stringValue("type"), "QuickTime Movie");
  EXPECT_EQ(link("Liner notes", "file://" + letter)->stringValue("type"), "App: libreoffice-writer");
  EXPECT_EQ(link("Label site", "https://example.org/")->stringValue("type"), "");
  EXPECT_EQ(link("Typed review", "https://example.org/", "Audio")->stringValue("type"), "Audio");
}

TEST(NewLinkProcessorServicesTest, MoviesGoToTheDataFolderOfTheMomentWithoutAController) {
  QTemporaryDir first, second, elsewhere;
  Settings settings{elsewhere.filePath("discary.conf")};
  settings.setObject("Move Movies", true);
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  StringTable strings;
  QString dataFolder = first.path();
  NewLinkProcessor processor({settings, windowSystem, platform, strings, [&] { return dataFolder; }});
  auto movie = [&](const QString& name) {
    const QString path = elsewhere.filePath(name);
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    Link link;
    link.setPrimitiveValue("url", "file://" + path);
    link.setPrimitiveValue("type", "Movie");
    processor.process(link);
    return link.stringValue("url");
  };
  EXPECT_EQ(movie("a.mov"), "[Data Folder]/QuickTime/a.mov");
  EXPECT_TRUE(QFile::exists(first.filePath("QuickTime/a.mov")));
  dataFolder = second.path();  // another catalogue opened since
  EXPECT_EQ(movie("b.mov"), "[Data Folder]/QuickTime/b.mov");
  EXPECT_TRUE(QFile::exists(second.filePath("QuickTime/b.mov")));
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
}

TEST(FileMoverTest, CopyingAcrossFileSystemsChecksTheCopyBeforeRemovingTheSource) {
  QTemporaryDir dir;
  const QString from = dir.filePath("a.bin"), to = dir.filePath("b.bin");
  QFile f(from);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(QByteArray(300000, 'x'));
  f.close();
  QString error;
  ASSERT_TRUE(FileMover::copyThenRemove(from, to, &error)) << error.toStdString();
  EXPECT_FALSE(QFile::exists(from));
  EXPECT_EQ(QFileInfo(to).size(), 300000);
  EXPECT_FALSE(QFile::exists(to + ".part"));
  EXPECT_FALSE(FileMover::move(dir.filePath("nothing"), to, &error));
  EXPECT_EQ(QFileInfo(to).size(), 300000);  // a failed move leaves the destination alone
}

}  // namespace
