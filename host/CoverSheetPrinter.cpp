#include "CoverSheetPrinter.h"

#include "PrintPageFrame.h"

#include <QImageReader>
#include <cmath>

namespace {

constexpr qreal titlePoints = 9, subtitlePoints = 8, gapPoints = 18;
// Enough for a sharp print; a larger picture is scaled down as it is read.
constexpr qreal pictureDpi = 300;

}  // namespace

CoverSheetPrinter::CoverSheetPrinter(PrintPageFrame& frame, QSizeF coverSize, QString missingText)
    : frame_(frame), missingText_(std::move(missingText)) {
  gap_ = frame_.pt(gapPoints);
  captionHeight_ =
      frame_.pt(4) + frame_.lineHeight(frame_.font(titlePoints, true)) + frame_.lineHeight(frame_.font(subtitlePoints));
  const QRectF area = frame_.contentRect(0);
  QSizeF box(frame_.pt(coverSize.width()), frame_.pt(coverSize.height()));
  const QSizeF room(area.width(), area.height() - captionHeight_);
  if (box.width() > room.width() || box.height() > room.height()) box.scale(room, Qt::KeepAspectRatio);
  // A few points at least, so that a zero or tiny size still prints something.
  box_ = box.expandedTo(QSizeF(frame_.pt(36), frame_.pt(36)));
}

QImage CoverSheetPrinter::loadPicture(const QString& path, const QSize& largest) {
  QImageReader reader(path);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (size.isValid() && (size.width() > largest.width() || size.height() > largest.height()))
    reader.setScaledSize(size.scaled(largest, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
  return reader.read();
}

void CoverSheetPrinter::paintCover(const Cover& cover, const QRectF& box) {
  QPainter& painter = frame_.painter();
  const qreal pixelsPerUnit = pictureDpi / (72.0 * frame_.pt(1));
  const QImage picture = cover.path.isEmpty()
                             ? QImage()
                             : loadPicture(cover.path, QSize(int(std::ceil(box.width() * pixelsPerUnit)),
                                                             int(std::ceil(box.height() * pixelsPerUnit))));
  painter.setPen(QPen(PrintPageFrame::rule, frame_.pt(0.5)));
  if (picture.isNull()) {
    painter.fillRect(box, QColor(0xf3, 0xf5, 0xf7));
    painter.drawRect(box);
    painter.setFont(frame_.font(titlePoints));
    painter.setPen(PrintPageFrame::faintInk);
    painter.drawText(box, Qt::AlignCenter | Qt::TextSingleLine, missingText_);
  } else {
    QRectF drawn(QPointF(), QSizeF(picture.size()).scaled(box.size(), Qt::KeepAspectRatio));
    drawn.moveCenter(box.center());
    painter.drawImage(drawn, picture);
    painter.drawRect(drawn);
  }
  const QFont title = frame_.font(titlePoints, true), subtitle = frame_.font(subtitlePoints);
  const qreal titleLine = frame_.lineHeight(title);
  qreal y = box.bottom() + frame_.pt(4);
  painter.setFont(title);
  painter.setPen(PrintPageFrame::ink);
  const QString titleText = frame_.fittedLines(cover.title, title, box.width(), 1).value(0);
  painter.drawText(QRectF(box.left(), y, box.width(), titleLine), Qt::AlignHCenter | Qt::TextSingleLine, titleText);
  y += titleLine;
  painter.setFont(subtitle);
  painter.setPen(PrintPageFrame::faintInk);
  const QString subtitleText = frame_.fittedLines(cover.subtitle, subtitle, box.width(), 1).value(0);
  painter.drawText(QRectF(box.left(), y, box.width(), frame_.lineHeight(subtitle)),
                   Qt::AlignHCenter | Qt::TextSingleLine, subtitleText);
}

int CoverSheetPrinter::print(const std::vector<Cover>& covers, const PageDone& pageDone) {
  const qreal width = frame_.contentRect(0).width(), cellHeight = box_.height() + captionHeight_;
  const int columns = qMax(1, int((width + gap_) / (box_.width() + gap_)));
  const qreal left = (width - (columns * box_.width() + (columns - 1) * gap_)) / 2;
  auto rowsOn = [&](int page) {
    return qMax(1, int((frame_.contentRect(page).height() + gap_) / (cellHeight + gap_)));
  };
  // Pages needed: the first page holds fewer rows under the title.
  int pageCount = 1;
  for (qsizetype remaining = qsizetype(covers.size()) - rowsOn(0) * columns; remaining > 0;
       remaining -= rowsOn(pageCount) * columns)
    ++pageCount;

  size_t next = 0;
  for (int page = 0; page < pageCount; ++page) {
    if (!frame_.startPage(page, pageCount)) return 0;
    const QRectF area = frame_.contentRect(page);
    for (int row = 0; row < rowsOn(page) && next < covers.size(); ++row)
      for (int column = 0; column < columns && next < covers.size(); ++column, ++next)
        paintCover(
            covers[next],
            QRectF(QPointF(left + column * (box_.width() + gap_), area.top() + row * (cellHeight + gap_)), box_));
    if (pageDone && !pageDone(page + 1, pageCount)) return 0;
  }
  return pageCount;
}
