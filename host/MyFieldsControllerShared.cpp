#include "MyFieldsControllerShared.h"

#include "Entry.h"
#include "HostKeys.h"
#include "Settings.h"
#include "StringTable.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>

int MyFieldsControllerShared::fieldTypeForIdentifier(const QString&) const { return 1; }

int MyFieldsControllerShared::columnType(const QString&, bool) const { return 7; }

QStringList MyFieldsControllerShared::personalFields() {
  if (!personalFields_) personalFields_ = QStringList();
  return *personalFields_;
}

float MyFieldsControllerShared::widthForColumn(const QString&) { return 100.0f; }

QVariantList MyFieldsControllerShared::editFields() const {
  const QStringList on = settings_.objectForKey(fieldsOnKey).toStringList();
  const QStringList off = settings_.objectForKey(fieldsOffKey).toStringList();
  QVariantList fields = allFields();
  for (QVariant& field : fields) {
    QVariantMap definition = field.toMap();
    const QString identifier = definition.value(MKIdentifier).toString();
    if (off.contains(identifier))
      definition.insert(QStringLiteral("isOff"), true);
    else if (on.contains(identifier))
      definition.remove(QStringLiteral("isOff"));
    field = definition;
  }
  return fields;
}

QString MyFieldsControllerShared::localizedColumnName(const QString& identifier) const {
  return strings_.localizedString(identifier, englishColumnName(identifier), StringTable::fieldsTable);
}

bool MyFieldsControllerShared::localizedIdentifierCompare(const QVariant& a, const QVariant& b) const {
  const QString left = localizedColumnName(a.toMap().value(MKIdentifier).toString());
  const QString right = localizedColumnName(b.toMap().value(MKIdentifier).toString());
  const int byName = left.localeAwareCompare(right);
  if (byName != 0) return byName < 0;
  return a.toMap().value(MKIdentifier).toString() < b.toMap().value(MKIdentifier).toString();
}

std::optional<QString> MyFieldsControllerShared::customFieldWithTitle(const QString& title) const {
  const QVariantMap titles = settings_.objectForKey(customTitlesKey).toMap();
  for (auto it = titles.begin(); it != titles.end(); ++it)
    if (it.value().toString().compare(title, Qt::CaseInsensitive) == 0) return it.key();
  return std::nullopt;
}

std::optional<QString> MyFieldsControllerShared::customFieldForTitle(const QString& title,
                                                                   const std::vector<Entry*>& entries) {
  if (auto key = customFieldWithTitle(title)) return key;
  QVariantMap titles = settings_.objectForKey(customTitlesKey).toMap();
  for (int n = 1; n <= 10; ++n) {
    const QString key = QStringLiteral("custom%1").arg(n);
    if (titles.contains(key)) continue;
    if (std::any_of(entries.begin(), entries.end(), [&](const Entry* e) { return !e->stringValue(key).isEmpty(); }))
      continue;
    titles.insert(key, title);
    settings_.setObject(customTitlesKey, titles);
    QStringList on = settings_.objectForKey(fieldsOnKey).toStringList();
    if (!on.contains(key)) settings_.setObject(fieldsOnKey, on << key);
    return key;
  }
  return std::nullopt;
}

QString MyFieldsControllerShared::displayStringForValue(const QString&, const QVariant& value) const {
  switch (value.metaType().id()) {
    case QMetaType::QDateTime:
      return QLocale().toString(value.toDateTime().toUTC().date(), QStringLiteral("d MMM yyyy"));
    case QMetaType::Bool:
      return value.toBool() ? QStringLiteral("\u2713") : QString();
    default:
      return value.toString();
  }
}
