#include "CliRunner.h"
#include "Collection.h"
#include "DuplicateFinder.h"
#include "Entry.h"
#include "EntryMerger.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "Settings.h"
#include "Store.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class DuplicateFinderTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("d.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};

  void SetUp() override {
    controller.applicationWillFinishLaunching();
    QDir().mkpath(dir.filePath("c"));
    ASSERT_TRUE(controller.openCatalogue(dir.filePath("c/Discary.sqlite")).ok());
  }
  Entry* add(const QVariantMap& values) {
    Entry* e = controller.managedObjectContext().insertEntry();
    for (auto it = values.begin(); it != values.end(); ++it) e->setPrimitiveValue(it.key(), it.value());
    return e;
  }
  static QList<QList<qint64>> uids(const std::vector<DuplicateFinder::Group>& groups) {
    QList<QList<qint64>> result;
    for (const auto& g : groups) {
      QList<qint64> group;
      for (const Entry* e : g.entries) group << e->uid();
      result << group;
    }
    return result;
  }
};

TEST_F(DuplicateFinderTest, SameReleaseByEachKeyAndEditionsByArtistAndTitle) {
  Entry* a = add({{"title", "Abbey Road"}, {"artist", "The Beatles"}, {"releaseID", "r1"}});
  Entry* b = add({{"title", "Abbey Road"}, {"artist", "Beatles"}, {"releaseID", " R1"}});
  Entry* c = add({{"title", "abbey  road!"}, {"artist", "The Beatles"}, {"upc", "094638246817"}});
  Entry* d = add({{"title", "Abbey Road"}, {"artist", "Beatles"}, {"upc", "0094638246817"}});  // EAN of the same UPC
  Entry* e = add({{"title", "Let It Be"}, {"artist", "The Beatles"}, {"discID", "a00b1c0d"}});
  Entry* f = add({{"title", "Let It Be... Naked"}, {"artist", "The Beatles"}, {"discID", "A00B1C0D"}});
  Entry* g = add({{"title", "Help!"}, {"artist", "The Beatles"}, {"musicBrainzDiscID", "xyz-"}});
  Entry* h = add({{"title", "Help"}, {"artist", "Beatles"}, {"musicBrainzDiscID", "xyz-"}});
  // Other albums of one artist, and entries without a title, are no duplicates.
  add({{"title", "Revolver"}, {"artist", "The Beatles"}});
  add({{"title", "Rubber Soul"}, {"artist", "The Beatles"}, {"upc", "000"}});
  add({{"artist", "The Beatles"}, {"upc", "00"}});
  add({{"artist", "The Beatles"}});

  const auto found = DuplicateFinder::find(controller.managedObjectContext().entries());
  EXPECT_EQ(uids(found.same), (QList<QList<qint64>>{{a->uid(), b->uid()}, {c->uid(), d->uid()}, {e->uid(), f->uid()},
                                                    {g->uid(), h->uid()}}));
  // Help and its twin are one release: no edition group for them.
  EXPECT_EQ(uids(found.editions), (QList<QList<qint64>>{{a->uid(), b->uid(), c->uid(), d->uid()}}));
  EXPECT_EQ(found.same[0].differences, QStringList({"artist", "releaseID"}));
  EXPECT_EQ(found.editions[0].differences, QStringList({"title", "artist", "upc", "releaseID"}));
}

TEST_F(DuplicateFinderTest, MergeKeepsEveryTrackLinkCollectionAndValue) {
  Store& store = controller.managedObjectContext();
  Entry* keep = add({{"title", "Kind of Blue"}, {"artist", "Miles Davis"}, {"format", "CD"}, {"releaseID", "k"}});
  Entry* other = add({{"title", "Kind Of Blue (Legacy)"}, {"label", "Columbia"}, {"price", "12"}, {"releaseID", "k"}});
  const auto track = [](const QString& name, int position) {
    auto t = Store::newTrack();
    t->setValue("name", name);
    t->setValue("position", position);
    return t;
  };
  keep->addTrack(track("So What", 0));
  other->addTrack(track("So what", 0));  // the same track: not doubled
  other->addTrack(track("Flamenco Sketches (alt.)", 5));
  auto link = Store::newLink();
  link->setValue("url", "https://example.org/review");
  other->addLink(std::move(link));
  store.addEntryToCollection(other, store.createCollection("Jazz"));
  ASSERT_TRUE(store.save());
  const qint64 keptUID = keep->uid();

  ASSERT_TRUE(EntryMerger(controller).merge(*keep, *other));
  EXPECT_FALSE(EntryMerger(controller).merge(*keep, *keep));

  // Read back by the command line, from the file.
  const auto listed = CliRunner(dir.path()).run({"--json", "list"});
  ASSERT_EQ(listed.status, 0) << listed.err.constData();
  const QJsonArray entries = listed.json().toArray();
  ASSERT_EQ(entries.size(), 1);
  const QJsonObject merged = entries[0].toObject();
  EXPECT_EQ(merged["uid"].toInteger(), keptUID);
  EXPECT_EQ(merged["title"], "Kind of Blue");  // the kept entry's value wins
  EXPECT_EQ(merged["artist"], "Miles Davis");
  EXPECT_EQ(merged["label"], "Columbia");  // what it lacked comes over
  EXPECT_EQ(merged["price"], "12");
  EXPECT_EQ(merged["numberOfTracks"], "2");
  ASSERT_EQ(merged["tracks"].toArray().size(), 2);
  EXPECT_EQ(merged["tracks"].toArray()[1].toObject()["name"], "Flamenco Sketches (alt.)");
  ASSERT_EQ(merged["links"].toArray().size(), 1);
  EXPECT_EQ(merged["links"].toArray()[0].toObject()["url"], "https://example.org/review");
  EXPECT_EQ(merged["collections"].toArray(), QJsonArray({"Jazz"}));
}

}  // namespace
