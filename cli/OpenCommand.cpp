#include "CliContext.h"
#include "CliWindowSystem.h"
#include "Commands.h"
#include "JsonWriter.h"
#include "MyController.h"

#include <QFileInfo>

namespace Commands {

int open(const CliContext& context, const QStringList& words) {
  if (words.isEmpty()) return CliContext::usage(QStringLiteral("open needs a file, URL or text"));
  JsonWriter json(stdout);
  if (context.options.json && words.size() > 1) json.beginArray();
  bool all = true;
  for (const QString& word : words) {
    CliWindowSystem& panel = context.windowSystem;
    panel.showInternetSearchPanel({}, {});
    const bool file = QFileInfo::exists(word);
    const bool handled = file ? context.controller.openFile(word)
                              : context.controller.handleIncomingString(word);
    all &= handled;
    if (context.options.json) {
      json.beginObject();
      json.key(QStringLiteral("handled"));
      json.value(handled);
      if (!panel.searchPanelSite().isEmpty()) {
        json.key(QStringLiteral("site"));
        json.value(panel.searchPanelSite());
        json.key(QStringLiteral("search"));
        json.value(panel.searchPanelText());
      }
      json.endObject();
    } else {
      context.windowSystem.inform(!handled ? QStringLiteral("Not handled: %1").arg(word)
                                  : panel.searchPanelSite().isEmpty()
                                      ? QStringLiteral("Handled: %1").arg(word)
                                      : QStringLiteral("Search %1 for: %2").arg(panel.searchPanelSite(), panel.searchPanelText()));
    }
  }
  if (context.options.json && words.size() > 1) json.endArray();
  if (!context.save()) return 1;
  return all ? 0 : 1;
}

}  // namespace Commands
