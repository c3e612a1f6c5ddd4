#include "PrintLayouts.h"

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
             {"title", ".34", "artist", ".20", "genre", ".20", "myRating", ".16", "duration", ".10"}),
      layout("Classical",
             "Prints Title, Artist, Composer, Conductor and Label. (For landscape orientation, use Page Setup)",
             {"title", ".26", "artist", ".20", "composer", ".18", "conductor", ".18", "label", ".18"}),
      layout("Value", "Prints Title, List Price, Purchase At, Purchased On and Price Paid for the selected collection.",
             {"title", ".30", "price", ".15", "purchasedAt", ".22", "purchasedOn", ".18", "paid", ".15"}),
      layout("Borrowed", "Prints Title, Artist, Borrowed By, Borrowed On and Due Date for the selected collection.",
             {"title", ".30", "artist", ".20", "borrowedBy", ".20", "borrowedOn", ".15", "dueDate", ".15"}),
      layout("Custom",
             "Prints the current view of the entries in your collection. Use Page Setup to control orientation.", {}),
  };
}

}  // namespace PrintLayouts
