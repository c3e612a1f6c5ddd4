#include "PrintLayouts.h"

#include "CdKeys.h"
#include "PrintController.h"

#include <QStringList>
#include <QVariantMap>

namespace {

QVariantMap layout(const char* name, const char* description, QStringList columns) {
  QVariantMap map{{PrintController::layoutNameKey, QString::fromUtf8(name)},
                  {PrintController::layoutDescriptionKey, QString::fromUtf8(description)}};
  if (!columns.isEmpty()) map.insert(PrintController::layoutColumnsKey, QVariant(columns).toList());
  return map;
}

}  // namespace

namespace PrintLayouts {

// The descriptions stand as users have always read them, "Purchase At" and the Classical
// layout's missing full stop included.
QVariantList listLayouts() {
  return {
      layout("Info", "Prints Title, Artist, Genre, My Rating and Duration for the selected collection.",
             {CdKeys::title, ".34", CdKeys::artist, ".20", CdKeys::genre, ".20",
              CdKeys::myRating, ".16", CdKeys::duration, ".10"}),
      layout("Classical",
             "Prints Title, Artist, Composer, Conductor and Label. (For landscape orientation, use Page Setup)",
             {CdKeys::title, ".26", CdKeys::artist, ".20", CdKeys::composer, ".18",
              CdKeys::conductor, ".18", CdKeys::label, ".18"}),
      layout("Value", "Prints Title, List Price, Purchase At, Purchased On and Price Paid for the selected collection.",
             {CdKeys::title, ".30", CdKeys::price, ".15", CdKeys::purchasedAt, ".22",
              CdKeys::purchasedOn, ".18", CdKeys::paid, ".15"}),
      layout("Borrowed", "Prints Title, Artist, Borrowed By, Borrowed On and Due Date for the selected collection.",
             {CdKeys::title, ".30", CdKeys::artist, ".20", CdKeys::borrowedBy, ".20",
              CdKeys::borrowedOn, ".15", CdKeys::dueDate, ".15"}),
      layout("Custom",
             "Prints the current view of the entries in your collection. Use Page Setup to control orientation.", {}),
  };
}

}  // namespace PrintLayouts
