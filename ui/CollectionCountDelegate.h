#pragma once

#include <QStyledItemDelegate>

// Draws a collection of the sidebar with its number of entries at the right, in the muted
// colour of secondary text, and the collection a drag hovers over framed.
class CollectionCountDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  static constexpr int countRole = Qt::UserRole + 2;
  static constexpr int dropTargetRole = Qt::UserRole + 3;

  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
