#include "DelimitedText.h"

QList<QStringList> DelimitedText::parse(const QString& text, QChar separator, bool* unterminated) {
  QList<QStringList> rows;
  QStringList row;
  QString field;
  bool inQuotes = false, fieldStarted = false;
  auto endRow = [&] {
    if (fieldStarted || !row.isEmpty() || !field.isEmpty()) {
      row << field;
      rows << row;
    }
    row.clear();
    field.clear();
    fieldStarted = false;
  };
  const qsizetype n = text.size();
  for (qsizetype i = 0; i < n; ++i) {
    const QChar c = text.at(i);
    if (inQuotes) {
      if (c == u'"') {
        if (i + 1 < n && text.at(i + 1) == u'"') {
          field += u'"';
          ++i;
        } else {
          inQuotes = false;
        }
      } else {
        field += c;
      }
    } else if (c == u'"' && field.isEmpty()) {
      inQuotes = fieldStarted = true;
    } else if (c == separator) {
      row << field;
      field.clear();
      fieldStarted = true;
    } else if (c == u'\r' || c == u'\n') {
      if (c == u'\r' && i + 1 < n && text.at(i + 1) == u'\n') ++i;
      endRow();
    } else {
      field += c;
    }
  }
  if (unterminated) *unterminated = inQuotes;
  endRow();
  return rows;
}

QChar DelimitedText::guessSeparator(const QString& text) {
  const qsizetype end = text.indexOf(u'\n');
  return text.left(end < 0 ? text.size() : end).contains(u'\t') ? QChar(u'\t') : QChar(u',');
}

QString DelimitedText::quoted(const QString& field, QChar separator) {
  if (!field.contains(separator) && !field.contains(u'"') && !field.contains(u'\n') && !field.contains(u'\r'))
    return field;
  QString out = field;
  out.replace(QStringLiteral("\""), QStringLiteral("\"\""));
  return u'"' + out + u'"';
}
