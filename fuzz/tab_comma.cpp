// Tab- and comma-separated text files, decoded as the file-open dispatcher decodes them.
#include "DelimitedText.h"
#include "FuzzEnvironment.h"
#include "ImportRun.h"
#include "ScratchCatalogue.h"
#include "TabCommaImporter.h"
#include "TextFile.h"

#include <cstdio>
#include <cstdlib>

namespace {

ScratchCatalogue* catalogue = nullptr;

// A field the exporter quotes must come back as it was.
void checkQuoting(const QList<QStringList>& rows, QChar separator) {
  for (const QStringList& row : rows)
    for (const QString& field : row) {
      if (field.isEmpty()) continue;
      const QList<QStringList> again = DelimitedText::parse(DelimitedText::quoted(field, separator), separator);
      if (again.size() != 1 || again.first() != QStringList{field}) {
        std::fprintf(stderr, "a quoted field does not read back: %s\n", qPrintable(field));
        std::abort();
      }
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  catalogue = new ScratchCatalogue;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString path = catalogue->folder().write(QStringLiteral("List.csv"), data, size);
  if (path.isEmpty()) return 0;
  const auto text = TextFile::stringFromFile(path);
  if (!text) return 0;
  const QChar separator = DelimitedText::guessSeparator(*text);
  bool unterminated = false;
  checkQuoting(DelimitedText::parse(*text, separator, &unterminated), separator);
  ImportRun run(catalogue->store(), catalogue->windowSystem());
  QString error;
  TabCommaImporter::import(run, *text, &error);
  catalogue->clear();
  return 0;
}
