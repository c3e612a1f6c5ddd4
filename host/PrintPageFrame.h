#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;

// One printed document on a paged device: sizes given in points and drawn in device units, the
// title block on the first page, "Page N of M" at the foot of every page, and texts fitted into
// boxes so that no value, however long or strange, leaves its box.
class PrintPageFrame {
 public:
  struct Texts {
    QString title;
    QString subtitle;
    QString pageNumber;  // "Page %1 of %2"
  };

  PrintPageFrame(QPagedPaintDevice& device, Texts texts);
  ~PrintPageFrame();
  PrintPageFrame(const PrintPageFrame&) = delete;
  PrintPageFrame& operator=(const PrintPageFrame&) = delete;

  // False when the device cannot be painted on (a file that cannot be written).
  bool begin();
  bool end();
  QPainter& painter() { return painter_; }

  // Device units of a length in points.
  qreal pt(qreal points) const { return points * unitsPerPoint_; }
  QFont font(qreal points, bool bold = false) const;
  qreal lineHeight(const QFont& font) const;
  // The area the page's content may fill: under the title block on the first page, above the
  // page number on every page.
  QRectF contentRect(int page) const;
  // Starts the page (a new sheet after the first) and draws its title block and page number.
  bool startPage(int page, int pageCount);

  // The text on at most maxLines lines of the width: control characters and line breaks become
  // spaces, and the last line ends in an ellipsis when the text does not fit.
  QStringList fittedLines(const QString& text, const QFont& font, qreal width, int maxLines) const;
  // Draws one fitted line in the box, at the leading edge of its own direction, or at the
  // trailing edge (numbers) when trailing.
  void drawLine(const QRectF& box, const QString& line, bool trailing = false);

  static inline const QColor ink{0x1d, 0x21, 0x27};
  static inline const QColor faintInk{0x6b, 0x72, 0x7b};
  static inline const QColor rule{0xb8, 0xbe, 0xc6};

 private:
  QRectF pageRect() const;

  QPagedPaintDevice& device_;
  Texts texts_;
  QPainter painter_;
  qreal unitsPerPoint_;
  // Asked for every row laid out, so measured once.
  qreal titleBlockHeight_ = 0, footerHeight_ = 0;
};
