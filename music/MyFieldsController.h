#pragma once

#include "MyFieldsControllerShared.h"

// The music entry's field catalogue: its fields, their order and flags, how each is edited and
// shown as a list column, and the list's filter menu.
class MyFieldsController : public MyFieldsControllerShared {
 public:
  using MyFieldsControllerShared::MyFieldsControllerShared;

  QVariantList allFields() const override;
  int fieldTypeForIdentifier(const QString& identifier) const override;
  bool offersUsedValues(const QString& identifier) const override;
  int columnType(const QString& identifier, bool separateNumber) const override;
  QStringList personalFields() override;
  QVariantList smartCollectionFields() const override;
  QStringList defaultFullscreenFields() const override;
  QStringList rssDescriptionFields() const override;
  QVariantList columnFields() override;
  float widthForColumn(const QString& identifier) override;
  QVariantList filterMenuItems() const override;
  QStringList listColumnIdentifiers() const override;
  QString displayStringForValue(const QString& identifier, const QVariant& value) const override;
  QString englishColumnName(const QString& identifier) const override;

 private:
  void sortByShownName(QVariantList& fields) const;
};
