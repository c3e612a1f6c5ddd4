#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "Settings.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// The built-in page template through the controller: the entry's fields, then its tracks.
class PageTemplateTest : public ::testing::Test {
 protected:
  void SetUp() override {
    controller.applicationWillFinishLaunching();
    ASSERT_TRUE(controller.openCatalogue(":memory:").ok());
    entry = controller.managedObjectContext().insertEntry();
    entry->setValue("title", "Mingus Ah Um");
    entry->setValue("artist", "Charles Mingus");
    entry->setValue("label", "Columbia");
    entry->setValue("releaseDate", QDateTime(QDate(1959, 7, 1), QTime(12, 0), Qt::UTC));
    entry->setValue("myRating", 9);  // out of 10, as the music library rates
    entry->setValue("paid", "9.99");
  }
  void addTrack(qint64 position, const QString& name, const QString& duration, const QString& artist = {}) {
    auto track = std::make_unique<Track>();
    track->setValue("position", position);
    track->setValue("name", name);
    track->setValue("duration", duration);
    if (!artist.isEmpty()) track->setValue("artist", artist);
    entry->addTrack(std::move(track));
  }
  QString page(bool html = true, bool webView = true) {
    QString text = controller.templateText(settings.stringForKey("InfoTemplate"));
    EXPECT_FALSE(text.isEmpty());
    controller.replaceKeysInTemplate(text, *entry, html, webView);
    return text;
  }

  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};
  Entry* entry = nullptr;
};

TEST_F(PageTemplateTest, DefaultPageShowsFieldsAndTracksWithoutLeftoverMarkers) {
  addTrack(1, "Goodbye Pork Pie Hat", "5:44", "Mingus & Co");
  addTrack(0, "Better Git It in Your Soul", "7:23");
  const QString text = page();
  EXPECT_TRUE(text.contains("<h1>Mingus Ah Um</h1>"));
  EXPECT_TRUE(text.contains("<span>1959</span>&emsp;<span>Columbia</span>"));
  EXPECT_TRUE(text.contains("title=\"My rating: 9 of 10\">★★★★½</div>")) << qPrintable(text);
  EXPECT_TRUE(text.contains("<tr><td class=\"key\">Paid</td><td>9.99</td></tr>"));
  EXPECT_FALSE(text.contains("On loan"));
  const qsizetype first = text.indexOf("Better Git It in Your Soul");
  EXPECT_GT(first, 0);
  EXPECT_GT(text.indexOf("Goodbye Pork Pie Hat"), first);
  EXPECT_TRUE(text.contains(
      "<td class=\"pos\" width=\"6%\" align=\"right\">2</td><td class=\"name\">Goodbye Pork Pie Hat<br><span class=\"credit\">Mingus &amp; Co</span>"));
  EXPECT_TRUE(text.contains("<td class=\"time\" width=\"12%\" align=\"right\" style=\"white-space: nowrap\"><span>7:23</span></td>"));
  EXPECT_FALSE(text.contains("<!--IFtracks"));
  // Only the library marker, inside its comment, is meant to stay.
  const QRegularExpression leftovers(R"(\[(?!IncludeURLInName\])[A-Za-z:]+|\bIF_|\bEND_)");
  EXPECT_FALSE(text.contains(leftovers)) << qPrintable(text.mid(text.indexOf(leftovers), 60));
}

TEST_F(PageTemplateTest, LoanAndTrackSectionsFollowTheEntry) {
  EXPECT_TRUE(page().contains("<!--IFtracks"));  // no tracks: the table stays commented out
  entry->setValue("borrowedBy", "Ann <ann@example.org>");
  entry->setValue("dueDate", QDateTime(QDate(2026, 12, 24), QTime(12, 0), Qt::UTC));
  const QString text = page();
  EXPECT_TRUE(text.contains("On loan to Ann &lt;ann@example.org&gt; <small>&middot; due back 24 December 2026</small>"));
  EXPECT_FALSE(text.contains("since"));
}

TEST_F(PageTemplateTest, TrackNamesLinkToThePlayerOnlyInThePageView) {
  platform.library = {QVariantMap{{"Name", "FABLES of faubus"}, {"Album", "Mingus Ah Um"}}};
  controller.addPanel().trackData().loadItunes();
  addTrack(0, "Fables of Faubus", "8:13", "Charles Mingus");
  addTrack(1, "Open Letter to Duke", "5:52");
  const QString view = page(true, true);
  EXPECT_TRUE(view.contains(
      "<a href=\"folio://playTrackNamed=Fables%20of%20Faubus&amp;artist=Charles Mingus\">Fables of Faubus</a>"));
  EXPECT_FALSE(view.contains("playTrackNamed=Open"));
  EXPECT_FALSE(page(true, false).contains("folio://"));
}

// The German page is a translated copy of the English one: the same style, and the same keys
// and sections in the same order, so a change to one that misses the other fails here.
TEST(BuiltInPageTemplates, TheGermanCopyDiffersOnlyInItsWords) {
  const auto read = [](const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
  };
  const QString english = read(":/templates/Collection.html");
  const QString german = read(":/templates/de/Collection.html");
  const auto style = [](const QString& page) { return page.section("<style>", 1).section("</style>", 0, 0); };
  EXPECT_FALSE(style(english).isEmpty());
  EXPECT_EQ(style(german), style(english));
  const auto markers = [](const QString& page) {
    static const QRegularExpression marker(QStringLiteral("\\[[^\\]\\s]+\\]|\\b(IF|END)_?\\w+|<!--IF\\w+|ENDtracks-->"));
    QStringList found;
    for (auto it = marker.globalMatch(page); it.hasNext();) found << it.next().captured();
    return found;
  };
  EXPECT_GT(markers(english).size(), 100);
  EXPECT_EQ(markers(german), markers(english));
}

}  // namespace
