#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

// The derived "statusImage" of an entry: a dot in the colour of its "status", the same in the
// list and on paper. Lent out (1) and wanted (2) each have a colour of their own; any other value
// means the entry is in the collection, which needs no mark.
namespace StatusImage {

inline const QString key = QStringLiteral("statusImage");

// Invalid for an entry in the collection.
QColor colour(qint64 status);
// The dot centred in the box, no wider than the box; nothing for an entry in the collection.
void paint(QPainter& painter, const QRectF& box, qint64 status, qreal diameter);

}  // namespace StatusImage
