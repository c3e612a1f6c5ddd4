#include <gtest/gtest.h>

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QTemporaryDir>
#include <QTimeZone>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "AttributeInput.h"
#include "EntitySchema.h"
#include "Entry.h"
#include "EntryJson.h"
#include "FieldTypes.h"
#include "HostKeys.h"
#include "JsonWriter.h"
#include "MusicFields.h"
#include "MyFieldsController.h"
#include "Settings.h"
#include "Store.h"
#include "StoreSchema.h"
#include "StringTable.h"
#include "ValueKind.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
static void PrintTo(const QVariant& value, std::ostream* out) {
  *out << (value.isValid() ? value.toString().toStdString() : "<absent>");
}

namespace {

QString identifierOf(const QVariant& field) { return field.toMap().value(MKIdentifier).toString(); }

QStringList identifiersOf(const QVariantList& fields) {
  QStringList identifiers;
  for (const QVariant& field : fields) identifiers.append(identifierOf(field));
  return identifiers;
}

// Everything a controller needs, with settings that start empty and vanish with the test.
struct Catalogue {
  QTemporaryDir dir;
  Settings settings{dir.filePath(QStringLiteral("settings.ini"))};
  StringTable strings;
  MyFieldsController controller{settings, strings};
};

class MyFieldsControllerTest : public ::testing::Test, protected Catalogue {
 protected:
  void expectSortedByShownName(const QVariantList& fields) {
    for (qsizetype i = 1; i < fields.size(); ++i)
      EXPECT_FALSE(controller.localizedIdentifierCompare(fields[i], fields[i - 1]))
          << identifierOf(fields[i - 1]).toStdString() << " before " << identifierOf(fields[i]).toStdString();
  }
};

TEST_F(MyFieldsControllerTest, AllFieldsAreTheCatalogueInOrderWithTheirFlagsAndEditTypes) {
  enum : unsigned { Off = 1, Long = 2, Extra = 4 };
  const struct {
    const char* identifier;
    unsigned flags;
    int type;
  } expected[] = {
      {"title", 0, FieldTypeText},                            {"sortTitle", Off, FieldTypeText},
      {"artist", 0, FieldTypeComboBox},                       {"sortArtist", Off, FieldTypeText},
      {"composer", 0, FieldTypeTokens},                       {"conductor", 0, FieldTypeTokens},
      {"label", 0, FieldTypeComboBox},                        {"genre", 0, FieldTypeTokens},
      {"releaseDate", 0, FieldTypeDate},                      {"originalReleaseDate", 0, FieldTypeDate},
      {"rating", 0, FieldTypeText},                           {"price", 0, FieldTypeText},
      {"discs", 0, FieldTypeText},                            {"duration", 0, FieldTypeText},
      {"numberOfTracks", 0, FieldTypeText},                   {"producer", 0, FieldTypeTokens},
      {"mixedBy", 0, FieldTypeTokens},                        {"arrangedBy", 0, FieldTypeTokens},
      {"format", 0, FieldTypeComboBox},                       {"awards", Long, FieldTypeText},
      {"discID", Off, FieldTypeText},                         {"asin", Off, FieldTypeText},
      {"upc", 0, FieldTypeText},                              {"catalogNumber", Off, FieldTypeText},
      {"comments", Long, FieldTypeLongText},                  {"summary", Long, FieldTypeLongText},
      {"borrowedBy", Extra, FieldTypeBorrower},               {"borrowedOn", Extra, FieldTypeDate},
      {"dueDate", Extra | Off, FieldTypeDate},                {"purchasedAt", Extra, FieldTypeComboBox},
      {"purchasedOn", Extra, FieldTypeDate},                  {"paid", Extra, FieldTypeText},
      {"lastPlayed", Extra, FieldTypeDate},                   {"location", Extra, FieldTypeComboBox},
      {"collectionID", Extra, FieldTypeText},                 {"mediaCondition", Extra, FieldTypeComboBox},
      {"sleeveCondition", Extra, FieldTypeComboBox},          {"dateAdded", Extra, FieldTypeDate},
      {"custom1", Extra, FieldTypeComboBox},                  {"custom2", Extra, FieldTypeComboBox},
      {"custom3", Extra | Off, FieldTypeComboBox},            {"custom4", Extra | Off, FieldTypeComboBox},
      {"custom5", Extra | Off, FieldTypeComboBox},            {"custom6", Extra | Off, FieldTypeComboBox},
      {"custom7", Extra | Off, FieldTypeComboBox},            {"custom8", Extra | Off, FieldTypeComboBox},
      {"custom9", Extra | Off, FieldTypeComboBox},            {"custom10", Extra | Off, FieldTypeComboBox},
      {"customDate1", Extra, FieldTypeDate},                  {"customDate2", Extra | Off, FieldTypeDate},
      {"customCheckbox1", Extra, FieldTypeCheckbox},          {"customCheckbox2", Extra | Off, FieldTypeCheckbox},
      {"customTag1", Extra | Long, FieldTypeTokens},          {"customTag2", Extra | Off | Long, FieldTypeTokens},
      {"customText1", Extra | Long, FieldTypeLongText},       {"customText2", Extra | Off | Long, FieldTypeLongText},
      {"tags", Extra | Long, FieldTypeTokens},                {"url", Extra | Long, FieldTypeText},
  };

  const QVariantList fields = controller.allFields();
  ASSERT_EQ(fields.size(), 58);
  ASSERT_EQ(std::size(expected), 58u);
  for (qsizetype i = 0; i < fields.size(); ++i) {
    const auto& row = expected[i];
    SCOPED_TRACE(row.identifier);
    QVariantMap field = fields[i].toMap();
    EXPECT_EQ(field.take(MKIdentifier).toString(), QLatin1StringView(row.identifier));
    // Flags are present only when set: no "isOff" NO, no main-section location.
    EXPECT_EQ(field.take("isOff"), row.flags & Off ? QVariant(true) : QVariant());
    EXPECT_EQ(field.take("long"), row.flags & Long ? QVariant(true) : QVariant());
    EXPECT_EQ(field.take("location"), row.flags & Extra ? QVariant(MKLocationExtra) : QVariant());
    EXPECT_TRUE(field.isEmpty());
    EXPECT_EQ(controller.fieldTypeForIdentifier(QString::fromLatin1(row.identifier)), row.type);
  }
}

struct TypeCase {
  const char* identifier;
  int columnType;          // separateNumber NO
  int separateColumnType;  // separateNumber YES
  int fieldType;
};

void PrintTo(const TypeCase& c, std::ostream* out) { *out << c.identifier; }

class MyFieldsControllerTypes : public ::testing::TestWithParam<TypeCase>, protected Catalogue {};

TEST_P(MyFieldsControllerTypes, ColumnAndEditTypes) {
  const TypeCase& c = GetParam();
  const QString identifier = QString::fromLatin1(c.identifier);
  EXPECT_EQ(controller.columnType(identifier, false), c.columnType);
  EXPECT_EQ(controller.columnType(identifier, true), c.separateColumnType);
  EXPECT_EQ(controller.fieldTypeForIdentifier(identifier), c.fieldType);
}

INSTANTIATE_TEST_SUITE_P(Identifiers, MyFieldsControllerTypes,
                         ::testing::Values(
                             // Prefix rules reach past the fields allFields defines.
                             TypeCase{"customDate7", ColumnTypeDate, ColumnTypeDate, FieldTypeDate},
                             TypeCase{"customCheckbox5", ColumnTypeCheckbox, ColumnTypeCheckbox, FieldTypeCheckbox},
                             TypeCase{"custom11", ColumnTypeText, ColumnTypeText, FieldTypeComboBox},
                             TypeCase{"customTag9", ColumnTypeText, ColumnTypeText, FieldTypeTokens},
                             TypeCase{"customText4", ColumnTypeText, ColumnTypeText, FieldTypeLongText},
                             // Column-only keys fall through to plain text editing.
                             TypeCase{"statusImage", ColumnTypeImage, ColumnTypeImage, FieldTypeText},
                             TypeCase{"dateEdited", ColumnTypeDate, ColumnTypeDate, FieldTypeDate},
                             TypeCase{"uid", ColumnTypeStoredNumber, ColumnTypeStoredNumber, FieldTypeText},
                             TypeCase{"dogTag", ColumnTypeStoredNumber, ColumnTypeStoredNumber, FieldTypeText},
                             TypeCase{"status", ColumnTypeStoredNumber, ColumnTypeStoredNumber, FieldTypeText},
                             // Number-valued text is told apart only on request.
                             TypeCase{"duration", ColumnTypeText, ColumnTypeNumber, FieldTypeText},
                             TypeCase{"rating", ColumnTypeText, ColumnTypeNumber, FieldTypeText},
                             TypeCase{"lastUsedCount", ColumnTypeText, ColumnTypeNumber, FieldTypeText},
                             TypeCase{"myRating", ColumnTypeRating, ColumnTypeRating, FieldTypeRating},
                             TypeCase{"rated", ColumnTypeText, ColumnTypeText, FieldTypeComboBox},
                             TypeCase{"noSuchField", ColumnTypeText, ColumnTypeText, FieldTypeText},
                             TypeCase{"", ColumnTypeText, ColumnTypeText, FieldTypeText}),
                         [](const ::testing::TestParamInfo<TypeCase>& info) {
                           return info.param.identifier[0] ? std::string(info.param.identifier) : std::string("empty");
                         });

TEST_F(MyFieldsControllerTest, PersonalFieldsAreBuiltOnceAndShared) {
  const QStringList first = controller.personalFields();
  ASSERT_EQ(first.size(), 39);
  EXPECT_EQ(first.first(), "addressBookID");
  EXPECT_EQ(first.last(), "sortArtist");
  QStringList unique = first;
  EXPECT_EQ(unique.removeDuplicates(), 0);

  const QStringList second = controller.personalFields();
  EXPECT_EQ(second.constData(), first.constData());
  EXPECT_EQ(second, first);
}

TEST_F(MyFieldsControllerTest, SmartCollectionFieldsAddKeyPathsToTheFieldsInUse) {
  settings.setObject(MyFieldsControllerShared::fieldsOnKey, QStringList{"custom3"});
  const QVariantList fields = controller.smartCollectionFields();
  const QStringList identifiers = identifiersOf(fields);

  EXPECT_EQ(identifiers.size(), 58 + 14);
  for (const QVariant& field : controller.allFields()) EXPECT_TRUE(identifiers.contains(identifierOf(field)));
  for (const char* added :
       {"tracksSet.artist", "tracksSet.composer", "linksSet.type", "linksSet.url", "myRating", "dogTag"})
    EXPECT_TRUE(identifiers.contains(QLatin1StringView(added))) << added;
  // The definitions come from editFields, so the user's switches show through.
  const qsizetype custom3 = identifiers.indexOf("custom3");
  ASSERT_GE(custom3, 0);
  EXPECT_FALSE(fields[custom3].toMap().contains("isOff"));
  expectSortedByShownName(fields);
}

TEST_F(MyFieldsControllerTest, ColumnFieldsLeaveOutSwitchedOffFields) {
  const QStringList columnOnly{"dateEdited", "statusImage", "myRating", "collectionNames", "lastUsedCount", "dogTag"};

  QVariantList fields = controller.columnFields();
  QStringList identifiers = identifiersOf(fields);
  EXPECT_EQ(identifiers.size(), 58 - 18 + 6);
  for (const QString& identifier : columnOnly)
    EXPECT_TRUE(identifiers.contains(identifier)) << identifier.toStdString();
  for (const char* off : {"sortTitle", "discID", "dueDate", "custom3", "customText2"})
    EXPECT_FALSE(identifiers.contains(QLatin1StringView(off))) << off;
  EXPECT_TRUE(identifiers.contains("title"));
  expectSortedByShownName(fields);

  // "title" has a width yet is still left out once the user switches it off.
  settings.setObject(MyFieldsControllerShared::fieldsOffKey, QStringList{"title"});
  settings.setObject(MyFieldsControllerShared::fieldsOnKey, QStringList{"sortTitle"});
  identifiers = identifiersOf(controller.columnFields());
  EXPECT_FALSE(identifiers.contains("title"));
  EXPECT_TRUE(identifiers.contains("sortTitle"));
}

TEST_F(MyFieldsControllerTest, LanguageColumnOnlyForModerators) {
  const auto offersLanguage = [this] { return identifiersOf(controller.columnFields()).contains("localeLanguage"); };
  EXPECT_FALSE(offersLanguage());

  const struct {
    QVariant doghouse;
    bool offered;
  } cases[] = {
      {QVariantMap{{"moderator", true}}, true},
      {QVariantMap{{"moderator", "YES"}}, true},
      {QVariantMap{{"moderator", false}}, false},
      {QVariantMap{{"moderator", "NO"}}, false},
      {QVariantMap{{"other", true}}, false},
      {QVariantMap{}, false},
      {QVariant("moderator"), false},
  };
  for (const auto& c : cases) {
    settings.setObject("doghouse", c.doghouse);
    EXPECT_EQ(offersLanguage(), c.offered) << c.doghouse.toString().toStdString();
  }
}

class MyFieldsControllerWidths : public ::testing::TestWithParam<std::pair<const char*, float>>, protected Catalogue {};

TEST_P(MyFieldsControllerWidths, InitialWidth) {
  EXPECT_EQ(controller.widthForColumn(QString::fromLatin1(GetParam().first)), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Columns, MyFieldsControllerWidths,
                         ::testing::Values(std::pair{"noSuchField", 100.f}, std::pair{"label", 100.f},
                                           std::pair{"discs", 20.f}, std::pair{"customCheckbox1", 20.f},
                                           std::pair{"releaseDate", 80.f}, std::pair{"dateAdded", 80.f},
                                           std::pair{"customDate1", 80.f}, std::pair{"dateEdited", 80.f},
                                           std::pair{"myRating", 77.f}, std::pair{"title", 250.f},
                                           std::pair{"statusImage", 18.f}, std::pair{"lastUsedCount", 40.f}),
                         [](const auto& info) { return std::string(info.param.first); });

// Exposes the inherited slot the framework reads the widths from.
class WidthSlotController : public MyFieldsController {
 public:
  using MyFieldsController::MyFieldsController;
  std::optional<QVariantMap>& widths() { return columnWidthDictionary_; }
};

TEST(MyFieldsControllerWidthTable, BuiltOnceAndKeptInTheInheritedSlot) {
  QTemporaryDir dir;
  Settings settings(dir.filePath("settings.ini"));
  StringTable strings;
  WidthSlotController controller(settings, strings);

  EXPECT_EQ(controller.widthForColumn("releaseDate"), 80.f);
  controller.widthForColumn("title");
  ASSERT_TRUE(controller.widths().has_value());
  EXPECT_EQ(controller.widths()->size(), 25);

  controller.widths()->insert("title", 300.f);
  EXPECT_EQ(controller.widthForColumn("title"), 300.f);
}

TEST_F(MyFieldsControllerTest, FilterMenuItems) {
  strings.insert(StringTable::defaultTable, "Same Artist", "Gleicher Interpret");
  strings.insert(StringTable::defaultTable, "All", "Alle");
  strings.insert(StringTable::fieldsTable, "label", "Plattenfirma");

  const QVariantList items = controller.filterMenuItems();
  const struct {
    QString name;
    const char* field;
    int action;
  } expected[] = {
      {controller.localizedColumnName("genre"), "genre", FilterActionValue},
      {controller.localizedColumnName("artist"), "artist", FilterActionValue},
      {"Plattenfirma", "label", FilterActionValue},
      {controller.localizedColumnName("composer"), "composer", FilterActionValue},
      {controller.localizedColumnName("conductor"), "conductor", FilterActionValue},
      {"Gleicher Interpret", "artist", FilterActionSameAsSelected},
      {"Alle", nullptr, FilterActionAll},
  };
  ASSERT_EQ(items.size(), std::size(expected));
  for (qsizetype i = 0; i < items.size(); ++i) {
    SCOPED_TRACE(i);
    const QVariantMap item = items[i].toMap();
    EXPECT_EQ(item.value("name").toString(), expected[i].name);
    EXPECT_EQ(item.contains("field"), expected[i].field != nullptr);
    EXPECT_EQ(item.value("field"), expected[i].field ? QVariant(QString::fromLatin1(expected[i].field)) : QVariant());
    EXPECT_EQ(item.value("action").toInt(), expected[i].action);
  }
}

TEST_F(MyFieldsControllerTest, ValuesShowAsPeopleReadThem) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  const QDateTime day(QDate(1999, 3, 4), QTime(12, 0), Qt::UTC);
  auto shown = [&](const char* identifier, const QVariant& value) {
    return controller.displayStringForValue(QString::fromLatin1(identifier), value);
  };
  EXPECT_EQ(shown("purchasedOn", day), "4 Mar 1999");
  EXPECT_EQ(shown("releaseDate", day), "4 Mar 1999");  // no release date format registered
  settings.setObject("releaseDateFormat", "yyyy");
  EXPECT_EQ(shown("releaseDate", day), "1999");
  settings.setObject("releaseDateFormat", "MMMM yyyy");
  EXPECT_EQ(shown("releaseDate", QDateTime(QDate(1959, 12, 31), QTime(23, 30), Qt::OffsetFromUTC, -3600)), "January 1960");

  EXPECT_EQ(shown("myRating", qint64(3)), "\u2605\u00BD\u2606\u2606\u2606");  // out of ten
  EXPECT_EQ(shown("myRating", qint64(9)), "\u2605\u2605\u2605\u2605\u00BD");
  EXPECT_EQ(shown("myRating", qint64(99)), "\u2605\u2605\u2605\u2605\u2605");
  EXPECT_EQ(shown("myRating", qint64(0)), "");
  EXPECT_EQ(shown("myRating", qint64(-4)), "");
  EXPECT_EQ(shown("myRating", QVariant()), "");
  EXPECT_EQ(shown("customCheckbox1", true), "\u2713");
  EXPECT_EQ(shown("customCheckbox1", false), "");
  EXPECT_EQ(shown("statusImage", qint64(1)), "Borrowed");
  EXPECT_EQ(shown("status", qint64(2)), "Wanted");
  EXPECT_EQ(shown("statusImage", qint64(0)), "");
  EXPECT_EQ(shown("price", "12.50"), "12.50");
  EXPECT_EQ(shown("title", QVariant()), "");
  QLocale::setDefault(before);
}

// Every answer the catalogue gives for each key, one line per key, as the hand-written field
// lists gave them before the catalogue became one table. The table may be reorganised freely
// as long as this stays equal.
QString answersFor(MyFieldsController& controller, const QString& key, const QStringList& personal,
                   const QStringList& fullscreen, const QStringList& rss, const QStringList& columns,
                   const QStringList& smart) {
  const QDateTime day(QDate(1999, 3, 4), QTime(12, 0), Qt::UTC);
  QStringList shown;
  for (const QVariant& value : {QVariant(qint64(1)), QVariant(qint64(2)), QVariant(qint64(7)), QVariant(true),
                                QVariant(QStringLiteral("x")), QVariant(day)})
    shown << controller.displayStringForValue(key, value);
  QString flags;
  flags += personal.contains(key) ? u'P' : u'-';
  flags += fullscreen.contains(key) ? u'F' : u'-';
  flags += rss.contains(key) ? u'R' : u'-';
  flags += columns.contains(key) ? u'C' : u'-';
  flags += smart.contains(key) ? u'S' : u'-';
  flags += controller.offersUsedValues(key) ? u'U' : u'-';
  return QStringLiteral("%1 %2 %3 %4 %5 %6 %7 [%8]")
      .arg(key.isEmpty() ? QStringLiteral("(empty)") : key)
      .arg(controller.fieldTypeForIdentifier(key))
      .arg(controller.columnType(key, false))
      .arg(controller.columnType(key, true))
      .arg(double(controller.widthForColumn(key)))
      .arg(flags, controller.localizedColumnName(key), shown.join(u'|'));
}

TEST_F(MyFieldsControllerTest, EveryAnswerForEveryKeyIsAsBefore) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  QStringList keys;
  for (const QVariant& field : controller.allFields()) keys << identifierOf(field);
  for (const char* key :
       {"sortTitle", "sortArtist", "myRating", "itunes", "status", "dateEdited", "addressBookID", "extraData",
        "hasMovieLink", "lastUsedCount", "lastUsed", "lowestNewPrice", "lowestUsedPrice", "uploaded", "onSale",
        "hasBeenSold", "soldOn", "askingPrice", "buyerAddress", "buyerEmail", "buyerName", "placedForSaleAt",
        "soldPrice", "dogTag", "localeLanguage", "uid", "statusImage", "collectionNames", "hasCoverImage", "rated",
        "links", "lentHistory", "lentHistorySet", "tracksSet", "tracksSet.artist", "linksSet.url", "lastUsedSet",
        "collections", "customDate7", "customCheckbox5", "custom11", "customTag9", "customText4", "noSuchField", ""})
    if (!keys.contains(QLatin1StringView(key))) keys << QString::fromLatin1(key);
  const QStringList personal = controller.personalFields();
  const QStringList fullscreen = controller.defaultFullscreenFields();
  const QStringList rss = controller.rssDescriptionFields();
  const QStringList columns = identifiersOf(controller.columnFields());
  const QStringList smart = identifiersOf(controller.smartCollectionFields());
  QStringList lines;
  for (const QString& key : keys) lines << answersFor(controller, key, personal, fullscreen, rss, columns, smart);
  lines << QStringLiteral("personal ") + personal.join(u',') << QStringLiteral("fullscreen ") + fullscreen.join(u',')
        << QStringLiteral("rss ") + rss.join(u',') << QStringLiteral("columns ") + columns.join(u',')
        << QStringLiteral("smart ") + smart.join(u',');
  QLocale::setDefault(before);

  // Key, edit type, column type, column type telling numbers apart, width, flags (Personal,
  // Fullscreen, feed (R), Column, Smart, Used values), title, shown values; then the lists.
  const QStringList expected = QString::fromUtf8(R"(title 1 7 7 250 -F-CS- Title [1|2|7|✓|x|4 Mar 1999]
sortTitle 1 7 7 200 P---S- Sort Title [1|2|7|✓|x|4 Mar 1999]
artist 3 7 7 150 -FRCSU Artist [1|2|7|✓|x|4 Mar 1999]
sortArtist 1 7 7 150 P---S- Sort Artist [1|2|7|✓|x|4 Mar 1999]
composer 11 7 7 150 -FRCS- Composer [1|2|7|✓|x|4 Mar 1999]
conductor 11 7 7 150 -F-CS- Conductor [1|2|7|✓|x|4 Mar 1999]
label 3 7 7 100 -FRCSU Label [1|2|7|✓|x|4 Mar 1999]
genre 11 7 7 100 -FRCS- Genre [1|2|7|✓|x|4 Mar 1999]
releaseDate 5 1 1 80 -F-CS- Release Date [1|2|7|✓|x|4 Mar 1999]
originalReleaseDate 5 1 1 80 ---CS- Original Release Date [1|2|7|✓|x|4 Mar 1999]
rating 1 7 5 40 P--CS- Rating [1|2|7|✓|x|4 Mar 1999]
price 1 7 5 55 --RCS- Price [1|2|7|✓|x|4 Mar 1999]
discs 1 7 5 20 ---CS- Discs [1|2|7|✓|x|4 Mar 1999]
duration 1 7 5 40 -FRCS- Duration [1|2|7|✓|x|4 Mar 1999]
numberOfTracks 1 7 5 100 ---CS- Number of Tracks [1|2|7|✓|x|4 Mar 1999]
producer 11 7 7 150 ---CS- Producer [1|2|7|✓|x|4 Mar 1999]
mixedBy 11 7 7 150 ---CS- Mixed By [1|2|7|✓|x|4 Mar 1999]
arrangedBy 11 7 7 150 ---CS- Arranged By [1|2|7|✓|x|4 Mar 1999]
format 3 7 7 100 ---CSU Format [1|2|7|✓|x|4 Mar 1999]
awards 1 7 7 150 -F-CS- Awards [1|2|7|✓|x|4 Mar 1999]
discID 1 7 7 80 ----S- Disc ID [1|2|7|✓|x|4 Mar 1999]
asin 1 7 7 100 ----S- ASIN [1|2|7|✓|x|4 Mar 1999]
upc 1 7 7 95 ---CS- UPC [1|2|7|✓|x|4 Mar 1999]
catalogNumber 1 7 7 100 ----S- Catalog Number [1|2|7|✓|x|4 Mar 1999]
comments 2 7 7 200 P--CS- Comments [1|2|7|✓|x|4 Mar 1999]
summary 2 7 7 200 -F-CS- Summary [1|2|7|✓|x|4 Mar 1999]
borrowedBy 7 7 7 100 P--CSU Borrowed By [1|2|7|✓|x|4 Mar 1999]
borrowedOn 5 1 1 80 P--CS- Borrowed On [1|2|7|✓|x|4 Mar 1999]
dueDate 5 1 1 80 P---S- Due Date [1|2|7|✓|x|4 Mar 1999]
purchasedAt 3 7 7 100 P--CSU Purchased At [1|2|7|✓|x|4 Mar 1999]
purchasedOn 5 1 1 80 P--CS- Purchased On [1|2|7|✓|x|4 Mar 1999]
paid 1 7 5 55 P--CS- Paid [1|2|7|✓|x|4 Mar 1999]
lastPlayed 5 1 1 80 P--CS- Last Played [1|2|7|✓|x|4 Mar 1999]
location 3 7 7 100 PF-CSU Location [1|2|7|✓|x|4 Mar 1999]
collectionID 1 7 7 55 P--CS- Collection ID [1|2|7|✓|x|4 Mar 1999]
mediaCondition 3 7 7 100 ---CSU Media Condition [1|2|7|✓|x|4 Mar 1999]
sleeveCondition 3 7 7 100 ---CSU Sleeve Condition [1|2|7|✓|x|4 Mar 1999]
dateAdded 5 1 1 80 P--CS- Date Added [1|2|7|✓|x|4 Mar 1999]
custom1 3 7 7 100 -F-CSU Custom 1 [1|2|7|✓|x|4 Mar 1999]
custom2 3 7 7 100 -F-CSU Custom 2 [1|2|7|✓|x|4 Mar 1999]
custom3 3 7 7 100 ----SU Custom 3 [1|2|7|✓|x|4 Mar 1999]
custom4 3 7 7 100 ----SU Custom 4 [1|2|7|✓|x|4 Mar 1999]
custom5 3 7 7 100 ----SU Custom 5 [1|2|7|✓|x|4 Mar 1999]
custom6 3 7 7 100 ----SU Custom 6 [1|2|7|✓|x|4 Mar 1999]
custom7 3 7 7 100 ----SU Custom 7 [1|2|7|✓|x|4 Mar 1999]
custom8 3 7 7 100 ----SU Custom 8 [1|2|7|✓|x|4 Mar 1999]
custom9 3 7 7 100 ----SU Custom 9 [1|2|7|✓|x|4 Mar 1999]
custom10 3 7 7 100 ----SU Custom 10 [1|2|7|✓|x|4 Mar 1999]
customDate1 5 1 1 80 ---CS- Custom Date 1 [1|2|7|✓|x|4 Mar 1999]
customDate2 5 1 1 80 ----S- Custom Date 2 [1|2|7|✓|x|4 Mar 1999]
customCheckbox1 4 4 4 20 ---CS- Custom Checkbox 1 [1|2|7|✓|x|4 Mar 1999]
customCheckbox2 4 4 4 20 ----S- Custom Checkbox 2 [1|2|7|✓|x|4 Mar 1999]
customTag1 11 7 7 100 ---CS- Custom Tags 1 [1|2|7|✓|x|4 Mar 1999]
customTag2 11 7 7 100 ----S- Custom Tags 2 [1|2|7|✓|x|4 Mar 1999]
customText1 2 7 7 100 ---CS- Custom Text 1 [1|2|7|✓|x|4 Mar 1999]
customText2 2 7 7 100 ----S- Custom Text 2 [1|2|7|✓|x|4 Mar 1999]
tags 11 7 7 100 P--CS- Tags [1|2|7|✓|x|4 Mar 1999]
url 1 7 7 200 P--CS- URL [1|2|7|✓|x|4 Mar 1999]
myRating 8 3 3 77 ---CS- My Rating [½☆☆☆☆|★☆☆☆☆|★★★½☆|½☆☆☆☆||]
itunes 1 7 7 100 P----- From Music Library [1|2|7|✓|x|4 Mar 1999]
status 1 8 8 100 P----- Status [Borrowed|Wanted||Borrowed||]
dateEdited 5 1 1 80 P--CS- Date Edited [1|2|7|✓|x|4 Mar 1999]
addressBookID 1 7 7 100 P----- Contact [1|2|7|✓|x|4 Mar 1999]
extraData 1 7 7 100 P----- Extra Data [1|2|7|✓|x|4 Mar 1999]
hasMovieLink 1 7 7 100 P----- Has Movie Link [1|2|7|✓|x|4 Mar 1999]
lastUsedCount 1 7 5 40 P--CS- Times Used [1|2|7|✓|x|4 Mar 1999]
lastUsed 1 7 7 100 P----- Last Used [1|2|7|✓|x|4 Mar 1999]
lowestNewPrice 1 7 7 100 P----- Lowest New Price [1|2|7|✓|x|4 Mar 1999]
lowestUsedPrice 1 7 7 100 P----- Lowest Used Price [1|2|7|✓|x|4 Mar 1999]
uploaded 1 7 7 100 P----- Uploaded [1|2|7|✓|x|4 Mar 1999]
onSale 1 7 7 100 P----- On Sale [1|2|7|✓|x|4 Mar 1999]
hasBeenSold 1 7 7 100 P----- Sold [1|2|7|✓|x|4 Mar 1999]
soldOn 1 7 7 100 P----- Sold On [1|2|7|✓|x|4 Mar 1999]
askingPrice 1 7 7 100 P----- Asking Price [1|2|7|✓|x|4 Mar 1999]
buyerAddress 1 7 7 100 P----- Buyer Address [1|2|7|✓|x|4 Mar 1999]
buyerEmail 1 7 7 100 P----- Buyer Email [1|2|7|✓|x|4 Mar 1999]
buyerName 1 7 7 100 P----- Buyer Name [1|2|7|✓|x|4 Mar 1999]
placedForSaleAt 1 7 7 100 P----- Placed for Sale At [1|2|7|✓|x|4 Mar 1999]
soldPrice 1 7 7 100 P----- Sold Price [1|2|7|✓|x|4 Mar 1999]
dogTag 1 8 8 100 ---CS- Dog Tag [1|2|7|✓|x|4 Mar 1999]
localeLanguage 1 7 7 100 ------ Language [1|2|7|✓|x|4 Mar 1999]
uid 1 8 8 100 P----- Unique ID [1|2|7|✓|x|4 Mar 1999]
statusImage 1 2 2 18 ---C-- Status [Borrowed|Wanted||Borrowed||]
collectionNames 1 7 7 200 -F-C-- Collections [1|2|7|✓|x|4 Mar 1999]
hasCoverImage 1 7 7 100 ----S- Has Cover [1|2|7|✓|x|4 Mar 1999]
rated 3 7 7 100 -----U Rated [1|2|7|✓|x|4 Mar 1999]
links 1 7 7 100 P----- Links [1|2|7|✓|x|4 Mar 1999]
lentHistory 1 7 7 100 P----- Loan History [1|2|7|✓|x|4 Mar 1999]
lentHistorySet 1 7 7 100 ----S- Loan History [1|2|7|✓|x|4 Mar 1999]
tracksSet 1 7 7 100 ----S- Tracks [1|2|7|✓|x|4 Mar 1999]
tracksSet.artist 1 7 7 100 ----S- Track Artist [1|2|7|✓|x|4 Mar 1999]
linksSet.url 1 7 7 100 ----S- Link Address [1|2|7|✓|x|4 Mar 1999]
lastUsedSet 1 7 7 100 ----S- Usage [1|2|7|✓|x|4 Mar 1999]
collections 1 7 7 100 ----S- Collections [1|2|7|✓|x|4 Mar 1999]
customDate7 5 1 1 80 ------ customDate7 [1|2|7|✓|x|4 Mar 1999]
customCheckbox5 4 4 4 20 ------ customCheckbox5 [1|2|7|✓|x|4 Mar 1999]
custom11 3 7 7 100 -----U custom11 [1|2|7|✓|x|4 Mar 1999]
customTag9 11 7 7 100 ------ customTag9 [1|2|7|✓|x|4 Mar 1999]
customText4 2 7 7 100 ------ customText4 [1|2|7|✓|x|4 Mar 1999]
noSuchField 1 7 7 100 ------ noSuchField [1|2|7|✓|x|4 Mar 1999]
(empty) 1 7 7 100 ------  [1|2|7|✓|x|4 Mar 1999]
personal addressBookID,borrowedBy,borrowedOn,collectionID,comments,dateAdded,dateEdited,dueDate,extraData,hasMovieLink,itunes,lastPlayed,lastUsedCount,lastUsed,lentHistory,links,location,lowestNewPrice,lowestUsedPrice,paid,purchasedOn,purchasedAt,rating,sortTitle,status,tags,uid,uploaded,url,onSale,hasBeenSold,soldOn,askingPrice,buyerAddress,buyerEmail,buyerName,placedForSaleAt,soldPrice,sortArtist
fullscreen title,artist,composer,label,conductor,genre,duration,releaseDate,awards,location,collectionNames,custom1,custom2,summary
rss artist,label,composer,genre,duration,price
columns arrangedBy,artist,awards,borrowedBy,borrowedOn,collectionID,collectionNames,comments,composer,conductor,custom1,custom2,customCheckbox1,customDate1,customTag1,customText1,dateAdded,dateEdited,discs,dogTag,duration,format,genre,label,lastPlayed,location,mediaCondition,mixedBy,myRating,numberOfTracks,originalReleaseDate,paid,price,producer,purchasedAt,purchasedOn,rating,releaseDate,sleeveCondition,statusImage,summary,tags,lastUsedCount,title,upc,url
smart arrangedBy,artist,asin,awards,borrowedBy,borrowedOn,catalogNumber,collectionID,collections,comments,composer,conductor,custom1,custom10,custom2,custom3,custom4,custom5,custom6,custom7,custom8,custom9,customCheckbox1,customCheckbox2,customDate1,customDate2,customTag1,customTag2,customText1,customText2,dateAdded,dateEdited,discID,discs,dogTag,dueDate,duration,format,genre,hasCoverImage,label,lastPlayed,linksSet.url,linksSet.type,linksSet,lentHistorySet,location,mediaCondition,mixedBy,myRating,numberOfTracks,originalReleaseDate,paid,price,producer,purchasedAt,purchasedOn,rating,releaseDate,sleeveCondition,sortArtist,sortTitle,summary,tags,lastUsedCount,title,tracksSet.artist,tracksSet.composer,tracksSet,upc,url,lastUsedSet)").split(u'\n');
  ASSERT_EQ(lines.size(), expected.size());
  for (qsizetype i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i], expected[i]);
}

// A sample of each kind that its JSON and its store column must carry unchanged.
QVariant sampleOf(AttributeKind kind) {
  switch (kind) {
    case AttributeKind::Text: return QStringLiteral("Caf\u00E9 \"Blue\"");
    case AttributeKind::NumberText: return QStringLiteral("12.50");
    case AttributeKind::TimeText: return QStringLiteral("41:07");
    case AttributeKind::Date: return QDateTime(QDate(1958, 1, 13), QTime(10, 20, 30), QTimeZone::utc());
    case AttributeKind::Integer: return qint64(-7);
    case AttributeKind::Boolean: return true;
  }
  return {};
}

QJsonObject entryAsJson(Entry& entry, Store& store) {
  std::FILE* file = std::tmpfile();
  {
    JsonWriter json(file);
    writeEntryJson(json, entry, store);
  }
  std::rewind(file);
  QByteArray text;
  char buffer[4096];
  for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;) text.append(buffer, qsizetype(n));
  std::fclose(file);
  return QJsonDocument::fromJson(text).object();
}

TEST_F(MyFieldsControllerTest, EveryFieldBehavesAsItsRowSays) {
  QTemporaryDir storeDir;
  const QString path = storeDir.filePath(QStringLiteral("Fields.sqlite"));
  const QString createEntries = StoreSchema::createStatements().first();
  const EntitySchema& schema = EntitySchema::cd();
  qint64 uid = 0;
  {
    Store store;
    ASSERT_TRUE(store.open(path).ok());
    Entry* entry = store.insertEntry();
    uid = entry->uid();
    for (const MusicField& field : MusicFields::all()) {
      if (field.kind) {
        ASSERT_TRUE(entry->setValue(field.key, sampleOf(*field.kind))) << field.key.toStdString();
      }
    }
    ASSERT_TRUE(store.save());
  }
  Store store;
  ASSERT_TRUE(store.open(path).ok());
  Entry* entry = store.entryWithUID(uid);
  ASSERT_NE(entry, nullptr);
  const QJsonObject json = entryAsJson(*entry, store);

  int column = 0;
  for (const MusicField& field : MusicFields::all()) {
    SCOPED_TRACE(field.key.toStdString());
    EXPECT_EQ(controller.fieldTypeForIdentifier(field.key), field.editType);
    EXPECT_EQ(controller.columnType(field.key, true), field.columnType);
    EXPECT_EQ(controller.localizedColumnName(field.key), field.title);
    EXPECT_EQ(identifiersOf(controller.allFields()).contains(field.key), field.panelPosition > 0);
    if (!field.kind) {
      EXPECT_TRUE(schema.isDerived(field.key));
      continue;
    }
    // Stored fields are the entries table's columns, in the table's order and of their kind's type.
    EXPECT_EQ(schema.indexOf(field.key), column++);
    EXPECT_EQ(schema.attributes()[size_t(schema.indexOf(field.key))].kind, *field.kind);
    const ValueKind& kind = ValueKind::of(*field.kind);
    EXPECT_TRUE(createEntries.contains(QStringLiteral("\"%1\" %2").arg(field.key, kind.sqlType())));
    // What is saved comes back, and what the command line prints reads back as the same value.
    const QVariant sample = sampleOf(*field.kind);
    EXPECT_EQ(entry->value(field.key), sample);
    ASSERT_TRUE(json.contains(field.key));
    EXPECT_EQ(AttributeInput::read(*field.kind, json.value(field.key).toVariant()), sample);
  }
  EXPECT_EQ(column, int(schema.attributes().size()));
}

}  // namespace
