// Collection exports of the public music database, decoded as the file-open dispatcher decodes
// them; every extra column is offered a custom field.
#include "DiscogsCsvImporter.h"
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
  const QString path = catalogue->folder().write(QStringLiteral("collection.csv"), data, size);
  if (path.isEmpty()) return 0;
  const auto text = TextFile::stringFromFile(path);
  if (!text) return 0;
  ImportRun run(catalogue->store(), catalogue->windowSystem());
  DiscogsCsvImporter::Result result;
  QString error;
  DiscogsCsvImporter::import(
      run, *text, [](const QString&) { return std::optional<QString>(QStringLiteral("custom1")); }, &result, &error);
  catalogue->clear();
  return 0;
}
