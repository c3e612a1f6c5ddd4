#include "CliContext.h"
#include "CliWindowSystem.h"
#include "Commands.h"
#include "CsvExporter.h"
#include "HtmlExport.h"
#include "JsonWriter.h"
#include "MyController.h"
#include "NativeExporter.h"
#include "Settings.h"
#include "SettingsKeys.h"

namespace Commands {

int exportEntries(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--format", "--output", "--collection"}, {"--folder"}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty())
    return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  if (!args->has("--format")) return CliContext::usage(QStringLiteral("export needs --format discary, csv or html"));
  const QString format = args->value("--format");
  if (format != QLatin1String("html") && format != QLatin1String("discary") && format != QLatin1String("csv"))
    return CliContext::usage(QStringLiteral("unknown format '%1' (known: discary, csv, html)").arg(format));
  if (args->has("--folder") && format != QLatin1String("discary"))
    return CliContext::usage(QStringLiteral("--folder is only for --format discary"));
  if (!args->has("--output") || args->value("--output").isEmpty())
    return CliContext::usage(QStringLiteral("export needs --output PATH"));
  MyController& controller = context.controller;

  QString title = controller.frameworkBundle().localizedString(QStringLiteral("All Entries"));
  if (args->has("--collection")) {
    Collection* c = controller.collections().collectionWithName(args->value("--collection"), false);
    if (!c) return CliContext::failure(QStringLiteral("no collection '%1'").arg(args->value("--collection")));
    controller.collections().selectCollection(c);
    title = c->name();
  }
  controller.search(QString(), 1);
  const std::vector<Entry*> entries = controller.entriesController().arrangedObjects();
  const QString output = args->value("--output");

  bool written = false;
  if (format == QLatin1String("discary")) {
    const auto form = args->has("--folder") ? NativeExporter::Form::Folder : NativeExporter::Form::File;
    written = NativeExporter::write(controller.managedObjectContext(), entries, output, form, &message);
  } else if (format == QLatin1String("csv")) {
    written = CsvExporter::write(entries, output, &message);
  } else {
    const QString name = controller.preferencesStandard().stringForKey(SettingsKeys::infoTemplate);
    const QString pageTemplate = controller.templateText(name);
    if (pageTemplate.isNull()) return CliContext::failure(QStringLiteral("no template named '%1'").arg(name));
    written = HtmlExport(controller.htmlExportServices()).write(entries, title, pageTemplate, output, &message);
  }
  if (!written) return CliContext::failure(QStringLiteral("nothing exported: %1").arg(message));

  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginObject();
    json.key(QStringLiteral("output"));
    json.value(output);
    json.key(QStringLiteral("entries"));
    json.value(qint64(entries.size()));
    json.endObject();
  } else {
    context.windowSystem.inform(QStringLiteral("Exported %1 entries to %2").arg(entries.size()).arg(output));
  }
  return 0;
}

}  // namespace Commands
