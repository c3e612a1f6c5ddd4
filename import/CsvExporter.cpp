#include "CsvExporter.h"

#include "DelimitedText.h"
#include "Entry.h"
#include "TabCommaImporter.h"
#include "TextHelpers.h"

#include <QSaveFile>

QByteArray CsvExporter::text(const std::vector<Entry*>& entries) {
  const auto& attributes = EntitySchema::cd().attributes();
  std::vector<bool> used(attributes.size(), false);
  bool tracks = false;
  for (Entry* entry : entries) {
    entry->forEachValue([&](int index, const QVariant&) { used[size_t(index)] = true; });
    tracks = tracks || !entry->tracksSet().empty();
  }
  const QChar comma(u',');
  QStringList header;
  for (size_t i = 0; i < attributes.size(); ++i)
    if (used[i]) header << attributes[i].key;
  if (tracks) header << TabCommaImporter::tracksColumn;
  QString out = header.join(comma) + QStringLiteral("\r\n");
  for (Entry* entry : entries) {
    QStringList row;
    for (size_t i = 0; i < attributes.size(); ++i) {
      if (!used[i]) continue;
      const QVariant* v = entry->valueAt(int(i));
      QString cell;
      if (v) cell = v->typeId() == QMetaType::QDateTime ? TextHelpers::isoDateString(v->toDateTime()) : v->toString();
      row << DelimitedText::quoted(cell, comma);
    }
    if (tracks) row << DelimitedText::quoted(TabCommaImporter::tracksCell(*entry), comma);
    out += row.join(comma) + QStringLiteral("\r\n");
  }
  return out.toUtf8();
}

bool CsvExporter::write(const std::vector<Entry*>& entries, const QString& path, QString* error) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    if (error) *error = file.errorString();
    return false;
  }
  file.write(text(entries));
  if (!file.commit()) {
    if (error) *error = file.errorString();
    return false;
  }
  return true;
}
