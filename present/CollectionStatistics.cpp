#include "CollectionStatistics.h"

#include "CdKeys.h"
#include "Entry.h"

#include <QHash>
#include <algorithm>
#include <limits>
#include <map>

namespace {

const QStringList& names() {
  static const QStringList list = {QStringLiteral("decade"), QStringLiteral("genre"), QStringLiteral("label"),
                                   QStringLiteral("format"), QStringLiteral("artist")};
  return list;
}

// The group an entry belongs to; empty for none. Of a multi-value text (genres "Rock, Pop") the
// first value decides, so that an entry is counted once and the groups add up to the footer.
QString groupName(const Entry& entry, CollectionStatistics::Grouping by) {
  using G = CollectionStatistics::Grouping;
  if (by == G::Decade) {
    const QDateTime date = entry.value(CdKeys::releaseDate).toDateTime();
    if (!date.isValid()) return {};
    const int year = date.toUTC().date().year();
    return QStringLiteral("%1s").arg(year - (((year % 10) + 10) % 10));
  }
  const QString& key = by == G::Genre ? CdKeys::genre : by == G::Label ? CdKeys::label
                       : by == G::Format ? CdKeys::format : CdKeys::artist;
  const QString text = entry.stringValue(key);
  const QString first = by == G::Genre ? text.section(QLatin1Char(','), 0, 0) : text;
  return first.simplified();
}

}  // namespace

const QString CollectionStatistics::unknownGroup = QStringLiteral("(none)");

QStringList CollectionStatistics::groupingNames() { return names(); }

std::optional<CollectionStatistics::Grouping> CollectionStatistics::groupingNamed(const QString& name) {
  const qsizetype i = names().indexOf(name.toLower());
  if (i < 0) return std::nullopt;
  return Grouping(i);
}

qint64 CollectionStatistics::Group::seconds() const {
  return qint64(std::min<__int128>(sums.seconds, std::numeric_limits<qint64>::max()));
}

std::vector<CollectionStatistics::Group> CollectionStatistics::groups(const std::vector<Entry*>& entries,
                                                                      Grouping by) {
  std::vector<Group> result;
  // "Rock" and "rock" are one group, shown as first met.
  QHash<QString, size_t> indexOf;
  std::vector<Entry*> unknown;
  for (Entry* e : entries) {
    const QString name = groupName(*e, by);
    if (name.isEmpty()) {
      unknown.push_back(e);
      continue;
    }
    const QString folded = name.toCaseFolded();
    auto it = indexOf.find(folded);
    if (it == indexOf.end()) {
      it = indexOf.insert(folded, result.size());
      result.push_back(Group{name, {}, {}});
    }
    result[*it].entries.push_back(e);
  }
  for (Group& g : result) g.sums = figures_.sum(g.entries);
  if (by == Grouping::Decade) {
    std::sort(result.begin(), result.end(), [](const Group& a, const Group& b) { return a.name < b.name; });
  } else {
    std::sort(result.begin(), result.end(), [](const Group& a, const Group& b) {
      if (a.entries.size() != b.entries.size()) return a.entries.size() > b.entries.size();
      return a.name.localeAwareCompare(b.name) < 0;
    });
  }
  if (!unknown.empty()) {
    EntryFigures::Sums sums = figures_.sum(unknown);
    result.push_back(Group{unknownGroup, std::move(unknown), sums});
  }
  return result;
}

std::vector<CollectionStatistics::Period> CollectionStatistics::addedOverTime(const std::vector<Entry*>& entries,
                                                                              bool* byYear) {
  std::map<QDate, qint64> months;
  for (const Entry* e : entries) {
    const QDateTime added = e->value(CdKeys::dateAdded).toDateTime();
    if (!added.isValid()) continue;
    const QDate day = added.toUTC().date();
    ++months[QDate(day.year(), day.month(), 1)];
  }
  std::vector<Period> result;
  if (months.empty()) {
    if (byYear) *byYear = false;
    return result;
  }
  const QDate first = months.begin()->first, last = months.rbegin()->first;
  const bool years = first.addYears(2) < last;
  if (byYear) *byYear = years;
  const auto periodOf = [&](QDate month) { return years ? QDate(month.year(), 1, 1) : month; };
  for (QDate d = periodOf(first); d <= last; d = years ? d.addYears(1) : d.addMonths(1)) result.push_back({d, 0});
  for (const auto& [month, count] : months) {
    const QDate start = periodOf(month);
    const qsizetype i = years ? start.year() - result.front().start.year()
                              : (start.year() - result.front().start.year()) * 12 + start.month() -
                                    result.front().start.month();
    result[size_t(i)].count += count;
  }
  return result;
}
