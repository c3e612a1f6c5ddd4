#include "PageView.h"

#include "CoverCell.h"

#include <QFileInfo>

PageView::PageView(const Settings& settings, QWidget* parent) : QTextBrowser(parent), settings_(settings) {}

void PageView::setDataFolder(const QString& folder) {
  setSearchPaths({folder});
  coversFolder_ = folder.isEmpty() ? QString() : QFileInfo(folder + QStringLiteral("/Covers")).absoluteFilePath();
}

QVariant PageView::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource || coversFolder_.isEmpty() || !name.isLocalFile())
    return QTextBrowser::loadResource(type, name);
  const QFileInfo file(name.toLocalFile());
  if (file.absolutePath() != coversFolder_) return QTextBrowser::loadResource(type, name);
  const QImage cover(file.absoluteFilePath());
  if (cover.isNull()) return {};
  return CoverCell(settings_).render(cover);
}
