// Draws the main window on a small sample catalogue into a PNG, for the documentation:
// ui_screenshot OUT.png [SCENE]
// Scenes: main (the window, an album with its page), narrow (a big cover in a narrow page pane),
// editor (the entry panel), alert (an import that ends in an alert, the whole screen), find (a
// filter and a sort in use), empty (a catalogue with nothing in it), statistics and duplicates
// (View ▸ Statistics and View ▸ Duplicates). A third argument draws a copy of that catalogue
// instead of the sample one: ui_screenshot OUT.png statistics CATALOGUE
#include "DuplicatesDialog.h"
#include "Entry.h"
#include "EntryEditor.h"
#include "FakePlatform.h"
#include "InterfaceLanguage.h"
#include "MainWindow.h"
#include "MyController.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "StatisticsDialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLocale>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLinearGradient>
#include <QMessageBox>
#include <QPainter>
#include <QScreen>
#include <QSplitter>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <cstdio>

namespace {

struct Album {
  const char *title, *artist, *genre, *label;
  int year, rating, status;  // rating out of 10
  const char *price, *duration;
};

const Album albums[] = {
    {"Kind of Blue", "Miles Davis", "Jazz", "Columbia", 1959, 10, 0, "9.99", "45:44"},
    {"A Love Supreme", "John Coltrane", "Jazz", "Impulse!", 1965, 10, 0, "11.49", "33:02"},
    {"Mingus Ah Um", "Charles Mingus", "Jazz", "Columbia", 1959, 8, 1, "8.99", "45:48"},
    {"Abbey Road", "The Beatles", "Rock", "Apple", 1969, 10, 0, "12.99", "47:03"},
    {"Blue", "Joni Mitchell", "Folk", "Reprise", 1971, 10, 0, "10.49", "35:41"},
    {"Pet Sounds", "The Beach Boys", "Pop", "Capitol", 1966, 8, 0, "9.49", "35:57"},
    {"What's Going On", "Marvin Gaye", "Soul", "Tamla", 1971, 10, 0, "10.99", "35:37"},
    {"Goldberg Variations", "Glenn Gould", "Classical", "Columbia Masterworks", 1955, 10, 0, "14.99", "38:34"},
    {"Horses", "Patti Smith", "Rock", "Arista", 1975, 8, 2, "", "43:10"},
    {"Blue Train", "John Coltrane", "Jazz", "Blue Note", 1957, 9, 0, "9.99", "42:18"},
    {"Songs in the Key of Life", "Stevie Wonder", "Soul", "Tamla", 1976, 10, 0, "16.99", "104:41"},
    {"Remain in Light", "Talking Heads", "Rock", "Sire", 1980, 8, 1, "10.99", "40:08"},
    {"The Köln Concert", "Keith Jarrett", "Jazz", "ECM", 1975, 10, 0, "13.49", "66:05"},
    {"Music for 18 Musicians", "Steve Reich", "Classical", "ECM", 1978, 8, 0, "15.99", "56:31"},
    {"Hounds of Love", "Kate Bush", "Pop", "EMI", 1985, 10, 0, "11.99", "47:34"},
    {"Blonde on Blonde", "Bob Dylan", "Folk", "Columbia", 1966, 8, 2, "", "72:57"},
    {"Moanin'", "Art Blakey", "Jazz", "Blue Note", 1958, 8, 0, "8.49", "39:45"},
    {"Head Hunters", "Herbie Hancock", "Jazz", "Columbia", 1973, 8, 0, "9.99", "41:52"},
};

// The tracks of "Blue Train" as its page shows them: artist and composer on each.
const char* const blueTrain[][3] = {{"Blue Train", "10:43", "John Coltrane"},
                                    {"Moment's Notice", "9:10", "John Coltrane"},
                                    {"Locomotion", "7:14", "John Coltrane"},
                                    {"I'm Old Fashioned", "7:58", "Jerome Kern"},
                                    {"Lazy Bird", "7:00", "John Coltrane"}};

void drawCover(const QString& path, const Album& album, int seed, int side) {
  QImage image(side, side, QImage::Format_RGB32);
  QPainter p(&image);
  QLinearGradient gradient(0, 0, side, side);
  gradient.setColorAt(0, QColor::fromHsv((seed * 47) % 360, 140, 200));
  gradient.setColorAt(1, QColor::fromHsv((seed * 47 + 60) % 360, 200, 90));
  p.fillRect(image.rect(), gradient);
  p.setPen(Qt::white);
  QFont font = p.font();
  font.setPixelSize(side / 12);
  font.setBold(true);
  p.setFont(font);
  p.drawText(image.rect().adjusted(side / 16, side / 16, -side / 16, -side * 3 / 10), Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap,
             QString::fromUtf8(album.title));
  font.setPixelSize(side / 18);
  font.setBold(false);
  p.setFont(font);
  p.drawText(image.rect().adjusted(side / 16, side * 3 / 4, -side / 16, -side / 16), Qt::AlignLeft | Qt::AlignTop,
             QString::fromUtf8(album.artist));
  p.end();
  image.save(path, "JPG", 90);
}

int selectTitle(MainWindow& window, const char* title) {
  for (int row = 0; row < window.listView()->model()->rowCount(); ++row)
    if (window.listView()->model()->index(row, 1).data().toString() == QString::fromUtf8(title)) {
      window.listView()->selectRow(row);
      return row;
    }
  return -1;
}

bool save(const QImage& image, const char* path) { return image.save(QString::fromLocal8Bit(path)); }

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: ui_screenshot OUT.png [main|narrow|editor|alert|find|empty|german|statistics|"
                         "duplicates] [CATALOGUE]\n");
    return 2;
  }
  QString scene = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("main");
  // The main scene in the German window, as a German desktop starts it.
  if (scene == QLatin1String("german")) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    InterfaceLanguage::install(QLocale(QLocale::German, QLocale::Germany));
    scene = QStringLiteral("main");
  }
  QTemporaryDir dir;
  Settings settings(dir.filePath("discary.conf"));
  settings.setObject(QStringLiteral("DefaultColumns"),
                     QVariantList{QVariantMap{{"identifier", "statusImage"}, {"width", 24}},
                                  QVariantMap{{"identifier", "title"}, {"width", 210}},
                                  QVariantMap{{"identifier", "artist"}, {"width", 140}},
                                  QVariantMap{{"identifier", "releaseDate"}, {"width", 60}},
                                  QVariantMap{{"identifier", "genre"}, {"width", 80}},
                                  QVariantMap{{"identifier", "myRating"}, {"width", 80}}});
  if (scene == QLatin1String("narrow")) settings.setObject(QStringLiteral("CellSize"), 400);
  QtWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  const bool given = argc > 3;
  if (given && !QFile::copy(QString::fromLocal8Bit(argv[3]), dir.filePath("Discary.sqlite"))) return 1;
  if (!controller.openCatalogue(dir.filePath("Discary.sqlite")).ok()) return 1;
  QDir().mkpath(dir.filePath("Covers"));
  Store& store = controller.managedObjectContext();
  int seed = 0;
  for (const Album& album : albums) {
    if (scene == QLatin1String("empty") || given) break;
    Entry* e = store.insertEntry();
    e->setPrimitiveValue("title", QString::fromUtf8(album.title));
    e->setPrimitiveValue("artist", QString::fromUtf8(album.artist));
    e->setPrimitiveValue("genre", QString::fromUtf8(album.genre));
    e->setPrimitiveValue("label", QString::fromUtf8(album.label));
    e->setPrimitiveValue("releaseDate", QDateTime(QDate(album.year, 7, 1), QTime(12, 0), Qt::UTC));
    e->setPrimitiveValue("myRating", qint64(album.rating));
    e->setPrimitiveValue("status", qint64(album.status));
    if (*album.price) e->setPrimitiveValue("price", QString::fromUtf8(album.price));
    e->setPrimitiveValue("duration", QString::fromUtf8(album.duration));
    if (album.status == 1) e->setPrimitiveValue("borrowedBy", QStringLiteral("Sam"));
    const bool full = QByteArray(album.title) == "Blue Train";
    if (full) {
      e->setPrimitiveValue("summary", QStringLiteral("Coltrane's only session as a leader for Blue Note, recorded at "
                                                     "Van Gelder Studio, Hackensack, on 15 September 1957."));
      e->setPrimitiveValue("producer", QStringLiteral("Alfred Lion"));
    }
    for (int t = 0; t < (full ? 5 : 6); ++t) {
      auto track = Store::newTrack();
      track->setPrimitiveValue("position", qint64(t));
      if (full) {
        track->setPrimitiveValue("name", QString::fromUtf8(blueTrain[t][0]));
        track->setPrimitiveValue("duration", QString::fromUtf8(blueTrain[t][1]));
        track->setPrimitiveValue("artist", QStringLiteral("John Coltrane"));
        track->setPrimitiveValue("composer", QString::fromUtf8(blueTrain[t][2]));
      } else {
        track->setPrimitiveValue("name", QStringLiteral("Track %1").arg(t + 1));
        track->setPrimitiveValue("duration", QStringLiteral("%1:%2").arg(3 + (seed + t) % 5).arg((seed * 7 + t * 13) % 60, 2, 10, QLatin1Char('0')));
      }
      e->addTrack(std::move(track));
    }
    drawCover(dir.filePath(QStringLiteral("Covers/%1.jpg").arg(e->uid())), album, seed++,
              scene == QLatin1String("narrow") && full ? 600 : 400);
  }
  if (!given) controller.collections().createCollectionNamed(QStringLiteral("Late Night Jazz"), {});
  controller.saveManagedObjectContext();

  MainWindow window(controller, windowSystem);
  window.resize(scene == QLatin1String("narrow") ? 1100 : 1440, 860);
  window.show();
  QTest::qWait(100);
  selectTitle(window, scene == QLatin1String("main") || scene == QLatin1String("narrow") || scene == QLatin1String("editor")
                          ? "Blue Train"
                          : "Goldberg Variations");
  QApplication::processEvents();

  if (scene == QLatin1String("narrow")) {
    auto* splitter = window.findChild<QSplitter*>();
    splitter->setSizes({160, 700, 240});
    QTest::qWait(200);
  } else if (scene == QLatin1String("editor")) {
    EntryEditor editor(controller, controller.entriesController().selectedObjects().front(), &window);
    editor.show();
    QTest::qWait(200);
    return save(editor.grab().toImage(), argv[1]) ? 0 : 1;
  } else if (scene == QLatin1String("alert")) {
    QFile csv(dir.filePath("Uneven.csv"));
    if (!csv.open(QIODevice::WriteOnly)) return 1;
    csv.write("title,artist\nBallads,John Coltrane\nCrescent,John Coltrane,Impulse!\n");
    csv.close();
    bool saved = false;
    // Once the alert has been up long enough for any sheet to come up, the whole screen.
    std::function<void()> shoot = [&] {
      for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<QMessageBox*>(w); box && box->isVisible()) {
          QTest::qWait(800);
          QScreen* screen = QGuiApplication::primaryScreen();
          saved = save(screen->grabWindow(0, window.x() - 10, window.y() - 10, 1000, 640).toImage(), argv[1]);
          for (QAbstractButton* b : box->buttons()) b->click();
          return;
        }
      QTimer::singleShot(20, shoot);
    };
    QTimer::singleShot(20, shoot);
    window.resize(980, 620);
    QTest::qWait(100);
    // From the application's event loop, as a menu command runs.
    QTimer::singleShot(0, &window, [&] {
      window.openStrings({csv.fileName()});
      QApplication::quit();
    });
    QApplication::exec();
    return saved ? 0 : 1;
  } else if (scene == QLatin1String("statistics") || scene == QLatin1String("duplicates")) {
    QDialog* dialog = nullptr;
    if (scene == QLatin1String("statistics")) {
      window.showStatistics();
      dialog = window.findChild<StatisticsDialog*>();
    } else {
      window.showDuplicates();
      auto* duplicates = window.findChild<DuplicatesDialog*>();
      // The first group chosen, as before a merge.
      if (QTreeWidgetItem* section = duplicates->tree().topLevelItem(0); section && section->childCount())
        section->child(0)->setSelected(true);
      dialog = duplicates;
    }
    QTest::qWait(200);
    return dialog && save(dialog->grab().toImage(), argv[1]) ? 0 : 1;
  } else if (scene == QLatin1String("find")) {
    window.applyFilter({{"field", "genre"}, {"action", 1}}, QStringLiteral("Jazz"));
    window.listView()->sortByColumn(4, Qt::DescendingOrder);  // genre, right of the column that goes
    window.showColumn(QStringLiteral("releaseDate"), false);
    QApplication::processEvents();
  }
  QTest::qWait(100);
  return save(window.grab().toImage(), argv[1]) ? 0 : 1;
}
