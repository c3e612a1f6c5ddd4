#include "DiscogsCsvImporter.h"

#include "CdKeys.h"
#include "DelimitedText.h"
#include "DiscogsImporter.h"
#include "Entry.h"
#include "ImportRun.h"
#include "Link.h"
#include "Rating.h"
#include "Store.h"
#include "WindowSystem.h"

#include <QDateTime>
#include <QHash>
#include <QRegularExpression>

const QString DiscogsCsvImporter::defaultFolder = QStringLiteral("Uncategorized");

namespace {

// The columns every export has, in its order.
enum Column { CatalogNumber, Artist, Title, Label, Format, Stars, Released, ReleaseId, Folder, DateAdded,
              MediaCondition, SleeveCondition, Notes, ColumnCount };
const QStringList columnNames = {"Catalog#", "Artist", "Title", "Label", "Format", "Rating", "Released", "release_id",
                                 "CollectionFolder", "Date Added", "Collection Media Condition",
                                 "Collection Sleeve Condition", "Collection Notes"};
const QString extraPrefix = QStringLiteral("Collection ");

QStringList headerCells(const QString& text, QChar separator) {
  const qsizetype end = text.indexOf(u'\n');
  return DelimitedText::parse(text.left(end < 0 ? text.size() : end), separator).value(0);
}

bool isHeader(const QStringList& cells) {
  bool catalogue = false, release = false;
  for (const QString& cell : cells) {
    catalogue = catalogue || cell.trimmed() == columnNames[CatalogNumber];
    release = release || cell.trimmed() == columnNames[ReleaseId];
  }
  return catalogue && release;
}

// The site lists a release's labels and catalogue numbers comma-separated, one per label, and
// repeats a label once per number; "none" stands for a release without a number.
QString distinctValues(const QString& cell, bool names) {
  QStringList values;
  for (QString value : cell.split(QStringLiteral(", "))) {
    value = value.trimmed();
    if (names) value = DiscogsCsvImporter::withoutNameNumbers(value);
    if (value.isEmpty() || value.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0) continue;
    if (!values.contains(value)) values << value;
  }
  return values.join(QStringLiteral(", "));
}

// "2017-06-19 03:33:36", taken as UTC, read by hand: a format string parse costs more than the
// rest of the row.
QDateTime dateAdded(const QString& text) {
  if (text.size() == 19 && text.at(4) == u'-' && text.at(7) == u'-' && text.at(10) == u' ') {
    const auto number = [&](int from, int length) { return QStringView(text).mid(from, length).toInt(); };
    const QDateTime time(QDate(number(0, 4), number(5, 2), number(8, 2)), QTime(number(11, 2), number(14, 2), number(17, 2)),
                         Qt::UTC);
    if (time.isValid()) return time;
  }
  QDateTime iso = QDateTime::fromString(text, Qt::ISODate);
  if (iso.isValid() && iso.timeSpec() == Qt::LocalTime) iso.setTimeSpec(Qt::UTC);
  return iso.toUTC();
}

class RowReader {
 public:
  RowReader(ImportRun& run, const QStringList& header, const DiscogsCsvImporter::CustomFieldFor& customField)
      : run_(run) {
    index_.fill(-1, ColumnCount);
    for (qsizetype c = 0; c < header.size(); ++c) {
      const QString name = header[c].trimmed();
      const qsizetype known = columnNames.indexOf(name);
      if (known >= 0) {
        if (index_[known] < 0) index_[known] = int(c);
        continue;
      }
      if (name.isEmpty()) continue;
      const QString field = name.startsWith(extraPrefix) ? name.mid(extraPrefix.size()).trimmed() : name;
      const auto key = customField ? customField(field) : std::nullopt;
      if (key) extras_.append({int(c), *key});
      else run.warn(QStringLiteral("The column '%1' was left out: no custom field could take it").arg(name));
    }
    for (int known = 0; known < ColumnCount; ++known)
      if (index_[known] < 0) run.warn(QStringLiteral("The file has no column '%1'").arg(columnNames[known]));
  }

  QString cell(const QStringList& row, Column column) const {
    return index_[column] < 0 ? QString() : row.value(index_[column]).trimmed();
  }

  // The release id as the site writes it, or empty when the row has none that is a number.
  QString releaseId(const QStringList& row, qsizetype line) {
    const QString id = cell(row, ReleaseId);
    bool number = false;
    const qint64 value = id.toLongLong(&number);
    if (number && value > 0) return QString::number(value);
    if (!id.isEmpty()) run_.warn(QStringLiteral("Row %1: '%2' is not a release id").arg(line).arg(id.left(40)));
    return {};
  }

  void fill(Entry& entry, const QStringList& row, const QString& releaseId, qsizetype line) {
    set(entry, CdKeys::title, cell(row, Title));
    set(entry, CdKeys::artist, DiscogsCsvImporter::withoutNameNumbers(cell(row, Artist)));
    set(entry, CdKeys::label, distinctValues(cell(row, Label), true));
    set(entry, CdKeys::catalogNumber, distinctValues(cell(row, CatalogNumber), false));
    set(entry, CdKeys::format, cell(row, Format));
    set(entry, CdKeys::comments, cell(row, Notes));
    set(entry, CdKeys::mediaCondition, cell(row, MediaCondition));
    set(entry, CdKeys::sleeveCondition, cell(row, SleeveCondition));
    const QString released = cell(row, Released);
    const QDateTime date = DiscogsImporter::releaseDate(released);
    if (date.isValid()) entry.setPrimitiveValue(CdKeys::releaseDate, date);
    else if (!released.isEmpty() && released != QLatin1String("0"))
      run_.warn(QStringLiteral("Row %1: '%2' is not a release date").arg(line).arg(released.left(40)));
    // Stars on the site, 1 to 5; ours count halves, 0 to 10.
    const QString stars = cell(row, Stars);
    bool number = false;
    const int rating = stars.toInt(&number);
    if (number && rating >= 1 && rating <= 5) entry.setPrimitiveValue(CdKeys::myRating, qint64(rating) * (Rating::maximum / 5));
    else if (!stars.isEmpty() && stars != QLatin1String("0"))
      run_.warn(QStringLiteral("Row %1: '%2' is not a rating of 1 to 5").arg(line).arg(stars.left(40)));
    const QDateTime added = dateAdded(cell(row, DateAdded));
    if (added.isValid()) entry.setPrimitiveValue(CdKeys::dateAdded, added);
    if (!releaseId.isEmpty()) {
      entry.setPrimitiveValue(CdKeys::discogsReleaseID, releaseId);
      auto link = Store::newLink();
      link->setPrimitiveValue(QStringLiteral("name"), QStringLiteral("Discogs"));
      link->setPrimitiveValue(QStringLiteral("type"), QStringLiteral("Web"));
      link->setPrimitiveValue(QStringLiteral("url"), DiscogsCsvImporter::releaseUrl(releaseId));
      link->setPrimitiveValue(QStringLiteral("position"), qint64(0));
      entry.addLink(std::move(link));
    }
    for (const auto& [column, key] : extras_) {
      const QString value = row.value(column).trimmed();
      if (!value.isEmpty() && !entry.setPrimitiveValue(key, value))
        run_.warn(QStringLiteral("Row %1: '%2' does not fit the field %3").arg(line).arg(value.left(40), key));
    }
  }

 private:
  static void set(Entry& entry, const QString& key, const QString& value) {
    if (!value.isEmpty()) entry.setPrimitiveValue(key, value);
  }

  ImportRun& run_;
  QList<int> index_;
  QList<QPair<int, QString>> extras_;
};

}  // namespace

std::optional<QChar> DiscogsCsvImporter::separatorOf(const QString& text) {
  for (const QChar separator : {QChar(u','), QChar(u';'), QChar(u'\t')})
    if (isHeader(headerCells(text, separator))) return separator;
  return std::nullopt;
}

QString DiscogsCsvImporter::releaseUrl(const QString& releaseId) {
  return QStringLiteral("https://www.discogs.com/release/") + releaseId;
}

QString DiscogsCsvImporter::withoutNameNumbers(const QString& names) {
  static const QRegularExpression number(QStringLiteral(R"( \(\d+\)(?=$|[\s,]))"));
  QString plain = names;
  return plain.remove(number);
}

bool DiscogsCsvImporter::import(ImportRun& run, const QString& text, const CustomFieldFor& customField, Result* result,
                                QString* error) {
  const auto separator = separatorOf(text);
  if (!separator) {
    if (error) *error = QStringLiteral("the first row is not the header of a collection export");
    return false;
  }
  bool unterminated = false;
  const QList<QStringList> rows = DelimitedText::parse(text, *separator, &unterminated);
  RowReader reader(run, rows.value(0), customField);
  if (unterminated) run.warn(QStringLiteral("The text ends inside quotes; the last row may be incomplete"));

  // Two rows of one release are two copies; a second import skips as many as are here already.
  QHash<QString, int> inCatalogue;
  for (const Entry* entry : run.store().entries()) {
    const QString id = entry->stringValue(CdKeys::discogsReleaseID);
    if (!id.isEmpty()) ++inCatalogue[id];
  }
  QHash<QString, qsizetype> folderIndex;
  WindowSystem& ws = run.windowSystem();
  ws.showProgressSheet(run.progressTitle, QString(), int(rows.size() - 1));
  const qsizetype width = rows.value(0).size();
  for (qsizetype r = 1; r < rows.size() && !run.cancelled(); ++r) {
    const QStringList& row = rows[r];
    ws.increaseProgress();
    if (row.size() != width)
      run.warn(QStringLiteral("Row %1 has %2 fields where the header has %3").arg(r + 1).arg(row.size()).arg(width));
    const QString releaseId = reader.releaseId(row, r + 1);
    if (!releaseId.isEmpty()) {
      auto copies = inCatalogue.find(releaseId);
      if (copies != inCatalogue.end() && *copies > 0) {
        --*copies;
        ++result->alreadyThere;
        continue;
      }
    }
    Entry* entry = run.store().insertEntry();
    reader.fill(*entry, row, releaseId, r + 1);
    run.added(entry);
    QString folder = reader.cell(row, Folder);
    if (folder.isEmpty()) folder = defaultFolder;
    auto at = folderIndex.find(folder);
    if (at == folderIndex.end()) {
      at = folderIndex.insert(folder, result->folders.size());
      result->folders.append({folder, {}});
    }
    result->folders[*at].second.push_back(entry);
  }
  ws.closeProgressSheet();
  return true;
}
