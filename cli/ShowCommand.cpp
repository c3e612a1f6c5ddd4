#include "CliContext.h"
#include "Commands.h"
#include "Entry.h"
#include "MyController.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "TemplateFile.h"

namespace Commands {

int show(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--template"}, {"--html", "--webview"}, &message);
  if (!args) return CliContext::usage(message);
  if (args->positional.size() != 1) return CliContext::usage(QStringLiteral("show needs one ENTRY"));
  MyController& controller = context.controller;
  Entry* entry = context.findEntry(args->positional.first(), &message);
  if (!entry) return CliContext::failure(message);

  QString page;
  if (args->has("--template")) {
    const auto text = TemplateFile::read(args->value("--template"), &message);
    if (!text) return CliContext::failure(message);
    page = *text;
  } else {
    const QString name = controller.preferencesStandard().stringForKey(SettingsKeys::infoTemplate);
    page = controller.templateText(name);
    if (page.isNull()) return CliContext::failure(QStringLiteral("no template named '%1'").arg(name));
  }
  // The page view is always HTML.
  const bool webView = args->has("--webview");
  // Play links are made for the tracks the player's library holds.
  if (webView && page.contains(QLatin1String("[IncludeURLInName]"))) {
    controller.loadMusicLibrary();
    controller.waitForLibraryRefresh();
  }
  controller.replaceKeysInTemplate(page, *entry, args->has("--html") || webView, webView);
  CliContext::print(page);
  return 0;
}

}  // namespace Commands
