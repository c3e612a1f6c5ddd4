#pragma once

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

class Entry;
class Store;

// Converts entry dictionaries of the older record layout (the native export's) into entries.
// The layout: entry attributes under their own names, with the older names "Status",
// "BorrowedOn", "DateAdded", "PurchasedOn", "Release" and "DueDate" for six of them; tracks under
// "Tracks" and links under "Links" (arrays of dictionaries of the track's and link's attributes);
// movie files under "QuickTime" (a path or an array of paths).
class MyUpdate {
 public:
  static const QStringList& oldDateKeys();
  // Replaces each date text under the keys by a date; a text that is no date is removed.
  static void updateDate(QVariantMap& entry, const QStringList& fields);
  // Moves the movie paths of each dictionary into its "Links" as "QuickTime Movie" links.
  static void updateQuicktimePathsToLinks(QVariantList& entries);
  // A new entry in the store; values of the wrong kind and unknown keys are left out.
  static Entry* entryObjectFromOldDictionary(Store& store, const QVariantMap& dictionary);
  // The inverse, as the native export writes it (without covers).
  static QVariantMap oldDictionaryFromEntry(Entry& entry);
  // The attribute an older key names, or an empty string for none.
  static QString attributeForOldKey(const QString& key);
};
