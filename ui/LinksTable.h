#pragma once

#include <QVariantList>
#include <QWidget>

class QTableWidget;

// The entry panel's links: name, address and type of each, with add (a file or an address),
// remove and open.
class LinksTable : public QWidget {
  Q_OBJECT
 public:
  // dataFolder resolves addresses written "[Data Folder]/..." when a link is opened.
  explicit LinksTable(const QString& dataFolder, QWidget* parent = nullptr);

  // Link dictionaries with "name", "url", "type"; a link's row remembers which it was.
  void setLinks(const QVariantList& links);
  // In table order; each with "row" (its index in setLinks, or -1 for a new one).
  QVariantList links() const;
  bool isModified() const { return modified_; }
  QTableWidget* table() const { return table_; }
  void addLink(const QString& name, const QString& url);

 private:
  void addFile();
  void addAddress();
  void removeLinks();
  void openLink();

  QString dataFolder_;
  QTableWidget* table_;
  bool modified_ = false;
};
