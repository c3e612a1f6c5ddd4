#include "EntriesController.h"

#include "CdKeys.h"
#include "Clock.h"
#include "CollectionsController.h"
#include "Entry.h"
#include "Loan.h"
#include "NumberText.h"
#include "TimeText.h"
#include "ValueKind.h"

#include <QDateTime>
#include <QSet>
#include <algorithm>

void EntriesController::setSortKey(const QString& key, bool ascending) {
  sortKey_ = key;
  ascending_ = ascending;
}

namespace {
struct SortItem {
  Entry* entry;
  double number;
  QString text;
};

QString sortText(const Entry& e, const QString& key) {
  if (key == CdKeys::title || key == CdKeys::artist) {
    const QString preferred = e.value(key == CdKeys::title ? CdKeys::sortTitle : CdKeys::sortArtist).toString();
    if (!preferred.isEmpty()) return preferred;
  }
  return e.value(key).toString();
}
}  // namespace

void EntriesController::rearrangeObjects() {
  std::vector<Entry*> source = collections_.entriesIn(collections_.selectedCollection());
  // Typing in the search field only changes the predicate: the sorted order of the collection is
  // kept and re-used until an entry, the collection or the sort changes.
  const quint64 stamp = ManagedObject::latestStamp();
  // Derived keys (collection names and the like) change without a stamp: always sort by them afresh.
  const bool derived = EntitySchema::cd().indexOf(sortKey_) < 0;
  // Loans fall overdue as days pass, with no entry changing.
  const Collection* shown = collections_.selectedCollection();
  const QDate today = shown && shown->kind() == Collection::Kind::Borrowed ? Clock::now().date() : QDate();
  if (derived || source != sortedSource_ || stamp != sortedStamp_ || sortKey_ != sortedKey_ ||
      ascending_ != sortedAscending_ || today != sortedDay_) {
    sortedDay_ = today;
    sortedSource_ = std::move(source);
    sortedStamp_ = stamp;
    sortedKey_ = sortKey_;
    sortedAscending_ = ascending_;
    sortAll();
  }
  arranged_.clear();
  for (Entry* e : sorted_)
    if ((!predicate_ || predicate_(*e)) && (!filter_ || filter_(*e))) arranged_.push_back(e);
  setSelectedObjects(selected_);
}

void EntriesController::sortAll() {
  const std::vector<Entry*>& source = sortedSource_;
  const int index = source.empty() ? -1 : source.front()->schema().indexOf(sortKey_);
  const ValueKind::Order order =
      ValueKind::of(index >= 0 ? source.front()->schema().attributes()[index].kind : AttributeKind::Text).order();
  const bool numeric = order != ValueKind::Order::Text;

  std::vector<SortItem> items;
  items.reserve(source.size());
  for (Entry* e : source) {
    SortItem item{e, 0, {}};
    if (!numeric) {
      item.text = sortText(*e, sortKey_).toCaseFolded();
    } else {
      const QVariant v = e->value(sortKey_);
      switch (order) {
        case ValueKind::Order::Milliseconds:
          item.number = v.isValid() ? double(v.toDateTime().toMSecsSinceEpoch()) : -1e300;
          break;
        case ValueKind::Order::Seconds:
          item.number = double(TimeText::secondsAsTimeString(v.toString()));
          break;
        case ValueKind::Order::Decimal:
          item.number = NumberText::myFloatValue(v.toString());
          break;
        case ValueKind::Order::Number:
        case ValueKind::Order::Text:
          item.number = v.toDouble();
      }
    }
    items.push_back(std::move(item));
  }
  auto less = [&](const SortItem& a, const SortItem& b) {
    int c = numeric ? (a.number < b.number ? -1 : a.number > b.number ? 1 : 0)
                    : QString::compare(a.text, b.text, Qt::CaseSensitive);
    if (c == 0) return a.entry->uid() < b.entry->uid();
    return ascending_ ? c < 0 : c > 0;
  };
  std::sort(items.begin(), items.end(), less);
  sorted_.clear();
  sorted_.reserve(items.size());
  for (const auto& item : items) sorted_.push_back(item.entry);
  // Among the borrowed entries, the late ones come first, each part in the chosen order.
  if (sortedDay_.isValid()) {
    const QDateTime now(sortedDay_, QTime(12, 0), Qt::UTC);
    std::stable_partition(sorted_.begin(), sorted_.end(), [&](const Entry* e) { return Loan::isOverdue(*e, now); });
  }
}

void EntriesController::setSelectedObjects(const std::vector<Entry*>& entries) {
  if (entries.empty()) {
    selected_.clear();
    return;
  }
  const QSet<Entry*> shown(arranged_.begin(), arranged_.end());
  std::vector<Entry*> kept;
  for (Entry* e : entries)
    if (shown.contains(e)) kept.push_back(e);
  selected_ = std::move(kept);
}

void EntriesController::forget(Entry* entry) {
  arranged_.erase(std::remove(arranged_.begin(), arranged_.end(), entry), arranged_.end());
  selected_.erase(std::remove(selected_.begin(), selected_.end(), entry), selected_.end());
}
