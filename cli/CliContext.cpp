#include "CliContext.h"

#include "Entry.h"
#include "MyController.h"

#include <cstdio>

int CliContext::usage(const QString& message) {
  std::fprintf(stderr, "discary: %s\n", qPrintable(message));
  return 2;
}

int CliContext::failure(const QString& message) {
  std::fprintf(stderr, "discary: %s\n", qPrintable(message));
  return 1;
}

void CliContext::print(const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  std::fwrite(utf8.constData(), 1, size_t(utf8.size()), stdout);
}

Entry* CliContext::findEntry(const QString& reference, QString* message) const {
  Store& store = controller.managedObjectContext();
  bool isNumber = false;
  const qint64 uid = reference.toLongLong(&isNumber);
  if (isNumber)
    if (Entry* e = store.entryWithUID(uid)) return e;
  const std::vector<Entry*> titled = store.entriesTitled(reference, Qt::CaseSensitive);
  if (titled.size() == 1) return titled.front();
  *message = titled.empty() ? QStringLiteral("no entry '%1'").arg(reference)
                            : QStringLiteral("several entries are titled '%1'; name one by its uid").arg(reference);
  return nullptr;
}

bool CliContext::showCollection(const QString& name) const {
  Collection* collection = controller.collections().collectionWithName(name, false);
  if (!collection) {
    failure(QStringLiteral("no collection '%1'").arg(name));
    return false;
  }
  controller.collections().selectCollection(collection);
  return true;
}

bool CliContext::save() const {
  QString error;
  if (controller.managedObjectContext().save(&error)) return true;
  failure(QStringLiteral("the catalogue could not be saved: %1").arg(error));
  return false;
}

bool CliContext::openCatalogue(Store::Loading loading) const {
  const Store::OpenResult result = controller.openCatalogue(
      options.catalogue.isEmpty() ? MyController::defaultCataloguePath() : options.catalogue, loading);
  if (!result.ok()) failure(result.message);
  return result.ok();
}
