#include "ImportRun.h"

#include "Store.h"
#include "StringTable.h"
#include "WindowSystem.h"

void ImportRun::added(Entry* entry) {
  entries_.push_back(entry);
  if (entries_.size() % batchSize == 0) {
    QString error;
    if (!store_.save(&error)) warn(QStringLiteral("Could not save the catalogue: %1").arg(error));
  }
}

bool ImportRun::cancelled() const { return windowSystem_.progressCancelled(); }

QString ImportRun::addingEntriesTitle(const StringTable& strings) {
  return strings.localizedString(QStringLiteral("AddingEntries"), QStringLiteral("Adding entries..."));
}
