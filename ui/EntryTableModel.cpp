#include "EntryTableModel.h"

#include "CdKeys.h"
#include "Entry.h"
#include "FieldTypes.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "StatusImage.h"

#include <QColor>
#include <QMimeData>
#include <QSet>

EntryTableModel::EntryTableModel(MyController& controller, QObject* parent)
    : QAbstractTableModel(parent), controller_(controller) {}

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
  switch (role) {
    case Qt::DisplayRole:
      // The status column is a dot, coloured by status; its word is in the tool tip.
      if (status) return statusColour.isValid() ? QStringLiteral("\u25CF") : QString();
      return controller_.fieldsController()->displayStringForValue(key, entry->value(key));
    case Qt::ToolTipRole:
      return controller_.fieldsController()->displayStringForValue(key, entry->value(key));
    case Qt::ForegroundRole:
      return statusColour.isValid() ? QVariant(statusColour) : QVariant();
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
  return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
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
