#include "CannedCddbServer.h"
#include "CannedMusicBrainzServer.h"
#include "CoverWell.h"
#include "Entry.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "FakePlatform.h"
#include "GuiScript.h"
#include "InternetSearchDialog.h"
#include "MainWindow.h"
#include "MyController.h"
#include "PreferencesDialog.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "Store.h"
#include "SettingsKeys.h"
#include "TrackTable.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QInputDialog>
#include <QLineEdit>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

const QString data = QStringLiteral(DISCARY_TEST_DATA "/disc/");

// What an editor shows, be it a line or a combo box.
QString editorText(EntryEditor* editor, const char* key) {
  QWidget* widget = editor->editorFor(QLatin1String(key));
  if (auto* line = qobject_cast<QLineEdit*>(widget)) return line->text();
  if (auto* combo = qobject_cast<QComboBox*>(widget)) return combo->currentText();
  return QStringLiteral("(no editor for %1)").arg(QLatin1String(key));
}

using GuiScript::AlertSeen;
using GuiScript::answerAlert;
using GuiScript::whenShown;

class DiscScanGuiTest : public ::testing::Test {
 protected:
  CannedCddbServer server;
  CannedMusicBrainzServer musicBrainz;
  QTemporaryDir dir, volume;
  Settings settings{dir.filePath("discary.conf")};
  QtWindowSystem windowSystem;
  FakePlatform platform;
  std::unique_ptr<MyController> controller;

  void SetUp() override {
    QFile::copy(data + "derived_9d09130b_11tracks.TOC.plist", volume.filePath(".TOC.plist"));
    platform.volumes = {volume.path()};
    controller = std::make_unique<MyController>(settings, windowSystem, platform);
    controller->applicationWillFinishLaunching();
    ASSERT_TRUE(controller->openCatalogue(dir.filePath("Discary.sqlite")).ok());
    settings.setObject(SettingsKeys::refreshItunesAuto, false);
    settings.setObject(SettingsKeys::cddbServer, server.address());
    // CDDB alone, as before MusicBrainz; the test of the default sources turns it on.
    settings.setObject(SettingsKeys::lookupSources, QStringList{"CDDB"});
    settings.setObject(SettingsKeys::musicBrainzServer, musicBrainz.root());
    settings.setObject(SettingsKeys::coverArtServer, musicBrainz.root());
    controller->applicationDidFinishLaunching();
  }
  QAction* menuAction(MainWindow& window, const char* name) { return window.findChild<QAction*>(QLatin1String(name)); }
};

TEST_F(DiscScanGuiTest, scanningADiscFillsTheEditorAndAddsTheEntry) {
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  QString shownTitle;
  int shownTracks = 0;
  whenShown<EntryEditor>([&](EntryEditor* editor) {
    shownTitle = qobject_cast<QLineEdit*>(editor->editorFor("title"))->text();
    shownTracks = int(editor->trackTable()->tracks().size());
    editor->accept();
  });
  ASSERT_TRUE(menuAction(window, "scanDisc"));
  menuAction(window, "scanDisc")->trigger();
  EXPECT_EQ(shownTitle, QStringLiteral("Chagall Guevara"));
  EXPECT_EQ(shownTracks, 13);
  ASSERT_EQ(window.listModel()->rowCount(), 1);
  EXPECT_EQ(window.listModel()->entryAt(0)->stringValue("artist"), QStringLiteral("Chagall Guevara"));
  EXPECT_FALSE(controller->addPanel().isVisible());

  // The scan is one step: undone, the entry and its tracks are gone from the window and the file.
  QAction* undo = menuAction(window, "undo");
  EXPECT_EQ(undo->text(), QStringLiteral("&Undo Scan Disc"));
  undo->trigger();
  EXPECT_EQ(window.listModel()->rowCount(), 0);
  Store saved;
  ASSERT_TRUE(saved.open(dir.filePath("Discary.sqlite")).ok());
  EXPECT_TRUE(saved.entries().empty());
}

TEST_F(DiscScanGuiTest, withTheDefaultSourcesMusicBrainzFillsTheEditorWithLabelBarcodeAndCover) {
  settings.removeObject(SettingsKeys::lookupSources);
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  QStringList shown;
  int shownTracks = 0;
  bool coverShown = false;
  whenShown<EntryEditor>([&](EntryEditor* editor) {
    for (const char* key : {"title", "artist", "label", "upc"}) shown << editorText(editor, key);
    shownTracks = int(editor->trackTable()->tracks().size());
    coverShown = !editor->coverWell()->cover().isNull() && editor->coverWell()->isChanged();  // kept on Add
    editor->accept();
  });
  menuAction(window, "scanDisc")->trigger();
  EXPECT_EQ(shown, (QStringList{"Written Answers", "The Sample Ensemble", "Example Records", "0123456789012"}));
  EXPECT_EQ(shownTracks, 11);
  EXPECT_TRUE(coverShown);
  EXPECT_TRUE(server.requests().isEmpty());
  ASSERT_EQ(window.listModel()->rowCount(), 1);
  Entry* entry = window.listModel()->entryAt(0);
  EXPECT_EQ(entry->stringValue("upc"), QStringLiteral("0123456789012"));
  EXPECT_EQ(QImage(controller->managedObjectContext().coverPathOf(entry->uid())).size(), QSize(300, 300));
}

TEST_F(DiscScanGuiTest, aMountedDiscIsLookedUpOnlyOnceTurnedOnInPreferences) {
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  platform.mount(volume.path());
  EXPECT_TRUE(server.requests().isEmpty());
  EXPECT_FALSE(controller->addPanel().isVisible());
  whenShown<PreferencesDialog>([](PreferencesDialog* preferences) {
    preferences->findChild<QCheckBox*>(SettingsKeys::scanCD)->setChecked(true);
    preferences->accept();
  });
  ASSERT_TRUE(menuAction(window, "preferences"));
  menuAction(window, "preferences")->trigger();
  EXPECT_TRUE(settings.boolForKey(SettingsKeys::scanCD));
  EXPECT_FALSE(settings.boolForKey(SettingsKeys::ejectCD));
  platform.mount(volume.path());
  EXPECT_FALSE(server.requests().isEmpty());
  EXPECT_EQ(controller->addPanel().valueForKey("title").toString(), QStringLiteral("Chagall Guevara"));
}

TEST_F(DiscScanGuiTest, severalMatchesAreChosenAndSteppedThroughInTheEditor) {
  server.queryReply = "211 inexact\nrock 9a0bed0d A / First\nmisc 9a0bed0d B / Second\n.\n";
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  whenShown<QInputDialog>([](QInputDialog* chooser) {
    chooser->setTextValue(chooser->comboBoxItems().value(1));
    chooser->accept();
  });
  bool backEnabled = true, nextEnabled = true, backAfterStep = false;
  whenShown<EntryEditor>([&](EntryEditor* editor) {
    backEnabled = editor->backButtonPanel()->isEnabled();
    nextEnabled = editor->nextButtonPanel()->isEnabled();
    editor->backButtonPanel()->click();
    backAfterStep = editor->backButtonPanel()->isEnabled();
    editor->reject();
  });
  menuAction(window, "scanDisc")->trigger();
  EXPECT_TRUE(backEnabled);
  EXPECT_FALSE(nextEnabled);
  EXPECT_FALSE(backAfterStep);
  EXPECT_TRUE(server.requests().last().body.startsWith("cmd=cddb+read+rock+9a0bed0d"));
  EXPECT_EQ(window.listModel()->rowCount(), 0);
}

TEST_F(DiscScanGuiTest, theInternetSearchPanelFindsAndOpensAResult) {
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  QStringList listed;
  // The page arrives later: look again until the list fills.
  std::function<void(InternetSearchDialog*)> collect = [&](InternetSearchDialog* d) {
    if (d->results()->count() == 0) return whenShown<InternetSearchDialog>(collect);
    for (int i = 0; i < d->results()->count(); ++i) listed << d->results()->item(i)->text();
    d->accept();
  };
  whenShown<InternetSearchDialog>([&](InternetSearchDialog* dialog) {
    dialog->field()->setText("Chagall");
    dialog->search();
    whenShown<InternetSearchDialog>(collect);
  });
  QString shownTitle;
  whenShown<EntryEditor>([&](EntryEditor* editor) {
    shownTitle = qobject_cast<QLineEdit*>(editor->editorFor("title"))->text();
    editor->reject();
  });
  menuAction(window, "internetSearch")->trigger();
  EXPECT_EQ(listed, QStringList{"Chagall Guevara:Chagall Guevara"});
  EXPECT_EQ(shownTitle, QStringLiteral("Chagall Guevara"));
}

TEST_F(DiscScanGuiTest, theInternetSearchPanelSearchesMusicBrainzAndPreferencesOrderTheSources) {
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  whenShown<PreferencesDialog>([](PreferencesDialog* preferences) {
    auto* sources = preferences->findChild<QListWidget*>(SettingsKeys::lookupSources);
    ASSERT_EQ(sources->count(), 2);
    EXPECT_EQ(sources->item(0)->text(), QStringLiteral("CDDB"));  // as this test's settings have it
    sources->item(1)->setCheckState(Qt::Checked);
    sources->insertItem(0, sources->takeItem(1));  // MusicBrainz first, as a drag would
    preferences->accept();
  });
  menuAction(window, "preferences")->trigger();
  EXPECT_EQ(settings.objectForKey(SettingsKeys::lookupSources).toStringList(), (QStringList{"MusicBrainz", "CDDB"}));

  QStringList listed;
  QString site;
  whenShown<InternetSearchDialog>([&](InternetSearchDialog* dialog) {
    site = dialog->sites()->currentText();  // the first source of the settings
    dialog->field()->setText("Written Answers");
    dialog->search();
    for (int i = 0; i < dialog->results()->count(); ++i) listed << dialog->results()->item(i)->text();
    dialog->accept();
  });
  QString shownLabel;
  whenShown<EntryEditor>([&](EntryEditor* editor) {
    shownLabel = editorText(editor, "label");
    editor->reject();
  });
  menuAction(window, "internetSearch")->trigger();
  EXPECT_EQ(site, QStringLiteral("MusicBrainz"));
  EXPECT_EQ(listed.size(), 2);
  EXPECT_EQ(shownLabel, QStringLiteral("Example Records"));
}

TEST_F(DiscScanGuiTest, theInternetSearchPanelChecksABarcodeBeforeAskingMusicBrainz) {
  InternetSearchDialog dialog(controller->freedb(), controller->musicBrainz(), true);
  ASSERT_TRUE(dialog.searchBy()->isEnabled());
  dialog.searchBy()->setCurrentIndex(1);
  dialog.field()->setText("0123456789013");
  const qsizetype asked = musicBrainz.requests().size();
  dialog.search();
  EXPECT_EQ(dialog.status()->text(), QStringLiteral("The last digit of this barcode should be 2: check the code."));
  EXPECT_EQ(musicBrainz.requests().size(), asked);
  dialog.field()->setText("12345");
  dialog.search();
  EXPECT_TRUE(dialog.status()->text().startsWith("A barcode has 8, 12 or 13 digits"));

  dialog.field()->setText("0 123456 789012");
  dialog.search();
  EXPECT_EQ(dialog.results()->count(), 2);
  EXPECT_TRUE(QUrl::fromPercentEncoding(musicBrainz.requests().last().path).contains("barcode:\"0123456789012\""));
  dialog.searchBy()->setCurrentIndex(2);
  dialog.field()->setText("EX 001");
  dialog.search();
  EXPECT_TRUE(QUrl::fromPercentEncoding(musicBrainz.requests().last().path).contains("catno:\"EX 001\""));

  // The web database knows neither.
  dialog.sites()->setCurrentIndex(0);
  EXPECT_FALSE(dialog.searchBy()->isEnabled());
  EXPECT_EQ(dialog.searchBy()->currentIndex(), 0);
}

TEST_F(DiscScanGuiTest, ejectIsOfferedOnlyWithADiscToEject) {
  MainWindow window(*controller, windowSystem);
  QAction* eject = menuAction(window, "ejectDisc");
  auto* menu = qobject_cast<QMenu*>(eject->parent());
  ASSERT_TRUE(menu);
  Q_EMIT menu->aboutToShow();
  EXPECT_TRUE(eject->isEnabled());
  eject->trigger();
  EXPECT_EQ(platform.ejected, QStringList{volume.path()});
  platform.volumes.clear();
  Q_EMIT menu->aboutToShow();
  EXPECT_FALSE(eject->isEnabled());
}

TEST_F(DiscScanGuiTest, noDiscAndNoServerAreSaidAboveAnySheet) {
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  platform.volumes.clear();
  AlertSeen noDisc;
  answerAlert(&noDisc);
  GuiScript::fromEventLoop([&] { menuAction(window, "scanDisc")->trigger(); });
  EXPECT_TRUE(noDisc.text.contains("No audio CD")) << noDisc.text.toStdString();
  EXPECT_FALSE(noDisc.underASheet);

  platform.volumes = {volume.path()};
  settings.setObject(SettingsKeys::cddbServer, "127.0.0.1:1");  // nothing listens there
  AlertSeen unreachable;
  answerAlert(&unreachable, "Add Manually");
  qsizetype manualTracks = 0;  // manual entry is still offered
  whenShown<EntryEditor>([&](EntryEditor* editor) {
    manualTracks = editor->trackTable()->tracks().size();
    editor->reject();
  });
  GuiScript::fromEventLoop([&] { menuAction(window, "scanDisc")->trigger(); });
  EXPECT_TRUE(unreachable.text.contains("could not be reached")) << unreachable.text.toStdString();
  EXPECT_FALSE(unreachable.underASheet);
  EXPECT_EQ(manualTracks, 11);
}

TEST_F(DiscScanGuiTest, theInternetSearchPanelSaysWhenTheServerCannotBeReached) {
  settings.setObject(SettingsKeys::cddbServer, "127.0.0.1:1");
  MainWindow window(*controller, windowSystem);
  windowSystem.setWindow(&window);
  window.show();
  QString status;
  bool stillOpen = false;
  std::function<void(InternetSearchDialog*)> wait = [&](InternetSearchDialog* d) {
    if (d->status()->text().startsWith("Searching")) return whenShown<InternetSearchDialog>(wait);
    status = d->status()->text();
    d->reject();
  };
  whenShown<InternetSearchDialog>([&](InternetSearchDialog* dialog) {
    dialog->field()->setFocus();
    QTest::keyClicks(dialog->field(), "Chagall");
    QTest::keyClick(dialog->field(), Qt::Key_Return);  // searches, and leaves the panel open
    stillOpen = dialog->isVisible();
    whenShown<InternetSearchDialog>(wait);
  });
  menuAction(window, "internetSearch")->trigger();
  EXPECT_TRUE(stillOpen);
  EXPECT_TRUE(status.contains("could not be reached")) << status.toStdString();
}

}  // namespace
