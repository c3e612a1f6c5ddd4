#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>

// Rows of comma- or tab-separated text with the quoting of RFC 4180: a field in double quotes
// may hold the separator, line breaks and doubled quotes.
class DelimitedText {
 public:
  // Blank lines give no row. *unterminated is set when the text ends inside quotes.
  static QList<QStringList> parse(const QString& text, QChar separator, bool* unterminated = nullptr);
  // The separator of the header line: a tab when it has one, else a comma.
  static QChar guessSeparator(const QString& text);
  static QString quoted(const QString& field, QChar separator);
};
