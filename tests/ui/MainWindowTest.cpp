#include "CollectionsPanel.h"
#include "Entry.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "FakePlatform.h"
#include "GuiApplication.h"
#include "LinksTable.h"
#include "MainWindow.h"
#include "MyController.h"
#include "PreferencesDialog.h"
#include "PrintController.h"
#include "PrintDialog.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "SingleInstance.h"
#include "StatusImage.h"
#include "Store.h"
#include "TrackTable.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>
#include <QStringListModel>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
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
