#include "TextTable.h"

static QString fitted(QString cell, int width) {
  cell.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\t'), QLatin1Char(' '));
  if (cell.size() > width) cell = cell.left(width - 1) + QChar(0x2026);
  return cell;
}

QString TextTable::toString() const {
  std::vector<int> widths;
  for (const QString& h : headers_) widths.push_back(int(qMin<qsizetype>(h.size(), maxWidth_)));
  for (const QStringList& row : rows_)
    for (int c = 0; c < int(row.size()) && c < int(widths.size()); ++c)
      widths[c] = qMax(widths[c], int(fitted(row[c], maxWidth_).size()));
  auto line = [&](const QStringList& cells) {
    QString out;
    for (int c = 0; c < int(widths.size()); ++c) {
      const QString cell = fitted(cells.value(c), maxWidth_);
      out += c + 1 < int(widths.size()) ? cell.leftJustified(widths[c]) + QStringLiteral("  ") : cell;
    }
    while (out.endsWith(QLatin1Char(' '))) out.chop(1);
    return out + QLatin1Char('\n');
  };
  QString out = line(headers_);
  QStringList rule;
  for (int w : widths) rule << QString(w, QChar(0x2500));
  out += line(rule);
  for (const QStringList& row : rows_) out += line(row);
  return out;
}
