#pragma once

#include <QLabel>

class QAbstractItemView;

// Over an empty entry list, a short hint of the three ways in: add, import, scan. It hides as
// soon as the catalogue holds an entry; an empty search result shows no hint.
class EmptyCatalogueHint : public QLabel {
  Q_OBJECT
 public:
  explicit EmptyCatalogueHint(QAbstractItemView* list);
  // Shown when the catalogue itself is empty.
  void showFor(bool catalogueEmpty);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void place();
};
