#pragma once

#include "Store.h"

#include <QObject>
#include <QTimer>
#include <functional>

class MyController;

// Notices what other processes (the command line, a second window) save to the open catalogue:
// a few times a second it asks the store, which costs one pragma read while nothing changed,
// and hands any changes to the window.
class CatalogueWatcher : public QObject {
  Q_OBJECT
 public:
  using Handler = std::function<void(const Store::OutsideChanges&)>;
  static constexpr int intervalMs = 250;

  CatalogueWatcher(MyController& controller, Handler handler, QObject* parent = nullptr);
  // Looks at once; true when something had changed.
  bool checkNow();

 private:
  MyController& controller_;
  Handler handler_;
  QTimer timer_;
};
