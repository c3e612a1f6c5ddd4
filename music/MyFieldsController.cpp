#include "MyFieldsController.h"

#include <algorithm>
#include <initializer_list>

#include "CdKeys.h"
#include "EntitySchema.h"
#include "FieldTypes.h"
#include "HostKeys.h"
#include "ModelKeys.h"
#include "MusicFields.h"
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

constexpr float defaultColumnWidth = 100;
constexpr float checkboxColumnWidth = 20;
constexpr float dateColumnWidth = 80;

// Numbered custom fields beyond the table answer as the first of their family does.
const MusicField* fieldFor(const QString& identifier) {
  if (const MusicField* field = MusicFields::find(identifier)) return field;
  for (const QString* first : {&CdKeys::customDate1, &CdKeys::customCheckbox1, &CdKeys::customTag1,
                               &CdKeys::customText1, &CdKeys::custom1})
    if (identifier.startsWith(QStringView(*first).chopped(1))) return MusicFields::find(*first);
  return nullptr;
}

QStringList keysOf(const std::vector<const MusicField*>& fields) {
  QStringList keys;
  keys.reserve(qsizetype(fields.size()));
  for (const MusicField* field : fields) keys.append(field->key);
  return keys;
}

void appendIdentifier(QVariantList& fields, const QString& identifier) {
  fields.append(QVariantMap{{MKIdentifier, identifier}});
}

}  // namespace

QVariantList MyFieldsController::allFields() const {
  const auto panel = MusicFields::ordered(&MusicField::panelPosition);
  QVariantList fields;
  fields.reserve(qsizetype(panel.size()));
  for (const MusicField* field : panel) {
    QVariantMap definition{{MKIdentifier, field->key}};
    if (field->panelFlags & MusicField::Off) definition.insert(isOffKey, true);
    if (field->panelFlags & MusicField::Long) definition.insert(longKey, true);
    if (field->panelFlags & MusicField::Extra) definition.insert(locationKey, MKLocationExtra);
    fields.append(definition);
  }
  return fields;
}

int MyFieldsController::columnType(const QString& identifier, bool separateNumber) const {
  const MusicField* field = fieldFor(identifier);
  if (!field || (field->columnType == ColumnTypeNumber && !separateNumber)) return ColumnTypeText;
  return field->columnType;
}

int MyFieldsController::fieldTypeForIdentifier(const QString& identifier) const {
  const MusicField* field = fieldFor(identifier);
  return field ? field->editType : FieldTypeText;
}

bool MyFieldsController::offersUsedValues(const QString& identifier) const {
  const int type = fieldTypeForIdentifier(identifier);
  return type == FieldTypeComboBox || type == FieldTypeBorrower;
}

QStringList MyFieldsController::personalFields() {
  if (!personalFields_) personalFields_ = keysOf(MusicFields::ordered(&MusicField::personalPosition));
  return *personalFields_;
}

QVariantList MyFieldsController::smartCollectionFields() const {
  QVariantList fields = editFields();
  for (const MusicField& field : MusicFields::all())
    if (field.smartOnly) appendIdentifier(fields, field.key);
  // Key paths through the entry's relationships match any related value.
  for (const QString& path : {QStringLiteral("lentHistorySet"), ModelKeys::tracksSet, QStringLiteral("tracksSet.artist"),
                              QStringLiteral("tracksSet.composer"), ModelKeys::linksSet, QStringLiteral("linksSet.type"),
                              QStringLiteral("linksSet.url"), QStringLiteral("lastUsedSet"), ModelKeys::collections})
    appendIdentifier(fields, path);
  sortByShownName(fields);
  return fields;
}

QStringList MyFieldsController::defaultFullscreenFields() const {
  return keysOf(MusicFields::ordered(&MusicField::fullscreenPosition));
}

QStringList MyFieldsController::rssDescriptionFields() const {
  return keysOf(MusicFields::ordered(&MusicField::feedPosition));
}

QVariantList MyFieldsController::columnFields() {
  QVariantList fields = editFields();
  fields.removeIf([](const QVariant& field) { return Settings::leniently(field.toMap().value(isOffKey)); });
  const bool moderator = Settings::leniently(settings().objectForKey(doghouseKey).toMap().value(moderatorKey));
  for (const MusicField& field : MusicFields::all())
    if (field.columnOnly || (field.moderatorColumn && moderator)) appendIdentifier(fields, field.key);
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
    for (const MusicField& field : MusicFields::all())
      if (field.initialWidth > 0) widths.insert(field.key, field.initialWidth);
    columnWidthDictionary_ = widths;
  }
  return columnWidthDictionary_->value(identifier, defaultColumnWidth).toFloat();
}

QVariantList MyFieldsController::filterMenuItems() const {
  QVariantList items;
  for (const QString* field : {&CdKeys::genre, &CdKeys::artist, &CdKeys::label, &CdKeys::composer, &CdKeys::conductor}) {
    const QString& identifier = *field;
    items.append(QVariantMap{
        {nameKey, localizedColumnName(identifier)}, {fieldKey, identifier}, {actionKey, int(FilterActionValue)}});
  }
  items.append(QVariantMap{{nameKey, strings().localizedString(QStringLiteral("Same Artist"))},
                           {fieldKey, CdKeys::artist},
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

QString MyFieldsController::englishColumnName(const QString& identifier) const {
  const MusicField* field = MusicFields::find(identifier);
  return field ? field->title : QString();
}

QString MyFieldsController::displayStringForValue(const QString& identifier, const QVariant& value) const {
  if (identifier == CdKeys::releaseDate && value.metaType().id() == QMetaType::QDateTime) {
    const QString format = settings().stringForKey(SettingsKeys::releaseDateFormat);
    if (!format.trimmed().isEmpty()) return value.toDateTime().toUTC().toString(format);
  }
  switch (columnType(identifier, false)) {
    case ColumnTypeRating:
      return Rating::stars(value.toLongLong());
    case ColumnTypeImage:
    case ColumnTypeStoredNumber:
      if (identifier == CdKeys::statusImage || identifier == CdKeys::status) {
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
