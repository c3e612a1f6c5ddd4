#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class Entry;
class PrintPageFrame;

// Prints entries as a table: one row per entry, a header row at the top of every page, light
// zebra rows, each cell's text wrapped onto at most three lines within its column, the status as
// its dot.
class CollectionPrinter {
 public:
  struct Column {
    QString identifier;
    QString title;
    double fraction = 0;    // of the printable width
    bool trailing = false;  // numbers line up at the trailing edge
    bool statusImage = false;  // the status dot instead of a text
  };
  using CellText = std::function<QString(Entry& entry, const QString& identifier)>;
  // Told after each page is painted; returning false stops the printing.
  using PageDone = std::function<bool(int pagesDone, int pageCount)>;

  CollectionPrinter(PrintPageFrame& frame, std::vector<Column> columns, CellText cellText);

  // The number of pages printed; 0 when the device failed or pageDone stopped it. emptyText
  // stands in the table when there are no entries.
  int print(const std::vector<Entry*>& entries, const QString& emptyText, const PageDone& pageDone);

 private:
  struct Row {
    std::vector<QStringList> cells;
    qreal height = 0;
    qreal top = 0;
    int page = 0;
    Entry* entry = nullptr;  // none for the note of an empty table
  };

  void layOutColumns();
  std::vector<Row> layOutRows(const std::vector<Entry*>& entries, const QString& emptyText, int* pageCount);
  void paintHeader(qreal top);
  void paintRow(const Row& row, bool shaded, bool emptyNote);

  PrintPageFrame& frame_;
  std::vector<Column> columns_;
  CellText cellText_;
  std::vector<qreal> lefts_, widths_;
  std::vector<QStringList> headerCells_;
  qreal headerHeight_ = 0;
};
