#pragma once

#include "EntryFigures.h"
#include "TotalsProvider.h"

#include <QList>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <vector>

class Entry;
class StringTable;

// The totals under the entry list (counts, discs, value, money spent and play time of a set of
// entries) as formatted texts, and the footer line made from them.
class CollectionTotals : public TotalsProvider {
 public:
  explicit CollectionTotals(const StringTable& strings) : strings_(strings) {}

  // bottomFields: the seven footer switches. With footer, only the totals whose switches are on
  // are computed and the count is shownCount (the entries the list shows); without, everything.
  QVariantMap totals(const std::vector<Entry*>& entries, bool footer, const QList<bool>& bottomFields,
                     qsizetype shownCount) override;
  // The footer line of totals computed with footer on.
  QString footer(const QVariantMap& totals, const QList<bool>& bottomFields, bool multipleSelection) const override;

 private:
  const StringTable& strings_;
  EntryFigures figures_;
};
