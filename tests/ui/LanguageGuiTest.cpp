#include "InterfaceLanguage.h"
#include "MyFieldsControllerShared.h"
#include "PageView.h"
#include "StringTable.h"
#include "WindowTestBase.h"
#include "WindowTour.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace {

class LanguageGuiTest : public WindowTestBase<> {
 protected:
  void TearDown() override {
    InterfaceLanguage::uninstall();
    WindowTestBase::TearDown();
  }

  // The texts of every window, in the language installed, on a catalogue of one entry whose
  // values are the same in any language.
  std::vector<std::pair<QString, QString>> tour(const QString& catalogue) {
    launch(dir.filePath(catalogue));
    Entry* entry = add({{"title", "1969"}, {"artist", "42"}, {"price", "12"}});
    controller->saveManagedObjectContext();
    WindowTour windows(*controller, windowSystem, entry);
    std::vector<std::pair<QString, QString>> all;
    for (QWidget* window : windows.windows())
      for (auto& text : WindowTour::texts(window)) all.push_back(std::move(text));
    return all;
  }
};

// Words that German spells as English does.
const QStringList sameInGerman = {"Discary", "OK", "Album", "Cover", "Filter", "Format", "Format:", "Genre", "Name",
                                  "Name:", "Online", "Status", "URL", "UPC", "ASIN", "Barcode", "Discs", "Ctrl+Shift+I",
                                  "Ctrl+Shift+E", "px", "s"};

}  // namespace

TEST_F(LanguageGuiTest, TheGermanWindowsLeaveNoTextInEnglish) {
  const auto english = tour("en.sqlite");
  ASSERT_EQ(InterfaceLanguage::install(QLocale(QLocale::German, QLocale::Germany)), "de");
  const auto german = tour("de.sqlite");
  ASSERT_GT(german.size(), 300u);
  // Longer German words can push a tool bar's last items into its overflow menu, so the two
  // lists need not pair up: any German text that the English windows also show is suspect.
  QSet<QString> inEnglish;
  for (const auto& [where, text] : english) inEnglish.insert(text);
  // Server names and addresses in the online settings are the same in any language.
  static const QRegularExpression address(QStringLiteral("^[\\w.-]+\\.[a-z]{2,}$|://"));
  QStringList left;
  for (const auto& [where, text] : german) {
    if (!inEnglish.contains(text) || !text.contains(QRegularExpression(QStringLiteral("[A-Za-z]{2}"))) ||
        text.contains(address))
      continue;
    QString bare = text;
    bare.remove(QLatin1Char('&')).remove(QStringLiteral("…"));
    if (!sameInGerman.contains(bare.trimmed())) left << where + QStringLiteral(": ") + text;
  }
  left.removeDuplicates();
  EXPECT_TRUE(left.isEmpty()) << left.join(QLatin1Char('\n')).toStdString();
  // Spot checks of the three sources of text: the window's own, the field names and the
  // framework's keys.
  auto has = [&](const QString& text) {
    return std::any_of(german.begin(), german.end(), [&](const auto& t) { return t.second == text; });
  };
  EXPECT_TRUE(has(QStringLiteral("&Datei")));
  EXPECT_TRUE(has(QStringLiteral("Interpret")));
  EXPECT_TRUE(has(QStringLiteral("Plattenfirma")));
}

TEST_F(LanguageGuiTest, TheBuiltInPageSpeaksTheWindowsLanguageAndAUsersOwnTemplateStaysAsWritten) {
  ASSERT_EQ(InterfaceLanguage::install(QLocale(QLocale::German, QLocale::Germany)), "de");
  launch(dir.filePath("page.sqlite"));
  Entry* entry = add({{"title", "1969"}, {"label", "Blue Note"}, {"comments", "Erstpressung"}});
  controller->saveManagedObjectContext();
  const auto page = [&] {
    MainWindow window(*controller, windowSystem);
    window.show();
    window.selectEntries({entry});
    return window.pageView()->toPlainText();
  };
  const QString german = page();
  for (const char* text : {"Angaben", "Plattenfirma", "Kommentare"}) EXPECT_TRUE(german.contains(text)) << text;
  for (const char* text : {"Details", "Label", "Notes"}) EXPECT_FALSE(german.contains(text)) << text;

  ASSERT_TRUE(QDir(dir.path()).mkpath("Templates"));
  QFile own(dir.filePath("Templates/Collection.html"));
  ASSERT_TRUE(own.open(QIODevice::WriteOnly));
  own.write("<p>Mine: [title]</p>");
  own.close();
  EXPECT_EQ(page().trimmed(), "Mine: 1969");
}

TEST_F(LanguageGuiTest, TheLanguageFollowsTheDesktopAndTheCommandLineTablesStayEnglish) {
  EXPECT_EQ(InterfaceLanguage::install(QLocale(QStringLiteral("de_AT"))), "de");
  EXPECT_EQ(StringTable::interfaceLanguage(), "de");
  EXPECT_EQ(QCoreApplication::translate("MainWindow", "&File"), "&Datei");
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen")
      << "Qt's own German texts are not installed (qt6-translations-l10n)";
  StringTable german;
  EXPECT_EQ(german.localizedString("Imported Audio", "Imported Audio"), "Importierte Audiodateien");
  EXPECT_EQ(german.localizedString("label", "Label", StringTable::fieldsTable), "Plattenfirma");
  EXPECT_EQ(german.localizedString("Entries", "Albums", StringTable::applicationTable), "Alben");
  // A key the German tables lack shows the English default, as it does untranslated.
  EXPECT_EQ(german.localizedString("No Such Key", "Fallback"), "Fallback");

  // A language without a translation, or English first, leaves the window in English.
  for (const QLocale& other : {QLocale(QLocale::French, QLocale::France), QLocale(QLocale::English, QLocale::Germany)}) {
    EXPECT_EQ(InterfaceLanguage::install(other), "");
    EXPECT_EQ(StringTable::interfaceLanguage(), "");
    EXPECT_EQ(QCoreApplication::translate("MainWindow", "&File"), "&File");
    EXPECT_EQ(StringTable().localizedString("Imported Audio", "Imported Audio"), "Imported Audio");
  }
  EXPECT_EQ(InterfaceLanguage::available(), QStringList{"de"});
}
