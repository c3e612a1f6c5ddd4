#include "DuplicatesDialog.h"

#include "CatalogueHistory.h"
#include "CdKeys.h"
#include "DuplicateFinder.h"
#include "Entry.h"
#include "EntryMerger.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "Store.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int uidRole = Qt::UserRole;
}

DuplicatesDialog::DuplicatesDialog(MyController& controller, CatalogueHistory& history, QWidget* parent)
    : QDialog(parent), controller_(controller), history_(history) {
  setWindowTitle(tr("Duplicates"));
  setObjectName(QStringLiteral("duplicates"));
  summary_ = new QLabel(this);
  summary_->setWordWrap(true);
  tree_ = new QTreeWidget(this);
  tree_->setObjectName(QStringLiteral("duplicateGroups"));
  tree_->setAccessibleName(tr("Duplicate groups"));
  tree_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  tree_->setAllColumnsShowFocus(true);
  tree_->setUniformRowHeights(true);
  merge_ = new QPushButton(tr("&Merge"), this);
  merge_->setObjectName(QStringLiteral("merge"));
  merge_->setAccessibleName(tr("Merge the chosen entries"));
  merge_->setToolTip(tr("Makes one entry of the chosen ones: the first keeps its values and gains every track, "
                        "link, collection and missing field of the others."));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  buttons->addButton(merge_, QDialogButtonBox::ActionRole);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(merge_, &QPushButton::clicked, this, &DuplicatesDialog::mergeChosen);
  connect(tree_, &QTreeWidget::itemSelectionChanged, this, &DuplicatesDialog::updateButton);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(tree_, 1);
  layout->addWidget(buttons);
  resize(820, 520);
  refresh();
}

void DuplicatesDialog::refresh() {
  const auto found = DuplicateFinder::find(controller_.managedObjectContext().entries());
  MyFieldsControllerShared& fields = *controller_.fieldsController();
  // Columns: what names an entry, then every field that differs in some group.
  QStringList columns{CdKeys::title, CdKeys::artist};
  for (const auto* groups : {&found.same, &found.editions})
    for (const auto& g : *groups)
      for (const QString& key : g.differences)
        if (!columns.contains(key)) columns << key;
  QStringList headers;
  for (const QString& key : columns) headers << fields.localizedColumnName(key);
  tree_->clear();
  tree_->setColumnCount(int(columns.size()));
  tree_->setHeaderLabels(headers);

  QFont marked = tree_->font();
  marked.setBold(true);
  const QBrush markedBackground = palette().brush(QPalette::Highlight).color().lighter(170);
  const auto addSection = [&](const QString& title, const std::vector<DuplicateFinder::Group>& groups) {
    auto* section = new QTreeWidgetItem(tree_, {title});
    section->setFlags(Qt::ItemIsEnabled);
    section->setFirstColumnSpanned(true);
    for (const auto& g : groups) {
      auto* group = new QTreeWidgetItem(section, {tr("%n entries", nullptr, int(g.entries.size()))});
      group->setFirstColumnSpanned(true);
      group->setToolTip(0, tr("Differ in: %1").arg(g.differences.isEmpty() ? tr("nothing") : [&] {
        QStringList names;
        for (const QString& key : g.differences) names << fields.localizedColumnName(key);
        return names.join(QStringLiteral(", "));
      }()));
      for (Entry* e : g.entries) {
        auto* row = new QTreeWidgetItem(group);
        row->setData(0, uidRole, e->uid());
        for (int c = 0; c < columns.size(); ++c) {
          // Long texts (comments, notes) on one line: the rows are for comparing.
          const QString text = fields.displayStringForValue(columns[c], e->value(columns[c]));
          row->setText(c, text.simplified().left(80));
          if (text.size() > 80) row->setToolTip(c, text.left(2000));
          if (g.differences.contains(columns[c])) {
            row->setFont(c, marked);
            row->setBackground(c, markedBackground);
            if (row->toolTip(c).isEmpty()) row->setToolTip(c, tr("Differs within the group"));
          }
        }
      }
    }
    section->setExpanded(true);
    for (int i = 0; i < section->childCount(); ++i) section->child(i)->setExpanded(true);
  };
  addSection(tr("Same release (%n group(s))", nullptr, int(found.same.size())), found.same);
  addSection(tr("Other editions (%n group(s))", nullptr, int(found.editions.size())), found.editions);
  tree_->header()->resizeSections(QHeaderView::ResizeToContents);
  summary_->setText(found.same.empty() && found.editions.empty()
                        ? tr("No duplicates in the catalogue.")
                        : tr("Entries that are the same release (same release id, disc id or barcode), and the same "
                             "album in other editions. Highlighted fields differ within their group."));
  updateButton();
}

std::vector<Entry*> DuplicatesDialog::chosenEntries() const {
  QList<qint64> uids;
  for (QTreeWidgetItem* item : tree_->selectedItems()) {
    if (item->data(0, uidRole).isValid()) {
      if (!uids.contains(item->data(0, uidRole).toLongLong())) uids << item->data(0, uidRole).toLongLong();
    } else {
      for (int i = 0; i < item->childCount(); ++i)
        if (const QVariant uid = item->child(i)->data(0, uidRole); uid.isValid() && !uids.contains(uid.toLongLong()))
          uids << uid.toLongLong();
    }
  }
  std::vector<Entry*> entries;
  for (Entry* e : controller_.managedObjectContext().entries())
    if (uids.contains(e->uid())) entries.push_back(e);
  return entries;
}

void DuplicatesDialog::updateButton() { merge_->setEnabled(chosenEntries().size() >= 2); }

void DuplicatesDialog::mergeChosen() {
  const std::vector<Entry*> chosen = chosenEntries();
  if (chosen.size() < 2) return;
  Entry* keep = chosen.front();
  // Covers are kept for the undo: the kept entry may take the other's.
  history_.record(tr("Merge"), chosen,
                  [&] {
                    EntryMerger merger(controller_);
                    for (size_t i = 1; i < chosen.size(); ++i) merger.merge(*keep, *chosen[i]);
                  },
                  true);
  const qint64 uid = keep->uid();
  refresh();
  Q_EMIT merged(uid);
}
