#include "MyFieldsController.h"

#include <QLatin1StringView>
#include <algorithm>
#include <initializer_list>

#include "EntitySchema.h"
#include "FieldTypes.h"
#include "HostKeys.h"
#include "Rating.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "StringTable.h"

#include <QDateTime>

namespace {

const QString isOffKey = QStringLiteral("isOff");
const QString longKey = QStringLiteral("long");
const QString locationKey = QStringLiteral("location");
const QString nameKey = QStringLiteral("name");
const QString fieldKey = QStringLiteral("field");
const QString actionKey = QStringLiteral("action");
const QString doghouseKey = QStringLiteral("doghouse");
const QString moderatorKey = QStringLiteral("moderator");

using Identifiers = std::initializer_list<const char*>;

enum FieldFlag : unsigned { Off = 1u << 0, Long = 1u << 1, Extra = 1u << 2 };

struct FieldRow {
  const char* identifier;
  unsigned flags;
};

constexpr FieldRow fieldRows[] = {
    {"title", 0},
    {"sortTitle", Off},
    {"artist", 0},
    {"sortArtist", Off},
    {"composer", 0},
    {"conductor", 0},
    {"label", 0},
    {"genre", 0},
    {"releaseDate", 0},
    {"originalReleaseDate", 0},
    {"rating", 0},
    {"price", 0},
    {"discs", 0},
    {"duration", 0},
    {"numberOfTracks", 0},
    {"producer", 0},
    {"mixedBy", 0},
    {"arrangedBy", 0},
    {"format", 0},
    {"awards", Long},
    {"discID", Off},
    {"asin", Off},
    {"upc", 0},
    {"catalogNumber", Off},
    {"comments", Long},
    {"summary", Long},
    {"borrowedBy", Extra},
    {"borrowedOn", Extra},
    {"dueDate", Extra | Off},
    {"purchasedAt", Extra},
    {"purchasedOn", Extra},
    {"paid", Extra},
    {"lastPlayed", Extra},
    {"location", Extra},
    {"collectionID", Extra},
    {"dateAdded", Extra},
    {"custom1", Extra},
    {"custom2", Extra},
    {"custom3", Extra | Off},
    {"custom4", Extra | Off},
    {"custom5", Extra | Off},
    {"custom6", Extra | Off},
    {"custom7", Extra | Off},
    {"custom8", Extra | Off},
    {"custom9", Extra | Off},
    {"custom10", Extra | Off},
    {"customDate1", Extra},
    {"customDate2", Extra | Off},
    {"customCheckbox1", Extra},
    {"customCheckbox2", Extra | Off},
    {"customTag1", Extra | Long},
    {"customTag2", Extra | Off | Long},
    {"customText1", Extra | Long},
    {"customText2", Extra | Off | Long},
    {"tags", Extra | Long},
    {"url", Extra | Long},
};

// Initial widths of columns the user adds; check box and date columns are sized by their type.
constexpr struct {
  const char* identifier;
  float width;
} columnWidths[] = {
    {"title", 250},        {"sortTitle", 200},  {"artist", 150},  {"sortArtist", 150},
    {"conductor", 150},    {"arrangedBy", 150}, {"mixedBy", 150}, {"composer", 150},
    {"producer", 150},     {"duration", 40},    {"myRating", 77}, {"rating", 40},
    {"discID", 80},        {"price", 55},       {"paid", 55},     {"comments", 200},
    {"collectionID", 55},  {"discs", 20},       {"upc", 95},      {"awards", 150},
    {"statusImage", 18},   {"summary", 200},    {"url", 200},     {"collectionNames", 200},
    {"lastUsedCount", 40},
};

constexpr float defaultColumnWidth = 100;
constexpr float checkboxColumnWidth = 20;
constexpr float dateColumnWidth = 80;

bool isOneOf(const QString& identifier, Identifiers candidates) {
  return std::any_of(candidates.begin(), candidates.end(),
                     [&](const char* candidate) { return identifier == QLatin1StringView(candidate); });
}

bool startsWith(const QString& identifier, const char* prefix) {
  return identifier.startsWith(QLatin1StringView(prefix));
}

void appendIdentifiers(QVariantList& fields, Identifiers identifiers) {
  for (const char* identifier : identifiers)
    fields.append(QVariantMap{{MKIdentifier, QString::fromLatin1(identifier)}});
}

QStringList identifierList(Identifiers identifiers) {
  QStringList list;
  list.reserve(qsizetype(identifiers.size()));
  for (const char* identifier : identifiers) list.append(QString::fromLatin1(identifier));
  return list;
}

}  // namespace

QVariantList MyFieldsController::allFields() const {
  QVariantList fields;
  fields.reserve(std::size(fieldRows));
  for (const FieldRow& row : fieldRows) {
    QVariantMap definition{{MKIdentifier, QString::fromLatin1(row.identifier)}};
    if (row.flags & Off) definition.insert(isOffKey, true);
    if (row.flags & Long) definition.insert(longKey, true);
    if (row.flags & Extra) definition.insert(locationKey, MKLocationExtra);
    fields.append(definition);
  }
  return fields;
}

int MyFieldsController::columnType(const QString& identifier, bool separateNumber) const {
  if (isOneOf(identifier, {"releaseDate", "borrowedOn", "purchasedOn", "lastPlayed", "dateAdded", "dateEdited",
                           "dueDate", "originalReleaseDate"}) ||
      startsWith(identifier, "customDate"))
    return ColumnTypeDate;
  if (identifier == QLatin1StringView("statusImage")) return ColumnTypeImage;
  if (identifier == QLatin1StringView("myRating")) return ColumnTypeRating;
  if (startsWith(identifier, "customCheckbox")) return ColumnTypeCheckbox;
  // Stored as numbers, so they sort as numbers whatever the caller asks.
  if (identifier == MKKeyEntryUID || isOneOf(identifier, {"dogTag", "status"})) return ColumnTypeStoredNumber;
  if (!separateNumber) return ColumnTypeText;
  if (isOneOf(identifier, {"price", "paid", "discs", "duration", "rating", "lastUsedCount", "numberOfTracks"}))
    return ColumnTypeNumber;
  return ColumnTypeText;
}

int MyFieldsController::fieldTypeForIdentifier(const QString& identifier) const {
  switch (columnType(identifier, false)) {
    case ColumnTypeDate:
      return FieldTypeDate;
    case ColumnTypeCheckbox:
      return FieldTypeCheckbox;
    case ColumnTypeRating:
      return FieldTypeRating;
    default:
      break;
  }
  // The narrower "custom..." prefixes must be tested before the plain "custom" of the combo rule.
  if (identifier == QLatin1StringView("borrowedBy")) return FieldTypeBorrower;
  if (isOneOf(identifier, {"tags", "genre"}) || startsWith(identifier, "customTag") ||
      isOneOf(identifier, {"mixedBy", "arrangedBy", "composer", "conductor", "producer"}))
    return FieldTypeTokens;
  if (isOneOf(identifier, {"comments", "summary"}) || startsWith(identifier, "customText")) return FieldTypeLongText;
  if (isOneOf(identifier, {"rated", "label", "location", "purchasedAt"}) || startsWith(identifier, "custom") ||
      isOneOf(identifier, {"format", "artist"}))
    return FieldTypeComboBox;
  return FieldTypeText;
}

bool MyFieldsController::offersUsedValues(const QString& identifier) const {
  const int type = fieldTypeForIdentifier(identifier);
  return type == FieldTypeComboBox || type == FieldTypeBorrower;
}

QStringList MyFieldsController::personalFields() {
  if (!personalFields_)
    personalFields_ =
        identifierList({"addressBookID",   "borrowedBy", "borrowedOn",  "collectionID", "comments",   "dateAdded",
                        "dateEdited",      "dueDate",    "extraData",   "hasMovieLink", "itunes",     "lastPlayed",
                        "lastUsedCount",   "lastUsed",   "lentHistory", "links",        "location",   "lowestNewPrice",
                        "lowestUsedPrice", "paid",       "purchasedOn", "purchasedAt",  "rating",     "sortTitle",
                        "status",          "tags",       "uid",         "uploaded",     "url",        "onSale",
                        "hasBeenSold",     "soldOn",     "askingPrice", "buyerAddress", "buyerEmail", "buyerName",
                        "placedForSaleAt", "soldPrice",  "sortArtist"});
  return *personalFields_;
}

QVariantList MyFieldsController::smartCollectionFields() const {
  QVariantList fields = editFields();
  // Key paths through the to-many sets match any track's or link's value.
  appendIdentifiers(fields, {"lentHistorySet", "tracksSet", "tracksSet.artist", "tracksSet.composer", "linksSet",
                             "linksSet.type", "linksSet.url", "lastUsedSet", "lastUsedCount", "dateEdited", "myRating",
                             "collections", "hasCoverImage", "dogTag"});
  sortByShownName(fields);
  return fields;
}

QStringList MyFieldsController::defaultFullscreenFields() const {
  return identifierList({"title", "artist", "composer", "label", "conductor", "genre", "duration", "releaseDate",
                         "awards", "location", "collectionNames", "custom1", "custom2", "summary"});
}

QStringList MyFieldsController::rssDescriptionFields() const {
  return identifierList({"artist", "label", "composer", "genre", "duration", "price"});
}

QVariantList MyFieldsController::columnFields() {
  QVariantList fields = editFields();
  fields.removeIf([](const QVariant& field) { return Settings::leniently(field.toMap().value(isOffKey)); });
  // Columns with no edit field behind them.
  appendIdentifiers(fields, {"dateEdited", "statusImage", "myRating", "collectionNames", "lastUsedCount", "dogTag"});
  if (Settings::leniently(settings().objectForKey(doghouseKey).toMap().value(moderatorKey)))
    appendIdentifiers(fields, {"localeLanguage"});
  sortByShownName(fields);
  return fields;
}

float MyFieldsController::widthForColumn(const QString& identifier) {
  switch (fieldTypeForIdentifier(identifier)) {
    case FieldTypeCheckbox:
      return checkboxColumnWidth;
    case FieldTypeDate:
      return dateColumnWidth;
    default:
      break;
  }
  if (!columnWidthDictionary_) {
    QVariantMap widths;
    for (const auto& row : columnWidths) widths.insert(QString::fromLatin1(row.identifier), row.width);
    columnWidthDictionary_ = widths;
  }
  return columnWidthDictionary_->value(identifier, defaultColumnWidth).toFloat();
}

QVariantList MyFieldsController::filterMenuItems() const {
  QVariantList items;
  for (const char* field : {"genre", "artist", "label", "composer", "conductor"}) {
    const QString identifier = QString::fromLatin1(field);
    items.append(QVariantMap{
        {nameKey, localizedColumnName(identifier)}, {fieldKey, identifier}, {actionKey, int(FilterActionValue)}});
  }
  items.append(QVariantMap{{nameKey, strings().localizedString(QStringLiteral("Same Artist"))},
                           {fieldKey, QStringLiteral("artist")},
                           {actionKey, int(FilterActionSameAsSelected)}});
  items.append(
      QVariantMap{{nameKey, strings().localizedString(QStringLiteral("All"))}, {actionKey, int(FilterActionAll)}});
  return items;
}

QStringList MyFieldsController::listColumnIdentifiers() const {
  QStringList identifiers;
  for (const QVariant& column : settings().objectForKey(SettingsKeys::defaultColumns).toList()) {
    const QString identifier = column.toMap().value(MKIdentifier).toString();
    if (EntitySchema::cd().has(identifier) && !identifiers.contains(identifier)) identifiers << identifier;
  }
  return identifiers.isEmpty() ? MyFieldsControllerShared::listColumnIdentifiers() : identifiers;
}

QString MyFieldsController::displayStringForValue(const QString& identifier, const QVariant& value) const {
  if (identifier == QLatin1StringView("releaseDate") && value.metaType().id() == QMetaType::QDateTime) {
    const QString format = settings().stringForKey(SettingsKeys::releaseDateFormat);
    if (!format.trimmed().isEmpty()) return value.toDateTime().toUTC().toString(format);
  }
  switch (columnType(identifier, false)) {
    case ColumnTypeRating:
      return Rating::stars(value.toLongLong());
    case ColumnTypeImage:
    case ColumnTypeStoredNumber:
      if (identifier == QLatin1StringView("statusImage") || identifier == QLatin1StringView("status")) {
        const qint64 status = value.toLongLong();
        return status == 1 ? strings().localizedString(QStringLiteral("Borrowed"))
               : status == 2 ? strings().localizedString(QStringLiteral("Wanted"))
                             : QString();
      }
      break;
    default:
      break;
  }
  return MyFieldsControllerShared::displayStringForValue(identifier, value);
}

void MyFieldsController::sortByShownName(QVariantList& fields) const {
  std::stable_sort(fields.begin(), fields.end(),
                   [this](const QVariant& a, const QVariant& b) { return localizedIdentifierCompare(a, b); });
}
