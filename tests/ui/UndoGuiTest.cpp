#include "CatalogueHistory.h"
#include "CatalogueWatcher.h"
#include "Collection.h"
#include "CollectionsPanel.h"
#include "Entry.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "FakePlatform.h"
#include "GuiScript.h"
#include "LinksTable.h"
#include "MainWindow.h"
#include "MyController.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "Store.h"
#include "TrackTable.h"
#include "WindowTestBase.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QImage>
#include <QInputDialog>
#include <QMessageBox>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace {

using GuiScript::whenShown;

class UndoGuiTest : public WindowTestBase<> {
 protected:
  Entry* kindOfBlue = nullptr;
  qint64 uid = 0;

  void SetUp() override {
    launch(path());
    Store& store = controller->managedObjectContext();
    kindOfBlue = store.insertEntry();
    uid = kindOfBlue->uid();
    kindOfBlue->setValue("title", "Kind of Blue");
    kindOfBlue->setValue("artist", "Miles Davis");
    for (const char* name : {"So What", "Freddie Freeloader"}) {
      auto track = Store::newTrack();
      track->setValue("name", name);
      track->setValue("position", qint64(kindOfBlue->tracksSet().size()));
      kindOfBlue->addTrack(std::move(track));
    }
    auto link = Store::newLink();
    link->setValue("name", "Review");
    link->setValue("url", "https://example.org/review");
    kindOfBlue->addLink(std::move(link));
    store.insertEntry()->setValue("title", "Abbey Road");
    store.addEntryToCollection(kindOfBlue, store.createCollection("Jazz"));
    QImage blue(40, 40, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    ASSERT_TRUE(controller->setCoverImage(*kindOfBlue, blue));
    ASSERT_TRUE(controller->saveManagedObjectContext());
  }

  QString path() const { return dir.filePath("Discary.sqlite"); }
  static QAction* action(MainWindow& window, const char* name) { return window.findChild<QAction*>(QLatin1String(name)); }
  static QString text(QAction* action) { return action->text().remove(QLatin1Char('&')); }
  void select(MainWindow& window, qint64 which) {
    window.selectEntries({controller->managedObjectContext().entryWithUID(which)});
  }
  // The catalogue as another program opening the file reads it.
  std::unique_ptr<Store> reopened() {
    auto store = std::make_unique<Store>();
    EXPECT_TRUE(store->open(path()).ok());
    return store;
  }
};

TEST_F(UndoGuiTest, AnUndoPutsBackOnlyWhatItsStepChangedAndNoEntryDeletedElsewhere) {
  MainWindow window(*controller, windowSystem);
  QAction *undo = action(window, "undo"), *redo = action(window, "redo");
  CatalogueWatcher* watcher = window.findChild<CatalogueWatcher*>();
  ASSERT_TRUE(watcher);
  select(window, uid);
  whenShown<EntryEditor>([](EntryEditor* editor) {
    editor->setFieldText("title", "Kind of Blue (Legacy Edition)");
    editor->accept();
  });
  window.editEntry();
  {  // meanwhile another program changes another field of that entry
    auto other = reopened();
    other->entryWithUID(uid)->setValue("label", "Columbia");
    ASSERT_TRUE(other->save());
  }
  EXPECT_TRUE(watcher->checkNow());
  undo->trigger();
  EXPECT_EQ(reopened()->entryWithUID(uid)->stringValue("title"), "Kind of Blue");
  EXPECT_EQ(reopened()->entryWithUID(uid)->stringValue("label"), "Columbia");

  redo->trigger();
  {
    auto other = reopened();
    other->deleteEntry(other->entryWithUID(uid));
    ASSERT_TRUE(other->save());
  }
  EXPECT_TRUE(watcher->checkNow());
  undo->trigger();
  EXPECT_EQ(reopened()->entryWithUID(uid), nullptr);
  EXPECT_EQ(controller->managedObjectContext().entryWithUID(uid), nullptr);
}

TEST_F(UndoGuiTest, EditsOfFieldsTracksAndLinksUndoAndRedoOneAtATime) {
  MainWindow window(*controller, windowSystem);
  QAction *undo = action(window, "undo"), *redo = action(window, "redo");
  ASSERT_TRUE(undo && redo);
  EXPECT_FALSE(undo->isEnabled());
  EXPECT_FALSE(redo->isEnabled());
  EXPECT_EQ(undo->shortcut(), QKeySequence(QKeySequence::Undo));

  select(window, uid);
  whenShown<EntryEditor>([](EntryEditor* editor) {
    editor->setFieldText("title", "Kind of Blue (Legacy Edition)");
    editor->accept();
  });
  window.editEntry();
  EXPECT_TRUE(undo->isEnabled());
  EXPECT_EQ(text(undo), "Undo Edit Title");

  whenShown<EntryEditor>([](EntryEditor* editor) {
    editor->trackTable()->table()->item(1, 0)->setText("Freddie Freeloader (take 2)");
    editor->accept();
  });
  window.editEntry();
  EXPECT_EQ(text(undo), "Undo Edit Tracks");

  whenShown<EntryEditor>([](EntryEditor* editor) {
    editor->linksTable()->addLink("Liner Notes", "https://example.org/notes");
    editor->accept();
  });
  window.editEntry();
  EXPECT_EQ(text(undo), "Undo Edit Links");

  // An edit in the list is a step of its own, named after its column.
  EntryTableModel& list = *window.listModel();
  const int artist = int(list.columns().indexOf("artist"));
  ASSERT_GE(artist, 0);
  const QModelIndex cell = list.index(list.rowOf(controller->managedObjectContext().entryWithUID(uid)), artist);
  EXPECT_TRUE(list.flags(cell) & Qt::ItemIsEditable);
  EXPECT_TRUE(list.setData(cell, "Miles Davis Sextet"));
  EXPECT_EQ(reopened()->entryWithUID(uid)->stringValue("artist"), "Miles Davis Sextet");
  EXPECT_EQ(text(undo), "Undo Edit Artist");

  undo->trigger();
  EXPECT_EQ(list.data(cell, Qt::DisplayRole).toString(), "Miles Davis");
  EXPECT_EQ(text(redo), "Redo Edit Artist");
  undo->trigger();
  Entry* shown = controller->managedObjectContext().entryWithUID(uid);
  EXPECT_EQ(shown->linksSet().size(), 1u);
  undo->trigger();
  EXPECT_EQ(shown->tracksSortedByPosition().back()->stringValue("name"), "Freddie Freeloader");
  undo->trigger();
  EXPECT_FALSE(undo->isEnabled());
  EXPECT_EQ(text(redo), "Redo Edit Title");
  EXPECT_TRUE(shownTitles(window).contains("Kind of Blue"));
  EXPECT_EQ(controller->entriesController().selectedObjects(), std::vector<Entry*>{shown});
  {
    const auto saved = reopened();
    Entry* e = saved->entryWithUID(uid);
    EXPECT_EQ(e->stringValue("title"), "Kind of Blue");
    EXPECT_EQ(e->stringValue("artist"), "Miles Davis");
    EXPECT_EQ(e->tracksSortedByPosition().back()->stringValue("name"), "Freddie Freeloader");
    EXPECT_EQ(e->linksSet().size(), 1u);
  }

  redo->trigger();
  redo->trigger();
  EXPECT_EQ(reopened()->entryWithUID(uid)->tracksSortedByPosition().back()->stringValue("name"),
            "Freddie Freeloader (take 2)");
  EXPECT_TRUE(shownTitles(window).contains("Kind of Blue (Legacy Edition)"));

  // A new edit after undoing drops what could be redone.
  undo->trigger();
  whenShown<EntryEditor>([](EntryEditor* editor) {
    editor->setFieldText("label", "Columbia");
    editor->accept();
  });
  select(window, uid);
  window.editEntry();
  EXPECT_FALSE(redo->isEnabled());
  EXPECT_EQ(text(undo), "Undo Edit Label");

  // Saving the panel without a change is no step.
  whenShown<EntryEditor>([](EntryEditor* editor) { editor->accept(); });
  window.editEntry();
  EXPECT_EQ(text(undo), "Undo Edit Label");
}

TEST_F(UndoGuiTest, AnUndoneDeleteBringsTheEntryBackWhole) {
  MainWindow window(*controller, windowSystem);
  QAction* undo = action(window, "undo");
  select(window, uid);
  whenShown<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Yes)->click(); });
  window.deleteSelectedEntries();
  EXPECT_EQ(shownTitles(window), QStringList{"Abbey Road"});
  EXPECT_EQ(reopened()->entryWithUID(uid), nullptr);
  EXPECT_EQ(text(undo), "Undo Delete");
  // Whatever else removed the cover meanwhile, undoing the delete puts it back.
  QFile::remove(controller->managedObjectContext().coverPathOf(uid));

  undo->trigger();
  EXPECT_EQ(shownTitles(window), (QStringList{"Abbey Road", "Kind of Blue"}));
  EXPECT_EQ(controller->entriesController().selectedObjects().size(), 1u);
  EXPECT_EQ(text(action(window, "redo")), "Redo Delete");
  const auto saved = reopened();
  Entry* back = saved->entryWithUID(uid);
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->stringValue("artist"), "Miles Davis");
  ASSERT_EQ(back->tracksSortedByPosition().size(), 2u);
  EXPECT_EQ(back->tracksSortedByPosition().front()->stringValue("name"), "So What");
  ASSERT_EQ(back->linksSet().size(), 1u);
  EXPECT_EQ(back->linksSet().front()->stringValue("url"), "https://example.org/review");
  EXPECT_EQ(saved->collectionNamesOf(*back), QStringList{"Jazz"});
  EXPECT_GT(QImage(saved->coverPathOf(uid)).pixelColor(20, 20).blue(), 240);  // blue, through JPEG

  action(window, "redo")->trigger();
  EXPECT_EQ(shownTitles(window), QStringList{"Abbey Road"});
  EXPECT_EQ(reopened()->entryWithUID(uid), nullptr);
  EXPECT_TRUE(reopened()->collectionNamed("Jazz")->memberUIDs().empty());
}

TEST_F(UndoGuiTest, EntriesAddedToACollectionLeaveItOnUndo) {
  MainWindow window(*controller, windowSystem);
  Store& store = controller->managedObjectContext();
  Collection* jazz = store.collectionNamed("Jazz");
  const qint64 abbeyRoad = store.entries().back()->uid();
  Q_EMIT window.collectionsPanel()->entriesDropped(jazz, {abbeyRoad, uid});
  EXPECT_EQ(reopened()->collectionNamed("Jazz")->memberUIDs(), (std::vector<qint64>{uid, abbeyRoad}));
  QAction* undo = action(window, "undo");
  EXPECT_EQ(text(undo), "Undo Add to Collection");
  // Dropping what the collection holds already changes nothing.
  Q_EMIT window.collectionsPanel()->entriesDropped(jazz, {uid});
  undo->trigger();
  EXPECT_EQ(reopened()->collectionNamed("Jazz")->memberUIDs(), std::vector<qint64>{uid});
  EXPECT_FALSE(undo->isEnabled());
  window.collectionsPanel()->selectCollection(store.collectionNamed("Jazz"));
  EXPECT_EQ(shownTitles(window), QStringList{"Kind of Blue"});
  action(window, "redo")->trigger();
  EXPECT_EQ(shownTitles(window), (QStringList{"Abbey Road", "Kind of Blue"}));

  // A collection made from the selection goes on undo and comes back, members and all, on redo.
  window.collectionsPanel()->selectCollection(nullptr);
  select(window, abbeyRoad);
  whenShown<QInputDialog>([](QInputDialog* dialog) {
    dialog->setTextValue("Beatles");
    dialog->accept();
  });
  window.newCollectionFromSelection();
  EXPECT_EQ(text(undo), "Undo New Collection");
  undo->trigger();
  EXPECT_EQ(reopened()->collectionNamed("Beatles"), nullptr);
  EXPECT_EQ(controller->collections().collectionWithName("Beatles", true), nullptr);
  action(window, "redo")->trigger();
  ASSERT_NE(reopened()->collectionNamed("Beatles"), nullptr);
  EXPECT_EQ(reopened()->collectionNamed("Beatles")->memberUIDs(), std::vector<qint64>{abbeyRoad});
}

TEST_F(UndoGuiTest, AnImportUndoesAsOneStepWithTheCollectionItMade) {
  MainWindow window(*controller, windowSystem);
  QFile csv(dir.filePath("Shelf.csv"));
  ASSERT_TRUE(csv.open(QIODevice::WriteOnly));
  csv.write("title,artist\nGiant Steps,John Coltrane\nMingus Ah Um,Charles Mingus\nTime Out,Dave Brubeck\n");
  csv.close();
  window.openStrings({csv.fileName()});
  ASSERT_NE(controller->collections().collectionWithName("Shelf", true), nullptr);
  EXPECT_EQ(reopened()->entries().size(), 5u);
  std::vector<qint64> imported;
  for (Entry* e : controller->managedObjectContext().entries())
    if (e->uid() != uid && e->stringValue("title") != "Abbey Road") imported.push_back(e->uid());
  ASSERT_EQ(imported.size(), 3u);

  QAction* undo = action(window, "undo");
  EXPECT_EQ(text(undo), "Undo Import");
  undo->trigger();
  EXPECT_FALSE(undo->isEnabled());
  EXPECT_EQ(shownTitles(window), (QStringList{"Abbey Road", "Kind of Blue"}));
  {
    const auto saved = reopened();
    EXPECT_EQ(saved->entries().size(), 2u);
    EXPECT_EQ(saved->collectionNamed("Shelf"), nullptr);
    EXPECT_NE(saved->collectionNamed("Jazz"), nullptr);
  }

  action(window, "redo")->trigger();
  const auto saved = reopened();
  for (qint64 again : imported) EXPECT_NE(saved->entryWithUID(again), nullptr);
  ASSERT_NE(saved->collectionNamed("Shelf"), nullptr);
  EXPECT_EQ(saved->collectionNamed("Shelf")->memberUIDs().size(), 3u);
  window.collectionsPanel()->selectCollection(controller->collections().collectionWithName("Shelf", true));
  EXPECT_EQ(shownTitles(window), (QStringList{"Giant Steps", "Mingus Ah Um", "Time Out"}));
}

TEST_F(UndoGuiTest, NothingIsLeftToUndoAfterTheCatalogueIsOpenedAgain) {
  {
    MainWindow window(*controller, windowSystem);
    select(window, uid);
    whenShown<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Yes)->click(); });
    window.deleteSelectedEntries();
    EXPECT_TRUE(action(window, "undo")->isEnabled());
  }
  controller = std::make_unique<MyController>(settings, windowSystem, platform);
  controller->applicationWillFinishLaunching();
  ASSERT_TRUE(controller->openCatalogue(path()).ok());
  MainWindow window(*controller, windowSystem);
  EXPECT_FALSE(action(window, "undo")->isEnabled());
  EXPECT_EQ(text(action(window, "undo")), "Undo");
  EXPECT_EQ(window.history()->stack().count(), 0);
  EXPECT_EQ(shownTitles(window), QStringList{"Abbey Road"});
}

}  // namespace
