#include "EntryFigures.h"

#include "CdKeys.h"
#include "Decimal.h"
#include "Entry.h"
#include "NumberText.h"
#include "TimeText.h"

namespace {

QString text(const Entry& entry, int index) {
  const QVariant* v = entry.valueAt(index);
  return v ? v->toString() : QString();
}

}  // namespace

const EntryFigures::Figures& EntryFigures::read(const Entry& entry) {
  static const int status = EntitySchema::cd().indexOf(CdKeys::status);
  static const int price = EntitySchema::cd().indexOf(CdKeys::price);
  static const int paid = EntitySchema::cd().indexOf(CdKeys::paid);
  static const int duration = EntitySchema::cd().indexOf(CdKeys::duration);
  static const int discs = EntitySchema::cd().indexOf(CdKeys::discs);

  if (entry.serial() >= cache_.size()) cache_.resize(size_t(entry.serial()) + 1024);
  Cached& cached = cache_[entry.serial()];

  Figures& f = cached.figures;
  const QVariant* s = entry.valueAt(status);
  const qint64 statusValue = s ? s->toLongLong() : 0;
  f.status = statusValue == 1 || statusValue == 2 ? qint8(statusValue) : 0;
  f.price = Decimal::fromText(text(entry, price)).compact();
  f.paid = Decimal::fromText(text(entry, paid)).compact();
  const QString time = text(entry, duration);
  f.seconds = time.isEmpty() ? 0 : TimeText::secondsAsTimeString(time);
  const QString discText = text(entry, discs);
  const qint64 n = NumberText::myIntValue(discText);
  // No disc count means one disc; only an explicit "0" means none.
  f.discs = n != 0 ? n : discText == QLatin1String("0") ? 0 : 1;
  cached.stamp = entry.stamp();
  return f;
}

EntryFigures::Sums& EntryFigures::Sums::operator+=(const Sums& other) {
  entries += other.entries;
  borrowed += other.borrowed;
  wanted += other.wanted;
  discs += other.discs;
  seconds += other.seconds;
  price += other.price;
  paid += other.paid;
  return *this;
}

EntryFigures::Sums EntryFigures::sum(const std::vector<Entry*>& entries) {
  Sums s;
  s.entries = qint64(entries.size());
  for (const Entry* e : entries) {
    const Figures& f = of(*e);
    s.borrowed += f.status == 1;
    s.wanted += f.status == 2;
    s.price += f.price;
    s.paid += f.paid;
    s.seconds += f.seconds;
    s.discs += f.discs;
  }
  return s;
}
