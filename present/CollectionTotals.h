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

  // The summed play time of the music player's tracks, or a null text when it is 0. Only the
  // first ":" of a time counts, so "1:02:03" is read as 1 minute 2 seconds; times a person typed
  // are summed by TrackData::totalDuration.
  static QString totalDuration(const QVariantList& trackDictionaries);

 private:
  const StringTable& strings_;
  EntryFigures figures_;
};
