#include "EntryTableModel.h"

#include "CatalogueHistory.h"
#include "CdKeys.h"
#include "Clock.h"
#include "Entry.h"
#include "FieldTypes.h"
#include "Loan.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "StatusImage.h"

#include <QColor>
#include <QDateTime>
#include <QMimeData>
#include <QSet>

const QColor EntryTableModel::overdueColour(0xc0, 0x1c, 0x28);

EntryTableModel::EntryTableModel(MyController& controller, CatalogueHistory& history, QObject* parent)
    : QAbstractTableModel(parent), controller_(controller), history_(history) {}

void EntryTableModel::setColumns(const QStringList& identifiers) {
  beginResetModel();
  columns_ = identifiers;
  endResetModel();
}

void EntryTableModel::reload() {
  beginResetModel();
  endResetModel();
}

Entry* EntryTableModel::entryAt(int row) const {
  const auto& entries = controller_.entriesController().arrangedObjects();
  return row >= 0 && size_t(row) < entries.size() ? entries[size_t(row)] : nullptr;
}

int EntryTableModel::rowOf(const Entry* entry) const {
  const auto& entries = controller_.entriesController().arrangedObjects();
  const auto it = std::find(entries.begin(), entries.end(), entry);
  return it == entries.end() ? -1 : int(it - entries.begin());
}

int EntryTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : int(controller_.entriesController().arrangedObjects().size());
}

int EntryTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(columns_.size()); }

QVariant EntryTableModel::data(const QModelIndex& index, int role) const {
  const Entry* entry = entryAt(index.row());
  if (!entry || index.column() >= columns_.size()) return {};
  const QString& key = columns_[index.column()];
  const bool status = key == StatusImage::key;
  const QColor statusColour = status ? StatusImage::colour(entry->value(key).toLongLong()) : QColor();
  // A loan past its due date shows in red, and says so in the tool tip.
  const bool overdue = (role == Qt::ToolTipRole || role == Qt::ForegroundRole) &&
                       entry->value(CdKeys::status).toLongLong() == 1 && Loan::isOverdue(*entry, Clock::now());
  switch (role) {
    case Qt::DisplayRole:
      // The status column is a dot, coloured by status; its word is in the tool tip.
      if (status) return statusColour.isValid() ? QStringLiteral("\u25CF") : QString();
      return controller_.fieldsController()->displayStringForValue(key, entry->value(key));
    case Qt::ToolTipRole: {
      const QString shown = controller_.fieldsController()->displayStringForValue(key, entry->value(key));
      if (!overdue) return shown;
      const QString due = controller_.fieldsController()->displayStringForValue(CdKeys::dueDate, entry->value(CdKeys::dueDate));
      return tr("Overdue: due back on %1").arg(due) + (shown.isEmpty() ? QString() : u'\n' + shown);
    }
    case Qt::EditRole:
      return entry->stringValue(key);
    case Qt::ForegroundRole:
      if (statusColour.isValid()) return statusColour;
      return overdue ? QVariant(overdueColour) : QVariant();
    case Qt::TextAlignmentRole: {
      const int type = controller_.fieldsController()->columnType(key, true);
      const bool number = type == ColumnTypeNumber || type == ColumnTypeStoredNumber;
      return int((number ? Qt::AlignRight : type == ColumnTypeImage ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    default: return {};
  }
}

QVariant EntryTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section >= columns_.size()) return {};
  if (role == Qt::DisplayRole) {
    // The status column is narrow: a dot says it all.
    if (columns_[section] == StatusImage::key) return QStringLiteral("\u25CF");
    return controller_.fieldsController()->localizedColumnName(columns_[section]);
  }
  if (role == Qt::ToolTipRole) return controller_.fieldsController()->localizedColumnName(columns_[section]);
  return {};
}

Qt::ItemFlags EntryTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
  return index.isValid() && isEditable(columns_.value(index.column())) ? flags | Qt::ItemIsEditable : flags;
}

// Texts, numbers in text and times are typed as they are kept; dates, ratings and the status
// have editors of their own in the panel.
bool EntryTableModel::isEditable(const QString& key) const {
  const int index = EntitySchema::cd().indexOf(key);
  if (index < 0 || key == StatusImage::key) return false;
  const AttributeKind kind = EntitySchema::cd().attributes()[size_t(index)].kind;
  return kind == AttributeKind::Text || kind == AttributeKind::NumberText || kind == AttributeKind::TimeText;
}

bool EntryTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  Entry* entry = entryAt(index.row());
  const QString key = columns_.value(index.column());
  if (role != Qt::EditRole || !entry || !isEditable(key)) return false;
  const QString text = value.toString().trimmed();
  if (text == entry->stringValue(key)) return true;
  history_.record({}, {entry}, [&] {
    entry->setValue(key, text.isEmpty() ? QVariant() : QVariant(text));
    entry->setValue(CdKeys::dateEdited, QDateTime::currentDateTimeUtc());
    controller_.addEntryToAutofill(*entry);
    controller_.saveManagedObjectContext();
  });
  Q_EMIT dataChanged(index.siblingAtColumn(0), index.siblingAtColumn(columnCount() - 1));
  return true;
}

void EntryTableModel::sort(int column, Qt::SortOrder order) {
  if (column < 0 || column >= columns_.size()) return;
  const QString key = columns_[column] == StatusImage::key ? CdKeys::status : columns_[column];
  Q_EMIT layoutAboutToBeChanged();
  controller_.entriesController().setSortKey(key, order == Qt::AscendingOrder);
  controller_.entriesController().rearrangeObjects();
  Q_EMIT layoutChanged();
}

QStringList EntryTableModel::mimeTypes() const { return {uidsMimeType}; }

QMimeData* EntryTableModel::mimeData(const QModelIndexList& indexes) const {
  QSet<int> rows;
  QStringList uids;
  for (const QModelIndex& i : indexes)
    if (!rows.contains(i.row()))
      if (const Entry* e = entryAt(i.row())) {
        rows.insert(i.row());
        uids << QString::number(e->uid());
      }
  auto* data = new QMimeData;
  data->setData(uidsMimeType, uids.join(QLatin1Char(',')).toUtf8());
  return data;
}
