#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>
#include <vector>

class Entry;

// The product's totals of a set of entries as formatted texts, and the footer line made of them.
// bottomFields are the seven footer switches; shownCount is the number of entries the list shows.
class TotalsProvider {
 public:
  virtual ~TotalsProvider() = default;
  virtual QVariantMap totals(const std::vector<Entry*>& entries, bool footer, const QList<bool>& bottomFields,
                             qsizetype shownCount) = 0;
  virtual QString footer(const QVariantMap& totals, const QList<bool>& bottomFields, bool multipleSelection) const = 0;
};
