#include "CollectionCountDelegate.h"

#include <QPainter>

namespace {
constexpr int gap = 8;
}  // namespace

void CollectionCountDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const bool target = index.data(dropTargetRole).toBool();
  QStyleOptionViewItem shown(option);
  if (target) shown.state |= QStyle::State_Selected;  // the highlight a drop would land in
  const QVariant count = index.data(countRole);
  const QString number = count.isValid() ? QString::number(count.toLongLong()) : QString();
  const int numberWidth = number.isEmpty() ? 0 : option.fontMetrics.horizontalAdvance(number) + 2 * gap;
  // The name gives way to the number, not the other way round.
  QStyledItemDelegate::paint(painter, shown, index);
  if (number.isEmpty()) return;
  painter->save();
  const QRect box = option.rect.adjusted(option.rect.width() - numberWidth, 0, -gap, 0);
  const bool selected = shown.state & QStyle::State_Selected;
  painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::PlaceholderText));
  painter->drawText(box, Qt::AlignVCenter | Qt::AlignRight, number);
  if (target) {
    painter->setPen(QPen(option.palette.color(QPalette::Highlight).darker(130), 2));
    painter->drawRoundedRect(QRectF(option.rect).adjusted(1, 1, -1, -1), 3, 3);
  }
  painter->restore();
}

QSize CollectionCountDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  const QVariant count = index.data(countRole);
  if (count.isValid()) size.rwidth() += option.fontMetrics.horizontalAdvance(QString::number(count.toLongLong())) + 2 * gap;
  return size;
}
