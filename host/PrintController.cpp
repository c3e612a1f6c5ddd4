#include "PrintController.h"

#include "CdKeys.h"
#include "CollectionsController.h"
#include "CoverSheetPrinter.h"
#include "EntriesController.h"
#include "Entry.h"
#include "MyFieldsControllerShared.h"
#include "PrintPageFrame.h"
#include "Settings.h"
#include "StatusImage.h"
#include "Store.h"
#include "StringTable.h"
#include "ValueKind.h"
#include "WindowSystem.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QPdfWriter>
#include <cmath>
#include <memory>

namespace {

// Fallback side of a cover when neither size setting holds a number: four inches.
constexpr double fallbackCoverPoints = 288;
constexpr qreal marginPoints = 42;

bool isSize(double value) { return std::isfinite(value) && value > 0; }

QPageSize localPaperSize() {
  return QPageSize(QLocale().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter : QPageSize::A4);
}

}  // namespace

QString PrintController::localized(const QString& key) const {
  return services_.strings.localizedString(key);
}

bool PrintController::fail(const QString& message) {
  lastError_ = message;
  return false;
}

Settings& PrintController::settings() const { return services_.settings; }

void PrintController::printDialog() {
  lastError_.clear();
  lastPageCount_ = 0;
  WindowSystem& windowSystem = services_.windowSystem;
  const std::optional<PrintRequest> request = windowSystem.runPrintDialog(*this);
  if (!request) return;
  if (!print(*request) && !lastError_.isEmpty())
    windowSystem.runAlert(localized(QStringLiteral("The collection could not be printed.")), lastError_,
                          {localized(QStringLiteral("OK"))});
}

std::vector<CollectionPrinter::Column> PrintController::columnsOfLayout(int index) const {
  const EntitySchema& schema = EntitySchema::cd();
  MyFieldsControllerShared* fields = services_.fields;
  std::vector<CollectionPrinter::Column> columns;
  auto add = [&](const QString& identifier, double width) {
    if (!schema.has(identifier) || !isSize(width)) return;
    const int at = schema.indexOf(identifier);
    const ValueKind& kind = ValueKind::of(at < 0 ? AttributeKind::Text : schema.attributes()[size_t(at)].kind);
    columns.push_back({identifier, fields ? fields->localizedColumnName(identifier) : identifier, width,
                       kind.isNumberText(),
                       identifier == StatusImage::key});
  };
  const QVariantMap layout = layouts_.value(index).toMap();
  if (layout.contains(layoutColumnsKey)) {
    const QVariantList items = layout.value(layoutColumnsKey).toList();
    for (qsizetype i = 0; i + 1 < items.size(); i += 2) add(items[i].toString(), items[i + 1].toString().toDouble());
  } else if (fields) {
    for (const QString& identifier : fields->listColumnIdentifiers())
      add(identifier, fields->widthForColumn(identifier));
  }
  if (columns.empty()) add(CdKeys::title, 1);
  double total = 0;
  for (const auto& c : columns) total += c.fraction;
  for (auto& c : columns) c.fraction /= total;
  return columns;
}

QSizeF PrintController::coverSize() const {
  const Settings& settings = services_.settings;
  double width = settings.stringForKey(coverWidthKey).trimmed().toDouble();
  double height = settings.stringForKey(coverHeightKey).trimmed().toDouble();
  const double ratio = isSize(coverRatio_) ? coverRatio_ : 1.0;
  if (!isSize(width) && !isSize(height)) width = fallbackCoverPoints;
  if (!isSize(width)) width = height * ratio;
  if (!isSize(height)) height = width / ratio;
  return {width, height};
}

bool PrintController::print(const PrintRequest& request) {
  lastError_.clear();
  lastPageCount_ = 0;
  if (!request.covers && (request.layout < 0 || request.layout >= layouts_.size()))
    return fail(localized(QStringLiteral("There is no such print layout.")));
  const Collection* collection = services_.collections.selectedCollection();
  const QString title = collection ? collection->name() : localized(QStringLiteral("All Entries"));
  const QPageLayout::Orientation orientation = request.landscape ? QPageLayout::Landscape : QPageLayout::Portrait;

  auto cannotWrite = [&](const QString& reason) {
    return fail(localized(QStringLiteral("\"%1\" cannot be written: %2")).arg(request.pdfPath, reason));
  };
  std::unique_ptr<QFile> file;
  std::unique_ptr<QPdfWriter> writer;
  QPagedPaintDevice* device = request.device;
  if (device) {
    device->setPageOrientation(orientation);
  } else {
    if (request.pdfPath.isEmpty()) return fail(localized(QStringLiteral("No file was chosen to print to.")));
    file = std::make_unique<QFile>(request.pdfPath);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Truncate)) return cannotWrite(file->errorString());
    writer = std::make_unique<QPdfWriter>(file.get());
    writer->setTitle(title);
    writer->setCreator(QStringLiteral("Discary"));
    writer->setPageLayout(QPageLayout(localPaperSize(), orientation,
                                      QMarginsF(marginPoints, marginPoints, marginPoints, marginPoints),
                                      QPageLayout::Point));
    device = writer.get();
  }

  bool stopped = false;
  const int pages = render(*device, request, title, &stopped);
  writer.reset();
  if (file) {
    file->close();
    if (pages == 0 || file->error() != QFileDevice::NoError) {
      const QString reason = file->errorString();
      file->remove();
      if (pages > 0) return cannotWrite(reason);
    }
  }
  if (stopped) return false;
  if (pages == 0) return fail(localized(QStringLiteral("The pages could not be printed.")));
  lastPageCount_ = pages;
  return true;
}

int PrintController::render(QPagedPaintDevice& device, const PrintRequest& request, const QString& title,
                            bool* stopped) {
  const std::vector<Entry*>& entries = services_.entries.arrangedObjects();
  const QString count = entries.size() == 1 ? localized(QStringLiteral("1 entry"))
                                            : localized(QStringLiteral("%1 entries")).arg(entries.size());
  const QString what = request.covers ? localized(QStringLiteral("Covers"))
                                      : layouts_.value(request.layout).toMap().value(layoutNameKey).toString();
  QStringList subtitle{QLocale().toString(QDate::currentDate(), QLocale::LongFormat), count};
  if (!what.isEmpty()) subtitle << what;
  PrintPageFrame frame(
      device, {title, subtitle.join(QStringLiteral("  \u00b7  ")), localized(QStringLiteral("Page %1 of %2"))});
  if (!frame.begin()) return 0;

  WindowSystem& windowSystem = services_.windowSystem;
  windowSystem.showProgressSheet(localized(QStringLiteral("Printing")), title, 0);
  const QString pageText = localized(QStringLiteral("Page %1 of %2"));
  auto pageDone = [&](int done, int pageCount) {
    windowSystem.setProgressSubtitle(pageText.arg(done).arg(pageCount));
    *stopped = windowSystem.progressCancelled();
    return !*stopped;
  };
  int pages = 0;
  if (request.covers) {
    const Store& store = services_.store;
    std::vector<CoverSheetPrinter::Cover> covers;
    covers.reserve(entries.size());
    for (Entry* e : entries)
      covers.push_back({store.coverPathOf(e->uid()), e->stringValue(CdKeys::title),
                        e->stringValue(CdKeys::artist)});
    pages = CoverSheetPrinter(frame, coverSize(), localized(QStringLiteral("No Cover"))).print(covers, pageDone);
  } else {
    MyFieldsControllerShared* fields = services_.fields;
    auto cellText = [fields](Entry& entry, const QString& identifier) {
      const QVariant value = entry.value(identifier);
      return fields ? fields->displayStringForValue(identifier, value) : value.toString();
    };
    pages = CollectionPrinter(frame, columnsOfLayout(request.layout), cellText)
                .print(entries, localized(QStringLiteral("No entries.")), pageDone);
  }
  windowSystem.closeProgressSheet();
  if (!frame.end()) return 0;
  return pages;
}
