#include "CollectionPrinter.h"

#include "Entry.h"
#include "PrintPageFrame.h"
#include "StatusImage.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr qreal bodyPoints = 9, headerPoints = 8;
constexpr qreal paddingX = 5, paddingY = 3.5;
// Narrower columns cannot show a word; the narrow status column still has its header's.
constexpr qreal narrowestColumn = 42;
constexpr qreal statusDot = 6;
constexpr int bodyLines = 3, headerLines = 2;

const QColor zebra{0xf3, 0xf5, 0xf7};
const QColor headerFill{0xe4, 0xe8, 0xec};

}  // namespace

CollectionPrinter::CollectionPrinter(PrintPageFrame& frame, std::vector<Column> columns, CellText cellText)
    : frame_(frame), columns_(std::move(columns)), cellText_(std::move(cellText)) {
  layOutColumns();
}

void CollectionPrinter::layOutColumns() {
  const qreal width = frame_.contentRect(0).width(), narrowest = frame_.pt(narrowestColumn);
  const size_t n = columns_.size();
  widths_.assign(n, 0);
  lefts_.assign(n, 0);
  if (n == 0) return;
  const double total = std::accumulate(columns_.begin(), columns_.end(), 0.0,
                                       [](double sum, const Column& c) { return sum + qMax(0.0, c.fraction); });
  for (size_t i = 0; i < n; ++i) {
    const double share = total > 0 ? qMax(0.0, columns_[i].fraction) / total : 1.0 / double(n);
    widths_[i] = qMax(narrowest, share * width);
  }
  const qreal sum = std::accumulate(widths_.begin(), widths_.end(), qreal(0));
  for (size_t i = 0; i < n; ++i) {
    widths_[i] *= width / sum;
    lefts_[i] = i == 0 ? 0 : lefts_[i - 1] + widths_[i - 1];
  }
  const QFont header = frame_.font(headerPoints, true);
  int lines = 1;
  headerCells_.clear();
  for (size_t i = 0; i < n; ++i) {
    headerCells_.push_back(
        frame_.fittedLines(columns_[i].title, header, widths_[i] - frame_.pt(2 * paddingX), headerLines));
    lines = qMax(lines, int(headerCells_.back().size()));
  }
  headerHeight_ = lines * frame_.lineHeight(header) + frame_.pt(2 * paddingY);
}

std::vector<CollectionPrinter::Row> CollectionPrinter::layOutRows(const std::vector<Entry*>& entries,
                                                                  const QString& emptyText, int* pageCount) {
  const QFont body = frame_.font(bodyPoints);
  const qreal line = frame_.lineHeight(body), padding = frame_.pt(2 * paddingY);
  std::vector<Row> rows;
  rows.reserve(qMax(size_t(1), entries.size()));
  if (entries.empty()) {
    const qreal width = frame_.contentRect(0).width() - frame_.pt(2 * paddingX);
    rows.push_back({{frame_.fittedLines(emptyText, body, width, 1)}, line + padding});
  }
  for (Entry* entry : entries) {
    Row row;
    row.entry = entry;
    int lines = 1;
    for (size_t i = 0; i < columns_.size(); ++i) {
      if (columns_[i].statusImage) {
        row.cells.emplace_back();
        continue;
      }
      row.cells.push_back(frame_.fittedLines(cellText_(*entry, columns_[i].identifier), body,
                                             widths_[i] - frame_.pt(2 * paddingX), bodyLines));
      lines = qMax(lines, int(row.cells.back().size()));
    }
    row.height = lines * line + padding;
    rows.push_back(std::move(row));
  }
  int page = 0;
  qreal y = frame_.contentRect(0).top() + headerHeight_;
  for (Row& row : rows) {
    const QRectF area = frame_.contentRect(page);
    // A row never starts a page alone without room; the first row of a page always stays.
    if (y + row.height > area.bottom() && y > area.top() + headerHeight_) {
      ++page;
      y = frame_.contentRect(page).top() + headerHeight_;
    }
    row.page = page;
    row.top = y;
    y += row.height;
  }
  *pageCount = page + 1;
  return rows;
}

void CollectionPrinter::paintHeader(qreal top) {
  QPainter& painter = frame_.painter();
  const qreal width = frame_.contentRect(0).width();
  painter.fillRect(QRectF(0, top, width, headerHeight_), headerFill);
  painter.setPen(QPen(PrintPageFrame::rule, frame_.pt(0.75)));
  painter.drawLine(QPointF(0, top + headerHeight_), QPointF(width, top + headerHeight_));
  const QFont header = frame_.font(headerPoints, true);
  const qreal line = frame_.lineHeight(header);
  painter.setFont(header);
  painter.setPen(PrintPageFrame::ink);
  for (size_t i = 0; i < columns_.size(); ++i) {
    const QStringList& lines = headerCells_[i];
    for (int l = 0; l < lines.size(); ++l)
      frame_.drawLine(QRectF(lefts_[i] + frame_.pt(paddingX), top + frame_.pt(paddingY) + l * line,
                             widths_[i] - frame_.pt(2 * paddingX), line),
                      lines[l], columns_[i].trailing);
  }
}

void CollectionPrinter::paintRow(const Row& row, bool shaded, bool emptyNote) {
  QPainter& painter = frame_.painter();
  const qreal width = frame_.contentRect(0).width();
  if (shaded) painter.fillRect(QRectF(0, row.top, width, row.height), zebra);
  QFont body = frame_.font(bodyPoints);
  body.setItalic(emptyNote);
  const qreal line = frame_.lineHeight(body);
  painter.setFont(body);
  painter.setPen(emptyNote ? PrintPageFrame::faintInk : PrintPageFrame::ink);
  for (size_t i = 0; i < row.cells.size(); ++i) {
    const qreal left = emptyNote ? 0 : lefts_[i], cellWidth = emptyNote ? width : widths_[i];
    const bool trailing = !emptyNote && columns_[i].trailing;
    if (row.entry && columns_[i].statusImage)
      StatusImage::paint(painter, QRectF(left, row.top, cellWidth, frame_.pt(2 * paddingY) + line),
                         row.entry->value(StatusImage::key).toLongLong(), frame_.pt(statusDot));
    for (int l = 0; l < row.cells[i].size(); ++l)
      frame_.drawLine(QRectF(left + frame_.pt(paddingX), row.top + frame_.pt(paddingY) + l * line,
                             cellWidth - frame_.pt(2 * paddingX), line),
                      row.cells[i][l], trailing);
  }
}

int CollectionPrinter::print(const std::vector<Entry*>& entries, const QString& emptyText, const PageDone& pageDone) {
  int pageCount = 1;
  const std::vector<Row> rows = layOutRows(entries, emptyText, &pageCount);
  const qreal width = frame_.contentRect(0).width();
  size_t next = 0;
  for (int page = 0; page < pageCount; ++page) {
    if (!frame_.startPage(page, pageCount)) return 0;
    paintHeader(frame_.contentRect(page).top());
    qreal bottom = frame_.contentRect(page).top() + headerHeight_;
    for (; next < rows.size() && rows[next].page == page; ++next) {
      paintRow(rows[next], next % 2 == 1, entries.empty());
      bottom = rows[next].top + rows[next].height;
    }
    frame_.painter().setPen(QPen(PrintPageFrame::rule, frame_.pt(0.5)));
    frame_.painter().drawLine(QPointF(0, bottom), QPointF(width, bottom));
    if (pageDone && !pageDone(page + 1, pageCount)) return 0;
  }
  return pageCount;
}
