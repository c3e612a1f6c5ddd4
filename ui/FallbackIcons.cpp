#include "FallbackIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QApplication>
#include <functional>

namespace {

// Drawn at 32 pixels in the text colour; Qt scales it for the tool bar.
QIcon drawn(const std::function<void(QPainter&)>& draw) {
  QPixmap pixmap(32, 32);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(QApplication::palette().color(QPalette::WindowText), 3, Qt::SolidLine, Qt::RoundCap));
  draw(p);
  p.end();
  return QIcon(pixmap);
}

}  // namespace

QIcon FallbackIcons::find() { return named(QStringLiteral("edit-find")); }

QIcon FallbackIcons::named(const QString& name) {
  if (QIcon::hasThemeIcon(name)) return QIcon::fromTheme(name);
  if (name == QLatin1String("edit-find"))
    return drawn([](QPainter& p) {
      p.drawEllipse(QRectF(5, 5, 15, 15));
      p.drawLine(QPointF(18, 18), QPointF(27, 27));
    });
  if (name == QLatin1String("list-add"))
    return drawn([](QPainter& p) {
      p.drawLine(16, 6, 16, 26);
      p.drawLine(6, 16, 26, 16);
    });
  if (name == QLatin1String("list-remove")) return drawn([](QPainter& p) { p.drawLine(6, 16, 26, 16); });
  if (name == QLatin1String("document-edit"))
    return drawn([](QPainter& p) {
      p.drawLine(8, 24, 24, 8);
      p.drawLine(6, 26, 10, 25);
    });
  return {};
}
