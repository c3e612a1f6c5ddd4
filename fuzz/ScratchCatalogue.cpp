#include "ScratchCatalogue.h"

#include "Entry.h"

#include <QFile>
#include <cstdio>
#include <cstdlib>

ScratchCatalogue::ScratchCatalogue() {
  const Store::OpenResult opened = store_.open(folder_.path(QStringLiteral("Discary.sqlite")));
  if (!opened.ok()) {
    std::fprintf(stderr, "cannot open a scratch catalogue: %s\n", qPrintable(opened.message));
    std::abort();
  }
}

void ScratchCatalogue::clear() {
  const std::vector<Entry*> entries = store_.entries();
  for (Entry* entry : entries) {
    QFile::remove(store_.coverPathOf(entry->uid()));
    store_.deleteEntry(entry);
  }
  if (++clearsSinceSave_ < 64) return;
  clearsSinceSave_ = 0;
  QString error;
  if (!store_.save(&error)) {
    std::fprintf(stderr, "cannot save the scratch catalogue: %s\n", qPrintable(error));
    std::abort();
  }
}
