#include "PrintPageFrame.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QTextLayout>

namespace {

constexpr qreal titlePoints = 16, subtitlePoints = 9, footerPoints = 8;

// More than the few lines of a cell can show; it keeps a 10,000-character value from being laid
// out in full for every cell.
constexpr qsizetype longestPrintedText = 2000;

QString printable(const QString& text) {
  QString s = text.left(longestPrintedText);
  if (!s.isEmpty() && s.back().isHighSurrogate()) s.chop(1);
  for (QChar& c : s)
    if (c.isSpace() || c.category() == QChar::Other_Control) c = QLatin1Char(' ');
  return s.simplified();
}

}  // namespace

PrintPageFrame::PrintPageFrame(QPagedPaintDevice& device, Texts texts)
    : device_(device), texts_(std::move(texts)), unitsPerPoint_(device.logicalDpiY() / 72.0) {
  titleBlockHeight_ = lineHeight(font(titlePoints, true)) + pt(2) + lineHeight(font(subtitlePoints)) + pt(14);
  footerHeight_ = lineHeight(font(footerPoints)) + pt(10);
}

PrintPageFrame::~PrintPageFrame() {
  if (painter_.isActive()) painter_.end();
}

bool PrintPageFrame::begin() {
  if (!painter_.begin(&device_)) return false;
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  return true;
}

bool PrintPageFrame::end() { return painter_.isActive() && painter_.end(); }

QFont PrintPageFrame::font(qreal points, bool bold) const {
  QFont f;
  f.setStyleHint(QFont::SansSerif);
  f.setPointSizeF(points);
  f.setBold(bold);
  return f;
}

qreal PrintPageFrame::lineHeight(const QFont& font) const { return QFontMetricsF(font, &device_).lineSpacing(); }

QRectF PrintPageFrame::pageRect() const { return QRectF(0, 0, device_.width(), device_.height()); }

QRectF PrintPageFrame::contentRect(int page) const {
  QRectF r = pageRect();
  if (page == 0) r.setTop(titleBlockHeight_);
  r.setBottom(r.bottom() - footerHeight_);
  return r;
}

bool PrintPageFrame::startPage(int page, int pageCount) {
  if (page > 0 && !device_.newPage()) return false;
  const QRectF whole = pageRect();
  painter_.save();
  if (page == 0) {
    const QFont title = font(titlePoints, true), subtitle = font(subtitlePoints);
    const qreal titleHeight = lineHeight(title), subtitleHeight = lineHeight(subtitle);
    painter_.setPen(ink);
    painter_.setFont(title);
    drawLine(QRectF(0, 0, whole.width(), titleHeight), fittedLines(texts_.title, title, whole.width(), 1).value(0));
    painter_.setPen(faintInk);
    painter_.setFont(subtitle);
    const qreal subtitleTop = titleHeight + pt(2);
    drawLine(QRectF(0, subtitleTop, whole.width(), subtitleHeight),
             fittedLines(texts_.subtitle, subtitle, whole.width(), 1).value(0));
    painter_.setPen(QPen(rule, pt(0.75)));
    const qreal y = subtitleTop + subtitleHeight + pt(6);
    painter_.drawLine(QPointF(0, y), QPointF(whole.width(), y));
  }
  const QFont footer = font(footerPoints);
  painter_.setFont(footer);
  painter_.setPen(faintInk);
  const qreal footerLine = lineHeight(footer);
  painter_.drawText(QRectF(0, whole.bottom() - footerLine, whole.width(), footerLine),
                    Qt::AlignHCenter | Qt::AlignBottom | Qt::TextSingleLine,
                    texts_.pageNumber.arg(page + 1).arg(pageCount));
  painter_.restore();
  return true;
}

QStringList PrintPageFrame::fittedLines(const QString& text, const QFont& font, qreal width, int maxLines) const {
  const QString s = printable(text);
  if (s.isEmpty() || maxLines < 1 || width <= 0) return {};
  QTextLayout layout(s, font, &device_);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  QStringList lines;
  while (lines.size() < maxLines) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width);
    const int start = line.textStart(), end = start + line.textLength();
    if (lines.size() == maxLines - 1 && end < s.size()) {
      lines << QFontMetricsF(font, &device_).elidedText(s.mid(start).trimmed(), Qt::ElideRight, width);
      break;
    }
    lines << s.mid(start, line.textLength()).trimmed();
  }
  layout.endLayout();
  return lines;
}

void PrintPageFrame::drawLine(const QRectF& box, const QString& line, bool trailing) {
  if (line.isEmpty()) return;
  const Qt::Alignment edge = line.isRightToLeft() != trailing ? Qt::AlignRight : Qt::AlignLeft;
  painter_.drawText(box, edge | Qt::AlignVCenter | Qt::TextSingleLine, line);
}
