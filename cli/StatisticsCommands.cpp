#include "CdKeys.h"
#include "CliContext.h"
#include "CollectionStatistics.h"
#include "Commands.h"
#include "DuplicateFinder.h"
#include "Entry.h"
#include "JsonWriter.h"
#include "MyController.h"
#include "TextTable.h"
#include "TimeText.h"

namespace Commands {

int stats(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--by", "--collection"}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  const QString byName = args->has("--by") ? args->value("--by") : QStringLiteral("genre");
  const auto by = CollectionStatistics::groupingNamed(byName);
  if (!by)
    return CliContext::usage(QStringLiteral("--by takes one of %1, not '%2'")
                                 .arg(CollectionStatistics::groupingNames().join(QStringLiteral(", ")), byName));
  MyController& controller = context.controller;
  if (args->has("--collection") && !context.showCollection(args->value("--collection"))) return 1;
  controller.search(QString(), 1);
  CollectionStatistics statistics;
  const auto groups = statistics.groups(controller.entriesController().arrangedObjects(), *by);

  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginArray();
    for (const auto& g : groups) {
      json.beginObject();
      json.key(QStringLiteral("group"));
      json.value(g.name);
      json.key(QStringLiteral("count"));
      json.value(qint64(g.entries.size()));
      json.key(QStringLiteral("seconds"));
      json.value(g.seconds());
      json.key(QStringLiteral("value"));
      json.value(g.value().toDouble());
      json.endObject();
    }
    json.endArray();
    return 0;
  }
  TextTable table({byName.left(1).toUpper() + byName.mid(1).toLower(), QStringLiteral("Entries"),
                   QStringLiteral("Play time"), QStringLiteral("Value")});
  for (const auto& g : groups)
    table.addRow({g.name, QString::number(g.entries.size()), TimeText::timeStringWithSeconds(g.seconds()),
                  g.value().formatted(2)});
  CliContext::print(table.toString());
  return 0;
}

int duplicates(const CliContext& context, const QStringList& words) {
  if (!words.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(words.first()));
  const auto found = DuplicateFinder::find(context.controller.managedObjectContext().entries());

  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginObject();
    for (const auto& [name, groups] : {std::pair{"same", &found.same}, std::pair{"editions", &found.editions}}) {
      json.key(QLatin1String(name));
      json.beginArray();
      for (const auto& g : *groups) {
        json.beginArray();
        for (const Entry* e : g.entries) json.value(e->uid());
        json.endArray();
      }
      json.endArray();
    }
    json.endObject();
    return 0;
  }
  QString text;
  for (const auto& [heading, groups] : {std::pair{"Same release", &found.same}, std::pair{"Other editions", &found.editions}}) {
    text += QStringLiteral("%1: %2 group(s)\n").arg(QLatin1String(heading)).arg(groups->size());
    for (const auto& g : *groups) {
      // The columns that tell the entries apart, after the ones that name them.
      QStringList columns{CdKeys::title, CdKeys::artist};
      for (const QString& key : g.differences)
        if (!columns.contains(key)) columns << key;
      QStringList headers{QStringLiteral("UID")};
      headers << columns;
      TextTable table(headers);
      for (const Entry* e : g.entries) {
        QStringList row{QString::number(e->uid())};
        for (const QString& key : columns) {
          const QVariant v = e->value(key);
          row << (v.typeId() == QMetaType::QDateTime ? v.toDateTime().toUTC().toString(Qt::ISODate) : v.toString());
        }
        table.addRow(row);
      }
      text += QLatin1Char('\n') + table.toString();
      text += QStringLiteral("differ: %1\n\n")
                  .arg(g.differences.isEmpty() ? QStringLiteral("nothing") : g.differences.join(QStringLiteral(", ")));
    }
  }
  CliContext::print(text);
  return 0;
}

}  // namespace Commands
