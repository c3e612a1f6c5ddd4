#pragma once

#include "Decimal.h"
#include "EntryFigures.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

class Entry;

// A set of entries in groups by one attribute (decade, genre, label, format or artist), with the
// count, play time and value of each group added up exactly as the footer adds up the whole set,
// so the groups always sum to the footer's figures.
class CollectionStatistics {
 public:
  enum class Grouping { Decade, Genre, Label, Format, Artist };
  // The group of the entries that do not have the attribute.
  static const QString unknownGroup;

  // The groupings by their command-line names ("decade", "genre", ...), in menu order.
  static QStringList groupingNames();
  static std::optional<Grouping> groupingNamed(const QString& name);

  struct Group {
    QString name;
    std::vector<Entry*> entries;
    EntryFigures::Sums sums;
    qint64 seconds() const;
    Decimal value() const { return Decimal::fromCompactSum(sums.price); }
  };
  // Every entry is in exactly one group. Decades come in time order; the other groupings by
  // size, largest first, then by name. The unknown group is always last.
  std::vector<Group> groups(const std::vector<Entry*>& entries, Grouping by);

  struct Period {
    QDate start;  // the first day of the month or year
    qint64 count = 0;
  };
  // Entries added per month ("dateAdded"), or per year when they span more than two years, from
  // the first period to the last without gaps. Entries without the date are left out.
  static std::vector<Period> addedOverTime(const std::vector<Entry*>& entries, bool* byYear);

 private:
  EntryFigures figures_;
};
