#pragma once

#include <QColor>
#include <QImage>

class Settings;

// How the window shows a cover: scaled into a square cell of "CellSize" pixels, on a grey
// background of "Cover Background" (0 black .. 1 white), framed when "Cover Border" is on.
class CoverCell {
 public:
  static constexpr int minimumSize = 40, maximumSize = 400;

  explicit CoverCell(const Settings& settings);

  // The cell with the cover in it, no wider than largest; a cover that is no image leaves the
  // cell empty.
  QImage render(const QImage& cover, int largest = maximumSize) const;
  int size() const { return size_; }

 private:
  int size_;
  QColor background_;
  bool border_;
};
