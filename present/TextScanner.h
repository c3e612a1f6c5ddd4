#pragma once

#include <QStringView>

// Reads a text forward the way page templates have always been cut up: whitespace and line
// breaks are skipped before each scan, and the text a scan stops at is found ignoring case.
class TextScanner {
 public:
  explicit TextScanner(QStringView text) : text_(text) {}

  // Skips whitespace, then takes the text up to the first occurrence of stop, or to the end.
  // False, taking nothing and leaving the location as it was, when that text is empty.
  bool scanUpTo(QStringView stop, QStringView* scanned);
  // Nothing but whitespace is left.
  bool isAtEnd() const { return skipWhitespace(location_) >= text_.size(); }

 private:
  qsizetype skipWhitespace(qsizetype from) const;

  QStringView text_;
  qsizetype location_ = 0;
};
