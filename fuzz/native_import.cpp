// This program's own export: an XML property list of entry dictionaries with embedded covers.
#include "FuzzEnvironment.h"
#include "ImportRun.h"
#include "NativeImporter.h"
#include "PropertyList.h"
#include "ScratchCatalogue.h"

#include <cstdio>
#include <cstdlib>

namespace {
ScratchCatalogue* catalogue = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  catalogue = new ScratchCatalogue;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Whatever the reader takes, the writer must give back in a form the reader takes again.
  if (const auto value = PropertyList::read(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)))) {
    QString error;
    if (!PropertyList::read(PropertyList::write(*value), &error)) {
      std::fprintf(stderr, "a property list written from one read does not read back: %s\n", qPrintable(error));
      std::abort();
    }
  }
  const QString path = catalogue->folder().write(QStringLiteral("Shelf.discary"), data, size);
  if (path.isEmpty()) return 0;
  ImportRun run(catalogue->store(), catalogue->windowSystem());
  QString error;
  NativeImporter::import(run, path, &error);
  catalogue->clear();
  return 0;
}
