#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>
#include <functional>
#include <vector>

class PrintPageFrame;

// Prints cover pictures at a chosen size in points, as many to a page as fit, each with its
// title and artist under it. A missing or unreadable picture prints as an empty frame.
class CoverSheetPrinter {
 public:
  struct Cover {
    QString path;
    QString title;
    QString subtitle;
  };
  using PageDone = std::function<bool(int pagesDone, int pageCount)>;

  // coverSize is shrunk, keeping its shape, to fit a page.
  CoverSheetPrinter(PrintPageFrame& frame, QSizeF coverSize, QString missingText);

  // The number of pages printed; 0 when the device failed or pageDone stopped it.
  int print(const std::vector<Cover>& covers, const PageDone& pageDone);
  // The picture at the file scaled down to at most the pixel size; a null image when the file
  // is missing or not a picture.
  static QImage loadPicture(const QString& path, const QSize& largest);

 private:
  void paintCover(const Cover& cover, const QRectF& box);

  PrintPageFrame& frame_;
  QSizeF box_;
  qreal captionHeight_ = 0, gap_ = 0;
  QString missingText_;
};
