#include "CollectionsPanel.h"
#include "Entry.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "FakePlatform.h"
#include "GuiApplication.h"
#include "LinksTable.h"
#include "MainWindow.h"
#include "MyController.h"
#include "PrintController.h"
#include "PrintDialog.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "SingleInstance.h"
#include "StatusImage.h"
#include "Store.h"
#include "TrackTable.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <future>
#include <gtest/gtest.h>

namespace {

// Answers the next modal message box with the button whose text starts with the given words.
void answerNextMessageBox(const QString& button) {
  QTimer::singleShot(0, [button] {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* box = qobject_cast<QMessageBox*>(w); box && box->isVisible())
        for (QAbstractButton* b : box->buttons())
          if (b->text().startsWith(button)) return b->click();
    answerNextMessageBox(button);
  });
}

// The real print panel, answered without showing it: the chosen layout, to a PDF.
class ScriptedWindowSystem : public QtWindowSystem {
 public:
  QString pdf;
  int layout = 0;
  std::optional<PrintRequest> runPrintDialog(const PrintController& panel) override {
    PrintDialog dialog(panel);
    dialog.selectLayout(layout);
    PrintRequest request = dialog.request();
    request.pdfPath = pdf;
    return request;
  }
};

class MainWindowTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  ScriptedWindowSystem windowSystem;
  FakePlatform platform;
  std::unique_ptr<MyController> controller;

  void SetUp() override {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    controller = std::make_unique<MyController>(settings, windowSystem, platform);
    controller->applicationWillFinishLaunching();
    ASSERT_TRUE(controller->openCatalogue(dir.filePath("Discary.sqlite")).ok());
    add({{"title", "Kind of Blue"}, {"artist", "Miles Davis"}, {"genre", "Jazz"}, {"price", "9.99"}, {"duration", "45:44"}});
    add({{"title", "Blue Train"}, {"artist", "John Coltrane"}, {"genre", "Jazz"}, {"price", "12.50"}, {"status", 1}});
    add({{"title", "Abbey Road"}, {"artist", "The Beatles"}, {"genre", "Rock"}, {"price", "11"}, {"duration", "47:03"}});
    ASSERT_TRUE(controller->saveManagedObjectContext());
  }
  void TearDown() override { QLocale::setDefault(QLocale::system()); }

  Entry* add(const QVariantMap& values) {
    Entry* e = controller->managedObjectContext().insertEntry();
    for (auto it = values.begin(); it != values.end(); ++it) e->setPrimitiveValue(it.key(), it.value());
    return e;
  }
  QStringList shownTitles(const MainWindow& window) {
    QStringList titles;
    for (int row = 0; row < window.listModel()->rowCount(); ++row)
      titles << window.listModel()->entryAt(row)->stringValue("title");
    return titles;
  }
};

TEST_F(MainWindowTest, ShowsTheCatalogueItsFooterAndTheSelectedEntrysPage) {
  MainWindow window(*controller, windowSystem);
  window.show();
  EXPECT_EQ(shownTitles(window), (QStringList{"Abbey Road", "Blue Train", "Kind of Blue"}));
  EXPECT_EQ(window.footer()->text(), "3 Albums | 1 Borrowed | Value: 33.49 | 1.53 Hours");
  EXPECT_EQ(window.listModel()->headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), "Artist");

  window.listView()->selectRow(2);
  EXPECT_TRUE(window.pageView()->toPlainText().contains("Kind of Blue"));
  window.listView()->selectAll();
  EXPECT_TRUE(window.footer()->text().endsWith("3 selected")) << window.footer()->text().toStdString();
  EXPECT_TRUE(window.pageView()->toPlainText().isEmpty());

  window.collectionsPanel()->selectCollection(controller->collections().borrowedCollection());
  EXPECT_EQ(shownTitles(window), QStringList{"Blue Train"});
}

TEST_F(MainWindowTest, SearchAsYouTypeFilterAndColumns) {
  MainWindow window(*controller, windowSystem);
  QTest::keyClicks(window.searchField(), "blue");
  EXPECT_EQ(shownTitles(window), (QStringList{"Blue Train", "Kind of Blue"}));
  EXPECT_TRUE(window.footer()->text().startsWith("2 Albums"));
  window.setSearchType(4);  // artists
  EXPECT_TRUE(shownTitles(window).isEmpty());
  window.searchField()->clear();

  window.applyFilter({{"field", "genre"}, {"action", 1}}, "jazz");
  EXPECT_EQ(shownTitles(window), (QStringList{"Blue Train", "Kind of Blue"}));
  window.applyFilter({{"action", 6}});
  EXPECT_EQ(shownTitles(window).size(), 3);

  window.showColumn("composer", true);
  window.showColumn("label", false);
  EXPECT_TRUE(window.listModel()->columns().contains("composer"));
  window.listModel()->sort(int(window.listModel()->columns().indexOf("artist")), Qt::DescendingOrder);
  EXPECT_EQ(shownTitles(window).first(), "Abbey Road");  // The Beatles
  window.close();

  MainWindow again(*controller, windowSystem);  // column set and search type come back
  EXPECT_TRUE(again.listModel()->columns().contains("composer"));
  EXPECT_FALSE(again.listModel()->columns().contains("label"));
  EXPECT_EQ(again.searchType(), 4);
}

TEST_F(MainWindowTest, AddAndEditThroughThePanel) {
  MainWindow window(*controller, windowSystem);
  EntryEditor adding(*controller, nullptr, &window);
  adding.setFieldText("title", "Mingus Ah Um");
  adding.setFieldText("artist", "Charles Mingus");
  adding.setFieldText("releaseDate", "1959");
  adding.setFieldText("myRating", "4");
  adding.trackTable()->setTracks({QVariantMap{{"name", "Better Git It in Your Soul"}, {"duration", "7:23"}},
                                  QVariantMap{{"name", "Fables of Faubus"}, {"duration", "8:13"}}});
  adding.accept();
  Entry* added = adding.entry();
  ASSERT_NE(added, nullptr);
  EXPECT_EQ(added->value("releaseDate").toDateTime(), QDateTime(QDate(1959, 7, 1), QTime(12, 0), Qt::UTC));
  EXPECT_EQ(added->value("myRating").toLongLong(), 4);
  EXPECT_EQ(added->stringValue("duration"), "15:36");
  EXPECT_EQ(added->tracksSet().size(), 2u);

  EntryEditor editing(*controller, added, &window);
  EXPECT_EQ(qobject_cast<QLineEdit*>(editing.editorFor("releaseDate"))->text(), "1959");
  editing.setFieldText("price", "about ten pounds");  // letters in a price stay text
  editing.linksTable()->addLink("Down Beat Review", "https://example.org/review");
  editing.trackTable()->addTrack();
  editing.trackTable()->table()->item(2, 0)->setText("Pussy Cat Dues");
  editing.trackTable()->table()->item(2, 3)->setText("9:14");
  editing.accept();
  EXPECT_EQ(added->stringValue("price"), "about ten pounds");
  EXPECT_EQ(added->tracksSet().size(), 3u);
  EXPECT_EQ(added->stringValue("duration"), "24:50");
  ASSERT_EQ(added->linksSet().size(), 1u);
  EXPECT_EQ(added->linksSet().front()->stringValue("type"), "review");  // finished as a new link
  EXPECT_EQ(editing.result(), QDialog::Accepted);

  EntryEditor wrong(*controller, added, &window);
  wrong.setFieldText("releaseDate", "the year the music died");
  answerNextMessageBox("OK");
  wrong.accept();
  EXPECT_NE(wrong.result(), QDialog::Accepted);
  EXPECT_EQ(added->value("releaseDate").toDateTime().date().year(), 1959);

  window.reloadAll();
  EXPECT_TRUE(window.footer()->text().startsWith("4 Albums")) << window.footer()->text().toStdString();
}

TEST_F(MainWindowTest, RatingsShowAsStarsOutOfTenAndTheEditorKeepsWhatWasNotTouched) {
  const QDateTime bought(QDate(1999, 3, 4), QTime(10, 11, 12, 345), Qt::UTC);
  Entry* rated = add({{"title", " Giant Steps "}, {"artist", "John Coltrane"}, {"myRating", 9}, {"status", 3},
                      {"purchasedOn", bought}});
  ASSERT_TRUE(controller->saveManagedObjectContext());
  MainWindow window(*controller, windowSystem);
  EntryTableModel& list = *window.listModel();
  const int row = list.rowOf(rated);
  EXPECT_EQ(list.data(list.index(row, int(list.columns().indexOf("myRating"))), Qt::DisplayRole).toString(), "★★★★½");
  window.listView()->selectRow(row);
  EXPECT_TRUE(window.pageView()->toPlainText().contains("★★★★½"));

  EntryEditor untouched(*controller, rated, &window);
  EXPECT_EQ(qobject_cast<QComboBox*>(untouched.editorFor("myRating"))->currentText(), "★★★★½");
  untouched.setFieldText("comments", "first pressing");
  untouched.accept();
  Store stored;
  ASSERT_TRUE(stored.open(dir.filePath("Discary.sqlite")).ok());
  const Entry* saved = stored.entryWithUID(rated->uid());
  ASSERT_NE(saved, nullptr);
  EXPECT_EQ(saved->stringValue("comments"), "first pressing");
  EXPECT_EQ(saved->value("myRating").toLongLong(), 9);
  EXPECT_EQ(saved->value("status").toLongLong(), 3);  // in the collection, though not 0
  EXPECT_EQ(saved->stringValue("title"), " Giant Steps ");
  EXPECT_EQ(saved->value("purchasedOn").toDateTime(), bought);

  EntryEditor rating(*controller, rated, &window);
  rating.setFieldText("myRating", "7");
  rating.accept();
  EXPECT_EQ(rated->value("myRating").toLongLong(), 7);
}

TEST_F(MainWindowTest, TrackTimesTypedInTheEditorAddUpAsTimes) {
  MainWindow window(*controller, windowSystem);
  Entry* album = controller->managedObjectContext().entries().front();
  EntryEditor editing(*controller, album, &window);
  editing.trackTable()->setTracks({QVariantMap{{"name", "So What"}, {"duration", "1:02:03"}},
                                   QVariantMap{{"name", "Freddie Freeloader"}, {"duration", "0:58"}}});
  editing.trackTable()->table()->item(1, 0)->setText("Freddie Freeloader (take 2)");
  EXPECT_EQ(editing.trackTable()->findChild<QLabel*>()->text(), "Total 63:01");
  editing.accept();
  EXPECT_EQ(album->stringValue("duration"), "63:01");
}

TEST_F(MainWindowTest, TheStatusColumnHasADotOfItsOwnColourForLentOutAndWanted) {
  add({{"title", "Wish"}, {"status", 2}});
  add({{"title", "Owned"}, {"status", 3}});
  MainWindow window(*controller, windowSystem);
  EntryTableModel& list = *window.listModel();
  const int column = int(list.columns().indexOf("statusImage"));
  ASSERT_GE(column, 0);
  QHash<QString, QString> dots;
  QHash<QString, QVariant> colours;
  for (int row = 0; row < list.rowCount(); ++row) {
    const QModelIndex cell = list.index(row, column);
    dots.insert(list.entryAt(row)->stringValue("title"), list.data(cell, Qt::DisplayRole).toString());
    colours.insert(list.entryAt(row)->stringValue("title"), list.data(cell, Qt::ForegroundRole));
  }
  EXPECT_EQ(dots["Blue Train"], "\u25CF");
  EXPECT_EQ(dots["Wish"], "\u25CF");
  EXPECT_EQ(dots["Owned"], "");
  EXPECT_EQ(dots["Abbey Road"], "");
  EXPECT_EQ(colours["Blue Train"].value<QColor>(), StatusImage::colour(1));
  EXPECT_EQ(colours["Wish"].value<QColor>(), StatusImage::colour(2));
  EXPECT_NE(StatusImage::colour(1), StatusImage::colour(2));
  EXPECT_FALSE(colours["Owned"].isValid());
}

TEST_F(MainWindowTest, PrintsTheShownCollectionToPdf) {
  MainWindow window(*controller, windowSystem);
  windowSystem.pdf = dir.filePath("jazz.pdf");
  windowSystem.layout = 4;  // Custom: the list's own columns
  window.applyFilter({{"field", "genre"}, {"action", 1}}, "Jazz");
  controller->printCollection();
  QFile pdf(windowSystem.pdf);
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_TRUE(pdf.read(5) == "%PDF-");
  EXPECT_EQ(controller->printInstance()->lastPageCount(), 1);
  EXPECT_EQ(settings.stringForKey("Print Cover Width"), "350");
}

TEST_F(MainWindowTest, WordsHandedOverByALaterLaunchReachTheWindow) {
  MainWindow window(*controller, windowSystem);
  SingleInstance running(dir.filePath("discary.conf"));
  EXPECT_FALSE(SingleInstance(dir.filePath("discary.conf")).handOver({"nobody listens"}));
  QStringList received;
  ASSERT_TRUE(running.listen([&](const QStringList& words) {
    received = words;
    window.openStrings(words);
  }));
  const qint64 uid = controller->managedObjectContext().entries().back()->uid();
  const QStringList words{QString("discary://entry/%1").arg(uid), "https://example.org/not-ours"};
  auto later = std::async(std::launch::async, [&] { return SingleInstance(dir.filePath("discary.conf")).handOver(words); });
  QTRY_COMPARE(received, words);
  EXPECT_TRUE(later.get());
  ASSERT_EQ(controller->entriesController().selectedObjects().size(), 1u);
  EXPECT_EQ(controller->entriesController().selectedObjects().front()->uid(), uid);
  EXPECT_EQ(window.listView()->selectionModel()->selectedRows().size(), 1);
}

TEST_F(MainWindowTest, AnUnopenableCatalogueOffersAnotherFileAndQuitsCleanly) {
  const QString bogus = dir.filePath("not a catalogue.sqlite");
  QFile file(bogus);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("this is a shopping list, not a database");
  file.close();
  answerNextMessageBox("Quit");
  EXPECT_EQ(GuiApplication::run({"--catalogue", bogus, "--settings", dir.filePath("other.conf")}), 1);
  QFile check(bogus);
  ASSERT_TRUE(check.open(QIODevice::ReadOnly));
  EXPECT_EQ(check.readAll(), "this is a shopping list, not a database");
}

}  // namespace

namespace {

TEST_F(MainWindowTest, DroppedFilesAreImportedAndShown) {
  MainWindow window(*controller, windowSystem);
  window.show();
  QFile csv(dir.filePath("Dropped.csv"));
  ASSERT_TRUE(csv.open(QIODevice::WriteOnly));
  csv.write("title,artist\nGiant Steps,John Coltrane\n");
  csv.close();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(csv.fileName())});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &drop);
  EXPECT_TRUE(drop.isAccepted());
  for (int i = 0; i < 100 && !controller->collections().collectionWithName("Dropped", true); ++i) QTest::qWait(10);
  EXPECT_NE(controller->collections().collectionWithName("Dropped", true), nullptr);
  EXPECT_EQ(shownTitles(window), QStringList{"Giant Steps"});

  QMimeData web;
  web.setUrls({QUrl("https://example.org/x.csv")});
  QDragEnterEvent remote(QPoint(10, 10), Qt::CopyAction, &web, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &remote);
  EXPECT_FALSE(remote.isAccepted());
}

}  // namespace
