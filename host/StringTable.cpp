#include "StringTable.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString& language() {
  static QString shared;
  return shared;
}

void readTable(const QString& path, QHash<QString, QString>& texts) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return;
  const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
  for (auto i = object.begin(); i != object.end(); ++i)
    if (!i.value().toString().isEmpty()) texts.insert(i.key(), i.value().toString());
}

}  // namespace

void StringTable::setInterfaceLanguage(const QString& language) { ::language() = language; }

QString StringTable::interfaceLanguage() { return language(); }

const QHash<QString, QString>& StringTable::tableNamed(const QString& table) const {
  auto it = tables_.find(table);
  if (it != tables_.end()) return *it;
  QHash<QString, QString> texts;
  readTable(QStringLiteral(":/strings/%1.json").arg(table), texts);
  if (!language().isEmpty()) readTable(QStringLiteral(":/strings/%1/%2.json").arg(language(), table), texts);
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
