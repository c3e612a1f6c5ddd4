#include "TabCommaImporter.h"

#include "DelimitedText.h"
#include "Entry.h"
#include "ImportRun.h"
#include "MyUpdate.h"
#include "Store.h"
#include "NaturalDate.h"
#include "ValueKind.h"
#include "WindowSystem.h"

#include <QDateTime>

const QString TabCommaImporter::tracksColumn = QStringLiteral("tracks");

namespace {

QString attributeForHeader(const QString& cell) {
  const QString name = cell.trimmed();
  if (name.compare(TabCommaImporter::tracksColumn, Qt::CaseInsensitive) == 0) return TabCommaImporter::tracksColumn;
  const QString older = MyUpdate::attributeForOldKey(name);
  if (!older.isEmpty()) return older;
  for (const auto& attribute : EntitySchema::cd().attributes())
    if (attribute.key.compare(name, Qt::CaseInsensitive) == 0) return attribute.key;
  return {};
}

void addTracks(Entry& entry, const QString& cell) {
  qint64 position = 0;
  for (const QString& line : cell.split(u'\n')) {
    const QStringList parts = line.split(u'\t');
    if (parts.value(0).trimmed().isEmpty()) continue;
    auto track = Store::newTrack();
    track->setPrimitiveValue(QStringLiteral("name"), parts.value(0).trimmed());
    track->setPrimitiveValue(QStringLiteral("position"), position++);
    if (!parts.value(1).isEmpty()) track->setPrimitiveValue(QStringLiteral("duration"), parts.value(1));
    if (!parts.value(2).isEmpty()) track->setPrimitiveValue(QStringLiteral("artist"), parts.value(2));
    if (!parts.value(3).isEmpty()) track->setPrimitiveValue(QStringLiteral("composer"), parts.value(3));
    entry.addTrack(std::move(track));
  }
}

}  // namespace

bool TabCommaImporter::import(ImportRun& run, const QString& text, QString* error) {
  bool unterminated = false;
  const QList<QStringList> rows = DelimitedText::parse(text, DelimitedText::guessSeparator(text), &unterminated);
  QStringList columns;
  bool any = false;
  for (const QString& cell : rows.value(0)) {
    columns << attributeForHeader(cell);
    any = any || !columns.last().isEmpty();
  }
  if (!any) {
    if (error) *error = QStringLiteral("the first row names no field (such as title or artist)");
    return false;
  }
  if (unterminated) run.warn(QStringLiteral("The text ends inside quotes; the last row may be incomplete"));
  WindowSystem& ws = run.windowSystem();
  ws.showProgressSheet(run.progressTitle, QString(), int(rows.size() - 1));
  const auto& schema = EntitySchema::cd();
  for (qsizetype r = 1; r < rows.size() && !run.cancelled(); ++r) {
    const QStringList& row = rows[r];
    if (row.size() != columns.size())
      run.warn(QStringLiteral("Row %1 has %2 fields where the header has %3").arg(r + 1).arg(row.size()).arg(columns.size()));
    Entry* entry = run.store().insertEntry();
    for (qsizetype c = 0; c < row.size() && c < columns.size(); ++c) {
      const QString& key = columns[c];
      const QString& value = row[c];
      if (key.isEmpty() || value.isEmpty()) continue;
      if (key == tracksColumn) {
        addTracks(*entry, value);
        continue;
      }
      QVariant v = value;
      if (ValueKind::of(schema.attributes()[size_t(schema.indexOf(key))].kind).isDate()) {
        QDateTime date = QDateTime::fromString(value.trimmed(), Qt::ISODate);
        if (date.isValid()) v = date.toUTC();
        else if (auto d = NaturalDate::myDateWithNaturalLanguageString(value)) v = *d;
      }
      if (!entry->setPrimitiveValue(key, v))
        run.warn(QStringLiteral("Row %1: '%2' is not a valid %3").arg(r + 1).arg(value.left(40), key));
    }
    run.added(entry);
    ws.increaseProgress();
  }
  ws.closeProgressSheet();
  return true;
}

QString TabCommaImporter::tracksCell(Entry& entry) {
  QStringList lines;
  for (Track* track : entry.tracksSortedByPosition()) {
    QStringList parts{track->stringValue(QStringLiteral("name")), track->stringValue(QStringLiteral("duration")),
                      track->stringValue(QStringLiteral("artist")), track->stringValue(QStringLiteral("composer"))};
    for (QString& p : parts) p.replace(u'\t', u' ').replace(u'\n', u' ');
    while (parts.size() > 1 && parts.last().isEmpty()) parts.removeLast();
    lines << parts.join(u'\t');
  }
  return lines.join(u'\n');
}
