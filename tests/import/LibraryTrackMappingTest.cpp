#include "ImportFixture.h"
#include "Store.h"

#include <QDateTime>
#include <QFileInfo>
#include <QImage>
#include <QUrl>

#include "NaturalDate.h"

namespace {

QVariantMap with(QVariantMap base, const QVariantMap& more) {
  base.insert(more);
  return base;
}

class LibraryTrackMappingTest : public ImportFixture {
 protected:
  Entry* map(const QVariantMap& track, bool* existed = nullptr) {
    bool flag = false;
    Entry* entry = controller->entryForiTunesTrack(track, &flag);
    if (existed) *existed = flag;
    return entry;
  }
  void open() { ASSERT_TRUE(controller->openImportRun()); }
};

}  // namespace

TEST_F(LibraryTrackMappingTest, DiscsGiveHundredsAndTheTwoPathsBoundThemDifferently) {
  open();
  const QVariantMap base{{"Album", "Set"}, {"Artist", "A"}, {"Disc Number", 2}};
  Entry* entry = map(with(base, QVariantMap{{"Name", "One"}, {"Track Number", 1}, {"Total Time", 61000}}));
  bool existed = false;
  EXPECT_EQ(map(with(base, QVariantMap{{"Name", "Two"}, {"Track Number", 2}, {"Total Time", 60500}}), &existed), entry);
  EXPECT_TRUE(existed);
  EXPECT_EQ(trackValues(entry, "position"), (QStringList{"100", "101"}));
  EXPECT_EQ(entry->stringValue("duration"), "2:01");
  EXPECT_EQ(entry->stringValue("numberOfTracks"), "2");
  EXPECT_EQ(entry->stringValue("discs"), "2");
  EXPECT_EQ(entry->value("itunes"), 1);

  const QVariantMap far{{"Album", "Box"}, {"Artist", "B"}, {"Disc Number", 150}, {"Track Number", 3}, {"Name", "x"}};
  Entry* box = map(far);
  map(far);
  EXPECT_EQ(trackValues(box, "position"), (QStringList{"2", "14902"}));
}

TEST_F(LibraryTrackMappingTest, ArtistsOfCompilationsAndAlbumArtists) {
  open();
  Entry* various = map({{"Album", "Hits"}, {"Artist", "X"}, {"Name", "a"}, {"Compilation", 1}, {"Track Number", 1}});
  EXPECT_EQ(map({{"Album", "Hits"}, {"Artist", "Y"}, {"Name", "b"}, {"Compilation", 1}, {"Track Number", 2}}), various);
  EXPECT_EQ(various->stringValue("artist"), "Various Artists");
  EXPECT_EQ(trackValues(various, "artist"), (QStringList{"X", "Y"}));

  Entry* band = map({{"Album", "Live"}, {"Artist", "P"}, {"Album Artist", "Band"}, {"Name", "a"}, {"Track Number", 1}});
  EXPECT_EQ(map({{"Album", "Live"}, {"Artist", "Q"}, {"Album Artist", "Band"}, {"Name", "b"}, {"Track Number", 2}}), band);
  EXPECT_EQ(band->stringValue("artist"), "Band");
  EXPECT_EQ(trackValues(band, "artist"), (QStringList{"P", "Q"}));

  Entry* first = map({{"Album", "Split"}, {"Artist", "M"}, {"Name", "a"}});
  Entry* second = map({{"Album", "Split"}, {"Artist", "N"}, {"Name", "b"}});
  EXPECT_NE(first, second);

  Entry* unknown = map({{"Name", "untitled"}});
  EXPECT_EQ(unknown->stringValue("title"), "Unknown");
  EXPECT_FALSE(unknown->stringValue("artist").size());
}

TEST_F(LibraryTrackMappingTest, ComposersRatingsDatesAndFills) {
  open();
  const QVariantMap album{{"Album", "Suite"}, {"Artist", "Orchestra"}};
  Entry* entry = map(with(album, QVariantMap{{"Name", "I"}, {"Composer", "Bach"}, {"Rating", 80},
                                                           {"Year", 1999}, {"Genre", "Rock &amp; Roll"}, {"Disc Count", 2},
                                                           {"Sort Album", "Suite, The"}}));
  EXPECT_EQ(entry->value("myRating"), 8);
  map(with(album, QVariantMap{{"Name", "II"}, {"Composer", "Handel"}, {"Rating", 60}, {"Genre", "Jazz"}}));
  EXPECT_EQ(entry->value("myRating"), 7);
  map(with(album, QVariantMap{{"Name", "III"}, {"Composer", "Haydn"}, {"Rating", 100}}));
  map(with(album, QVariantMap{{"Name", "IV"}, {"Rating", 110}}));
  map(with(album, QVariantMap{{"Name", "V"}, {"Rating", -10}}));
  EXPECT_EQ(entry->value("myRating"), 8);
  EXPECT_EQ(entry->stringValue("composer"), "Various Composers");
  EXPECT_EQ(trackValues(entry, "composer"), (QStringList{"Bach", "Handel", "Haydn", "", ""}));
  EXPECT_EQ(entry->stringValue("genre"), "Rock & Roll");
  EXPECT_EQ(entry->stringValue("discs"), "2");
  EXPECT_EQ(entry->stringValue("sortTitle"), "Suite, The");
  const QDateTime year = *NaturalDate::myDateWithNaturalLanguageString("1999");
  EXPECT_EQ(entry->value("releaseDate").toDateTime(), year.addSecs(-172800));

  Entry* noDate = map({{"Album", "Z"}, {"Name", "z"}, {"Year", 0}});
  Entry* badDate = map({{"Album", "W"}, {"Name", "w"}, {"Year", "someday"}});
  EXPECT_TRUE(noDate->value("releaseDate").isNull());
  EXPECT_TRUE(badDate->value("releaseDate").isNull());
}

TEST_F(LibraryTrackMappingTest, OutsideAnImportEveryTrackMakesAnEntry) {
  const QVariantMap track{{"Album", "Same"}, {"Artist", "A"}, {"Name", "t"}, {"Rating", 40}};
  Entry* a = map(track);
  bool existed = false;
  Entry* b = map(with(track, QVariantMap{{"Rating", 100}}), &existed);
  EXPECT_NE(a, b);
  EXPECT_FALSE(existed);
  EXPECT_EQ(b->value("myRating"), 10);
}

TEST_F(LibraryTrackMappingTest, CoversComeFromArtworkOnceAndFromTheTrackFile) {
  open();
  QImage red(20, 10, QImage::Format_RGB32);
  red.fill(Qt::red);
  Entry* entry = map({{"Album", "Covered"}, {"Name", "a"}, {"artwork", red}});
  const QString cover = controller->managedObjectContext().coverPathOf(entry->uid());
  EXPECT_EQ(QImage(cover).size(), QSize(20, 10));
  QImage blue(5, 5, QImage::Format_RGB32);
  map({{"Album", "Covered"}, {"Name", "b"}, {"artwork", blue}});
  EXPECT_EQ(QImage(cover).size(), QSize(20, 10));  // settled by the first track

  const QString file = QStringLiteral(DISCARY_TEST_DATA "/audio/music-metadata_issue-79.m4a");
  Entry* fromFile = map({{"Album", "Resistance"}, {"Name", "Uprising"}, {"Persistent ID", "ABC"},
                         {"Location", QUrl::fromLocalFile(file).toString()}});
  EXPECT_EQ(QImage(controller->managedObjectContext().coverPathOf(fromFile->uid())).width(), 136);
}
