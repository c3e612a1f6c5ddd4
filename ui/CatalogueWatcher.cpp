#include "CatalogueWatcher.h"

#include "MyController.h"
#include "Store.h"

CatalogueWatcher::CatalogueWatcher(MyController& controller, Handler handler, QObject* parent)
    : QObject(parent), controller_(controller), handler_(std::move(handler)) {
  controller_.managedObjectContext().deferCheckpoints();
  timer_.setInterval(intervalMs);
  connect(&timer_, &QTimer::timeout, this, [this] {
    checkNow();
    controller_.managedObjectContext().checkpointWhenIdle();
  });
  timer_.start();
}

bool CatalogueWatcher::checkNow() {
  const Store::OutsideChanges changes = controller_.mergeOutsideChanges();
  if (changes.isEmpty()) return false;
  handler_(changes);
  return true;
}
