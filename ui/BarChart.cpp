#include "BarChart.h"

#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <cmath>

namespace {
constexpr int rowHeight = 22, margin = 6;
}

BarChart::BarChart(Qt::Orientation orientation, QWidget* parent) : QWidget(parent), orientation_(orientation) {
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
}

void BarChart::setBars(std::vector<Bar> bars) {
  bars_ = std::move(bars);
  // The accessible description carries the figures that the bars only show.
  QStringList parts;
  for (const Bar& b : bars_) parts << QStringLiteral("%1: %2").arg(b.label).arg(b.value);
  setAccessibleDescription(parts.join(QStringLiteral("; ")));
  updateGeometry();
  update();
}

QSize BarChart::sizeHint() const {
  if (orientation_ == Qt::Horizontal) return {420, std::max(120, int(bars_.size()) * rowHeight + 2 * margin)};
  return {std::max(420, int(bars_.size()) * 14 + 2 * margin), 180};
}

void BarChart::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  qint64 largest = 0;
  for (const Bar& b : bars_) largest = std::max(largest, b.value);
  if (bars_.empty() || largest <= 0) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect(), Qt::AlignCenter, tr("Nothing to show"));
    return;
  }
  if (orientation_ == Qt::Horizontal) paintAcross(painter, largest);
  else paintUpright(painter, largest);
}

void BarChart::paintAcross(QPainter& painter, qint64 largest) {
  const QFontMetrics metrics(font());
  int labelWidth = 0;
  for (const Bar& b : bars_) labelWidth = std::max(labelWidth, metrics.horizontalAdvance(b.label));
  labelWidth = std::min(labelWidth, width() / 3);
  const int valueWidth = metrics.horizontalAdvance(QString::number(largest)) + margin;
  const int barSpace = std::max(1, width() - labelWidth - valueWidth - 4 * margin);
  const int step = std::max(1, std::min(rowHeight, (height() - 2 * margin) / int(bars_.size())));
  int y = margin;
  for (const Bar& b : bars_) {
    const QRect label(margin, y, labelWidth, step);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(label, Qt::AlignVCenter | Qt::AlignRight, metrics.elidedText(b.label, Qt::ElideRight, labelWidth));
    const int length = int(double(barSpace) * double(b.value) / double(largest));
    const QRect bar(label.right() + 2 * margin, y + step / 6, std::max(length, b.value > 0 ? 1 : 0), step - step / 3);
    painter.fillRect(bar, palette().color(QPalette::Highlight));
    painter.drawText(QRect(bar.right() + margin, y, valueWidth, step), Qt::AlignVCenter | Qt::AlignLeft,
                     QString::number(b.value));
    y += step;
  }
}

void BarChart::paintUpright(QPainter& painter, qint64 largest) {
  const QFontMetrics metrics(font());
  const int labelHeight = metrics.height() + margin;
  const int chartHeight = std::max(1, height() - labelHeight - 2 * margin - metrics.height());
  const double step = double(width() - 2 * margin) / double(bars_.size());
  // Labels only where they fit, always the first and the last.
  const int labelEvery = std::max(1, int(std::ceil(double(metrics.horizontalAdvance(bars_.front().label) + margin) / step)));
  for (size_t i = 0; i < bars_.size(); ++i) {
    const Bar& b = bars_[i];
    const int x = margin + int(double(i) * step);
    const int h = int(double(chartHeight) * double(b.value) / double(largest));
    const int barWidth = std::max(1, int(step) - 2);
    painter.fillRect(QRect(x + 1, margin + metrics.height() + chartHeight - h, barWidth, h),
                     palette().color(QPalette::Highlight));
    painter.setPen(palette().color(QPalette::Text));
    if (b.value == largest)
      painter.drawText(QRect(x - 20, margin, barWidth + 40, metrics.height()), Qt::AlignCenter, QString::number(b.value));
    if (i % size_t(labelEvery) == 0 || i + 1 == bars_.size())
      painter.drawText(QRect(x - 40, height() - labelHeight, int(step) + 80, labelHeight), Qt::AlignCenter, b.label);
  }
}
