// A disc's ".TOC.plist", XML or binary, read into a table of contents and its disc identifier.
#include "FuzzEnvironment.h"
#include "PropertyListReader.h"
#include "TableOfContents.h"

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto value = PropertyListReader::read(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
  if (!value || value->typeId() != QMetaType::QVariantMap) return 0;
  const auto toc = TableOfContents::fromDictionary(value->toMap());
  if (!toc) return 0;
  int tracks = 0;
  qint64 seconds = 0;
  QString offsets;
  QStringList durations;
  toc->discIdentifier(&tracks, &seconds, &offsets, &durations);
  if (durations.size() != toc->trackCount() + 1 || toc->trackDurations().size() != toc->trackCount()) std::abort();
  // What the program writes back must read as the same table.
  const auto again = TableOfContents::fromDictionary(toc->dictionary());
  if (!again || again->leadout != toc->leadout || again->starts != toc->starts) std::abort();
  return 0;
}
