#include "CsvExporter.h"

#include "DelimitedText.h"
#include "Entry.h"
#include "TabCommaImporter.h"
#include "NaturalDate.h"
#include "TransientRelationships.h"

#include <QBuffer>
#include <QSaveFile>

QByteArray CsvExporter::text(const std::vector<Entry*>& entries) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  write(entries, buffer);
  return buffer.data();
}

// Row by row, each entry's tracks let go after its row: a catalogue of 100,000 entries is never
// held as one text, nor its million tracks at once.
bool CsvExporter::write(const std::vector<Entry*>& entries, QIODevice& out) {
  const auto& attributes = EntitySchema::cd().attributes();
  std::vector<bool> used(attributes.size(), false);
  bool tracks = false;
  for (Entry* entry : entries) {
    entry->forEachValue([&](int index, const QVariant&) { used[size_t(index)] = true; });
    if (!tracks) {
      TransientRelationships reading(*entry);
      tracks = !entry->tracksSet().empty();
    }
  }
  const QChar comma(u',');
  QStringList header;
  for (size_t i = 0; i < attributes.size(); ++i)
    if (used[i]) header << attributes[i].key;
  if (tracks) header << TabCommaImporter::tracksColumn;
  bool ok = out.write((header.join(comma) + QStringLiteral("\r\n")).toUtf8()) >= 0;
  QStringList row;
  for (Entry* entry : entries) {
    row.clear();
    for (size_t i = 0; i < attributes.size(); ++i) {
      if (!used[i]) continue;
      const QVariant* v = entry->valueAt(int(i));
      QString cell;
      if (v) cell = v->typeId() == QMetaType::QDateTime ? NaturalDate::isoDateString(v->toDateTime()) : v->toString();
      row << DelimitedText::quoted(cell, comma);
    }
    if (tracks) {
      TransientRelationships reading(*entry);
      row << DelimitedText::quoted(TabCommaImporter::tracksCell(*entry), comma);
    }
    ok = out.write((row.join(comma) + QStringLiteral("\r\n")).toUtf8()) >= 0 && ok;
  }
  return ok;
}

bool CsvExporter::write(const std::vector<Entry*>& entries, const QString& path, QString* error) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || !write(entries, file) || !file.commit()) {
    if (error) *error = file.errorString();
    return false;
  }
  return true;
}
