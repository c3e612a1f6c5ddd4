#include "CliRunner.h"
#include "Entry.h"
#include "EntriesController.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "HtmlExport.h"
#include "MyController.h"
#include "Settings.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using Outcome = CliRunner::Outcome;

// show and export run end to end on a catalogue in c/, whose folder holds covers and templates.
class PresentCliTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Outcome added = discary({"--json", "add", "title=Blue & <Green>", "artist=Ann", "releaseDate=1999", "borrowedBy=Bo",
                             "--track", "name=Two;position=1;duration=2:00", "--track", "name=One;position=0;artist=Cy"});
    ASSERT_EQ(added.status, 0) << added.err.constData();
    uid = QString::number(QJsonDocument::fromJson(added.out).object()["uid"].toInteger());
    ASSERT_EQ(discary({"add", "title=Plain", "--collection", "Shelf"}).status, 0);
  }
  Outcome discary(const QStringList& args) { return cli.run(args); }
  void write(const QString& relative, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(dir.filePath(relative)).path());
    QFile f(dir.filePath(relative));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
  }
  QByteArray read(const QString& relative) {
    QFile f(dir.filePath(relative));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
  }
  QTemporaryDir dir;
  CliRunner cli{dir.path()};
  QString uid;
};

TEST_F(PresentCliTest, ShowRendersAnEntryThroughATemplate) {
  write("t.txt",
        "[title] by [artist] ([releaseDate])\n"
        "[tracksBegin][track:position]. [track:name]IF_Tartist / [track:artist]END_Tartist\n[tracksEnd]");
  Outcome plain = discary({"show", uid, "--template", dir.filePath("t.txt")});
  ASSERT_EQ(plain.status, 0) << plain.err.constData();
  EXPECT_EQ(plain.out, "Blue & <Green> by Ann (1999)\n1. One / Cy\n2. Two\n");
  Outcome html = discary({"show", "Plain", "--template", dir.filePath("t.txt"), "--html"});
  EXPECT_EQ(html.out, "Plain by  ()\n[tracksBegin][track:position]. [track:name]IF_Tartist / [track:artist]END_Tartist\n[tracksEnd]");

  Outcome page = discary({"show", uid, "--webview"});
  ASSERT_EQ(page.status, 0) << page.err.constData();
  EXPECT_TRUE(page.out.startsWith("<!DOCTYPE html>"));
  EXPECT_TRUE(page.out.contains("<h1>Blue &amp; &lt;Green&gt;</h1>"));
  EXPECT_TRUE(page.out.contains("On loan to Bo"));

  // The user's own template of the configured name comes first.
  write("c/Templates/Mine.html", "mine: [title]");
  ASSERT_EQ(discary({"settings", "set", "InfoTemplate", "Mine.html"}).status, 0);
  EXPECT_EQ(discary({"show", uid, "--html"}).out, "mine: Blue &amp; &lt;Green&gt;");
}

TEST_F(PresentCliTest, ShowAndExportRefuseWhatTheyCannotDo) {
  struct Case {
    QStringList args;
    int status;
  };
  write("big.html", QByteArray(4 * 1024 * 1024 + 1, 'x'));
  const Case cases[] = {
      {{"show"}, 2},
      {{"show", "Nothing"}, 1},
      {{"show", uid, "--template", dir.filePath("missing.html")}, 1},
      {{"show", uid, "--template", dir.filePath("big.html")}, 1},
      {{"show", uid, "--template", "/dev/zero"}, 1},
      {{"show", uid, "--frame"}, 2},
      {{"export", "--output", dir.filePath("out")}, 2},
      {{"export", "--format", "pdf", "--output", dir.filePath("out")}, 2},
      {{"export", "--format", "html"}, 2},
      {{"export", "--format", "html", "--output", dir.filePath("out"), "--collection", "Nope"}, 1},
      {{"export", "--format", "html", "--output", dir.filePath("big.html")}, 1},
  };
  for (const Case& c : cases) {
    Outcome r = discary(c.args);
    EXPECT_EQ(r.status, c.status) << qPrintable(c.args.join(' '));
    EXPECT_EQ(r.err.count('\n'), 1) << r.err.constData();
  }
  EXPECT_TRUE(discary({"export", "--format", "pdf", "--output", "x"}).err.contains("unknown format 'pdf'"));
  EXPECT_FALSE(QFileInfo::exists(dir.filePath("out")));

  ASSERT_EQ(discary({"settings", "set", "InfoTemplate", "../d.conf"}).status, 0);
  EXPECT_EQ(discary({"show", uid}).status, 1);
  EXPECT_EQ(discary({"export", "--format", "html", "--output", dir.filePath("out")}).status, 1);
  EXPECT_FALSE(QFileInfo::exists(dir.filePath("out")));
}

TEST_F(PresentCliTest, ExportWritesAFolderOfPagesWithCovers) {
  write(QStringLiteral("c/Covers/%1.jpg").arg(uid), "jpeg bytes");
  Outcome done = discary({"--json", "export", "--format", "html", "--output", dir.filePath("site")});
  ASSERT_EQ(done.status, 0) << done.err.constData();
  EXPECT_EQ(QJsonDocument::fromJson(done.out).object()["entries"].toInt(), 2);

  const QByteArray index = read("site/index.html");
  EXPECT_TRUE(index.contains(QStringLiteral("<a href=\"%1.html\">Blue &amp; &lt;Green&gt;</a>").arg(uid).toUtf8()));
  EXPECT_TRUE(index.contains(QStringLiteral("<img src=\"covers/%1.jpg\"").arg(uid).toUtf8()));
  EXPECT_EQ(read(QStringLiteral("site/covers/%1.jpg").arg(uid)), "jpeg bytes");
  const QByteArray page = read(QStringLiteral("site/%1.html").arg(uid));
  EXPECT_TRUE(page.contains(QStringLiteral("<img src=\"covers/%1.jpg\"").arg(uid).toUtf8()));
  EXPECT_TRUE(page.contains("<td class=\"name\">One<br><span class=\"credit\">Cy</span>"));
  EXPECT_FALSE(page.contains("folio://"));
  EXPECT_EQ(QDir(dir.filePath("site")).entryList(QDir::Files).size(), 3);

  // An earlier export is replaced as a whole; a folder of other files is never touched.
  ASSERT_EQ(discary({"export", "--format", "html", "--output", dir.filePath("site"), "--collection", "Shelf"}).status, 0);
  EXPECT_EQ(QDir(dir.filePath("site")).entryList(QDir::Files).size(), 2);
  EXPECT_TRUE(read("site/index.html").contains("<h1>Shelf</h1>"));
  write("mine/notes.txt", "keep");
  Outcome refused = discary({"export", "--format", "html", "--output", dir.filePath("mine")});
  EXPECT_EQ(refused.status, 1);
  EXPECT_TRUE(refused.err.contains("not empty"));
  EXPECT_EQ(QDir(dir.filePath("mine")).entryList(QDir::Files), QStringList{"notes.txt"});
  EXPECT_EQ(QDir(dir.path()).entryList({".discary-export*"}, QDir::AllEntries | QDir::Hidden).size(), 0);
}

TEST_F(PresentCliTest, StatsGroupAndAgreeWithTheTotals) {
  ASSERT_EQ(discary({"add", "title=Third", "genre=Jazz, Blues", "price=2.25", "duration=10:00", "--collection", "Shelf"}).status, 0);
  ASSERT_EQ(discary({"add", "title=Fourth", "genre= Jazz ", "price=1", "duration=0:30"}).status, 0);
  Outcome stats = discary({"--json", "stats", "--by", "genre"});
  ASSERT_EQ(stats.status, 0) << stats.err.constData();
  const QJsonArray groups = stats.json().toArray();
  ASSERT_EQ(groups.size(), 2);
  const QJsonObject jazz = groups[0].toObject(), none = groups[1].toObject();
  EXPECT_EQ(jazz, QJsonObject({{"group", "Jazz"}, {"count", 2}, {"seconds", 630}, {"value", 3.25}}));
  EXPECT_EQ(none["group"], "(none)");
  EXPECT_EQ(none["count"], 2);
  EXPECT_EQ(none.keys(), QStringList({"count", "group", "seconds", "value"}));

  // Genre is the default grouping; a collection narrows it as it narrows the totals.
  EXPECT_EQ(discary({"--json", "stats"}).json(), stats.json());
  Outcome shelf = discary({"--json", "stats", "--by", "decade", "--collection", "Shelf"});
  ASSERT_EQ(shelf.status, 0);
  EXPECT_EQ(shelf.json().toArray(), QJsonArray({QJsonObject({{"group", "(none)"}, {"count", 2}, {"seconds", 600},
                                                             {"value", 2.25}})}));
  EXPECT_EQ(discary({"--json", "totals", "--collection", "Shelf"}).object()["totals"].toObject()["totalPrice"], "2.25");
  Outcome table = discary({"stats", "--by", "decade"});
  EXPECT_TRUE(table.out.contains("1990s")) << table.out.constData();
  EXPECT_TRUE(table.out.contains("10:30")) << table.out.constData();

  EXPECT_EQ(discary({"stats", "--by", "colour"}).status, 2);
  EXPECT_EQ(discary({"stats", "--by"}).status, 2);
  EXPECT_EQ(discary({"stats", "--collection", "Nowhere"}).status, 1);
}

TEST_F(PresentCliTest, DuplicatesListsSameReleasesThenEditions) {
  Outcome none = discary({"--json", "duplicates"});
  ASSERT_EQ(none.status, 0) << none.err.constData();
  EXPECT_EQ(none.object(), QJsonObject({{"same", QJsonArray()}, {"editions", QJsonArray()}}));

  const auto added = [&](const QStringList& fields) {
    return QJsonDocument::fromJson(discary(QStringList{"--json", "add"} + fields).out).object()["uid"].toInteger();
  };
  const qint64 a = added({"title=Blue", "artist=The Ann", "upc=5099902894225", "format=CD"});
  const qint64 b = added({"title=blue", "artist=Ann", "upc=5099902894225", "format=Vinyl"});
  const qint64 c = added({"title=Blue.", "artist=Ann", "releaseID=99"});
  Outcome found = discary({"--json", "duplicates"});
  ASSERT_EQ(found.status, 0);
  EXPECT_EQ(found.object(), QJsonObject({{"same", QJsonArray({QJsonArray({a, b})})},
                                         {"editions", QJsonArray({QJsonArray({a, b, c})})}}));
  Outcome text = discary({"duplicates"});
  EXPECT_TRUE(text.out.contains("Same release: 1 group(s)")) << text.out.constData();
  EXPECT_TRUE(text.out.contains("differ: title, artist, format")) << text.out.constData();
  EXPECT_EQ(discary({"duplicates", "extra"}).status, 2);
}

// Pages are rendered on every core; the folder must be the same, byte for byte, as one thread
// writes it. A few hundred entries: tracks, links, covers, mark-up and marker characters.
TEST_F(PresentCliTest, ExportOnEveryCoreWritesWhatOneThreadWrites) {
  QByteArray csv = "title,artist,releaseDate,comments\n";
  for (int i = 0; i < 300; ++i)
    csv += QStringLiteral("\"Album %1 <b>[title]</b> IF_artist_\",\"Ann & Bo \u00e9\u65e5 %2\",19%3,\"END_title ] [ \"\"q\"\"\"\n")
               .arg(i)
               .arg(i % 7)
               .arg(50 + i % 50)
               .toUtf8();
  write("in.csv", csv);
  ASSERT_EQ(discary({"import", dir.filePath("in.csv")}).status, 0);
  for (int i = 0; i < 6; ++i) {
    const QString track = QStringLiteral("name=Song <%1> [track:name];position=%2;duration=3:0%1;artist=Cy & Di").arg(i);
    Outcome added = discary({"--json", "add", QStringLiteral("title=Rich %1 [tracksBegin]").arg(i), "artist=Zoë", "--track",
                             track.arg(1), "--track", track.arg(0), "--track", QStringLiteral("name=Only name %1").arg(i)});
    ASSERT_EQ(added.status, 0) << added.err.constData();
    const QString rich = QString::number(added.object()["uid"].toInteger());
    ASSERT_EQ(discary({"link", "add", rich, "--name", "Notes <&>", "--url", "https://example.org/a?b=1&c=\"2\""}).status, 0);
    write(QStringLiteral("c/Covers/%1.jpg").arg(rich), "jpeg " + rich.toUtf8());
  }
  write(QStringLiteral("c/Covers/%1.jpg").arg(uid), "jpeg bytes");
  Outcome done = discary({"export", "--format", "html", "--output", dir.filePath("site")});
  ASSERT_EQ(done.status, 0) << done.err.constData();

  Settings settings{dir.filePath("d.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};
  controller.applicationWillFinishLaunching();
  ASSERT_TRUE(controller.openCatalogue(dir.filePath("c/Discary.sqlite")).ok());
  controller.search(QString(), 1);
  const std::vector<Entry*> entries = controller.entriesController().arrangedObjects();
  ASSERT_EQ(entries.size(), 308u);
  const QString title = controller.frameworkBundle().localizedString("All Entries");
  const QString pageTemplate = controller.templateText(settings.stringForKey("InfoTemplate"));
  QString error;
  ASSERT_TRUE(HtmlExport(controller.htmlExportServices(), 1).write(entries, title, pageTemplate, dir.filePath("one"), &error))
      << qPrintable(error);

  for (const QString& folder : {QString(), QStringLiteral("/covers")}) {
    const QStringList files = QDir(dir.filePath("one") + folder).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(QDir(dir.filePath("site") + folder).entryList(QDir::Files, QDir::Name), files);
    for (const QString& file : files)
      EXPECT_EQ(read("site" + folder + "/" + file), read("one" + folder + "/" + file)) << qPrintable(file);
  }
  EXPECT_EQ(QDir(dir.filePath("one")).entryList(QDir::Files).size(), 309);
  EXPECT_EQ(QDir(dir.filePath("one/covers")).entryList(QDir::Files).size(), 7);
}

}  // namespace
