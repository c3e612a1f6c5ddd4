#include "InterfaceLanguage.h"

#include "StringTable.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>
#include <vector>

namespace {

const QString translationsFolder = QStringLiteral(":/i18n");

std::vector<std::unique_ptr<QTranslator>>& installed() {
  static std::vector<std::unique_ptr<QTranslator>> translators;
  return translators;
}

void installFile(const QString& path) {
  auto translator = std::make_unique<QTranslator>();
  if (!translator->load(path) || !QCoreApplication::installTranslator(translator.get())) return;
  installed().push_back(std::move(translator));
}

// "de-DE" is tried as "de_DE", then as "de"; English ends the search, as the source language.
QString chosenLanguage(const QLocale& desktop) {
  const QStringList available = InterfaceLanguage::available();
  for (const QString& uiLanguage : desktop.uiLanguages()) {
    QString name = uiLanguage;
    name.replace(QLatin1Char('-'), QLatin1Char('_'));
    for (const QString& candidate : {name, name.section(QLatin1Char('_'), 0, 0)}) {
      if (candidate == QLatin1String("en") || candidate == QLatin1String("C")) return {};
      if (available.contains(candidate)) return candidate;
    }
  }
  return {};
}

}  // namespace

QStringList InterfaceLanguage::available() {
  QStringList languages;
  for (const QString& file : QDir(translationsFolder).entryList({QStringLiteral("discary_*.qm")})) {
    const QString language = file.mid(8, file.size() - 11);
    if (language != QLatin1String("en")) languages << language;
  }
  return languages;
}

QString InterfaceLanguage::install(const QLocale& desktop) {
  uninstall();
  const QString language = chosenLanguage(desktop);
  if (language.isEmpty()) return {};
  installFile(QStringLiteral("%1/discary_%2.qm").arg(translationsFolder, language));
  // Qt's own texts (standard buttons, file dialogs) come with the distribution's Qt translations
  // when installed; without them those few texts stay English.
  const QString qtFolder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (QFile::exists(QStringLiteral("%1/qtbase_%2.qm").arg(qtFolder, language)))
    installFile(QStringLiteral("%1/qtbase_%2.qm").arg(qtFolder, language));
  StringTable::setInterfaceLanguage(language);
  return language;
}

void InterfaceLanguage::uninstall() {
  for (const auto& translator : installed()) QCoreApplication::removeTranslator(translator.get());
  installed().clear();
  StringTable::setInterfaceLanguage({});
}
