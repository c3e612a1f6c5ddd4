#include "CliContext.h"
#include "Commands.h"
#include "Entry.h"
#include "JsonWriter.h"
#include "MyController.h"
#include "Store.h"

namespace Commands {

int link(const CliContext& context, const QStringList& words) {
  if (words.value(0) != QLatin1String("add") || words.size() < 2)
    return CliContext::usage(QStringLiteral("link needs: add ENTRY --name N --url U [--type T]"));
  QString message;
  const auto args = CommandArguments::parse(words.mid(2), {"--name", "--url", "--type"}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  if (args->value("--url").trimmed().isEmpty()) return CliContext::usage(QStringLiteral("link add needs --url"));
  Entry* entry = context.findEntry(words[1], &message);
  if (!entry) return CliContext::failure(message);

  auto made = Store::newLink();
  made->setPrimitiveValue(QStringLiteral("url"), args->value("--url").trimmed());
  made->setPrimitiveValue(QStringLiteral("name"), args->has("--name") ? args->value("--name") : args->value("--url"));
  if (args->has("--type")) made->setPrimitiveValue(QStringLiteral("type"), args->value("--type"));
  made->setPrimitiveValue(QStringLiteral("position"), qint64(entry->linksSet().size()));
  Link* link = entry->addLink(std::move(made));
  context.controller.processNewLink(*link);
  if (!context.save()) return 1;
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginObject();
    link->forEachValue([&](int index, const QVariant& value) {
      json.key(link->schema().attributes()[index].key);
      json.variant(value);
    });
    json.endObject();
  } else {
    CliContext::print(QStringLiteral("%1\t%2\t%3\n")
                          .arg(link->stringValue(QStringLiteral("name")), link->stringValue(QStringLiteral("type")),
                               link->stringValue(QStringLiteral("url"))));
  }
  return 0;
}

}  // namespace Commands
