#include "CoverCell.h"

#include "Settings.h"
#include "SettingsKeys.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

CoverCell::CoverCell(const Settings& settings)
    : size_(int(std::clamp<qint64>(settings.integerForKey(SettingsKeys::cellSize), minimumSize, maximumSize))),
      border_(settings.boolForKey(SettingsKeys::coverBorder)) {
  // Settings files are edited by hand too: anything outside 0..1, or no number, is clamped.
  const double grey = settings.floatForKey(SettingsKeys::coverBackground);
  const float level = std::isfinite(grey) ? float(std::clamp(grey, 0.0, 1.0)) : 1.0f;
  background_ = QColor::fromRgbF(level, level, level);
}

QImage CoverCell::render(const QImage& cover, int largest) const {
  const int side = std::clamp(largest, 1, size_);
  QImage cell(side, side, QImage::Format_RGB32);
  cell.fill(background_);
  if (cover.isNull()) return cell;
  // A margin, so the background shows around covers of every shape.
  const int margin = std::max(2, side / 16);
  const QImage scaled =
      cover.scaled(side - 2 * margin, side - 2 * margin, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  const QRect place((side - scaled.width()) / 2, (side - scaled.height()) / 2, scaled.width(), scaled.height());
  QPainter painter(&cell);
  painter.drawImage(place, scaled);
  if (border_) {
    // Dark on a light background, light on a dark one, so the frame always shows.
    painter.setPen(QPen(background_.lightnessF() > 0.5 ? QColor(64, 64, 64) : QColor(192, 192, 192), 1));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
  }
  return cell;
}
