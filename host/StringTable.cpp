#include "StringTable.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

const QHash<QString, QString>& StringTable::tableNamed(const QString& table) const {
  auto it = tables_.find(table);
  if (it != tables_.end()) return *it;
  QHash<QString, QString> texts;
  QFile file(QStringLiteral(":/strings/%1.json").arg(table));
  if (file.open(QIODevice::ReadOnly)) {
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    for (auto i = object.begin(); i != object.end(); ++i) texts.insert(i.key(), i.value().toString());
  }
  return *tables_.insert(table, texts);
}

QString StringTable::localizedString(const QString& key, const QString& value, const QString& table) const {
  const auto& texts = tableNamed(table.isEmpty() ? defaultTable : table);
  auto it = texts.find(key);
  if (it != texts.end() && !it->isEmpty()) return *it;
  return value.isEmpty() ? key : value;
}

void StringTable::insert(const QString& table, const QString& key, const QString& text) {
  const_cast<QHash<QString, QString>&>(tableNamed(table)).insert(key, text);
}
