#include "DiscMenu.h"

#include "CatalogueHistory.h"
#include "EntryEditor.h"
#include "Freedb.h"
#include "InternetSearchDialog.h"
#include "MyController.h"

#include <QLineEdit>
#include <QMenu>
#include <set>

DiscMenu::DiscMenu(MyController& controller, CatalogueHistory& history, QWidget* window, QMenu* menu)
    : QObject(window), controller_(controller), history_(history), window_(window) {
  menu->addAction(tr("&Scan Disc"), QKeySequence(Qt::CTRL | Qt::Key_K), this, &DiscMenu::scanDisc)
      ->setObjectName(QStringLiteral("scanDisc"));
  QAction* eject = menu->addAction(tr("&Eject"), this, &DiscMenu::ejectDisc);
  eject->setObjectName(QStringLiteral("ejectDisc"));
  connect(menu, &QMenu::aboutToShow, eject, [this, eject] { eject->setEnabled(controller_.canEject()); });
  menu->addSeparator();
  menu->addAction(tr("&Internet Search…"), this, [this] { internetSearch(); })->setObjectName(QStringLiteral("internetSearch"));
  menu->addAction(tr("Add &Manually…"), this, &DiscMenu::addManually)->setObjectName(QStringLiteral("addManually"));
}

void DiscMenu::scanDisc() {
  history_.record(tr("Scan Disc"), {}, [this] {
    auto& entries = controller_.managedObjectContext().entries();
    const std::set<Entry*> before(entries.begin(), entries.end());
    controller_.scanDisc();
    std::vector<Entry*> added;
    for (Entry* entry : controller_.managedObjectContext().entries()) {
      if (!before.count(entry)) added.push_back(entry);
    }
    if (!added.empty()) {
      controller_.saveManagedObjectContext();
      showAddedEntries(added);
    }
    showAddPanel();
  });
}

void DiscMenu::ejectDisc() { controller_.ejectCD(); }

void DiscMenu::internetSearch(const QString& text) {
  const auto sources = controller_.discScan().sources();
  InternetSearchDialog dialog(controller_.freedb(), controller_.musicBrainz(),
                              !sources.isEmpty() && sources.first() == DiscLookup::Source::musicBrainz, window_);
  if (!text.isEmpty()) {
    dialog.field()->setText(text);
    dialog.search();
  }
  if (dialog.exec() != QDialog::Accepted || dialog.chosenIndex() < 0) return;
  controller_.showResultOfSite(dialog.chosenSite(), dialog.chosenIndex());
  showAddPanel();
}

void DiscMenu::addManually() {
  controller_.addPanel().setResults(nullptr, -1);
  controller_.clearAddPanel();
  controller_.fillInformationFromCD();
  controller_.nameUnnamedTracks();
  controller_.showAddPanel();
  showAddPanel();
}

void DiscMenu::showAddPanel() {
  if (!controller_.addPanel().isVisible()) return;
  EntryEditor editor(controller_, nullptr, window_);
  editor.loadFromAddPanel();
  bool added = false;
  history_.record(tr("Add Entry"), {}, [&] { added = editor.exec() == QDialog::Accepted && editor.entry(); });
  controller_.closeAddPanel();
  if (!added) return;
  showAddedEntries({editor.entry()});
}

void DiscMenu::showAddedEntries(const std::vector<Entry*>& entries) {
  // The current search and filter decide whether they are in view, as for any other entry.
  controller_.entriesController().rearrangeObjects();
  controller_.entriesController().setSelectedObjects(entries);
  controller_.refreshInformation();
}
