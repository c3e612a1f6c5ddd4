#pragma once

#include <QListWidget>

class Collection;
class MyController;

// The collections on the left of the window: every entry, the borrowed and wish-list
// collections, then the user's. Entries dragged from the list onto a user collection join it.
class CollectionsPanel : public QListWidget {
  Q_OBJECT
 public:
  explicit CollectionsPanel(MyController& controller, QWidget* parent = nullptr);

  void reload();
  // nullptr for every entry.
  Collection* currentCollection() const;
  void selectCollection(const Collection* collection);

 Q_SIGNALS:
  void collectionChosen(Collection* collection);
  void entriesDropped(Collection* collection, const QList<qint64>& uids);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  Collection* collectionAt(const QPoint& position) const;

  MyController& controller_;
};
