#include "Entry.h"
#include "EntryTemplate.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyControllerShared.h"
#include "Settings.h"
#include "Store.h"
#include "TemplateFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

QDateTime utc(int y, int m, int d) { return QDateTime(QDate(y, m, d), QTime(12, 0), Qt::UTC); }

class EntryTemplateTest : public ::testing::Test {
 protected:
  EntryTemplateTest() {
    entry.setValue("title", "Kind of Blue");
    entry.setValue("artist", "Miles Davis");
    entry.setValue("releaseDate", utc(1959, 8, 17));
    entry.setValue("purchasedOn", utc(1999, 3, 4));
    entry.setValue("myRating", 4);
    entry.setValue("customCheckbox1", true);
    entry.setValue("customCheckbox2", false);
    entry.setValue("custom10", "ten");
  }
  QString render(QString text, bool html = false) {
    EXPECT_TRUE(EntryTemplate::render(text, entry, options(html)));
    return text;
  }
  EntryTemplate::Options options(bool html) const {
    EntryTemplate::Options o;
    o.html = html;
    o.releaseDateFormat = releaseDateFormat;
    o.coverImageAddress = cover;
    return o;
  }
  Entry entry{42};
  QString releaseDateFormat = "yyyy";
  QString cover;
};

TEST_F(EntryTemplateTest, FieldsPrintByTheirKind) {
  EXPECT_EQ(render("[title] by [artist], [releaseDate]; bought [purchasedOn]; uid [uid]"),
            "Kind of Blue by Miles Davis, 1959; bought 4 March 1999; uid 42");
  EXPECT_EQ(render("[myRating]/10 [myRatingStars] [customCheckbox1]|[customCheckbox2]|[status]|[comments]|"),
            "4/10 ★★☆☆☆ Yes||||");
  releaseDateFormat = "d MMM yyyy";
  EXPECT_EQ(render("[releaseDate]"), "17 Aug 1959");
  releaseDateFormat.clear();
  EXPECT_EQ(render("[releaseDate]"), "1959");
  // Ten points are five stars, an odd one a half; past the scale shows its end.
  for (const auto& [rating, stars] : {std::pair{9, "★★★★½"}, std::pair{1, "½☆☆☆☆"}, std::pair{10, "★★★★★"},
                                     std::pair{15, "★★★★★"}, std::pair{-3, ""}}) {
    entry.setValue("myRating", rating);
    EXPECT_EQ(render("[myRatingStars]"), QString::fromUtf8(stars)) << rating;
  }
  cover = "file:///data/Covers/42.jpg";
  EXPECT_EQ(render("IF_coverImage<img src=\"[coverImage]\">END_coverImage"), "<img src=\"file:///data/Covers/42.jpg\">");
}

TEST_F(EntryTemplateTest, SectionsShowOnlyWithTheirValue) {
  EXPECT_EQ(render("IF_borrowedBy Lent to [borrowedBy].END_borrowedBy|IF_artist by [artist]END_artist"), "| by Miles Davis");
  EXPECT_EQ(render("IF_customCheckbox2 x END_customCheckbox2|IF_myRating rated END_myRating"), "| rated ");
  // Keys are read longest first, so sections of custom1 and custom10 never mix, and a key may
  // run straight into text.
  EXPECT_EQ(render("IF_custom1<1>END_custom1IF_custom10<10>END_custom10|IF_titleTitle: [title]END_title"),
            "<10>|Title: Kind of Blue");
  EXPECT_EQ(render("IF_artist a IF_borrowedBy b END_borrowedBy c END_artist"), " a  c ");
  EXPECT_EQ(render("IF_artist IF_artist x END_artist END_artist"), "  x  ");
  // Unbalanced markers stay for the author to see.
  EXPECT_EQ(render("IF_title no end|END_artist|IF_borrowedBy"), "IF_title no end|END_artist|IF_borrowedBy");
}

TEST_F(EntryTemplateTest, OtherMarkersStayForTheTrackRows) {
  const QString tracks =
      "[nosuch][Title][title ][tracksBegin]IF_Tartist[track:artist]END_Tartist[track:name][tracksEnd][IncludeURLInName]"
      "[durationSeparation: - *]<!--IFtracks ENDtracks-->";
  EXPECT_EQ(render(tracks), tracks);
}

TEST_F(EntryTemplateTest, HTMLValuesAddNeitherMarkupNorMarkers) {
  entry.setValue("title", "<b>\"Rock\" & 'Roll'</b> [artist] IF_Tname [tracksBegin]");
  EXPECT_EQ(render("<h1>[title]</h1>", true),
            "<h1>&lt;b&gt;&quot;Rock&quot; &amp; &#39;Roll&#39;&lt;/b&gt; &#91;artist&#93; IF&#95;Tname &#91;tracksBegin&#93;</h1>");
  EXPECT_EQ(render("[title]"), "<b>\"Rock\" & 'Roll'</b> [artist] IF_Tname [tracksBegin]");
}

TEST_F(EntryTemplateTest, HostileTemplatesEndPromptly) {
  const QString unclosed = QString("IF_title[").repeated(300000) + QString(4000, 'a') + "]";
  EXPECT_EQ(render(unclosed), unclosed);
  const QString closings = QString("END_title").repeated(300000) + QString("IF_custom1 END_custom10").repeated(50000);
  EXPECT_EQ(render(closings), closings);
  // 200,000 copies of a 1,000-character value would pass the limit: the template stays.
  entry.setValue("comments", QString(1000, 'c'));
  QString huge = QString("[comments]").repeated(200000);
  EXPECT_FALSE(EntryTemplate::render(huge, entry, options(true)));
  EXPECT_EQ(huge.size(), 2000000);
}

class TemplateLookupTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(controller.openCatalogue(dir.filePath("Discary.sqlite")).ok()); }
  void write(const QString& relative, const QByteArray& bytes) {
    QDir(dir.path()).mkpath(QFileInfo(dir.filePath(relative)).path());
    QFile f(dir.filePath(relative));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
  }
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyControllerShared controller{settings, windowSystem, platform};
};

TEST_F(TemplateLookupTest, UserTemplatesComeFirstThenTheBuiltInOne) {
  const QString builtIn = controller.templateText("Collection.html");
  EXPECT_TRUE(builtIn.contains("[tracksBegin]"));
  write("Templates/Collection.html", "\xEF\xBB\xBFMine: [title] \xC3\xA9");
  EXPECT_EQ(controller.templateText("Collection.html"), "Mine: [title] é");
  write("Templates/Plain.txt", "plain");
  EXPECT_EQ(controller.templateText("Plain.txt"), "plain");
  EXPECT_TRUE(controller.templateText("Missing.html").isNull());
  for (const QString name : {"", "../Discary.sqlite", "Templates/Plain.txt", "..", "a\\b"})
    EXPECT_TRUE(controller.templateText(name).isNull()) << qPrintable(name);
  // A user template over the size cap is passed over for the built-in one.
  write("Templates/Collection.html", QByteArray(TemplateFile::maximumSize + 1, 'x'));
  EXPECT_EQ(controller.templateText("Collection.html"), builtIn);
}

TEST_F(TemplateLookupTest, CoverAddressPointsAtTheCoverFileWhenThereIsOne) {
  Entry* entry = controller.managedObjectContext().insertEntry();
  entry->setValue("title", "Blue");
  QString page = "IF_coverImage<img src=\"[coverImage]\">END_coverImage[title]";
  QString without = page;
  controller.replaceKeysInTemplate(without, *entry, true, true);
  EXPECT_EQ(without, "Blue");
  write(QStringLiteral("Covers/%1.jpg").arg(entry->uid()), "jpeg");
  const QString url = QUrl::fromLocalFile(dir.filePath(QStringLiteral("Covers/%1.jpg").arg(entry->uid()))).toString();
  EXPECT_EQ(controller.coverImageAddress(*entry), url);
  controller.setCoverImageAddressPrefix("covers/");
  controller.replaceKeysInTemplate(page, *entry, true, false);
  EXPECT_EQ(page, QStringLiteral("<img src=\"covers/%1.jpg\">Blue").arg(entry->uid()));
}

}  // namespace
