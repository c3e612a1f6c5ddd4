#pragma once

#include <QStringList>

// The desktop application: opens the catalogue (offering another when it cannot be opened),
// runs the launch sequence and shows the main window until it is closed.
namespace GuiApplication {
// Whether a command line asks for the window: no command word, or files and URLs (a word that
// names an existing file or holds "/", ":" or ".").
bool wanted(const QStringList& arguments);
// Needs a QApplication. Returns the exit status.
int run(const QStringList& arguments);
// The catalogue a launch without --catalogue opens: the last one opened, else the default.
inline const QString lastCatalogueKey = QStringLiteral("Last Catalogue");
}  // namespace GuiApplication
