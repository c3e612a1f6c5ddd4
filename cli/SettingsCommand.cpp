#include "CliContext.h"
#include "Commands.h"
#include "JsonWriter.h"
#include "MyController.h"
#include "Settings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QSet>

namespace {

// VALUE is JSON when it parses as JSON, else the text itself.
QVariant valueFromArgument(const QString& text) {
  QJsonParseError error;
  const QJsonDocument doc = QJsonDocument::fromJson(("[" + text + "]").toUtf8(), &error);
  if (error.error == QJsonParseError::NoError && doc.isArray() && doc.array().size() == 1)
    return doc.array().first().toVariant();
  return text;
}

QString compact(const QVariant& value) {
  if (value.metaType().id() == QMetaType::QString) return value.toString();
  const QJsonValue json = QJsonValue::fromVariant(value);
  if (json.isArray()) return QString::fromUtf8(QJsonDocument(json.toArray()).toJson(QJsonDocument::Compact));
  if (json.isObject()) return QString::fromUtf8(QJsonDocument(json.toObject()).toJson(QJsonDocument::Compact));
  if (json.isBool()) return json.toBool() ? QStringLiteral("true") : QStringLiteral("false");
  if (json.isDouble()) return QString::number(json.toDouble());
  return value.toString();
}

}  // namespace

namespace Commands {

int settings(const CliContext& context, const QStringList& args) {
  Settings& settings = context.controller.preferencesStandard();
  const QString sub = args.value(0);
  if (sub == QLatin1String("list") && args.size() == 1) {
    QStringList keys = settings.registeredDefaults().keys();
    for (const QString& k : settings.userKeys())
      if (!keys.contains(k)) keys << k;
    keys.sort();
    if (context.options.json) {
      JsonWriter json(stdout);
      json.beginObject();
      for (const QString& k : keys) {
        json.key(k);
        json.variant(settings.objectForKey(k));
      }
      json.endObject();
    } else {
      for (const QString& k : keys) CliContext::print(QStringLiteral("%1 = %2\n").arg(k, compact(settings.objectForKey(k))));
    }
    return 0;
  }
  if (sub == QLatin1String("get") && args.size() == 2) {
    const QVariant value = settings.objectForKey(args[1]);
    if (!value.isValid()) return CliContext::failure(QStringLiteral("no setting '%1'").arg(args[1]));
    if (context.options.json) {
      JsonWriter json(stdout);
      json.variant(value);
      json.endDocument();
    } else {
      CliContext::print(compact(value) + QLatin1Char('\n'));
    }
    return 0;
  }
  if (sub == QLatin1String("set") && args.size() == 3) {
    settings.setObject(args[1], valueFromArgument(args[2]));
    settings.sync();
    return 0;
  }
  if (sub == QLatin1String("unset") && args.size() == 2) {
    settings.removeObject(args[1]);
    settings.sync();
    return 0;
  }
  return CliContext::usage(QStringLiteral("usage: settings list | get KEY | set KEY VALUE | unset KEY"));
}

}  // namespace Commands
