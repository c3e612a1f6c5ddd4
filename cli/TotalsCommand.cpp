#include "CliContext.h"
#include "Commands.h"
#include "JsonWriter.h"
#include "MyController.h"

namespace Commands {

int totals(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--collection", "--select"}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  MyController& controller = context.controller;
  if (args->has("--collection") && !context.showCollection(args->value("--collection"))) return 1;
  controller.search(QString(), 1);
  if (args->has("--select")) {
    std::vector<Entry*> selection;
    for (const QString& reference : args->value("--select").split(QLatin1Char(','), Qt::SkipEmptyParts)) {
      Entry* entry = context.findEntry(reference.trimmed(), &message);
      if (!entry) return CliContext::failure(message);
      selection.push_back(entry);
    }
    controller.entriesController().setSelectedObjects(selection);
  }
  controller.refreshCollectionStatistics();
  const auto& entries = controller.multipleSelection ? controller.entriesController().selectedObjects()
                                                     : controller.entriesController().arrangedObjects();
  const QVariantMap totals = controller.collectionTotalsDictionaryFor(entries, true);
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginObject();
    json.key(QStringLiteral("totals"));
    json.variant(totals);
    json.key(QStringLiteral("footer"));
    json.value(controller.windowFooterString);
    json.endObject();
    return 0;
  }
  QString text = controller.windowFooterString + QLatin1Char('\n');
  for (auto it = totals.begin(); it != totals.end(); ++it) text += QStringLiteral("%1\t%2\n").arg(it.key(), it.value().toString());
  CliContext::print(text);
  return 0;
}

}  // namespace Commands
