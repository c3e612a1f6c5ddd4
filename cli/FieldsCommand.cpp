#include "CliContext.h"
#include "Commands.h"
#include "HostKeys.h"
#include "JsonWriter.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "TextTable.h"

namespace {

const QStringList listOptions = {"--columns", "--filters", "--personal", "--smart", "--fullscreen", "--feed"};

// A field definition with what the catalogue answers about its identifier.
QVariantMap describedField(MyFieldsControllerShared& fields, const QVariantMap& definition) {
  QVariantMap out = definition;
  const QString id = definition.value(MKIdentifier).toString();
  out.insert(QStringLiteral("type"), qint64(fields.fieldTypeForIdentifier(id)));
  out.insert(QStringLiteral("columnType"), qint64(fields.columnType(id, false)));
  out.insert(QStringLiteral("numberColumnType"), qint64(fields.columnType(id, true)));
  out.insert(QStringLiteral("width"), double(fields.widthForColumn(id)));
  return out;
}

void writeField(JsonWriter& json, const QVariantMap& field) {
  // The definition's own keys first, in a fixed order, so output is stable for scripts.
  static const QStringList order = {"identifier", "isOff", "long", "location", "type", "columnType", "numberColumnType", "width"};
  json.beginObject();
  for (const QString& key : order)
    if (field.contains(key)) {
      json.key(key);
      json.variant(field.value(key));
    }
  for (auto it = field.begin(); it != field.end(); ++it)
    if (!order.contains(it.key())) {
      json.key(it.key());
      json.variant(it.value());
    }
  json.endObject();
}

}  // namespace

namespace Commands {

int fields(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {}, listOptions, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  MyFieldsControllerShared& fields = *context.controller.fieldsController();
  QString chosen;
  for (const QString& option : listOptions)
    if (args->has(option)) {
      if (!chosen.isEmpty()) return CliContext::usage(QStringLiteral("choose one of %1").arg(listOptions.join(", ")));
      chosen = option;
    }

  QVariantList definitions;
  QStringList identifiers;
  if (chosen.isEmpty()) {
    for (const QVariant& d : fields.allFields()) definitions << describedField(fields, d.toMap());
  } else if (chosen == QLatin1String("--columns")) {
    definitions = fields.columnFields();
  } else if (chosen == QLatin1String("--filters")) {
    definitions = fields.filterMenuItems();
  } else if (chosen == QLatin1String("--smart")) {
    definitions = fields.smartCollectionFields();
  } else if (chosen == QLatin1String("--personal")) {
    identifiers = fields.personalFields();
  } else if (chosen == QLatin1String("--fullscreen")) {
    identifiers = fields.defaultFullscreenFields();
  } else {
    identifiers = fields.rssDescriptionFields();
  }

  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginArray();
    for (const QVariant& d : definitions) writeField(json, d.toMap());
    for (const QString& id : identifiers) json.value(id);
    json.endArray();
    return 0;
  }
  if (!identifiers.isEmpty() || definitions.isEmpty()) {
    for (const QString& id : identifiers) CliContext::print(QStringLiteral("%1\t%2\n").arg(id, fields.localizedColumnName(id)));
    return 0;
  }
  if (chosen == QLatin1String("--filters")) {
    TextTable table({QStringLiteral("Name"), QStringLiteral("Field"), QStringLiteral("Action")});
    for (const QVariant& d : definitions) {
      const QVariantMap m = d.toMap();
      table.addRow({m.value("name").toString(), m.value("field").toString(), m.value("action").toString()});
    }
    CliContext::print(table.toString());
    return 0;
  }
  TextTable table({QStringLiteral("Identifier"), QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("Column"),
                   QStringLiteral("Width"), QStringLiteral("Flags")});
  for (const QVariant& d : definitions) {
    const QVariantMap m = describedField(fields, d.toMap());
    QStringList flags;
    if (m.value("isOff").toBool()) flags << QStringLiteral("off");
    if (m.value("long").toBool()) flags << QStringLiteral("long");
    if (m.contains("location")) flags << m.value("location").toString();
    table.addRow({m.value(MKIdentifier).toString(), fields.localizedColumnName(m.value(MKIdentifier).toString()),
                  m.value("type").toString(), m.value("numberColumnType").toString(), m.value("width").toString(),
                  flags.join(QLatin1Char(','))});
  }
  CliContext::print(table.toString());
  return 0;
}

int searchTypes(const CliContext& context, const QStringList& args) {
  if (!args.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args.first()));
  QList<int> types;
  for (int t = 0; t <= 12; ++t) types << t;
  types << 40 << 41 << 42 << 43 << 100;
  MyController& controller = context.controller;
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginArray();
    for (int t : types) {
      json.beginObject();
      json.key(QStringLiteral("type"));
      json.value(qint64(t));
      json.key(QStringLiteral("label"));
      json.value(controller.labelForSearchType(t));
      const QString identifier = controller.searchIdentifierForSearchType(t);
      if (!identifier.isEmpty()) {
        json.key(QStringLiteral("identifier"));
        json.value(identifier);
      }
      json.endObject();
    }
    json.endArray();
    return 0;
  }
  TextTable table({QStringLiteral("Type"), QStringLiteral("Label"), QStringLiteral("Searches")});
  for (int t : types)
    table.addRow({QString::number(t), controller.labelForSearchType(t), controller.searchIdentifierForSearchType(t)});
  CliContext::print(table.toString());
  return 0;
}

}  // namespace Commands
