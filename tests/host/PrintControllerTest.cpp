#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "PrintController.h"
#include "Settings.h"
#include "StatusImage.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>
#include <QtEndian>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// Pages as a PDF reader counts them: the page objects, not the page tree.
int pagesIn(const QByteArray& pdf) {
  static const QRegularExpression page(QStringLiteral("/Type\\s*/Page[^s]"));
  int count = 0;
  for (auto it = page.globalMatch(QString::fromLatin1(pdf)); it.hasNext(); it.next()) ++count;
  return count;
}

// The colours a PDF's pages fill shapes and text with ("r g b scn"), read from its deflated
// content streams.
QSet<QRgb> fillColours(const QByteArray& pdf) {
  static const QRegularExpression fill(QStringLiteral("([\\d.]+) ([\\d.]+) ([\\d.]+) scn"));
  QSet<QRgb> colours;
  for (qsizetype at = pdf.indexOf("stream\n"); at >= 0; at = pdf.indexOf("stream\n", at)) {
    const qsizetype start = at + 7, end = pdf.indexOf("endstream", start);
    if (end < 0) break;
    QByteArray deflated(4, '\0');  // qUncompress reads the expected size first
    qToBigEndian(quint32((end - start) * 64), deflated.data());
    deflated += pdf.mid(start, end - start);
    const QString content = QString::fromLatin1(qUncompress(deflated));
    for (auto it = fill.globalMatch(content); it.hasNext();) {
      const auto m = it.next();
      colours.insert(QColor::fromRgbF(m.captured(1).toFloat(), m.captured(2).toFloat(), m.captured(3).toFloat()).rgb());
    }
    at = end + 9;
  }
  return colours;
}

class PrintControllerTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};

  void SetUp() override {
    // A4 paper and English dates, whatever the machine's locale.
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    controller.applicationWillFinishLaunching();
    ASSERT_TRUE(controller.openCatalogue(dir.filePath("c/Discary.sqlite")).ok());
    QDir().mkpath(dir.filePath("c/Covers"));
  }

  void TearDown() override { QLocale::setDefault(QLocale::system()); }

  Entry* add(const QString& title, const QString& artist = QStringLiteral("Artist")) {
    Entry* e = controller.managedObjectContext().insertEntry();
    e->setPrimitiveValue("title", title);
    e->setPrimitiveValue("artist", artist);
    return e;
  }

  // Prints through the Print menu action, the dialog answered with the request; the PDF's bytes.
  QByteArray print(PrintRequest request) {
    controller.entriesController().rearrangeObjects();
    if (request.pdfPath.isEmpty()) request.pdfPath = dir.filePath("out.pdf");
    windowSystem.printAnswer = request;
    controller.printCollection();
    QFile file(request.pdfPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  QByteArray printLayout(int layout) {
    PrintRequest request;
    request.layout = layout;
    return print(request);
  }
  QByteArray printCovers(bool landscape = false) {
    PrintRequest request;
    request.covers = true;
    request.landscape = landscape;
    return print(request);
  }
  const PrintController& panel() const { return *controller.printInstance(); }
};

TEST_F(PrintControllerTest, TableRunsOverPagesNumberedInTheDocument) {
  for (int i = 0; i < 120; ++i) {
    Entry* e = add(QStringLiteral("Album %1").arg(i, 3, 10, QLatin1Char('0')), QStringLiteral("Artist %1").arg(i % 9));
    e->setPrimitiveValue("genre", "Jazz");
    e->setPrimitiveValue("myRating", qint64(i % 6));
    e->setPrimitiveValue("duration", "41:20");
  }
  const QByteArray pdf = printLayout(0);
  ASSERT_TRUE(pdf.startsWith("%PDF")) << qPrintable(panel().lastError());
  EXPECT_EQ(pagesIn(pdf), 3);  // about forty one-line rows to an A4 page
  EXPECT_EQ(panel().lastPageCount(), 3);
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
  EXPECT_EQ(windowSystem.progressTitles, QStringList{"Printing"});
  EXPECT_EQ(windowSystem.openSheets, 0);

  PrintRequest landscape;
  landscape.landscape = true;
  EXPECT_GT(pagesIn(print(landscape)), 3);
}

TEST_F(PrintControllerTest, HostileValuesAndBrokenCoversPrintInEveryLayout) {
  Entry* good = add("Fine");
  QImage picture(60, 40, QImage::Format_RGB32);
  picture.fill(Qt::darkCyan);
  const QString goodCover = controller.managedObjectContext().coverPathOf(good->uid());
  ASSERT_TRUE(picture.save(goodCover, "JPEG"));
  QFile jpeg(goodCover);
  ASSERT_TRUE(jpeg.open(QIODevice::ReadOnly));
  const QByteArray jpegBytes = jpeg.readAll();

  Entry* longest = add(QString(10000, QChar('W')), QString("word ").repeated(2000));
  longest->setPrimitiveValue("genre", QString(10000, QChar(0x05D0)));
  Entry* lines = add("First line\nsecond line\r\n\tthird\u2028fourth", "\u0001\u0007\u007f");
  lines->setPrimitiveValue("composer", "\u202Ereversed\u202C and back");
  Entry* rtl =
      add("\u0645\u0631\u062D\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645", "\u05E9\u05DC\u05D5\u05DD");
  rtl->setPrimitiveValue("myRating", qint64(1000));
  rtl->setPrimitiveValue("purchasedOn", QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC));
  // Cut short inside a surrogate pair.
  Entry* surrogates = add("x" + QString::fromUtf8("\xF0\x9F\x8E\xB5").repeated(3000));
  const Store& store = controller.managedObjectContext();
  for (auto [entry, bytes] :
       {std::pair{longest, jpegBytes.left(jpegBytes.size() / 2)},
        std::pair{lines, QByteArray("\xFF\xD8\xFF\xE0 not a picture at all")}, std::pair{rtl, QByteArray()}}) {
    QFile cover(store.coverPathOf(entry->uid()));
    ASSERT_TRUE(cover.open(QIODevice::WriteOnly));
    cover.write(bytes);
  }
  QDir().mkpath(store.coverPathOf(surrogates->uid()));  // a folder where a picture should be

  for (int layout = 0; layout < 5; ++layout) {
    const QByteArray pdf = printLayout(layout);
    ASSERT_TRUE(pdf.startsWith("%PDF")) << layout << qPrintable(panel().lastError());
    EXPECT_EQ(pagesIn(pdf), panel().lastPageCount()) << layout;
  }
  // A cover of the standard 350 points fills an A4 page in portrait and half of one in landscape.
  const QByteArray covers = printCovers();
  ASSERT_TRUE(covers.startsWith("%PDF")) << qPrintable(panel().lastError());
  EXPECT_EQ(pagesIn(covers), 5);
  EXPECT_EQ(pagesIn(printCovers(true)), 3);
  settings.setObject("Print Cover Width", "100");
  settings.setObject("Print Cover Height", "100");
  EXPECT_EQ(pagesIn(printCovers()), 1);
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
}

TEST_F(PrintControllerTest, TheStatusColumnPrintsItsDot) {
  add("Lent")->setPrimitiveValue("status", qint64(1));
  add("Owned")->setPrimitiveValue("status", qint64(3));
  const QByteArray owned = printLayout(4);  // Custom: the list's columns, the status first
  ASSERT_TRUE(owned.startsWith("%PDF")) << qPrintable(panel().lastError());
  const QSet<QRgb> ownedFills = fillColours(owned);
  EXPECT_TRUE(ownedFills.contains(StatusImage::colour(1).rgb()));
  EXPECT_FALSE(ownedFills.contains(StatusImage::colour(2).rgb()));
  add("Wanted")->setPrimitiveValue("status", qint64(2));
  EXPECT_TRUE(fillColours(printLayout(4)).contains(StatusImage::colour(2).rgb()));
}

TEST_F(PrintControllerTest, FailuresAreToldAndLeaveNoFile) {
  add("Only");
  PrintRequest request;
  request.pdfPath = dir.filePath("missing/folder/out.pdf");
  EXPECT_TRUE(print(request).isEmpty());
  EXPECT_TRUE(panel().lastError().contains(request.pdfPath)) << qPrintable(panel().lastError());
  EXPECT_EQ(windowSystem.alerts, QStringList{"The collection could not be printed."});
  EXPECT_FALSE(QFile::exists(request.pdfPath));

  request.pdfPath = dir.filePath("cancelled.pdf");
  windowSystem.printAnswer.reset();
  controller.printCollection();
  EXPECT_FALSE(QFile::exists(request.pdfPath));
  EXPECT_TRUE(panel().lastError().isEmpty());

  request.layout = 9;
  EXPECT_FALSE(controller.sharedPrint().print(request));
  EXPECT_FALSE(panel().lastError().isEmpty());
  EXPECT_EQ(windowSystem.alerts.size(), 1);  // only the dialog's failures come as alerts
}

TEST_F(PrintControllerTest, EmptyCollectionPrintsOnePageAndCoverSizeFollowsTheOtherSetting) {
  Collection* empty = controller.collections().createCollectionNamed("Nothing Yet", {});
  add("Elsewhere");
  controller.collections().selectCollection(empty);
  const QByteArray pdf = printLayout(0);
  EXPECT_TRUE(pdf.startsWith("%PDF"));
  EXPECT_EQ(pagesIn(pdf), 1);
  // The document is named after the collection: a UTF-16 title with its byte-order mark.
  QStringEncoder utf16(QStringEncoder::Utf16BE);
  EXPECT_TRUE(pdf.contains("/Title (\xFE\xFF" + QByteArray(utf16("Nothing Yet")) + ")"));

  PrintController& print = controller.sharedPrint();
  settings.setObject("Print Cover Width", "abc");
  settings.setObject("Print Cover Height", " 200 ");
  EXPECT_EQ(print.coverSize(), QSizeF(200, 200));
  print.setCoverRatio(0.5);
  EXPECT_EQ(print.coverSize(), QSizeF(100, 200));
  settings.setObject("Print Cover Height", "-5");
  EXPECT_EQ(print.coverSize(), QSizeF(288, 576));
}

}  // namespace
