// Release lists of the public music database: data dumps and collection exports.
#include "DiscogsImporter.h"
#include "FuzzEnvironment.h"
#include "ImportRun.h"
#include "ScratchCatalogue.h"
#include "TextFile.h"

namespace {
ScratchCatalogue* catalogue = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  catalogue = new ScratchCatalogue;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString path = catalogue->folder().write(QStringLiteral("Releases.xml"), data, size);
  if (path.isEmpty()) return 0;
  const auto text = TextFile::stringFromFile(path);
  if (!text) return 0;
  ImportRun run(catalogue->store(), catalogue->windowSystem());
  QString error;
  DiscogsImporter::import(run, *text, &error);
  catalogue->clear();
  return 0;
}
