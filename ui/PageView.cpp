#include "PageView.h"

#include "CoverCell.h"

#include <QFileInfo>
#include <QScrollBar>
#include <algorithm>

PageView::PageView(const Settings& settings, QWidget* parent) : QTextBrowser(parent), settings_(settings) {}

void PageView::setDataFolder(const QString& folder) {
  setSearchPaths({folder});
  coversFolder_ = folder.isEmpty() ? QString() : QFileInfo(folder + QStringLiteral("/Covers")).absoluteFilePath();
}

void PageView::showPage(const QString& html) {
  html_ = html;
  widestWanted_ = 0;
  laidOutFor_ = widestPicture();
  // Cleared first, so that pictures are loaded again at the present width.
  clear();
  if (!html.isEmpty()) setHtml(html);
}

int PageView::widestPicture() const {
  // The page's margins and a little room, so that no picture brings up a horizontal scroll bar.
  return std::max(CoverCell::minimumSize, viewport()->width() - 2 * int(document()->documentMargin()) - 16);
}

QVariant PageView::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
  const int widest = widestPicture();
  if (!coversFolder_.isEmpty() && name.isLocalFile()) {
    const QFileInfo file(name.toLocalFile());
    if (file.absolutePath() == coversFolder_) {
      const QImage cover(file.absoluteFilePath());
      if (cover.isNull()) return {};
      const CoverCell cell(settings_);
      widestWanted_ = std::max(widestWanted_, cell.size());
      return cell.render(cover, widest);
    }
  }
  const QVariant loaded = QTextBrowser::loadResource(type, name);
  QImage image = loaded.value<QImage>();
  if (image.isNull() && loaded.userType() == QMetaType::QByteArray) image.loadFromData(loaded.toByteArray());
  if (image.isNull()) return loaded;
  widestWanted_ = std::max(widestWanted_, image.width());
  return image.width() > widest ? image.scaledToWidth(widest, Qt::SmoothTransformation) : loaded;
}

void PageView::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  // Lay the page out again only when a picture would change size.
  const int now = widestPicture();
  if (html_.isEmpty() || std::min(now, widestWanted_) == std::min(laidOutFor_, widestWanted_)) return;
  const int scrolled = verticalScrollBar()->value();
  showPage(html_);
  verticalScrollBar()->setValue(scrolled);
}
