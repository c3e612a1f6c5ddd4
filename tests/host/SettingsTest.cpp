#include "Settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(SettingsTest, DefaultsApplyUntilTheUserStoresAValueAndComeBackWhenItIsRemoved) {
  QTemporaryDir dir;
  Settings settings(dir.filePath("s.conf"));
  settings.registerDefaults({{"Flag", true}, {"Size", qint64(150)}, {"Time", 3.0}, {"Switches", QVariantList{true, false}}});
  EXPECT_TRUE(settings.boolForKey("Flag"));
  settings.setObject("Flag", false);
  EXPECT_FALSE(settings.boolForKey("Flag"));
  settings.removeObject("Flag");
  EXPECT_TRUE(settings.boolForKey("Flag"));
  EXPECT_FALSE(settings.objectForKey("Missing").isValid());

  settings.setObject("Switches", QVariantList{false, true, true});
  settings.sync();
  Settings reread(dir.filePath("s.conf"));
  reread.registerDefaults(settings.registeredDefaults());
  // The file keeps booleans as text; the registered shape reads them back as booleans.
  EXPECT_EQ(reread.objectForKey("Switches"), (QVariantList{false, true, true}));
}

TEST(SettingsTest, ValuesOfTheWrongTypeAreReadLeniently) {
  QTemporaryDir dir;
  Settings settings(dir.filePath("s.conf"));
  settings.registerDefaults({{"Flag", true}, {"Size", qint64(150)}, {"Time", 3.0}, {"Switches", QVariantList{true}},
                             {"Columns", QVariantList{QVariantMap{{"identifier", "title"}}}}});
  const struct {
    const char* key;
    QVariant stored;
    QVariant read;
  } cases[] = {
      {"Flag", "no", false},       {"Flag", "YES", true},          {"Flag", "banana", false},
      {"Flag", 0, false},          {"Size", "200", qint64(200)},   {"Size", "wide", qint64(0)},
      {"Time", "2.5", 2.5},        {"Time", true, 1.0},            {"Switches", "oops", QVariantList{true}},
      {"Columns", "oops", QVariantList{QVariantMap{{"identifier", "title"}}}},
  };
  for (const auto& c : cases) {
    settings.setObject(c.key, c.stored);
    EXPECT_EQ(settings.objectForKey(c.key), c.read) << c.key << " " << qPrintable(c.stored.toString());
  }
  settings.setObject("Flag", "no");
  EXPECT_FALSE(settings.boolForKey("Flag"));
  settings.setObject("Size", "x");
  EXPECT_EQ(settings.integerForKey("Size"), 0);
}
