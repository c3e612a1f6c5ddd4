#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QStringList>

class CatalogueHistory;
class Entry;
class MyController;

// The entry list: the entries controller's arranged entries, one row each, in the columns the
// user chose. Cells are read from the entries in memory when the view paints them. Cells of text
// fields can be edited in place; each such edit is saved and kept in the history.
class EntryTableModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  static inline const QString uidsMimeType = QStringLiteral("application/x-discary-uids");
  // The text of a loan past its due date.
  static const QColor overdueColour;

  EntryTableModel(MyController& controller, CatalogueHistory& history, QObject* parent = nullptr);

  const QStringList& columns() const { return columns_; }
  void setColumns(const QStringList& identifiers);
  // After the arranged entries changed (search, filter, collection, edits).
  void reload();
  Entry* entryAt(int row) const;
  int rowOf(const Entry* entry) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  void sort(int column, Qt::SortOrder order) override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  bool isEditable(const QString& key) const;

  MyController& controller_;
  CatalogueHistory& history_;
  QStringList columns_;
};
