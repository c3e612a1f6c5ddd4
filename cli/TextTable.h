#pragma once

#include <QStringList>
#include <vector>

// Rows of text in aligned columns for a terminal; long cells are cut with an ellipsis.
class TextTable {
 public:
  explicit TextTable(QStringList headers, int maxCellWidth = 40) : headers_(std::move(headers)), maxWidth_(maxCellWidth) {}
  void addRow(QStringList cells) { rows_.push_back(std::move(cells)); }
  QString toString() const;

 private:
  QStringList headers_;
  int maxWidth_;
  std::vector<QStringList> rows_;
};
