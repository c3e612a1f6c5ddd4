#include "Clock.h"
#include "CollectionsPanel.h"
#include "CoverWell.h"
#include "Entry.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "ExportDialog.h"
#include "FakePlatform.h"
#include "GuiApplication.h"
#include "GuiScript.h"
#include "LinksTable.h"
#include "MainWindow.h"
#include "MyController.h"
#include "PageView.h"
#include "PreferencesDialog.h"
#include "PrintController.h"
#include "PrintDialog.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "SingleInstance.h"
#include "StatusImage.h"
#include "Store.h"
#include "TrackTable.h"
#include "WindowTestBase.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>
#include <QStringListModel>
#include <QTemporaryDir>
#include <QTest>
#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTimer>
#include <QToolButton>
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

class MainWindowTest : public WindowTestBase<ScriptedWindowSystem> {
 protected:
  void SetUp() override {
    launch(dir.filePath("Discary.sqlite"));
    add({{"title", "Kind of Blue"}, {"artist", "Miles Davis"}, {"genre", "Jazz"}, {"price", "9.99"}, {"duration", "45:44"}});
    add({{"title", "Blue Train"}, {"artist", "John Coltrane"}, {"genre", "Jazz"}, {"price", "12.50"}, {"status", 1}});
    add({{"title", "Abbey Road"}, {"artist", "The Beatles"}, {"genre", "Rock"}, {"price", "11"}, {"duration", "47:03"}});
    ASSERT_TRUE(controller->saveManagedObjectContext());
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
  editing.setFieldText("price", "about ten pounds");  // letters in a price stay text, once confirmed
  editing.linksTable()->addLink("Down Beat Review", "https://example.org/review");
  editing.trackTable()->addTrack();
  editing.trackTable()->table()->item(2, 0)->setText("Pussy Cat Dues");
  editing.trackTable()->table()->item(2, 3)->setText("9:14");
  answerNextMessageBox("Save Anyway");
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

TEST_F(MainWindowTest, TheBorrowedCollectionShowsOverdueLoansFirstAndInRed) {
  // "Now" is the clock the tests set, not the day the test runs.
  qputenv(Clock::overrideVariable, "2026-03-10T09:00:00Z");
  const auto day = [](int d) { return QDateTime(QDate(2026, 3, d), QTime(12, 0), Qt::UTC); };
  add({{"title", "Aja"}, {"status", 1}, {"borrowedBy", "Ann"}, {"dueDate", day(9)}});
  add({{"title", "Bitches Brew"}, {"status", 1}, {"dueDate", day(10)}});  // due today: not late
  add({{"title", "Zen Arcade"}, {"status", 1}, {"dueDate", day(1)}});
  add({{"title", "Returned"}, {"status", 0}, {"dueDate", day(1)}});
  MainWindow window(*controller, windowSystem);
  window.collectionsPanel()->selectCollection(controller->collections().borrowedCollection());
  // Late loans first, each part by title.
  EXPECT_EQ(shownTitles(window), (QStringList{"Aja", "Zen Arcade", "Bitches Brew", "Blue Train"}));
  EntryTableModel& list = *window.listModel();
  const int title = int(list.columns().indexOf("title"));
  EXPECT_EQ(list.data(list.index(0, title), Qt::ForegroundRole).value<QColor>(), EntryTableModel::overdueColour);
  EXPECT_TRUE(list.data(list.index(0, title), Qt::ToolTipRole).toString().startsWith("Overdue: due back on 9 Mar 2026"));
  EXPECT_FALSE(list.data(list.index(2, title), Qt::ForegroundRole).isValid());

  // A week on, the loan due "today" is late too.
  qputenv(Clock::overrideVariable, "2026-03-17T09:00:00Z");
  window.collectionsPanel()->selectCollection(nullptr);
  window.collectionsPanel()->selectCollection(controller->collections().borrowedCollection());
  EXPECT_EQ(shownTitles(window), (QStringList{"Aja", "Bitches Brew", "Zen Arcade", "Blue Train"}));
  qunsetenv(Clock::overrideVariable);
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

  // A file with problems ends in an alert; its finished sheet must not cover it.
  QFile uneven(dir.filePath("Uneven.csv"));
  ASSERT_TRUE(uneven.open(QIODevice::WriteOnly));
  uneven.write("title,artist\nBallads,John Coltrane\nCrescent,John Coltrane,Impulse!\n");
  uneven.close();
  GuiScript::AlertSeen alert;
  GuiScript::answerAlert(&alert);
  GuiScript::fromEventLoop([&] { window.openStrings({uneven.fileName()}); });
  EXPECT_TRUE(alert.title.startsWith("Some of Uneven")) << alert.title.toStdString();
  EXPECT_FALSE(alert.underASheet);
  EXPECT_EQ(shownTitles(window), (QStringList{"Ballads", "Crescent"}));

  QMimeData web;
  web.setUrls({QUrl("https://example.org/x.csv")});
  QDragEnterEvent remote(QPoint(10, 10), Qt::CopyAction, &web, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &remote);
  EXPECT_FALSE(remote.isAccepted());
}

}  // namespace

namespace {

// The picture the entry page holds, as the page shows it.
QImage shownCover(const MainWindow& window) {
  QTextDocument* page = window.pageView()->document();
  for (QTextBlock block = page->begin(); block.isValid(); block = block.next())
    for (auto it = block.begin(); !it.atEnd(); ++it)
      if (const QTextCharFormat format = it.fragment().charFormat(); format.isImageFormat())
        return page->resource(QTextDocument::ImageResource, QUrl(format.toImageFormat().name())).value<QImage>();
  return {};
}

// Pixels of a grey other than the background: the frame, as the cover itself is red.
int framePixels(const QImage& cell) {
  int count = 0;
  for (int y = 0; y < cell.height(); ++y)
    for (int x = 0; x < cell.width(); ++x) {
      const QRgb p = cell.pixel(x, y);
      count += qRed(p) == qGreen(p) && qGreen(p) == qBlue(p) && p != cell.pixel(0, 0);
    }
  return count;
}

TEST_F(MainWindowTest, TheEntryPageShowsItsCoverAsTheCoverPreferencesSay) {
  MainWindow window(*controller, windowSystem);
  window.resize(1600, 900);  // a page pane wider than the largest cell
  window.show();
  QImage red(300, 150, QImage::Format_RGB32);
  red.fill(Qt::red);
  ASSERT_TRUE(controller->setCoverImage(*window.listModel()->entryAt(2), red));
  window.listView()->selectRow(2);
  QImage cover = shownCover(window);
  EXPECT_EQ(cover.size(), QSize(150, 150));
  EXPECT_EQ(cover.pixel(0, 0), qRgb(255, 255, 255));
  EXPECT_GT(framePixels(cover), 0);

  QTimer::singleShot(0, [] {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* dialog = qobject_cast<PreferencesDialog*>(w)) {
        dialog->findChild<QSpinBox*>("CellSize")->setValue(90);
        dialog->findChild<QDoubleSpinBox*>("Cover Background")->setValue(0.5);
        dialog->findChild<QCheckBox*>("Cover Border")->setChecked(false);
        return dialog->accept();
      }
  });
  ASSERT_TRUE(window.findChild<QAction*>("preferences"));
  window.findChild<QAction*>("preferences")->trigger();
  cover = shownCover(window);
  EXPECT_EQ(cover.size(), QSize(90, 90));
  EXPECT_NEAR(qGray(cover.pixel(0, 0)), 128, 1);
  EXPECT_EQ(framePixels(cover), 0);
  EXPECT_GT(qRed(cover.pixel(45, 45)), 240);  // the cover itself, red through its JPEG file

  // A settings file edited by hand is held to what the window can show.
  settings.setObject("CellSize", 100000);
  settings.setObject("Cover Background", "bright");
  window.listView()->clearSelection();
  window.listView()->selectRow(2);
  cover = shownCover(window);
  EXPECT_EQ(cover.size(), QSize(400, 400));
  EXPECT_GT(qRed(cover.pixel(200, 200)), 240);
}

TEST_F(MainWindowTest, CoversAreSetRemovedAndDroppedOnTheList) {
  MainWindow window(*controller, windowSystem);
  window.resize(1200, 700);
  window.show();
  QImage blue(600, 600, QImage::Format_RGB32);
  blue.fill(Qt::blue);
  const QString picture = dir.filePath("blue.png");
  ASSERT_TRUE(blue.save(picture));
  Entry* album = window.listModel()->entryAt(0);
  const QString coverFile = controller->managedObjectContext().coverPathOf(album->uid());
  window.listView()->selectRow(0);
  EXPECT_TRUE(shownCover(window).isNull());

  EntryEditor setting(*controller, album, &window);
  EXPECT_FALSE(setting.coverWell()->takeFile(dir.filePath("Discary.sqlite")));  // no picture: nothing changes
  EXPECT_FALSE(setting.coverWell()->isChanged());
  ASSERT_TRUE(setting.coverWell()->takeFile(picture));
  setting.accept();
  EXPECT_GT(qBlue(QImage(coverFile).pixel(300, 300)), 200);
  window.reloadAll();
  EXPECT_FALSE(shownCover(window).isNull());

  EntryEditor removing(*controller, album, &window);
  EXPECT_FALSE(removing.coverWell()->cover().isNull());
  removing.coverWell()->removeCover();
  removing.accept();
  EXPECT_FALSE(QFile::exists(coverFile));

  EntryEditor pasting(*controller, album, &window);
  QImage green(80, 80, QImage::Format_RGB32);
  green.fill(Qt::green);
  QApplication::clipboard()->setImage(green);
  ASSERT_TRUE(pasting.coverWell()->paste());
  pasting.accept();
  EXPECT_GT(qGreen(QImage(coverFile).pixel(40, 40)), 200);

  // A picture file dropped on an entry of the list becomes that entry's cover, not an import.
  Entry* dropped = window.listModel()->entryAt(1);
  const QPoint onRow =
      window.listView()->viewport()->mapTo(&window, window.listView()->visualRect(window.listModel()->index(1, 1)).center());
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(picture)});
  QDragEnterEvent enter(onRow, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &enter);
  QDragMoveEvent move(onRow, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &move);
  EXPECT_TRUE(move.isAccepted());
  QDropEvent drop(onRow, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &drop);
  EXPECT_TRUE(QFile::exists(controller->managedObjectContext().coverPathOf(dropped->uid())));
  EXPECT_EQ(controller->entriesController().selectedObjects(), std::vector<Entry*>{dropped});
  EXPECT_EQ(window.listModel()->rowCount(), 3);  // nothing imported
  EXPECT_FALSE(shownCover(window).isNull());
}

TEST_F(MainWindowTest, ThePageScalesItsCoverToThePanesWidth) {
  settings.setObject("CellSize", 400);
  MainWindow window(*controller, windowSystem);
  window.resize(1200, 700);
  window.show();
  QImage big(600, 600, QImage::Format_RGB32);
  big.fill(Qt::darkRed);
  ASSERT_TRUE(controller->setCoverImage(*window.listModel()->entryAt(2), big));
  window.listView()->selectRow(2);
  auto* page = qobject_cast<PageView*>(window.pageView());
  ASSERT_TRUE(page);
  page->setMinimumWidth(0);
  page->resize(220, 500);
  QApplication::processEvents();
  const QImage narrow = shownCover(window);
  EXPECT_LE(narrow.width(), page->widestPicture());
  EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0);  // nothing clipped
  page->resize(700, 500);
  QApplication::processEvents();
  EXPECT_EQ(shownCover(window).width(), 400);  // back to the cell size once there is room
}

int rowNamed(const CollectionsPanel& panel, const QString& name) {
  for (int row = 0; row < panel.count(); ++row)
    if (panel.item(row)->text() == name) return row;
  return -1;
}

TEST_F(MainWindowTest, CollectionsShowCountsTakeDropsAndRemoveWithoutDeleting) {
  std::vector<Entry*> jazz;
  for (Entry* e : controller->managedObjectContext().entries())
    if (e->stringValue("genre") == "Jazz") jazz.push_back(e);
  controller->collections().createCollectionNamed("Jazz Shelf", jazz);
  controller->collections().createCollectionNamed("Party", {});
  ASSERT_TRUE(controller->saveManagedObjectContext());
  MainWindow window(*controller, windowSystem);
  window.show();
  CollectionsPanel& panel = *window.collectionsPanel();
  const int shelf = rowNamed(panel, "Jazz Shelf"), party = rowNamed(panel, "Party");
  ASSERT_GE(shelf, 0);
  EXPECT_EQ(panel.countShown(0), 3);
  EXPECT_EQ(panel.countShown(shelf), 2);
  EXPECT_EQ(panel.countShown(party), 0);

  // Dragging entries over a collection marks it; the drop adds them and the open page shows it.
  window.listView()->selectRow(int(window.listModel()->rowOf(controller->managedObjectContext().entries().back())));
  const qint64 uid = controller->entriesController().selectedObjects().front()->uid();
  QMimeData dragged;
  dragged.setData(EntryTableModel::uidsMimeType, QByteArray::number(uid));
  const QPoint onParty = panel.visualItemRect(panel.item(party)).center();
  QDragEnterEvent enter(onParty, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(panel.viewport(), &enter);
  QDragMoveEvent move(onParty, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(panel.viewport(), &move);
  EXPECT_EQ(panel.dropTargetRow(), party);
  QDropEvent drop(onParty, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(panel.viewport(), &drop);
  EXPECT_EQ(panel.dropTargetRow(), -1);
  EXPECT_EQ(panel.countShown(rowNamed(panel, "Party")), 1);
  EXPECT_TRUE(window.pageView()->toPlainText().contains("Party")) << window.pageView()->toPlainText().toStdString();

  // In a user collection, Delete can mean "not in this collection any more".
  panel.selectCollection(controller->collections().collectionWithName("Jazz Shelf", true));
  EXPECT_EQ(shownTitles(window), (QStringList{"Blue Train", "Kind of Blue"}));
  window.listView()->selectRow(0);
  answerNextMessageBox("Remove from Collection");
  window.deleteSelectedEntries();
  EXPECT_EQ(shownTitles(window), QStringList{"Kind of Blue"});
  EXPECT_EQ(panel.countShown(rowNamed(panel, "Jazz Shelf")), 1);
  {
    Store stored;
    ASSERT_TRUE(stored.open(dir.filePath("Discary.sqlite")).ok());
    EXPECT_EQ(stored.entries().size(), 3u);
    EXPECT_EQ(stored.collectionNamed("Jazz Shelf")->memberUIDs().size(), 1u);
  }
  window.listView()->selectRow(0);
  answerNextMessageBox("Delete from Catalogue");
  window.deleteSelectedEntries();
  EXPECT_TRUE(shownTitles(window).isEmpty());
  EXPECT_EQ(panel.countShown(0), 2);
  Store stored;
  ASSERT_TRUE(stored.open(dir.filePath("Discary.sqlite")).ok());
  EXPECT_EQ(stored.entries().size(), 2u);
}

TEST_F(MainWindowTest, KeysAndMenusGoWhereAPersonExpects) {
  MainWindow window(*controller, windowSystem);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  auto enabled = [&](const char* name) { return window.findChild<QAction*>(name)->isEnabled(); };
  EXPECT_FALSE(enabled("editEntry"));  // nothing selected, and All Entries is no collection of one's own
  EXPECT_FALSE(enabled("deleteEntries"));
  EXPECT_FALSE(enabled("renameCollection"));
  EXPECT_FALSE(window.findChild<QAction*>("preferences")->shortcut().isEmpty());

  EntryEditor adding(*controller, nullptr, &window);
  EXPECT_EQ(adding.focusWidget(), adding.editorFor("title"));

  window.listView()->setFocus();
  window.listView()->selectRow(1);
  EXPECT_TRUE(enabled("editEntry"));
  EXPECT_TRUE(enabled("deleteEntries"));
  QString editing;
  GuiScript::whenShown<EntryEditor>([&](EntryEditor* editor) {
    editing = editor->windowTitle();
    editor->reject();
  });
  QTest::keyClick(window.listView(), Qt::Key_Return);
  EXPECT_EQ(editing, "Edit \u201CBlue Train\u201D");
  QTest::keyClick(window.listView(), Qt::Key_Tab);  // out of the list, not to the next cell
  EXPECT_FALSE(window.listView()->hasFocus());
  window.listView()->selectAll();
  EXPECT_FALSE(enabled("editEntry"));  // one entry at a time
}

TEST_F(MainWindowTest, ImportTakesAFolderSelectsItsCollectionAndListsSkippedFilesOnce) {
  MainWindow window(*controller, windowSystem);
  window.show();
  const QString folder = dir.filePath("Silence");
  ASSERT_TRUE(QDir().mkpath(folder));
  ASSERT_TRUE(QFile::copy(DISCARY_TEST_DATA "/audio/mutagen_silence-44-s.flac", folder + "/silence.flac"));
  GuiScript::whenShown<QFileDialog>([&](QFileDialog* panel) {
    panel->setDirectory(folder);
    panel->findChild<QPushButton*>("chooseFolder")->click();
  });
  window.findChild<QAction*>("import")->trigger();
  Collection* made = controller->collections().selectedCollection();
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(window.collectionsPanel()->currentCollection(), made);
  EXPECT_EQ(window.listModel()->rowCount(), 1);

  // Two files that cannot be imported, dropped together: one alert names both.
  for (const char* name : {"empty.csv", "noise.txt"}) {
    QFile file(dir.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    if (QByteArray(name) == "noise.txt") file.write(QByteArray("\x00\x01\x02\xff\xfe", 5));
  }
  GuiScript::AlertSeen alert;
  GuiScript::answerAlert(&alert);
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(dir.filePath("empty.csv")), QUrl::fromLocalFile(dir.filePath("noise.txt"))});
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &enter);
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window, &drop);
  for (int i = 0; i < 500 && alert.title.isEmpty(); ++i) QTest::qWait(20);
  EXPECT_TRUE(alert.title.startsWith("2 files")) << alert.title.toStdString() << alert.text.toStdString();
  EXPECT_TRUE(alert.text.contains("empty.csv") && alert.text.contains("noise.txt")) << alert.text.toStdString();

  // The same files handed over by a later launch of the program.
  GuiScript::AlertSeen handedOver;
  GuiScript::answerAlert(&handedOver);
  window.openStrings({dir.filePath("empty.csv"), dir.filePath("noise.txt")});
  EXPECT_TRUE(handedOver.title.startsWith("2 files")) << handedOver.title.toStdString();
}

TEST_F(MainWindowTest, ExportFromTheMenuWritesTheShownEntriesAndSaysWhere) {
  MainWindow window(*controller, windowSystem);
  window.show();
  window.applyFilter({{"field", "genre"}, {"action", 1}}, "Jazz");
  auto exportAs = [&](ExportDialog::Format format, const QString& path) {
    GuiScript::whenShown<ExportDialog>([=](ExportDialog* panel) {
      panel->setFormat(format);
      panel->setOutput(path);
      panel->accept();
    });
    window.findChild<QAction*>("export")->trigger();
  };
  const QString csv = dir.filePath("jazz.csv");
  exportAs(ExportDialog::Format::Csv, csv);
  QFile written(csv);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  const QByteArray text = written.readAll();
  EXPECT_TRUE(text.contains("Blue Train") && text.contains("Kind of Blue"));
  EXPECT_FALSE(text.contains("Abbey Road"));
  EXPECT_TRUE(window.footer()->text().contains(csv)) << window.footer()->text().toStdString();

  const QString site = dir.filePath("site");
  exportAs(ExportDialog::Format::Html, site);
  EXPECT_TRUE(QFile::exists(site + "/index.html"));
  EXPECT_TRUE(window.footer()->text().contains(site));

  // The native export reads back as two entries through the importer.
  const QString native = dir.filePath("Jazz Copy.discary");
  exportAs(ExportDialog::Format::Native, native);
  const size_t before = controller->managedObjectContext().entries().size();
  ASSERT_TRUE(controller->openFile(native));
  EXPECT_EQ(controller->managedObjectContext().entries().size(), before + 2);
}

TEST_F(MainWindowTest, FindingThingsKeepsItsBearingsAcrossColumnsFiltersAndRelaunches) {
  controller->collections().createCollectionNamed("Shelf", controller->managedObjectContext().entries());
  ASSERT_TRUE(controller->saveManagedObjectContext());
  auto window = std::make_unique<MainWindow>(*controller, windowSystem);
  window->show();
  EXPECT_GE(window->width(), 700);  // a first window with room for list and page
  EXPECT_FALSE(window->searchField()->actions().first()->icon().isNull());  // drawn when the desktop has no theme
  EXPECT_EQ(window->findChild<QToolButton*>("searchType")->text(), window->searchField()->placeholderText());

  window->applyFilter({{"field", "genre"}, {"action", 1}}, "Jazz");
  QAction* clear = window->findChild<QAction*>("clearFilter");
  EXPECT_TRUE(clear->isVisible());
  EXPECT_TRUE(window->findChild<QToolButton*>("filterButton")->text().contains("Jazz"));
  clear->trigger();
  EXPECT_FALSE(clear->isVisible());
  EXPECT_EQ(shownTitles(*window).size(), 3);

  QHeaderView* header = window->listView()->horizontalHeader();
  window->listView()->sortByColumn(int(window->listModel()->columns().indexOf("artist")), Qt::DescendingOrder);
  window->showColumn("title", false);  // a column left of the sorted one goes
  EXPECT_EQ(header->sortIndicatorSection(), int(window->listModel()->columns().indexOf("artist")));
  EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
  window->showColumn("title", true);

  window->collectionsPanel()->selectCollection(controller->collections().collectionWithName("Shelf", true));
  window->listView()->selectRow(int(window->listModel()->rowOf(controller->managedObjectContext().entries().front())));
  const std::vector<Entry*> selected = controller->entriesController().selectedObjects();
  window->close();
  window.reset();
  controller->collections().selectCollection(nullptr);
  controller->entriesController().setSortKey("title");

  MainWindow again(*controller, windowSystem);
  EXPECT_EQ(again.collectionsPanel()->currentCollection()->name(), "Shelf");
  EXPECT_EQ(controller->entriesController().selectedObjects(), selected);
  EXPECT_EQ(shownTitles(again).first(), "Abbey Road");  // The Beatles, artists Z to A
  EXPECT_EQ(again.listView()->horizontalHeader()->sortIndicatorSection(), int(again.listModel()->columns().indexOf("artist")));
}

TEST_F(MainWindowTest, AnEmptyCatalogueSaysHowToBegin) {
  controller->deleteEntries(std::vector<Entry*>(controller->managedObjectContext().entries()));
  ASSERT_TRUE(controller->saveManagedObjectContext());
  MainWindow window(*controller, windowSystem);
  window.show();
  QLabel* hint = window.findChild<QLabel*>("emptyHint");
  ASSERT_TRUE(hint);
  EXPECT_TRUE(hint->isVisible());
  EXPECT_TRUE(hint->text().contains("Import") && hint->text().contains("Scan Disc"));
  EXPECT_FALSE(window.findChild<QAction*>("export")->isEnabled());  // nothing to export
  EntryEditor adding(*controller, nullptr, &window);
  adding.setFieldText("title", "Out to Lunch!");
  adding.accept();
  window.reloadAll();
  EXPECT_FALSE(hint->isVisible());
  QTest::keyClicks(window.searchField(), "nothing like it");  // an empty search is not an empty catalogue
  EXPECT_FALSE(hint->isVisible());
}

TEST_F(MainWindowTest, DoubtfulValuesAreKeptOnlyOnceConfirmedAndDontAddKeepsWhatWasTyped) {
  MainWindow window(*controller, windowSystem);
  EntryEditor adding(*controller, nullptr, &window);
  adding.setFieldText("artist", "Eric Dolphy");
  GuiScript::AlertSeen warned;
  GuiScript::answerAlert(&warned, "Go Back");
  adding.accept();
  EXPECT_TRUE(warned.text.contains("title is empty")) << warned.text.toStdString();
  EXPECT_NE(adding.result(), QDialog::Accepted);
  EXPECT_EQ(adding.entry(), nullptr);

  adding.setFieldText("title", "Out to Lunch!");
  adding.setFieldText("releaseDate", "04/03/1964");
  adding.setFieldText("rating", "five");
  GuiScript::answerAlert(&warned, "Add Anyway");
  adding.accept();
  EXPECT_TRUE(warned.text.contains("3 April 1964") && warned.text.contains("1964-04-03")) << warned.text.toStdString();
  EXPECT_TRUE(warned.text.contains("\u201Cfive\u201D")) << warned.text.toStdString();
  ASSERT_NE(adding.entry(), nullptr);
  Store stored;
  ASSERT_TRUE(stored.open(dir.filePath("Discary.sqlite")).ok());
  const Entry* saved = stored.entryWithUID(adding.entry()->uid());
  ASSERT_NE(saved, nullptr);
  EXPECT_EQ(saved->value("releaseDate").toDateTime().date(), QDate(1964, 4, 3));
  EXPECT_EQ(saved->stringValue("rating"), "five");

  // The same album again: "Don't Add" goes back to the panel, as typed.
  EntryEditor again(*controller, nullptr, &window);
  again.setFieldText("title", "Kind of Blue");
  again.setFieldText("artist", "Miles Davis");
  answerNextMessageBox("Don't Add");
  again.accept();
  EXPECT_NE(again.result(), QDialog::Accepted);
  EXPECT_EQ(qobject_cast<QLineEdit*>(again.editorFor("title"))->text(), "Kind of Blue");
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 4u);
}

// Where a text stands on the rendered page: the top of its line, and of the line it ends on.
std::pair<qreal, qreal> linesOf(QTextDocument& page, const QString& text) {
  const QTextCursor found = page.find(text);
  if (found.isNull()) return {-1, -1};
  auto top = [&](int position) {
    const QTextBlock block = page.findBlock(position);
    QTextLayout* layout = block.layout();
    const QTextLine line = layout->lineForTextPosition(position - block.position());
    return page.documentLayout()->blockBoundingRect(block).top() + line.y();
  };
  return {top(found.selectionStart()), top(found.selectionEnd() - 1)};
}

TEST_F(MainWindowTest, TheDefaultPageShowsTrackNameArtistAndComposerOnLinesOfTheirOwn) {
  Entry* album = controller->managedObjectContext().entries()[1];  // Blue Train
  auto track = Store::newTrack();
  track->setPrimitiveValue("name", QString("Locomotion"));
  track->setPrimitiveValue("position", qint64(0));
  track->setPrimitiveValue("duration", QString("10:43"));
  track->setPrimitiveValue("artist", QString("John Coltrane Sextet"));
  track->setPrimitiveValue("composer", QString("Johnny Composer"));
  album->addTrack(std::move(track));
  album->setPrimitiveValue("label", QString("Blue Note"));
  album->setPrimitiveValue("releaseDate", QDateTime(QDate(1957, 7, 1), QTime(12, 0), Qt::UTC));
  ASSERT_TRUE(controller->saveManagedObjectContext());
  MainWindow window(*controller, windowSystem);
  window.resize(1000, 700);
  window.show();
  auto* page = qobject_cast<PageView*>(window.pageView());
  page->setMinimumWidth(0);
  page->resize(260, 600);  // a narrow pane
  window.listView()->selectRow(window.listModel()->rowOf(album));
  QApplication::processEvents();
  QTextDocument& shown = *page->document();
  const auto name = linesOf(shown, "Locomotion");
  const auto artist = linesOf(shown, "John Coltrane Sextet");
  const auto composer = linesOf(shown, "Written by Johnny Composer");
  const auto time = linesOf(shown, "10:43");
  ASSERT_GE(artist.first, 0) << shown.toPlainText().toStdString();
  ASSERT_GE(composer.first, 0);
  EXPECT_LT(name.first, artist.first);
  EXPECT_LT(artist.first, composer.first);
  EXPECT_EQ(time.first, time.second);  // a time is never broken across lines
  // The line under the title keeps its parts apart.
  EXPECT_FALSE(shown.toPlainText().contains("1957Blue Note")) << shown.toPlainText().toStdString();
  EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0);
  EXPECT_FALSE(page->grab().isNull());

  // The exported page holds the same three lines in the same order.
  QString exported = controller->templateText("Collection.html");
  controller->replaceKeysInTemplate(exported, *album, true, false);
  const qsizetype at = exported.indexOf("<td class=\"name\">Locomotion");
  ASSERT_GE(at, 0);
  EXPECT_LT(at, exported.indexOf("John Coltrane Sextet"));
  EXPECT_LT(exported.indexOf("John Coltrane Sextet"), exported.indexOf("Written by Johnny Composer"));
}

}  // namespace

namespace {

QStringList pullDown(QWidget* editor) {
  QStringList items;
  if (auto* combo = qobject_cast<QComboBox*>(editor))
    for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
  return items;
}

QStringList suggestions(QWidget* editor) {
  auto* line = qobject_cast<QLineEdit*>(editor);
  auto* model = line && line->completer() ? qobject_cast<QStringListModel*>(line->completer()->model()) : nullptr;
  return model ? model->stringList() : QStringList();
}

TEST_F(MainWindowTest, ThePanelsPullDownsOfferTheValuesAlreadyUsed) {
  settings.setObject("Fields On", QStringList{"custom1"});
  add({{"title", "Monk's Music"}, {"format", "LP"}, {"purchasedAt", "Rough Trade"}, {"location", "Shelf 2"},
       {"custom1", "Signed"}, {"borrowedBy", "Ann"}, {"status", 1}});
  MainWindow window(*controller, windowSystem);
  EntryEditor adding(*controller, nullptr, &window);
  EXPECT_TRUE(pullDown(adding.editorFor("format")).contains("LP"));
  EXPECT_TRUE(pullDown(adding.editorFor("location")).contains("Shelf 2"));
  EXPECT_TRUE(pullDown(adding.editorFor("custom1")).contains("Signed"));
  EXPECT_EQ(pullDown(adding.editorFor("artist")), (QStringList{"", "John Coltrane", "Miles Davis", "The Beatles"}));
  EXPECT_EQ(pullDown(adding.editorFor("purchasedAt")), (QStringList{"", "Rough Trade"}));
  EXPECT_EQ(suggestions(adding.editorFor("borrowedBy")), QStringList{"Ann"});

  adding.setFieldText("title", "Brilliant Corners");
  adding.setFieldText("purchasedAt", "Amoeba");
  adding.setFieldText("borrowedBy", "Bob");
  adding.accept();
  ASSERT_NE(adding.entry(), nullptr);
  EntryEditor next(*controller, adding.entry(), &window);
  EXPECT_EQ(pullDown(next.editorFor("purchasedAt")), (QStringList{"", "Amoeba", "Rough Trade"}));
  EXPECT_EQ(suggestions(next.editorFor("borrowedBy")), (QStringList{"Ann", "Bob"}));
  EXPECT_EQ(qobject_cast<QComboBox*>(next.editorFor("purchasedAt"))->currentText(), "Amoeba");
}

}  // namespace
