#pragma once

#include <QString>

class Entry;
class Settings;
class StringTable;

// How an entry's value reads in a list column, a printed table or a terminal: the status as a
// word, dates in the user's format for the release date, ratings as stars, booleans as a tick.
namespace ColumnText {
QString of(const Entry& entry, const QString& key, const Settings& settings, const StringTable& strings);
}
