#include "DiscMenu.h"

#include "EntryEditor.h"
#include "Freedb.h"
#include "InternetSearchDialog.h"

#include <QLineEdit>
#include "MainWindow.h"
#include "MyController.h"
#include "Platform.h"

#include <QMenu>
#include <QTimer>
#include <set>

DiscMenu::DiscMenu(MyController& controller, MainWindow& window, QMenu* menu)
    : QObject(&window), controller_(controller), window_(window) {
  menu->addAction(tr("&Scan Disc"), QKeySequence(Qt::CTRL | Qt::Key_K), this, &DiscMenu::scanDisc)
      ->setObjectName(QStringLiteral("scanDisc"));
  menu->addAction(tr("&Eject"), this, &DiscMenu::ejectDisc)->setObjectName(QStringLiteral("ejectDisc"));
  menu->addSeparator();
  menu->addAction(tr("&Internet Search…"), this, [this] { internetSearch(); })->setObjectName(QStringLiteral("internetSearch"));
  menu->addAction(tr("Add &Manually…"), this, &DiscMenu::addManually)->setObjectName(QStringLiteral("addManually"));
}

void DiscMenu::scanDisc() {
  auto& entries = controller_.managedObjectContext().entries();
  const std::set<Entry*> before(entries.begin(), entries.end());
  controller_.scanDisc();
  std::vector<Entry*> added;
  for (Entry* entry : controller_.managedObjectContext().entries()) {
    if (!before.count(entry)) added.push_back(entry);
  }
  if (!added.empty()) {
    controller_.saveManagedObjectContext();
    window_.reloadAll();
    window_.selectEntries(added);
  }
  showAddPanel();
}

void DiscMenu::ejectDisc() { controller_.ejectCD(); }

void DiscMenu::internetSearch(const QString& text) {
  InternetSearchDialog dialog(controller_.freedb(), &window_);
  if (!text.isEmpty()) {
    dialog.field()->setText(text);
    dialog.search();
  }
  if (dialog.exec() != QDialog::Accepted || dialog.chosenIndex() < 0) return;
  controller_.showResultOfSite(controller_.freedb(), dialog.chosenIndex());
  showAddPanel();
}

void DiscMenu::addManually() {
  controller_.addPanel().setResults(nullptr, -1);
  controller_.clearAddPanel();
  controller_.fillInformationFromCD();
  QVariantList tracks = controller_.addPanel().trackData().tracks();
  for (qsizetype k = 0; k < tracks.size(); ++k) {
    QVariantMap track = tracks.at(k).toMap();
    if (!track.contains(QStringLiteral("name"))) track[QStringLiteral("name")] = QStringLiteral("Track %1").arg(k + 1);
    tracks[k] = track;
  }
  controller_.addPanel().trackData().setTracks(tracks);
  controller_.showAddPanel();
  showAddPanel();
}

void DiscMenu::showAddPanel() {
  if (!controller_.addPanel().isVisible()) return;
  EntryEditor editor(controller_, nullptr, &window_);
  editor.loadFromAddPanel();
  const bool added = editor.exec() == QDialog::Accepted && editor.entry();
  controller_.closeAddPanel();
  if (!added) return;
  window_.reloadAll();
  window_.selectEntries({editor.entry()});
}
