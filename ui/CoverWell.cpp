#include "CoverWell.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int wellSize = 180;
}  // namespace

CoverWell::CoverWell(QWidget* parent) : QFrame(parent), picture_(new QLabel(this)), remove_(new QPushButton(tr("Remove"), this)) {
  setObjectName(QStringLiteral("coverWell"));
  setAcceptDrops(true);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tr("Cover"));
  setToolTip(tr("Drop a picture here, paste one (Ctrl+V) or choose a file."));
  picture_->setFixedSize(wellSize, wellSize);
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setFrameShape(QFrame::StyledPanel);
  picture_->setFrameShadow(QFrame::Sunken);
  picture_->setWordWrap(true);
  auto* choose = new QPushButton(tr("Choose…"), this);
  auto* pasteButton = new QPushButton(tr("Paste"), this);
  choose->setObjectName(QStringLiteral("chooseCover"));
  remove_->setObjectName(QStringLiteral("removeCover"));
  connect(choose, &QPushButton::clicked, this, &CoverWell::chooseFile);
  connect(pasteButton, &QPushButton::clicked, this, &CoverWell::paste);
  connect(remove_, &QPushButton::clicked, this, &CoverWell::removeCover);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(choose);
  buttons->addWidget(pasteButton);
  buttons->addWidget(remove_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(tr("Cover"), this));
  layout->addWidget(picture_);
  layout->addLayout(buttons);
  layout->addStretch();
  refresh();
}

void CoverWell::showCover(const QImage& cover) {
  cover_ = cover;
  changed_ = false;
  refresh();
}

bool CoverWell::takeImage(const QImage& image) {
  if (image.isNull()) return false;
  cover_ = image;
  changed_ = true;
  refresh();
  return true;
}

bool CoverWell::takeFile(const QString& path) {
  QImageReader reader(path);
  reader.setAutoTransform(true);
  return takeImage(reader.read());
}

bool CoverWell::paste() {
  const QMimeData* data = QApplication::clipboard()->mimeData();
  return data && takeImage(imageIn(*data));
}

void CoverWell::removeCover() {
  if (cover_.isNull()) return;
  cover_ = QImage();
  changed_ = true;
  refresh();
}

void CoverWell::chooseFile() {
  QStringList patterns;
  for (const QByteArray& format : QImageReader::supportedImageFormats()) patterns << QStringLiteral("*.") + QString::fromLatin1(format);
  const QString path = QFileDialog::getOpenFileName(this, tr("Choose a Cover"), QString(),
                                                    tr("Pictures (%1)").arg(patterns.join(u' ')));
  if (!path.isEmpty() && !takeFile(path)) picture_->setText(tr("That file is not a picture."));
}

QImage CoverWell::imageIn(const QMimeData& data) {
  if (data.hasImage()) {
    const QImage image = qvariant_cast<QImage>(data.imageData());
    if (!image.isNull()) return image;
  }
  for (const QUrl& url : data.urls()) {
    if (!url.isLocalFile()) continue;
    QImageReader reader(url.toLocalFile());
    reader.setAutoTransform(true);
    if (const QImage image = reader.read(); !image.isNull()) return image;
  }
  return {};
}

void CoverWell::dragEnterEvent(QDragEnterEvent* event) {
  if (!imageIn(*event->mimeData()).isNull()) event->acceptProposedAction();
}

void CoverWell::dropEvent(QDropEvent* event) {
  if (takeImage(imageIn(*event->mimeData()))) event->acceptProposedAction();
}

void CoverWell::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) return void(paste());
  if (event->matches(QKeySequence::Delete) || event->key() == Qt::Key_Backspace) return removeCover();
  QFrame::keyPressEvent(event);
}

void CoverWell::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  QFrame::mousePressEvent(event);
}

void CoverWell::refresh() {
  remove_->setEnabled(!cover_.isNull());
  if (cover_.isNull()) {
    picture_->setPixmap({});
    picture_->setText(tr("No cover.\nDrop a picture here."));
    return;
  }
  picture_->setPixmap(QPixmap::fromImage(cover_.scaled(picture_->size() - QSize(4, 4), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}
