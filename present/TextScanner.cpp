#include "TextScanner.h"

bool TextScanner::scanUpTo(QStringView stop, QStringView* scanned) {
  const qsizetype start = skipWhitespace(location_);
  if (start >= text_.size()) return false;
  qsizetype end = text_.indexOf(stop, start, Qt::CaseInsensitive);
  if (end < 0) end = text_.size();
  if (end == start) return false;
  *scanned = text_.sliced(start, end - start);
  location_ = end;
  return true;
}

qsizetype TextScanner::skipWhitespace(qsizetype from) const {
  while (from < text_.size() && text_[from].isSpace()) ++from;
  return from;
}
