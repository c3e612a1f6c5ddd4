#include "CatalogueWatcher.h"
#include "CliRunner.h"
#include "CollectionsPanel.h"
#include "Entry.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "FakePlatform.h"
#include "MainWindow.h"
#include "MyController.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "WindowTestBase.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <gtest/gtest.h>

namespace {

// The window and the command line on one catalogue, as two programs a person runs side by side.
class SharedCatalogueGuiTest : public WindowTestBase<> {
 protected:
  CliRunner cli{dir.path()};

  void SetUp() override {
    launch(dir.filePath("c/Discary.sqlite"));
    add({{"title", "Kind of Blue"}, {"artist", "Miles Davis"}, {"genre", "Jazz"}});
    add({{"title", "Blue Train"}, {"artist", "John Coltrane"}, {"genre", "Jazz"}});
    add({{"title", "Abbey Road"}, {"artist", "The Beatles"}, {"genre", "Rock"}});
    for (int i = 0; i < 60; ++i) add({{"title", QStringLiteral("Session %1").arg(i, 2, 10, QChar('0'))}});
    ASSERT_TRUE(controller->saveManagedObjectContext());
  }
  Entry* shown(const MainWindow& window, const QString& title) {
    for (int row = 0; row < window.listModel()->rowCount(); ++row)
      if (window.listModel()->entryAt(row)->stringValue("title") == title) return window.listModel()->entryAt(row);
    return nullptr;
  }
  // What the command line reads back for the entry of that title; empty when there is none.
  QJsonObject listed(const QString& title) {
    const QJsonArray all = cli.run({"--json", "list"}).json().toArray();
    for (const QJsonValue& v : all)
      if (v.toObject().value("title").toString() == title) return v.toObject();
    return {};
  }
  static QString textIn(QWidget* editor) {
    if (auto* line = qobject_cast<QLineEdit*>(editor)) return line->text();
    if (auto* combo = qobject_cast<QComboBox*>(editor)) return combo->currentText();
    if (auto* text = qobject_cast<QPlainTextEdit*>(editor)) return text->toPlainText();
    return {};
  }
  void ok(const CliRunner::Outcome& outcome) { ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString(); }
};

TEST_F(SharedCatalogueGuiTest, WhatTheCommandLineSavesShowsInTheOpenWindowWhereTheUserLeftIt) {
  MainWindow window(*controller, windowSystem);
  window.resize(1000, 400);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  Entry* selected = shown(window, "Session 30");
  window.selectEntries({selected});
  window.listView()->scrollTo(window.listModel()->index(window.listModel()->rowOf(shown(window, "Session 20")), 0),
                              QAbstractItemView::PositionAtTop);
  const int scrolled = window.listView()->verticalScrollBar()->value();
  ASSERT_GT(scrolled, 0);

  // A new entry that sorts first: the rows below it move, the view does not.
  ok(cli.run({"add", "title=Aardvark Sessions", "artist=Various", "--collection", "Live"}));
  QTRY_VERIFY_WITH_TIMEOUT(shown(window, "Aardvark Sessions") != nullptr, 10000);
  EXPECT_EQ(window.listModel()->entryAt(0)->stringValue("title"), "Aardvark Sessions");
  EXPECT_EQ(controller->entriesController().selectedObjects(), std::vector<Entry*>{selected});
  EXPECT_EQ(window.listModel()->entryAt(window.listView()->rowAt(0))->stringValue("title"), "Session 20");
  EXPECT_TRUE(window.footer()->text().startsWith("64 Albums")) << window.footer()->text().toStdString();
  EXPECT_FALSE(window.collectionsPanel()->findItems("Live", Qt::MatchExactly).isEmpty());

  // A change to the selected entry shows on its page; one deleted elsewhere leaves the list.
  ok(cli.run({"edit", "Session 30", "artist=The Quartet"}));
  QTRY_VERIFY_WITH_TIMEOUT(window.pageView()->toPlainText().contains("The Quartet"), 10000);
  ok(cli.run({"delete", "Abbey Road"}));
  QTRY_VERIFY_WITH_TIMEOUT(shown(window, "Abbey Road") == nullptr, 10000);
  EXPECT_TRUE(window.footer()->text().startsWith("63 Albums")) << window.footer()->text().toStdString();
  EXPECT_EQ(controller->entriesController().selectedObjects(), std::vector<Entry*>{selected});

  // Nothing new: the look costs a pragma and finds nothing.
  EXPECT_FALSE(window.catalogueWatcher()->checkNow());
}

TEST_F(SharedCatalogueGuiTest, EditsOfOneEntryInBothProgramsKeepBothAndTheEditorSaysWhereTheyMet) {
  MainWindow window(*controller, windowSystem);
  Entry* blue = shown(window, "Kind of Blue");
  EntryEditor editor(*controller, blue, &window);
  editor.show();
  editor.setFieldText("label", "Columbia");
  editor.setFieldText("comments", "Mono pressing");

  ok(cli.run({"edit", "Kind of Blue", "genre=Modal Jazz", "label=Legacy", "summary=Recorded in 1959"}));
  QTRY_COMPARE_WITH_TIMEOUT(textIn(editor.editorFor("genre")), QString("Modal Jazz"), 10000);
  EXPECT_TRUE(editor.outsideChangeNotice()->isVisible());
  EXPECT_TRUE(editor.outsideChangeNotice()->text().contains("Label"))
      << editor.outsideChangeNotice()->text().toStdString();
  EXPECT_FALSE(editor.outsideChangeNotice()->text().contains("Genre"));
  EXPECT_EQ(textIn(editor.editorFor("label")), "Columbia");  // what the user typed stays

  editor.accept();
  const QJsonObject saved = listed("Kind of Blue");
  EXPECT_EQ(saved.value("genre").toString(), "Modal Jazz");          // theirs, untouched here
  EXPECT_EQ(saved.value("summary").toString(), "Recorded in 1959");  // theirs
  EXPECT_EQ(saved.value("label").toString(), "Columbia");            // both: the later save wins
  EXPECT_EQ(saved.value("comments").toString(), "Mono pressing");    // ours
  EXPECT_EQ(saved.value("artist").toString(), "Miles Davis");

  // The command line's edit after the window's wins the same way, and the window follows.
  ok(cli.run({"edit", "Kind of Blue", "label=Sony"}));
  QTRY_COMPARE_WITH_TIMEOUT(blue->stringValue("label"), QString("Sony"), 10000);
  EXPECT_EQ(blue->stringValue("comments"), "Mono pressing");
}

TEST_F(SharedCatalogueGuiTest, AnEntryDeletedElsewhereWhileInTheEditorIsSavedAsNewOnlyWhenTheUserSaysSo) {
  MainWindow window(*controller, windowSystem);
  const qint64 oldUid = shown(window, "Blue Train")->uid();
  {
    EntryEditor dropped(*controller, shown(window, "Abbey Road"), &window);
    dropped.show();
    dropped.setFieldText("comments", "Remaster");
    ok(cli.run({"delete", "Abbey Road"}));
    QTRY_VERIFY_WITH_TIMEOUT(dropped.outsideChangeNotice()->isVisible(), 10000);
    EXPECT_EQ(shown(window, "Abbey Road"), nullptr);
    dropped.reject();
  }
  EXPECT_TRUE(controller->saveManagedObjectContext());
  EXPECT_TRUE(listed("Abbey Road").isEmpty());

  EntryEditor editor(*controller, shown(window, "Blue Train"), &window);
  editor.show();
  editor.setFieldText("comments", "Blue Note 1577");
  ok(cli.run({"delete", "Blue Train"}));
  QTRY_VERIFY_WITH_TIMEOUT(editor.outsideChangeNotice()->isVisible(), 10000);
  EXPECT_TRUE(editor.outsideChangeNotice()->text().contains("deleted"))
      << editor.outsideChangeNotice()->text().toStdString();
  EXPECT_EQ(editor.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->text(), "Save as New Entry");
  editor.accept();
  const QJsonObject saved = listed("Blue Train");
  ASSERT_FALSE(saved.isEmpty());
  EXPECT_NE(saved.value("uid").toInteger(), oldUid);
  EXPECT_EQ(saved.value("artist").toString(), "John Coltrane");
  EXPECT_EQ(saved.value("comments").toString(), "Blue Note 1577");
}

}  // namespace
