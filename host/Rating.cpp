#include "Rating.h"

#include <algorithm>

namespace Rating {

QString stars(qint64 rating) {
  const int r = int(std::clamp<qint64>(rating, 0, maximum));
  if (r == 0) return {};
  const int full = r / 2, half = r % 2;
  return QString(full, QChar(0x2605)) + QString(half, QChar(0x00BD)) + QString(5 - full - half, QChar(0x2606));
}

}  // namespace Rating
