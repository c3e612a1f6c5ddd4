#include "Entry.h"
#include "MainWindow.h"
#include "PreferencesDialog.h"
#include "SettingsKeys.h"
#include "Store.h"
#include "WindowTestBase.h"

#include <QDesktopServices>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTableView>
#include <QTest>
#include <QTextBrowser>

namespace {

// Stands in for the desktop's default player: keeps the files it is asked to open.
class DesktopPlayer : public QObject {
  Q_OBJECT
 public:
  QList<QUrl> opened;
 public Q_SLOTS:
  void open(const QUrl& url) { opened << url; }
};

class PlayLinksGuiTest : public WindowTestBase<> {
 protected:
  DesktopPlayer player;
  void SetUp() override {
    QDesktopServices::setUrlHandler("file", &player, "open");
    launch(dir.filePath("Discary.sqlite"));
  }
  void TearDown() override {
    QDesktopServices::unsetUrlHandler("file");
    WindowTestBase::TearDown();
  }
};

TEST_F(PlayLinksGuiTest, tracksInThePlayersLibraryBecomeLinksThatPlayItsFile) {
  Entry* album = add({{"title", "Blue Train"}, {"artist", "John Coltrane"}});
  for (const QString& name : {QStringLiteral("Locomotion"), QStringLiteral("Lazybird")}) {
    auto track = Store::newTrack();
    track->setPrimitiveValue("name", name);
    track->setPrimitiveValue("position", qint64(album->tracksSet().size()));
    album->addTrack(std::move(track));
  }
  ASSERT_TRUE(controller->saveManagedObjectContext());
  platform.library = {QVariantMap{{"Name", "Locomotion"}, {"Album", "Blue Train"}, {"Location", "file:///music/Locomotion.flac"}}};

  // No launch refresh here: the page asks for the library itself, and shows the links once it is in.
  MainWindow window(*controller, windowSystem);
  window.show();
  window.listView()->selectRow(0);
  QTRY_VERIFY(window.pageView()->toHtml().contains("playTrackNamed=Locomotion"));
  EXPECT_FALSE(window.pageView()->toHtml().contains("playTrackNamed=Lazybird"));
  EXPECT_EQ(platform.libraryReads, 1);

  // The link as the page holds it, clicked.
  const QRegularExpressionMatch link =
      QRegularExpression("href=\"(folio:[^\"]*Locomotion)\"").match(window.pageView()->toHtml());
  ASSERT_TRUE(link.hasMatch());
  Q_EMIT window.pageView()->anchorClicked(QUrl(link.captured(1)));
  EXPECT_EQ(player.opened, QList<QUrl>{QUrl("file:///music/Locomotion.flac")});
  // A track the library does not have plays nothing, and says so.
  Q_EMIT window.pageView()->anchorClicked(QUrl("folio:playTrackNamed=Lazybird"));
  EXPECT_EQ(player.opened.size(), 1);
  window.listView()->clearSelection();
  window.listView()->selectRow(0);
  EXPECT_EQ(platform.libraryReads, 1);  // read once per window
}

TEST_F(PlayLinksGuiTest, theLibraryChosenInPreferencesIsReadAtOnceAndEmptyGoesBackToFindingOne) {
  const QString xml = QStringLiteral(DISCARY_TEST_DATA "/library-xml/beets_itunes_library_unix.xml");
  const auto choose = [&](const QString& path) {
    PreferencesDialog preferences(*controller);
    for (QLineEdit* edit : preferences.findChildren<QLineEdit*>())
      if (edit->accessibleName() == "Music library for play links") edit->setText(path);
    preferences.accept();
    controller->waitForLibraryRefresh();
  };
  choose(xml);
  EXPECT_EQ(settings.stringForKey(SettingsKeys::musicLibrary), xml);
  EXPECT_EQ(controller->addPanel().trackData().libraryTrackCount(), 3);  // the songs of that file
  EXPECT_EQ(platform.libraryReads, 0);

  platform.library = {QVariantMap{{"Name", "Locomotion"}, {"Album", "Blue Train"}}};
  choose(QString());
  EXPECT_FALSE(settings.objectForKey(SettingsKeys::musicLibrary).isValid());
  EXPECT_EQ(controller->addPanel().trackData().libraryTrackCount(), 1);
}

}  // namespace

#include "PlayLinksGuiTest.moc"
