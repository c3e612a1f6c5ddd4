#include "CatalogueHistory.h"

#include "CatalogueStep.h"

#include <QScopeGuard>
#include <memory>

CatalogueHistory::CatalogueHistory(MyControllerShared& controller, QObject* parent)
    : QObject(parent), controller_(controller) {
  // Deletes keep their entries' covers: bound what a long session holds.
  stack_.setUndoLimit(undoLimit);
}

void CatalogueHistory::record(const QString& name, const std::vector<Entry*>& touched, const std::function<void()>& change,
                              bool withCovers) {
  if (recording_) {
    change();
    return;
  }
  recording_ = true;
  const auto done = qScopeGuard([this] { recording_ = false; });
  auto step = std::make_unique<CatalogueStep>(controller_, touched, withCovers, [this](const std::vector<qint64>& uids) {
    Q_EMIT stepApplied(QList<qint64>(uids.begin(), uids.end()));
  });
  change();
  if (step->finish(name)) stack_.push(step.release());
}
