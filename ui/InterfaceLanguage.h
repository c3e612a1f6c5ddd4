#pragma once

#include <QLocale>
#include <QString>

// The language of the window: the first of the desktop's languages (LANGUAGE, LC_ALL,
// LC_MESSAGES, LANG, as QLocale::system() reads them) that has a translation, else English.
// Installs the window's translation, Qt's own for standard buttons and dialogs, and the
// framework's string tables of that language. Call before any window or controller is built.
class InterfaceLanguage {
 public:
  // The language code installed ("de"), or empty for English.
  static QString install(const QLocale& desktop = QLocale::system());
  // Back to English; for tests that switch languages within one process.
  static void uninstall();
  // The languages the window is translated into, besides English.
  static QStringList available();
};
