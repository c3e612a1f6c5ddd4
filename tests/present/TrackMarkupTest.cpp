#include "Entry.h"
#include "FakePlatform.h"
#include "TrackData.h"
#include "TrackMarkup.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace {

struct TrackValues {
  TrackValues(QVariant position, QString name = {}, QString duration = {}, QString artist = {})
      : position(std::move(position)), name(std::move(name)), duration(std::move(duration)), artist(std::move(artist)) {}
  QVariant position;
  QString name, duration, artist;
};

std::unique_ptr<Entry> entryWith(const std::vector<TrackValues>& tracks) {
  auto entry = std::make_unique<Entry>(1);
  entry->setValue("title", "Album");
  for (const TrackValues& values : tracks) {
    auto track = std::make_unique<Track>();
    track->setValue("position", values.position);
    if (!values.name.isEmpty()) track->setValue("name", values.name);
    if (!values.duration.isEmpty()) track->setValue("duration", values.duration);
    if (!values.artist.isEmpty()) track->setValue("artist", values.artist);
    entry->addTrack(std::move(track));
  }
  return entry;
}

struct MarkupCase {
  const char* label;
  QString text;
  std::vector<TrackValues> tracks;
  bool html, webView;
  QString expected;
};

void PrintTo(const MarkupCase& c, std::ostream* os) { *os << c.label; }

// The library holds "A&B é" of "Album": that track links to the player, no other does.
class TrackMarkupCases : public ::testing::TestWithParam<MarkupCase> {
 protected:
  void SetUp() override {
    platform.library = {QVariantMap{{"Name", "A&B é"}, {"Album", "Album"}}, QVariantMap{{"Name", "solo"}, {"Album", "Album"}}};
    library.loadItunes();
  }
  FakePlatform platform;
  TrackData library{platform};
};

TEST_P(TrackMarkupCases, FillsRowsLiterally) {
  const MarkupCase& c = GetParam();
  auto entry = entryWith(c.tracks);
  QString text = c.text;
  TrackMarkup::apply(text, *entry, {c.html, c.webView, &library});
  EXPECT_EQ(text, c.expected);
}

const QString linked = "[IncludeURLInName][tracksBegin][track:name]|[tracksEnd]";

INSTANTIATE_TEST_SUITE_P(
    Templates, TrackMarkupCases,
    ::testing::Values(
        MarkupCase{"rows in position order", "A[tracksBegin]([track:position]) [track:name][tracksEnd]B",
                   {{1, "y"}, {0, "x"}}, false, false, "A(1) x(2) yB"},
        MarkupCase{"positions within a disc", "[tracksBegin][track:position] [tracksEnd]",
                   {{205, "c"}, {0, "a"}, {102, "b"}, {-1, "d"}}, false, false, "0 1 3 6 "},
        MarkupCase{"duration pattern", "[tracksBegin][track:name][track:duration][durationSeparation: - *]|[tracksEnd]",
                   {{0, "a", "3:45"}, {1, "b"}}, false, false, "a - 3:45|b|"},
        MarkupCase{"pattern without a star is dropped", "[tracksBegin][track:name] [track:duration][durationSeparation:-][tracksEnd]",
                   {{0, "a", "3:45"}}, false, false, "a 3:45"},
        MarkupCase{"conditional artist", "[tracksBegin]<IF_Tartist by [track:artist]END_Tartist>[tracksEnd]",
                   {{0, "a", "", "Z"}, {1, "b"}}, false, false, "< by Z><>"},
        MarkupCase{"one section cut per empty marker",
                   "[tracksBegin][track:name]IF_Tname1END_Tname[track:name]IF_Tname2END_TnameIF_Tname3END_Tname[tracksEnd]",
                   {{0, ""}}, false, false, "IF_Tname3END_Tname"},
        MarkupCase{"an open section with an empty value stays", "[tracksBegin][track:artist]IF_Tartist-[tracksEnd]",
                   {{0, "a"}, {1, "b", "", "Z"}}, false, false, "IF_Tartist-Z-"},
        MarkupCase{"a section without its marker is not evaluated", "[tracksBegin][track:name]IF_Tartist-END_Tartist[tracksEnd]",
                   {{0, "x"}}, false, false, "xIF_Tartist-END_Tartist"},
        MarkupCase{"markers match as prefixes", "[tracksBegin]IF_Tartists[track:artist][tracksEnd]", {{0, "a", "", "Z"}},
                   false, false, "sZ"},
        MarkupCase{"HTML encodes values", "[tracksBegin][track:name] [track:artist][tracksEnd]", {{0, "A&B é", "", "<i>"}}, true,
                   false, "A&amp;B é &lt;i&gt;"},
        MarkupCase{"a name in the library links with the artist as stored", linked, {{0, "A&B é", "", "Z & \"Y\""}, {1, "other"}},
                   true, true,
                   "[IncludeURLInName]<a href=\"folio://playTrackNamed=A&B%20%C3%A9&amp;artist=Z & \"Y\"\">A&amp;B é</a>|other|"},
        MarkupCase{"a link without an artist", linked, {{0, "solo"}}, true, true,
                   "[IncludeURLInName]<a href=\"folio://playTrackNamed=solo\">solo</a>|"},
        MarkupCase{"no links outside the page view", linked, {{0, "A&B é", "", "Z"}}, true, false, "[IncludeURLInName]A&amp;B é|"},
        MarkupCase{"no links unless asked", "[tracksBegin][track:name][tracksEnd]", {{0, "solo"}}, true, true, "solo"},
        MarkupCase{"track section shown with tracks", "<!--IFtracks[tracksBegin][track:name][tracksEnd]ENDtracks-->", {{0, "x"}},
                   false, false, "x"},
        MarkupCase{"track section kept without tracks", "<!--IFtracks[tracksBegin][track:name][tracksEnd]ENDtracks-->", {},
                   false, false, "<!--IFtracks[tracksBegin][track:name][tracksEnd]ENDtracks-->"},
        MarkupCase{"stop texts ignore case, replacements do not", "[tracksBegin] [TRACK:name] [tracksEnd]", {{0, "x"}}, false,
                   false, " x "},
        MarkupCase{"a differently cased begin marker empties the block", "A[TRACKSBEGIN]x[tracksBegin]y[tracksEnd]B",
                   {{0, "x"}}, false, false, "A[tracksEnd]B"},
        MarkupCase{"no end marker: rows run to the end and replace nothing",
                   "A<!--IFtracks[tracksBegin][track:name]ENDtracks-->", {{0, "x"}}, false, false, "A[tracksBegin][track:name]"},
        MarkupCase{"nested blocks", "[tracksBegin][tracksBegin][track:name][tracksEnd][tracksEnd]", {{0, "x"}}, false, false,
                   "[tracksBegin]x[tracksEnd]"},
        MarkupCase{"an unknown key leaves the template", "<!--IFtracksA[tracksBegin][track:volume][tracksEnd]", {{0, "x"}},
                   false, false, "<!--IFtracksA[tracksBegin][track:volume][tracksEnd]"},
        MarkupCase{"an unclosed pattern leaves the template", "[tracksBegin][track:name][tracksEnd][durationSeparation: *",
                   {{0, "x"}}, false, false, "[tracksBegin][track:name][tracksEnd][durationSeparation: *"},
        MarkupCase{"no literal begin marker", "[TRACKSBEGIN][track:name][tracksEnd]", {{0, "x"}}, false, false,
                   "[TRACKSBEGIN][track:name][tracksEnd]"}),
    [](const ::testing::TestParamInfo<MarkupCase>& info) { return "case" + std::to_string(info.index); });

TEST(TrackMarkupTest, ReportsWhyATemplateWasLeft) {
  auto entry = entryWith({{0, "x"}});
  QString text = "[tracksBegin][track:Name][tracksEnd]";
  const TrackMarkup::Result result = TrackMarkup::apply(text, *entry, {});
  EXPECT_EQ(result.status, TrackMarkup::Status::UnknownKey);
  EXPECT_TRUE(result.reason.contains("[track:Name]")) << qPrintable(result.reason);
  auto empty = entryWith({});
  EXPECT_EQ(TrackMarkup::apply(text, *empty, {}).status, TrackMarkup::Status::NoTracks);
}

// Each stays within the work budget or the length limit and leaves the template as it was.
TEST(TrackMarkupTest, HostileTemplatesEndPromptlyWithTheTemplateUntouched) {
  std::vector<TrackValues> thousand;
  for (int i = 0; i < 1000; ++i) thousand.push_back({i, "x", "1:00"});
  auto many = entryWith(thousand);
  auto one = entryWith({{0, "x", "1:00"}});
  const QString megabyte(1024 * 1024, QLatin1Char('m'));
  const struct {
    const char* label;
    QString text;
    Entry* entry;
  } cases[] = {
      {"100,000 markers", "[tracksBegin]" + QString("[track:name]").repeated(100000) + "[tracksEnd]", one.get()},
      {"a megabyte row for each of 1,000 tracks", "[tracksBegin]" + megabyte + "[track:name][tracksEnd]", many.get()},
      {"a pattern of a million stars", "[tracksBegin]" + QString("[track:duration]").repeated(1000) +
                                           "[durationSeparation:" + QString(1000000, '*') + "][tracksEnd]",
       one.get()},
      {"the block repeated 200,000 times", QString("[tracksBegin]" + megabyte.left(100) + "[tracksEnd]").repeated(200000),
       many.get()},
  };
  for (const auto& c : cases) {
    QString text = c.text;
    const TrackMarkup::Result result = TrackMarkup::apply(text, *c.entry, {true, true, nullptr});
    EXPECT_EQ(result.status, TrackMarkup::Status::TooMuchWork) << c.label;
    EXPECT_TRUE(text == c.text) << c.label;
  }
}

// Random marker soup: the engine ends and stays within its limit, a template it cannot fill stays
// exactly as it was, and HTML changes nothing but how the one value with an ampersand is written.
TEST(TrackMarkupTest, MarkerSoupNeverBreaksTheEngine) {
  const QStringList pieces = {"[tracksBegin]", "[tracksEnd]", "[track:", "name", "artist", "duration", "position", "]",
                              "IF_T",          "END_T",       "[durationSeparation:", "*", "<!--IFtracks", "ENDtracks-->",
                              "[IncludeURLInName]", " ", "x", "[TRACK:", "[track:name]"};
  auto entry = entryWith({{3, "a&b", "2:00", "Z"}, {0, ""}, {105, "c", "", ""}});
  QRandomGenerator random(20261122);
  int filled = 0;
  for (int round = 0; round < 3000; ++round) {
    QString soup;
    const int length = random.bounded(1, 40);
    for (int i = 0; i < length; ++i) soup += pieces[random.bounded(int(pieces.size()))];
    QString plain = soup, html = soup;
    const TrackMarkup::Status status = TrackMarkup::apply(plain, *entry, {false, true, nullptr}).status;
    ASSERT_EQ(TrackMarkup::apply(html, *entry, {true, true, nullptr}).status, status) << qPrintable(soup);
    ASSERT_LE(plain.size(), TrackMarkup::maximumLength);
    if (status != TrackMarkup::Status::Filled) {
      EXPECT_EQ(plain, soup);
      EXPECT_EQ(html, soup);
      continue;
    }
    ++filled;
    EXPECT_FALSE(html.contains("a&b")) << qPrintable(soup);
    EXPECT_EQ(html, QString(plain).replace("a&b", "a&amp;b")) << qPrintable(soup);
  }
  EXPECT_GT(filled, 300);  // the soup reaches the rows often enough to say something
}

}  // namespace
