#include "CliContext.h"
#include "Commands.h"
#include "Entry.h"
#include "JsonWriter.h"
#include "MyController.h"
#include "TextTable.h"

namespace {

void printCollections(const CliContext& context, const std::vector<Collection*>& collections) {
  CollectionsController& controller = context.controller.collections();
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginArray();
    for (Collection* c : collections) {
      json.beginObject();
      json.key(QStringLiteral("name"));
      json.value(c->name());
      json.key(QStringLiteral("count"));
      json.value(qint64(controller.entriesIn(c).size()));
      json.endObject();
    }
    json.endArray();
    return;
  }
  TextTable table({QStringLiteral("Collection"), QStringLiteral("Entries")}, 60);
  for (Collection* c : collections) table.addRow({c->name(), QString::number(controller.entriesIn(c).size())});
  CliContext::print(table.toString());
}

}  // namespace

namespace Commands {

int collections(const CliContext& context, const QStringList& args) {
  if (!args.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args.first()));
  printCollections(context, context.controller.collections().allCollections());
  return 0;
}

int collection(const CliContext& context, const QStringList& args) {
  if (args.value(0) != QLatin1String("create"))
    return CliContext::usage(args.isEmpty() ? QStringLiteral("collection needs a subcommand: create")
                                            : QStringLiteral("unknown subcommand 'collection %1'").arg(args.first()));
  if (args.size() < 2 || args[1].trimmed().isEmpty()) return CliContext::usage(QStringLiteral("collection create needs a NAME"));
  CollectionsController& collections = context.controller.collections();
  if (collections.collectionWithName(args[1], false))
    return CliContext::failure(QStringLiteral("a collection named '%1' exists already").arg(args[1]));
  std::vector<Entry*> entries;
  for (const QString& reference : args.mid(2)) {
    QString message;
    Entry* e = context.findEntry(reference, &message);
    if (!e) return CliContext::failure(message);
    entries.push_back(e);
  }
  Collection* c = collections.createCollectionNamed(args[1], entries);
  if (!context.save()) return 1;
  printCollections(context, {c});
  return 0;
}

}  // namespace Commands
