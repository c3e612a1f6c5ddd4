#include "AttributeInput.h"
#include "CdKeys.h"
#include "CliContext.h"
#include "CliWindowSystem.h"
#include "Commands.h"
#include "Entry.h"
#include "EntryJson.h"
#include "JsonWriter.h"
#include "ModelKeys.h"
#include "MyController.h"

#include <QDateTime>
#include <functional>
#include <optional>

namespace {

struct Assignment {
  QString key;
  QVariant value;
};

// KEY=VALUE words checked against the entity: unknown keys and unreadable values are usage
// errors, reported before anything changes.
std::optional<std::vector<Assignment>> readAssignments(const QStringList& words, const EntitySchema& schema,
                                                       QString* message) {
  std::vector<Assignment> assignments;
  for (const QString& word : words) {
    const qsizetype eq = word.indexOf(QLatin1Char('='));
    if (eq <= 0) {
      *message = QStringLiteral("expected FIELD=VALUE, not '%1'").arg(word);
      return std::nullopt;
    }
    const QString key = word.left(eq).trimmed();
    const int index = schema.indexOf(key);
    if (index < 0) {
      *message = QStringLiteral("unknown field '%1'").arg(key);
      return std::nullopt;
    }
    // FIELD= clears the field.
    const QString text = word.mid(eq + 1);
    const auto value = text.isEmpty() ? std::optional<QVariant>(QVariant()) : AttributeInput::read(schema.attributes()[index].kind, text);
    if (!value) {
      *message = QStringLiteral("'%1' is not a valid value for %2").arg(word.mid(eq + 1), key);
      return std::nullopt;
    }
    assignments.push_back({key, *value});
  }
  return assignments;
}

// Taken while the entry exists, printed once the change is saved (a deleted entry is gone by then).
std::function<void()> reportOf(const CliContext& context, Entry& entry, const QString& verb) {
  if (context.options.json) {
    JsonWriter json(nullptr);
    writeEntryJson(json, entry, context.controller.managedObjectContext());
    return [text = json.text()] {
      std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
      std::fflush(stdout);
    };
  }
  const QString message = QStringLiteral("%1 entry %2: %3").arg(verb).arg(entry.uid()).arg(entry.stringValue(CdKeys::title));
  return [&context, message] { context.windowSystem.inform(message); };
}

void printEntry(const CliContext& context, Entry& entry, const QString& verb) { reportOf(context, entry, verb)(); }

}  // namespace

namespace Commands {

int add(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--track", "--collection"}, {}, &message);
  if (!args) return CliContext::usage(message);
  const auto assignments = readAssignments(args->positional, EntitySchema::cd(), &message);
  if (!assignments) return CliContext::usage(message);
  QVariantList tracks;
  for (const QString& trackText : args->values("--track")) {
    QStringList parts;
    for (const QString& part : trackText.split(QLatin1Char(';'), Qt::SkipEmptyParts)) parts << part;
    const auto track = readAssignments(parts, EntitySchema::track(), &message);
    if (!track) return CliContext::usage(QStringLiteral("--track: %1").arg(message));
    QVariantMap t;
    for (const auto& a : *track) t.insert(a.key, a.value);
    tracks << t;
  }

  MyController& controller = context.controller;
  CollectionsController& collections = controller.collections();
  if (args->has("--collection")) {
    const QString name = args->value("--collection");
    Collection* c = collections.collectionWithName(name, true);
    collections.selectCollection(c ? c : collections.createCollectionNamed(name, {}));
  }
  controller.clearAddPanel();
  for (const auto& a : *assignments) controller.addPanel().setValue(a.value, a.key);
  controller.addPanel().trackData().setTracks(tracks);
  Entry* entry = controller.addEntryFromAddPanelCheckForDuplicates(true);
  if (!entry) return CliContext::failure(QStringLiteral("duplicate skipped"));
  if (!context.save()) return 1;
  printEntry(context, *entry, QStringLiteral("Added"));
  return 0;
}

int edit(const CliContext& context, const QStringList& words) {
  if (words.isEmpty()) return CliContext::usage(QStringLiteral("edit needs an ENTRY and FIELD=VALUE"));
  QString message;
  const auto args = CommandArguments::parse(words.mid(1), {}, {}, &message);
  if (!args) return CliContext::usage(message);
  const auto assignments = readAssignments(args->positional, EntitySchema::cd(), &message);
  if (!assignments) return CliContext::usage(message);
  Entry* entry = context.findEntry(words.first(), &message);
  if (!entry) return CliContext::failure(message);
  for (const auto& a : *assignments) entry->setValue(a.key, a.value);
  entry->setValue(CdKeys::dateEdited, QDateTime::currentDateTimeUtc());
  context.controller.addValuesToAutofillForEntry(*entry);
  if (!context.save()) return 1;
  printEntry(context, *entry, QStringLiteral("Changed"));
  return 0;
}

int remove(const CliContext& context, const QStringList& words) {
  if (words.size() != 1) return CliContext::usage(QStringLiteral("delete needs one ENTRY"));
  QString message;
  Entry* entry = context.findEntry(words.first(), &message);
  if (!entry) return CliContext::failure(message);
  const auto report = reportOf(context, *entry, QStringLiteral("Deleted"));
  context.controller.deleteEntries({entry});
  if (!context.save()) return 1;
  report();
  return 0;
}

}  // namespace Commands
