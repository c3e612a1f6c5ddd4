#include "TrackTable.h"

#include "TrackData.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
const QStringList keys = {QStringLiteral("name"), QStringLiteral("artist"), QStringLiteral("composer"),
                          QStringLiteral("duration")};
constexpr int positionRole = Qt::UserRole + 1;
}  // namespace

TrackTable::TrackTable(QWidget* parent) : QWidget(parent), table_(new QTableWidget(0, 4, this)), total_(new QLabel(this)) {
  table_->setObjectName(QStringLiteral("tracks"));
  table_->setAccessibleName(tr("Tracks"));
  table_->setHorizontalHeaderLabels({tr("Name"), tr("Artist"), tr("Composer"), tr("Time")});
  table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  table_->horizontalHeader()->setSectionResizeMode(3, QHeaderView::ResizeToContents);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setTabKeyNavigation(false);  // Tab leaves the table, as in the rest of the form
  connect(table_, &QTableWidget::itemChanged, this, &TrackTable::changed);

  auto* add = new QPushButton(tr("Add Track"), this);
  auto* remove = new QPushButton(tr("Remove"), this);
  auto* up = new QPushButton(tr("Move Up"), this);
  auto* down = new QPushButton(tr("Move Down"), this);
  add->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Plus));
  connect(add, &QPushButton::clicked, this, &TrackTable::addTrack);
  connect(remove, &QPushButton::clicked, this, &TrackTable::removeTracks);
  connect(up, &QPushButton::clicked, this, [this] { move(-1); });
  connect(down, &QPushButton::clicked, this, [this] { move(1); });

  auto* buttons = new QHBoxLayout;
  for (QPushButton* b : {add, remove, up, down}) buttons->addWidget(b);
  buttons->addStretch();
  buttons->addWidget(total_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(table_);
  layout->addLayout(buttons);
  changed();
  modified_ = false;
}

void TrackTable::setTracks(const QVariantList& tracks) {
  const QSignalBlocker blocker(table_);
  table_->setRowCount(0);
  for (const QVariant& t : tracks) {
    const QVariantMap track = t.toMap();
    const int row = table_->rowCount();
    table_->insertRow(row);
    for (int c = 0; c < keys.size(); ++c) table_->setItem(row, c, new QTableWidgetItem(track.value(keys[c]).toString()));
    table_->item(row, 0)->setData(positionRole, track.value(QStringLiteral("position")));
  }
  modified_ = reordered_ = false;
  changed();
  modified_ = false;
}

QVariantList TrackTable::tracks() const {
  QVariantList result;
  for (int row = 0; row < table_->rowCount(); ++row) {
    QVariantMap track;
    for (int c = 0; c < keys.size(); ++c) {
      const QString text = table_->item(row, c) ? table_->item(row, c)->text().trimmed() : QString();
      if (!text.isEmpty()) track.insert(keys[c], text);
    }
    const QVariant kept = table_->item(row, 0) ? table_->item(row, 0)->data(positionRole) : QVariant();
    track.insert(QStringLiteral("position"), !reordered_ && kept.isValid() ? kept : QVariant(qint64(row)));
    result << track;
  }
  return result;
}

void TrackTable::addTrack() {
  const int row = table_->currentRow() < 0 ? table_->rowCount() : table_->currentRow() + 1;
  {
    const QSignalBlocker blocker(table_);
    table_->insertRow(row);
    for (int c = 0; c < keys.size(); ++c) table_->setItem(row, c, new QTableWidgetItem);
  }
  reordered_ = true;
  changed();
  table_->setCurrentCell(row, 0);
  table_->editItem(table_->item(row, 0));
}

void TrackTable::removeTracks() {
  QList<int> rows;
  for (const QModelIndex& i : table_->selectionModel()->selectedRows()) rows << i.row();
  std::sort(rows.rbegin(), rows.rend());
  for (int row : rows) table_->removeRow(row);
  if (!rows.isEmpty()) {
    reordered_ = true;
    changed();
  }
}

void TrackTable::move(int by) {
  const int row = table_->currentRow(), target = row + by;
  if (row < 0 || target < 0 || target >= table_->rowCount()) return;
  const QSignalBlocker blocker(table_);
  for (int c = 0; c < table_->columnCount(); ++c) {
    QTableWidgetItem* a = table_->takeItem(row, c);
    QTableWidgetItem* b = table_->takeItem(target, c);
    table_->setItem(row, c, b);
    table_->setItem(target, c, a);
  }
  table_->setCurrentCell(target, table_->currentColumn());
  reordered_ = true;
  changed();
}

void TrackTable::changed() {
  modified_ = true;
  const QString total = TrackData::totalDuration(tracks());
  total_->setText(total.isEmpty() ? QString() : tr("Total %1").arg(total));
}
