#include "CliContext.h"
#include "CliWindowSystem.h"
#include "Collection.h"
#include "Commands.h"
#include "Entry.h"
#include "JsonWriter.h"
#include "MyController.h"

#include <QFileInfo>
#include <QSet>

namespace Commands {

int import(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (args->positional.isEmpty()) return CliContext::usage(QStringLiteral("import needs at least one PATH"));
  MyController& controller = context.controller;
  Store& store = controller.managedObjectContext();

  QSet<qint64> before;
  for (const Entry* e : store.entries()) before.insert(e->uid());
  QSet<qint64> collectionsBefore;
  for (const Collection* c : store.collections()) collectionsBefore.insert(c->id());

  QList<QPair<QString, bool>> results;
  bool all = true;
  for (const QString& path : args->positional) {
    const bool ok = QFileInfo::exists(path) && controller.openFile(path);
    if (!QFileInfo::exists(path)) context.windowSystem.inform(QStringLiteral("%1: no such file or folder").arg(path));
    results.append({path, ok});
    all = all && ok;
  }
  // Each importer saves its own work; nothing may be reported that is not in the file.
  if (!context.save()) return 1;

  std::vector<qint64> added;
  for (const Entry* e : store.entries())
    if (!before.contains(e->uid())) added.push_back(e->uid());
  QStringList collections;
  for (const Collection* c : store.collections())
    if (!collectionsBefore.contains(c->id())) collections << c->name();

  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginObject();
    json.key(QStringLiteral("results"));
    json.beginArray();
    for (const auto& [path, ok] : results) {
      json.beginObject();
      json.key(QStringLiteral("path"));
      json.value(path);
      json.key(QStringLiteral("ok"));
      json.value(ok);
      json.endObject();
    }
    json.endArray();
    json.key(QStringLiteral("entries"));
    json.beginArray();
    for (qint64 uid : added) json.value(uid);
    json.endArray();
    json.key(QStringLiteral("collections"));
    json.beginArray();
    for (const QString& name : std::as_const(collections)) json.value(name);
    json.endArray();
    json.endObject();
  } else {
    context.windowSystem.inform(QStringLiteral("Imported %1 entries into %2 collections").arg(added.size()).arg(collections.size()));
  }
  return all ? 0 : 1;
}

}  // namespace Commands
