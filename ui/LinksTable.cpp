#include "LinksTable.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QPushButton>
#include <QTableWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace {
const QStringList keys = {QStringLiteral("name"), QStringLiteral("url"), QStringLiteral("type")};
constexpr int rowRole = Qt::UserRole + 1;
const QString dataFolderPrefix = QStringLiteral("[Data Folder]");
}  // namespace

LinksTable::LinksTable(const QString& dataFolder, QWidget* parent)
    : QWidget(parent), dataFolder_(dataFolder), table_(new QTableWidget(0, 3, this)) {
  table_->setObjectName(QStringLiteral("links"));
  table_->setAccessibleName(tr("Links"));
  table_->setHorizontalHeaderLabels({tr("Name"), tr("Address"), tr("Type")});
  table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setTabKeyNavigation(false);
  connect(table_, &QTableWidget::itemChanged, this, [this] { modified_ = true; });
  connect(table_, &QTableWidget::cellDoubleClicked, this, [this](int, int column) {
    if (column == 1) openLink();
  });

  auto* file = new QPushButton(tr("Add File…"), this);
  auto* address = new QPushButton(tr("Add Address…"), this);
  auto* remove = new QPushButton(tr("Remove"), this);
  auto* open = new QPushButton(tr("Open"), this);
  connect(file, &QPushButton::clicked, this, &LinksTable::addFile);
  connect(address, &QPushButton::clicked, this, &LinksTable::addAddress);
  connect(remove, &QPushButton::clicked, this, &LinksTable::removeLinks);
  connect(open, &QPushButton::clicked, this, &LinksTable::openLink);
  auto* buttons = new QHBoxLayout;
  for (QPushButton* b : {file, address, remove, open}) buttons->addWidget(b);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(table_);
  layout->addLayout(buttons);
}

void LinksTable::setLinks(const QVariantList& links) {
  const QSignalBlocker blocker(table_);
  table_->setRowCount(0);
  for (int i = 0; i < links.size(); ++i) {
    const QVariantMap link = links[i].toMap();
    table_->insertRow(i);
    for (int c = 0; c < keys.size(); ++c) table_->setItem(i, c, new QTableWidgetItem(link.value(keys[c]).toString()));
    table_->item(i, 0)->setData(rowRole, i);
  }
  modified_ = false;
}

QVariantList LinksTable::links() const {
  QVariantList result;
  for (int row = 0; row < table_->rowCount(); ++row) {
    QVariantMap link;
    for (int c = 0; c < keys.size(); ++c) link.insert(keys[c], table_->item(row, c) ? table_->item(row, c)->text().trimmed() : QString());
    const QVariant original = table_->item(row, 0) ? table_->item(row, 0)->data(rowRole) : QVariant();
    link.insert(QStringLiteral("row"), original.isValid() ? original.toInt() : -1);
    result << link;
  }
  return result;
}

void LinksTable::addLink(const QString& name, const QString& url) {
  const QSignalBlocker blocker(table_);
  const int row = table_->rowCount();
  table_->insertRow(row);
  table_->setItem(row, 0, new QTableWidgetItem(name));
  table_->setItem(row, 1, new QTableWidgetItem(url));
  table_->setItem(row, 2, new QTableWidgetItem);
  modified_ = true;
}

void LinksTable::addFile() {
  const QString path = QFileDialog::getOpenFileName(this, tr("Link a File"));
  if (!path.isEmpty()) addLink(QFileInfo(path).completeBaseName(), QUrl::fromLocalFile(path).toString());
}

void LinksTable::addAddress() {
  bool ok = false;
  const QString url = QInputDialog::getText(this, tr("Link an Address"), tr("Address:"), QLineEdit::Normal,
                                            QStringLiteral("https://"), &ok).trimmed();
  if (ok && !url.isEmpty()) addLink(QUrl(url).host().isEmpty() ? url : QUrl(url).host(), url);
}

void LinksTable::removeLinks() {
  QList<int> rows;
  for (const QModelIndex& i : table_->selectionModel()->selectedRows()) rows << i.row();
  std::sort(rows.rbegin(), rows.rend());
  for (int row : rows) table_->removeRow(row);
  if (!rows.isEmpty()) modified_ = true;
}

void LinksTable::openLink() {
  const int row = table_->currentRow();
  if (row < 0 || !table_->item(row, 1)) return;
  QString url = table_->item(row, 1)->text().trimmed();
  if (url.startsWith(dataFolderPrefix)) url = QUrl::fromLocalFile(dataFolder_ + url.mid(dataFolderPrefix.size())).toString();
  QDesktopServices::openUrl(QUrl::fromUserInput(url));
}
