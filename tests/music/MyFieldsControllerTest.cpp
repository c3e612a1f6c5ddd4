#include <gtest/gtest.h>

#include <QDateTime>
#include <QLocale>
#include <QTemporaryDir>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "FieldTypes.h"
#include "HostKeys.h"
#include "MyFieldsController.h"
#include "Settings.h"
#include "StringTable.h"

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
      {"collectionID", Extra, FieldTypeText},                 {"dateAdded", Extra, FieldTypeDate},
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
  ASSERT_EQ(fields.size(), 56);
  ASSERT_EQ(std::size(expected), 56u);
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

  EXPECT_EQ(identifiers.size(), 56 + 14);
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
  EXPECT_EQ(identifiers.size(), 56 - 18 + 6);
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

}  // namespace
