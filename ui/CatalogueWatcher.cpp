#include "CatalogueWatcher.h"

#include "MyController.h"

CatalogueWatcher::CatalogueWatcher(MyController& controller, Handler handler, QObject* parent)
    : QObject(parent), controller_(controller), handler_(std::move(handler)) {
  timer_.setInterval(intervalMs);
  connect(&timer_, &QTimer::timeout, this, &CatalogueWatcher::checkNow);
  timer_.start();
}

bool CatalogueWatcher::checkNow() {
  const Store::OutsideChanges changes = controller_.mergeOutsideChanges();
  if (changes.isEmpty()) return false;
  handler_(changes);
  return true;
}
