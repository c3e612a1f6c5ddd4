#pragma once

#include "CollectionPrinter.h"
#include "PrintRequest.h"

#include <QSizeF>
#include <QString>
#include <QVariantList>
#include <vector>

class CollectionsController;
class EntriesController;
class MyFieldsControllerShared;
class Settings;
class Store;
class StringTable;
class WindowSystem;
class QPagedPaintDevice;

// The shared print panel. The product hands it its list layouts and cover settings; the window
// system runs the dialog over them; the panel then prints the entries in view (the selected
// collection, as arranged) in the chosen layout, or their covers.
class PrintController {
 public:
  // The printed cover size: texts holding points.
  static inline const QString coverWidthKey = QStringLiteral("Print Cover Width");
  static inline const QString coverHeightKey = QStringLiteral("Print Cover Height");
  // A layout dictionary. "columns" alternates an attribute and its width as a fraction of the
  // printable width, as text ("title", ".34", ...); a layout without it prints the list's
  // current columns.
  static inline const QString layoutNameKey = QStringLiteral("name");
  static inline const QString layoutDescriptionKey = QStringLiteral("description");
  static inline const QString layoutColumnsKey = QStringLiteral("columns");

  // The framework's parts the panel reads; the field catalogue may be absent.
  struct Services {
    const StringTable& strings;
    Settings& settings;
    WindowSystem& windowSystem;
    MyFieldsControllerShared* fields;
    const CollectionsController& collections;
    EntriesController& entries;
    const Store& store;
  };

  explicit PrintController(Services services) : services_(services) {}

  // The line shown under the cover size fields.
  QString coverDescriptionField;
  void setListColumns(const QVariantList& layouts) { layouts_ = layouts; }
  const QVariantList& listColumns() const { return layouts_; }
  // Width over height of a cover; keeps the two size fields in proportion.
  void setCoverRatio(double ratio) { coverRatio_ = ratio; }
  double coverRatio() const { return coverRatio_; }

  // Runs the print dialog and prints what the user chose; a failure is told in an alert.
  void printDialog();
  // False on failure, with lastError saying why; false with no error when the user stopped it.
  bool print(const PrintRequest& request);
  const QString& lastError() const { return lastError_; }
  int lastPageCount() const { return lastPageCount_; }

  // The columns a layout prints, their fractions adding up to 1.
  std::vector<CollectionPrinter::Column> columnsOfLayout(int index) const;
  // The settings the print panel reads and stores (the cover size).
  Settings& settings() const;
  // In points, from the settings; a size that is missing or not a number follows the other.
  QSizeF coverSize() const;

 private:
  int render(QPagedPaintDevice& device, const PrintRequest& request, const QString& title, bool* stopped);
  QString localized(const QString& key) const;
  bool fail(const QString& message);

  Services services_;
  QVariantList layouts_;
  double coverRatio_ = 1.0;
  QString lastError_;
  int lastPageCount_ = 0;
};
