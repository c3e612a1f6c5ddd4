#include "CliContext.h"
#include "Clock.h"
#include "Commands.h"
#include "Entry.h"
#include "EntryJson.h"
#include "JsonWriter.h"
#include "Loan.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "Settings.h"
#include "Store.h"
#include "SettingsKeys.h"
#include "TextTable.h"

namespace Commands {

int list(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args =
      CommandArguments::parse(words, {"--collection", "--search", "--search-type", "--columns"}, {"--overdue"}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  MyController& controller = context.controller;

  QStringList columns;
  if (args->has("--columns")) {
    columns = args->value("--columns").split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& c : columns)
      if (!EntitySchema::cd().has(c)) return CliContext::usage(QStringLiteral("unknown field '%1'").arg(c));
  }
  int searchType = 1;
  if (args->has("--search-type")) {
    bool ok = false;
    searchType = args->value("--search-type").toInt(&ok);
    if (!ok) return CliContext::usage(QStringLiteral("--search-type needs a number"));
  }
  if (args->has("--collection") && !context.showCollection(args->value("--collection"))) return 1;
  controller.search(args->value("--search"), searchType);
  std::vector<Entry*> entries = controller.entriesController().arrangedObjects();
  if (args->has("--overdue")) {
    const QDateTime now = Clock::now();
    std::erase_if(entries, [&](const Entry* e) { return !Loan::isOverdue(*e, now); });
  }

  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginArray();
    Store& store = controller.managedObjectContext();
    store.readInOneSnapshot([&] {
      for (Entry* e : entries) writeEntryJson(json, *e, store);
    });
    json.endArray();
    return 0;
  }
  if (columns.isEmpty())
    for (const QVariant& c : controller.preferencesStandard().objectForKey(SettingsKeys::defaultColumns).toList())
      columns << c.toMap().value(QStringLiteral("identifier")).toString();
  QStringList headers{QStringLiteral("UID")};
  for (const QString& c : columns) headers << controller.fieldsController()->localizedColumnName(c);
  TextTable table(headers);
  for (Entry* e : entries) {
    QStringList row{QString::number(e->uid())};
    for (const QString& c : columns)
      row << controller.fieldsController()->displayStringForValue(c, e->value(c));
    table.addRow(row);
  }
  CliContext::print(table.toString());
  return 0;
}

}  // namespace Commands
