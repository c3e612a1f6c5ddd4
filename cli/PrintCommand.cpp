#include "CliContext.h"
#include "CliWindowSystem.h"
#include "Commands.h"
#include "JsonWriter.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "PrintController.h"

namespace {

void printLayouts(const CliContext& context, const QVariantList& layouts) {
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginArray();
    for (const QVariant& item : layouts) {
      const QVariantMap layout = item.toMap();
      json.beginObject();
      for (const QString& key :
           {PrintController::layoutNameKey, PrintController::layoutDescriptionKey, PrintController::layoutColumnsKey}) {
        if (!layout.contains(key)) continue;
        json.key(key);
        json.variant(layout.value(key));
      }
      json.endObject();
    }
    json.endArray();
    return;
  }
  MyFieldsControllerShared* fields = context.controller.fieldsController();
  QString text;
  for (const QVariant& item : layouts) {
    const QVariantMap layout = item.toMap();
    text += QStringLiteral("%1\n  %2\n")
                .arg(layout.value(PrintController::layoutNameKey).toString(),
                     layout.value(PrintController::layoutDescriptionKey).toString());
    if (!layout.contains(PrintController::layoutColumnsKey)) {
      text += QStringLiteral("  columns: those of the list\n");
      continue;
    }
    QStringList columns;
    const QVariantList items = layout.value(PrintController::layoutColumnsKey).toList();
    for (qsizetype i = 0; i + 1 < items.size(); i += 2)
      columns << QStringLiteral("%1 %2%")
                     .arg(fields->localizedColumnName(items[i].toString()))
                     .arg(qRound(items[i + 1].toString().toDouble() * 100));
    text += QStringLiteral("  columns: %1\n").arg(columns.join(QStringLiteral(", ")));
  }
  CliContext::print(text);
}

}  // namespace

namespace Commands {

int print(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--layout", "--pdf", "--collection"},
                                            {"--layouts", "--covers", "--landscape"}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty())
    return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  if (int(args->has("--layouts")) + int(args->has("--layout")) + int(args->has("--covers")) != 1)
    return CliContext::usage(QStringLiteral("print needs one of --layouts, --layout NAME or --covers"));
  MyController& controller = context.controller;

  if (args->has("--layouts")) {
    // Nothing answers the dialog: it is cancelled, and the panel keeps the layouts it was given.
    controller.printCollection();
    printLayouts(context, controller.sharedPrint().listColumns());
    return 0;
  }
  const QString pdf = args->value("--pdf");
  if (pdf.isEmpty()) return CliContext::usage(QStringLiteral("print needs --pdf OUT"));
  if (!context.openCatalogue()) return 1;
  if (args->has("--collection")) {
    Collection* c = controller.collections().collectionWithName(args->value("--collection"), false);
    if (!c) return CliContext::failure(QStringLiteral("no collection '%1'").arg(args->value("--collection")));
    controller.collections().selectCollection(c);
  }
  controller.entriesController().rearrangeObjects();

  context.windowSystem.answerPrintDialogWith(
      {args->value("--layout"), args->has("--covers"), args->has("--landscape"), pdf});
  controller.printCollection();
  if (!context.windowSystem.printDialogProblem().isEmpty())
    return CliContext::usage(context.windowSystem.printDialogProblem());
  // A failure was told by the print panel's alert.
  const PrintController& panel = controller.sharedPrint();
  if (!panel.lastError().isEmpty() || panel.lastPageCount() == 0) return 1;
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginObject();
    json.key(QStringLiteral("pdf"));
    json.value(pdf);
    json.key(QStringLiteral("pages"));
    json.value(qint64(panel.lastPageCount()));
    json.endObject();
  } else {
    context.windowSystem.inform(QStringLiteral("Printed %1 page(s) to %2").arg(panel.lastPageCount()).arg(pdf));
  }
  return 0;
}

}  // namespace Commands
