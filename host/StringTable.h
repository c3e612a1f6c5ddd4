#pragma once

#include <QHash>
#include <QString>

// User-visible texts by key, so that they can be translated. Tables are JSON objects of key to
// text under :/strings/<table>.json; "Localizable" is the default table. A key without a text
// shows the given default value, or the key itself. When an interface language is set, its
// tables under :/strings/<language>/ override the English ones key by key.
class StringTable {
 public:
  static inline const QString defaultTable = QStringLiteral("Localizable");
  static inline const QString fieldsTable = QStringLiteral("Fields");
  // The application's own texts, apart from the framework's.
  static inline const QString applicationTable = QStringLiteral("RealTitles");

  QString localizedString(const QString& key, const QString& value = {}, const QString& table = {}) const;
  // Texts added at run time override the built-in ones (tests, user translations).
  void insert(const QString& table, const QString& key, const QString& text);

  // Process-wide, like an installed translator: the window sets it before it builds the
  // controller; the command line never does, so its output stays English. Tables read before a
  // change keep the language they were read in.
  static void setInterfaceLanguage(const QString& language);
  static QString interfaceLanguage();

 private:
  const QHash<QString, QString>& tableNamed(const QString& table) const;
  mutable QHash<QString, QHash<QString, QString>> tables_;
};
