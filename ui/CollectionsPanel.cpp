#include "CollectionsPanel.h"

#include "Collection.h"
#include "CollectionCountDelegate.h"
#include "EntryTableModel.h"
#include "MyController.h"

#include <QDragEnterEvent>
#include <QMimeData>

namespace {
constexpr int collectionRole = Qt::UserRole + 1;
}

CollectionsPanel::CollectionsPanel(MyController& controller, QWidget* parent)
    : QListWidget(parent), controller_(controller) {
  setAcceptDrops(true);
  setDropIndicatorShown(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setItemDelegate(new CollectionCountDelegate(this));
  connect(this, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
    if (item) Q_EMIT collectionChosen(static_cast<Collection*>(item->data(collectionRole).value<void*>()));
  });
}

void CollectionsPanel::reload() {
  const Collection* current = currentCollection();
  const QSignalBlocker blocker(this);
  clear();
  auto add = [this](Collection* c, const QString& name, const QString& icon) {
    auto* item = new QListWidgetItem(QIcon::fromTheme(icon), name, this);
    item->setData(collectionRole, QVariant::fromValue(static_cast<void*>(c)));
  };
  add(nullptr, controller_.frameworkBundle().localizedString(QStringLiteral("All Entries")),
      QStringLiteral("media-optical-audio"));
  for (Collection* c : controller_.collections().allCollections())
    add(c, c->name(), c->isUser() ? QStringLiteral("folder-music") : QStringLiteral("emblem-shared"));
  selectCollection(current);
  refreshCounts();
}

void CollectionsPanel::refreshCounts() {
  for (int i = 0; i < count(); ++i) {
    const auto* c = static_cast<const Collection*>(item(i)->data(collectionRole).value<void*>());
    const qint64 size = qint64(controller_.collections().entriesIn(c).size());
    if (item(i)->data(CollectionCountDelegate::countRole) != size) item(i)->setData(CollectionCountDelegate::countRole, size);
  }
}

Collection* CollectionsPanel::currentCollection() const {
  const QListWidgetItem* item = currentItem();
  return item ? static_cast<Collection*>(item->data(collectionRole).value<void*>()) : nullptr;
}

void CollectionsPanel::selectCollection(const Collection* collection) {
  for (int i = 0; i < count(); ++i)
    if (item(i)->data(collectionRole).value<void*>() == collection) {
      setCurrentRow(i);
      return;
    }
  setCurrentRow(0);
}

Collection* CollectionsPanel::collectionAt(const QPoint& position) const {
  const QListWidgetItem* target = itemAt(position);
  auto* c = target ? static_cast<Collection*>(target->data(collectionRole).value<void*>()) : nullptr;
  return c && c->isUser() ? c : nullptr;
}

void CollectionsPanel::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasFormat(EntryTableModel::uidsMimeType)) event->acceptProposedAction();
}

void CollectionsPanel::dragMoveEvent(QDragMoveEvent* event) {
  const bool accepted =
      event->mimeData()->hasFormat(EntryTableModel::uidsMimeType) && collectionAt(event->position().toPoint());
  showDropTarget(accepted ? itemAt(event->position().toPoint()) : nullptr);
  if (accepted) event->acceptProposedAction();
  else event->ignore();
}

void CollectionsPanel::dragLeaveEvent(QDragLeaveEvent* event) {
  showDropTarget(nullptr);
  QListWidget::dragLeaveEvent(event);
}

void CollectionsPanel::showDropTarget(QListWidgetItem* target) {
  for (int i = 0; i < count(); ++i) {
    QListWidgetItem* it = item(i);
    if (it->data(CollectionCountDelegate::dropTargetRole).toBool() != (it == target))
      it->setData(CollectionCountDelegate::dropTargetRole, it == target);
  }
}

int CollectionsPanel::dropTargetRow() const {
  for (int i = 0; i < count(); ++i)
    if (item(i)->data(CollectionCountDelegate::dropTargetRole).toBool()) return i;
  return -1;
}

qint64 CollectionsPanel::countShown(int row) const {
  const QListWidgetItem* it = item(row);
  return it ? it->data(CollectionCountDelegate::countRole).toLongLong() : -1;
}

void CollectionsPanel::dropEvent(QDropEvent* event) {
  showDropTarget(nullptr);
  Collection* target = collectionAt(event->position().toPoint());
  if (!target) return;
  QList<qint64> uids;
  for (const QByteArray& part : event->mimeData()->data(EntryTableModel::uidsMimeType).split(',')) {
    bool ok = false;
    const qint64 uid = part.toLongLong(&ok);
    if (ok) uids << uid;
  }
  event->acceptProposedAction();
  Q_EMIT entriesDropped(target, uids);
}
