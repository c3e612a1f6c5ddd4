#include "StatusImage.h"

#include <QPainter>

namespace StatusImage {

QColor colour(qint64 status) {
  switch (status) {
    case 1: return QColor(0xd9, 0x82, 0x2b);  // lent out: orange
    case 2: return QColor(0x3b, 0x7d, 0xd8);  // wanted: blue
    default: return {};
  }
}

void paint(QPainter& painter, const QRectF& box, qint64 status, qreal diameter) {
  const QColor fill = colour(status);
  if (!fill.isValid()) return;
  const qreal d = qMin(diameter, qMin(box.width(), box.height()));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(fill);
  painter.drawEllipse(QRectF(box.center().x() - d / 2, box.center().y() - d / 2, d, d));
  painter.restore();
}

}  // namespace StatusImage
