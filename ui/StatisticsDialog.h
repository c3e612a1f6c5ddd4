#pragma once

#include "CollectionStatistics.h"

#include <QDialog>

class BarChart;
class MyController;
class QComboBox;
class QLabel;
class QTableWidget;

// View ▸ Statistics: the shown list in groups (entries, play time and value of each, as a table
// and a bar chart of the counts) and a timeline of when its entries were added.
class StatisticsDialog : public QDialog {
  Q_OBJECT
 public:
  explicit StatisticsDialog(MyController& controller, QWidget* parent = nullptr);

  // Reads the shown list again.
  void refresh();
  BarChart& groupChart() const { return *groupChart_; }
  BarChart& timeline() const { return *timeline_; }
  QTableWidget& table() const { return *table_; }
  QComboBox& grouping() const { return *grouping_; }

 private:
  MyController& controller_;
  CollectionStatistics statistics_;
  QComboBox* grouping_;
  QTableWidget* table_;
  BarChart* groupChart_;
  BarChart* timeline_;
  QLabel* timelineTitle_;
};
