#pragma once

#include <QString>
#include <QWidget>
#include <vector>

// A bar chart painted with QPainter: one bar per named figure, laid across (a long name fits
// beside its bar) or upright (a timeline, oldest on the left).
class BarChart : public QWidget {
  Q_OBJECT
 public:
  struct Bar {
    QString label;
    qint64 value = 0;
  };
  explicit BarChart(Qt::Orientation orientation, QWidget* parent = nullptr);

  void setBars(std::vector<Bar> bars);
  const std::vector<Bar>& bars() const { return bars_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {200, 120}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintAcross(QPainter& painter, qint64 largest);
  void paintUpright(QPainter& painter, qint64 largest);

  Qt::Orientation orientation_;
  std::vector<Bar> bars_;
};
