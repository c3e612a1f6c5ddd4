#pragma once

#include "CdKeys.h"

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <optional>
#include <vector>

class Entry;
class Settings;
class StringTable;

// The field catalogue as the framework sees it: which fields an entry has, how each is edited
// and shown. The product subclass supplies the answers; this base holds the services built on
// them (fields in use, shown names) and neutral defaults.
class MyFieldsControllerShared {
 public:
  // Settings that switch catalogue fields on or off against their "isOff" default.
  static inline const QString fieldsOnKey = QStringLiteral("Fields On");
  static inline const QString fieldsOffKey = QStringLiteral("Fields Off");
  // identifier -> the title the user gave a custom field.
  static inline const QString customTitlesKey = QStringLiteral("Custom Field Titles");

  MyFieldsControllerShared(Settings& settings, const StringTable& strings) : settings_(settings), strings_(strings) {}
  virtual ~MyFieldsControllerShared() = default;

  virtual QVariantList allFields() const { return {}; }
  virtual int fieldTypeForIdentifier(const QString& identifier) const;
  // Whether the field's editor suggests the values already used (a pull-down, the borrower).
  virtual bool offersUsedValues(const QString&) const { return false; }
  virtual int columnType(const QString& identifier, bool separateNumber) const;
  virtual QStringList personalFields();
  virtual QVariantList smartCollectionFields() const { return editFields(); }
  virtual QStringList defaultFullscreenFields() const { return {}; }
  virtual QStringList rssDescriptionFields() const { return {}; }
  virtual QVariantList columnFields() { return editFields(); }
  virtual float widthForColumn(const QString& identifier);
  virtual QVariantList filterMenuItems() const { return {}; }
  // The entry list's columns in the user's order; printing the current view prints them.
  virtual QStringList listColumnIdentifiers() const { return {CdKeys::title}; }
  // A value as a list cell or a printout shows it: dates as a readable day, true as a check mark.
  virtual QString displayStringForValue(const QString& identifier, const QVariant& value) const;

  // allFields with the user's switches applied: a field the user switched on loses "isOff",
  // one switched off gains it.
  QVariantList editFields() const;
  // The field's title in the user's language: the Fields string table's translation, else the
  // English title, else the identifier itself.
  QString localizedColumnName(const QString& identifier) const;
  // The title the catalogue gives a field before translation; empty for none.
  virtual QString englishColumnName(const QString&) const { return {}; }
  // Orders two field definitions by shown name.
  bool localizedIdentifierCompare(const QVariant& a, const QVariant& b) const;
  std::optional<QString> customFieldWithTitle(const QString& title) const;
  // The custom field that takes values of that title: the one the user gave the title, else the
  // first of "Custom 1" to "Custom 10" with no title that no entry uses, which gets the title
  // and is switched on. None when every one is taken.
  std::optional<QString> customFieldForTitle(const QString& title, const std::vector<Entry*>& entries);
  QString clickedField() const { return clickedField_; }
  void setClickedField(const QString& identifier) { clickedField_ = identifier; }

 protected:
  Settings& settings() const { return settings_; }
  const StringTable& strings() const { return strings_; }

  std::optional<QStringList> personalFields_;
  std::optional<QVariantMap> columnWidthDictionary_;

 private:
  Settings& settings_;
  const StringTable& strings_;
  QString clickedField_;
};
