#include "CollectionTotals.h"

#include "Decimal.h"
#include "Entry.h"
#include "StringTable.h"
#include "NumberText.h"
#include "TimeText.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int discsSwitch = 3, durationSwitch = 4, valueSwitch = 5, spentSwitch = 6;

using Wide = __int128;

QString counted(qint64 n) { return Decimal(n).formatted(0); }

qint64 saturated(Wide n) {
  return qint64(std::clamp<Wide>(n, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()));
}

}  // namespace

QVariantMap CollectionTotals::totals(const std::vector<Entry*>& entries, bool footer, const QList<bool>& bottomFields,
                                     qsizetype shownCount) {
  const auto on = [&](int position) { return !footer || bottomFields.value(position); };
  const bool discsOn = on(discsSwitch), durationOn = on(durationSwitch), valueOn = on(valueSwitch),
             spentOn = on(spentSwitch);
  // Money is summed in exact millionths: floating point drifts ("0.1" + "0.2") and overflows to "inf".
  const EntryFigures::Sums sums = figures_.sum(entries);
  const qint64 discCount = saturated(sums.discs), seconds = saturated(sums.seconds);

  QVariantMap result;
  result[QStringLiteral("totalEntries")] = counted(footer ? shownCount : qsizetype(entries.size()));
  QString last = counted(sums.borrowed);
  result[QStringLiteral("totalBorrowed")] = last;
  last = counted(sums.wanted);
  result[QStringLiteral("totalWanted")] = last;
  if (discsOn) result[QStringLiteral("totalDiscs")] = last = counted(discCount);
  if (valueOn) result[QStringLiteral("totalPrice")] = last = Decimal::fromCompactSum(sums.price).formatted(2);
  if (spentOn) result[QStringLiteral("totalPaid")] = last = Decimal::fromCompactSum(sums.paid).formatted(2);
  if (durationOn && seconds != 0) {
    const qint64 minutes = seconds / 60;
    const auto span = [&](double amount, const QString& unit) {
      return QStringLiteral("%1 %2").arg(NumberText::formattedNumber(amount, 2), strings_.localizedString(unit));
    };
    // Under a minute the previous total's text stands in; long-standing behaviour users know.
    result[QStringLiteral("totalDuration")] = minutes > 1440 ? span(minutes / 1440.0, QStringLiteral("Days"))
                                              : minutes >= 1 ? span(minutes / 60.0, QStringLiteral("Hours"))
                                                             : last;
  }
  return result;
}

QString CollectionTotals::footer(const QVariantMap& totals, const QList<bool>& bottomFields,
                                 bool multipleSelection) const {
  QStringList items;
  const auto text = [&](const char* key) { return totals.value(QLatin1String(key)).toString(); };
  const auto word = [&](const char* key) { return strings_.localizedString(QLatin1String(key)); };
  if (bottomFields.value(0) || multipleSelection)
    items << QStringLiteral("%1 %2").arg(text("totalEntries"),
                                         strings_.localizedString(QStringLiteral("Entries"), QStringLiteral("Albums"),
                                                                  QStringLiteral("RealTitles")));
  if (bottomFields.value(1)) items << QStringLiteral("%1 %2").arg(text("totalBorrowed"), word("Borrowed"));
  if (bottomFields.value(2)) items << QStringLiteral("%1 %2").arg(text("totalWanted"), word("Wanted"));
  if (totals.contains(QStringLiteral("totalDiscs"))) items << QStringLiteral("%1 %2").arg(text("totalDiscs"), word("Discs"));
  if (totals.contains(QStringLiteral("totalPrice"))) items << QStringLiteral("%1: %2").arg(word("Value"), text("totalPrice"));
  if (totals.contains(QStringLiteral("totalPaid"))) items << QStringLiteral("%1: %2").arg(word("Spent"), text("totalPaid"));
  if (totals.contains(QStringLiteral("totalDuration"))) items << text("totalDuration");
  return items.join(QStringLiteral(" | "));
}
