#include "CliApplication.h"

#include "CliContext.h"
#include "CliWindowSystem.h"
#include "Collection.h"
#include "Commands.h"
#include "LinuxPlatform.h"
#include "MyController.h"
#include "Settings.h"

#include <QHash>
#include <functional>

namespace {

using Command = std::function<int(const CliContext&, const QStringList&)>;

struct CommandInfo {
  Command run;
  bool needsCatalogue;
  bool paints = false;  // draws text or pictures, so it needs a GUI application object
  // Works on one entry: reads the entries it needs, not all of them.
  Store::Loading loading = Store::Loading::AllEntries;
};

const QHash<QString, CommandInfo>& commands() {
  static const QHash<QString, CommandInfo> table = {
      {"help", {Commands::help, false}},
      {"settings", {Commands::settings, false}},
      {"fields", {Commands::fields, false}},
      {"search-types", {Commands::searchTypes, false}},
      {"add", {Commands::add, true, false, Store::Loading::OnDemand}},
      {"edit", {Commands::edit, true, false, Store::Loading::OnDemand}},
      {"delete", {Commands::remove, true, false, Store::Loading::OnDemand}},
      {"list", {Commands::list, true}},
      {"collections", {Commands::collections, true}},
      {"totals", {Commands::totals, true}},
      {"collection", {Commands::collection, true}},
      {"show", {Commands::show, true, false, Store::Loading::OnDemand}},
      {"export", {Commands::exportEntries, true}},
      {"link", {Commands::link, true, false, Store::Loading::OnDemand}},
      {"open", {Commands::open, true}},
      // Embedded covers are decoded as pictures.
      {"import", {Commands::import, true, true}},
      {"tags", {Commands::tags, false}},
      {"library", {Commands::library, false}},
      // Opens the catalogue itself: listing the layouts needs none.
      {"print", {Commands::print, false, true}},
      {"discid", {Commands::discid, false}},
      {"lookup", {Commands::lookupDisc, false}},
      {"cddb", {Commands::cddb, false}},
      {"websearch", {Commands::websearch, false}},
      {"scan", {Commands::scan, true}},
      {"stats", {Commands::stats, true}},
      {"duplicates", {Commands::duplicates, true}},
  };
  return table;
}

}  // namespace

bool CliApplication::isCommand(const QString& word) { return commands().contains(word); }

bool CliApplication::paints(const QStringList& arguments) {
  QString message;
  const auto options = CliOptions::parse(arguments, &message);
  return options && commands().value(options->words.value(0)).paints;
}

int CliApplication::run(const QStringList& arguments) {
  QString message;
  auto options = CliOptions::parse(arguments, &message);
  if (!options) return CliContext::usage(message);
  if (options->version) {
    CliContext::print(QStringLiteral("discary %1\n").arg(QStringLiteral(DISCARY_VERSION)));
    return 0;
  }
  if (options->words.value(0) == QLatin1String("--help")) options->words[0] = QStringLiteral("help");
  const QString name = options->words.value(0);
  if (!name.isEmpty() && !commands().contains(name)) {
    if (name.startsWith(QLatin1String("--"))) return CliContext::usage(QStringLiteral("unknown option %1").arg(name));
    return CliContext::usage(QStringLiteral("unknown command '%1' (see 'discary help')").arg(name));
  }

  Settings settings(options->settings);
  CliWindowSystem windowSystem(options->button, options->quiet);
  LinuxPlatform platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  controller.setServerOverride(options->server);
  controller.discScan().setMusicBrainzOverride(options->musicBrainzServer, options->coverServer);
  const CliContext context{*options, controller, windowSystem};

  if (name.isEmpty()) {
    // No window system yet: start up on the catalogue and say what is in it.
    if (!context.openCatalogue()) return 1;
    controller.applicationDidFinishLaunching();
    const Store& store = controller.managedObjectContext();
    CliContext::print(QStringLiteral("Discary %1\nCatalogue: %2\nEntries: %3, collections: %4\n"
                                     "Run 'discary help' for the commands.\n")
                          .arg(QStringLiteral(DISCARY_VERSION), store.path())
                          .arg(store.entries().size())
                          .arg(store.collections().size()));
    return 0;
  }
  // Asking a command for its usage must not run it, nor need its catalogue.
  if (options->words.mid(1).contains(QStringLiteral("--help"))) return Commands::help(context, {name});
  const CommandInfo& command = commands()[name];
  if (command.needsCatalogue && !context.openCatalogue(command.loading)) return 1;
  return command.run(context, options->words.mid(1));
}
