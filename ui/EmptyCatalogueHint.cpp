#include "EmptyCatalogueHint.h"

#include <QAbstractItemView>
#include <QEvent>

EmptyCatalogueHint::EmptyCatalogueHint(QAbstractItemView* list) : QLabel(list->viewport()) {
  setObjectName(QStringLiteral("emptyHint"));
  setAlignment(Qt::AlignCenter);
  setWordWrap(true);
  setTextFormat(Qt::RichText);
  setForegroundRole(QPalette::PlaceholderText);
  setText(tr("<p><b>Your catalogue is empty.</b></p>"
             "<p>Add an album with Edit \u25B8 Add Entry (Ctrl+N),<br>"
             "import files or a folder with File \u25B8 Import\u2026 or by dropping them here,<br>"
             "or put a CD in the drive and choose Disc \u25B8 Scan Disc.</p>"));
  list->viewport()->installEventFilter(this);
  hide();
}

void EmptyCatalogueHint::showFor(bool catalogueEmpty) {
  setVisible(catalogueEmpty);
  if (catalogueEmpty) place();
}

bool EmptyCatalogueHint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && isVisible()) place();
  return QLabel::eventFilter(watched, event);
}

void EmptyCatalogueHint::place() { setGeometry(parentWidget()->rect().adjusted(24, 24, -24, -24)); }
