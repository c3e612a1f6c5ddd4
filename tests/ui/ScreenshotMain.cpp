// Draws the main window on a small sample catalogue into a PNG, for the documentation:
// ui_screenshot OUT.png
#include "Entry.h"
#include "FakePlatform.h"
#include "MainWindow.h"
#include "MyController.h"
#include "QtWindowSystem.h"
#include "Settings.h"

#include <QApplication>
#include <QDir>
#include <QLinearGradient>
#include <QPainter>
#include <QTableView>
#include <QTemporaryDir>
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

void drawCover(const QString& path, const Album& album, int seed) {
  QImage image(400, 400, QImage::Format_RGB32);
  QPainter p(&image);
  QLinearGradient gradient(0, 0, 400, 400);
  gradient.setColorAt(0, QColor::fromHsv((seed * 47) % 360, 140, 200));
  gradient.setColorAt(1, QColor::fromHsv((seed * 47 + 60) % 360, 200, 90));
  p.fillRect(image.rect(), gradient);
  p.setPen(Qt::white);
  QFont font = p.font();
  font.setPixelSize(34);
  font.setBold(true);
  p.setFont(font);
  p.drawText(image.rect().adjusted(24, 24, -24, -120), Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap,
             QString::fromUtf8(album.title));
  font.setPixelSize(22);
  font.setBold(false);
  p.setFont(font);
  p.drawText(image.rect().adjusted(24, 300, -24, -24), Qt::AlignLeft | Qt::AlignTop, QString::fromUtf8(album.artist));
  p.end();
  image.save(path, "JPG", 90);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: ui_screenshot OUT.png\n");
    return 2;
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
  QtWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  if (!controller.openCatalogue(dir.filePath("Discary.sqlite")).ok()) return 1;
  QDir().mkpath(dir.filePath("Covers"));
  Store& store = controller.managedObjectContext();
  int seed = 0;
  for (const Album& album : albums) {
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
    for (int t = 0; t < 6; ++t) {
      auto track = Store::newTrack();
      track->setPrimitiveValue("name", QStringLiteral("Track %1").arg(t + 1));
      track->setPrimitiveValue("position", qint64(t));
      track->setPrimitiveValue("duration", QStringLiteral("%1:%2").arg(3 + (seed + t) % 5).arg((seed * 7 + t * 13) % 60, 2, 10, QLatin1Char('0')));
      e->addTrack(std::move(track));
    }
    drawCover(dir.filePath(QStringLiteral("Covers/%1.jpg").arg(e->uid())), album, seed++);
  }
  controller.collections().createCollectionNamed(QStringLiteral("Late Night Jazz"), {});
  controller.saveManagedObjectContext();

  MainWindow window(controller, windowSystem);
  window.resize(1440, 860);
  window.show();
  window.listView()->selectRow(7);
  QApplication::processEvents();
  const bool saved = window.grab().save(QString::fromLocal8Bit(argv[1]));
  return saved ? 0 : 1;
}
