#include "StatisticsDialog.h"

#include "BarChart.h"
#include "EntriesController.h"
#include "MyController.h"
#include "TimeText.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QScrollArea>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

StatisticsDialog::StatisticsDialog(MyController& controller, QWidget* parent)
    : QDialog(parent), controller_(controller) {
  setWindowTitle(tr("Statistics"));
  setObjectName(QStringLiteral("statistics"));
  grouping_ = new QComboBox(this);
  grouping_->setObjectName(QStringLiteral("statisticsGrouping"));
  grouping_->setAccessibleName(tr("Group by"));
  const QStringList labels = {tr("Decade"), tr("Genre"), tr("Label"), tr("Format"), tr("Artist")};
  for (qsizetype i = 0; i < labels.size(); ++i) grouping_->addItem(labels[i], int(i));
  grouping_->setCurrentIndex(int(CollectionStatistics::Grouping::Genre));

  table_ = new QTableWidget(0, 4, this);
  table_->setObjectName(QStringLiteral("statisticsTable"));
  table_->setAccessibleName(tr("Figures per group"));
  table_->setHorizontalHeaderLabels({tr("Group"), tr("Entries"), tr("Play Time"), tr("Value")});
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);

  groupChart_ = new BarChart(Qt::Horizontal);
  groupChart_->setObjectName(QStringLiteral("groupChart"));
  groupChart_->setAccessibleName(tr("Entries per group"));
  auto* scroll = new QScrollArea(this);
  scroll->setWidget(groupChart_);
  scroll->setWidgetResizable(true);

  timelineTitle_ = new QLabel(this);
  timeline_ = new BarChart(Qt::Vertical, this);
  timeline_->setObjectName(QStringLiteral("timeline"));
  timeline_->setAccessibleName(tr("Entries added over time"));
  timelineTitle_->setBuddy(timeline_);

  auto* split = new QSplitter(Qt::Horizontal, this);
  split->addWidget(table_);
  split->addWidget(scroll);
  split->setStretchFactor(1, 1);
  split->setSizes({380, 380});

  auto* form = new QFormLayout;
  form->addRow(tr("&Group by:"), grouping_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(split, 2);
  layout->addWidget(timelineTitle_);
  layout->addWidget(timeline_, 1);
  layout->addWidget(buttons);
  resize(860, 580);
  connect(grouping_, &QComboBox::currentIndexChanged, this, &StatisticsDialog::refresh);
  refresh();
}

void StatisticsDialog::refresh() {
  // The list as shown, so that the figures add up to its footer.
  const auto& entries = controller_.entriesController().arrangedObjects();
  const auto by = CollectionStatistics::Grouping(grouping_->currentData().toInt());
  const auto groups = statistics_.groups(entries, by);
  table_->setRowCount(int(groups.size()));
  std::vector<BarChart::Bar> bars;
  const QLocale locale;
  for (int row = 0; row < int(groups.size()); ++row) {
    const auto& g = groups[size_t(row)];
    const QString name = g.name == CollectionStatistics::unknownGroup ? tr("(none)") : g.name;
    const QStringList cells = {name, locale.toString(qint64(g.entries.size())),
                               TimeText::timeStringWithSeconds(g.seconds()), g.value().formatted(2)};
    for (int column = 0; column < cells.size(); ++column) {
      auto* item = new QTableWidgetItem(cells[column]);
      if (column > 0) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      table_->setItem(row, column, item);
    }
    bars.push_back({name, qint64(g.entries.size())});
  }
  groupChart_->setBars(std::move(bars));

  bool byYear = false;
  std::vector<BarChart::Bar> periods;
  for (const auto& p : CollectionStatistics::addedOverTime(entries, &byYear))
    periods.push_back({byYear ? QString::number(p.start.year()) : locale.toString(p.start, QStringLiteral("MMM yyyy")),
                       p.count});
  timeline_->setBars(std::move(periods));
  timelineTitle_->setText(byYear ? tr("Entries added per &year:") : tr("Entries added per &month:"));
}
