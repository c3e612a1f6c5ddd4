#pragma once

#include <QString>

// Keys the framework publishes for dictionaries that cross into the product layer.
inline const QString MKIdentifier = QStringLiteral("identifier");
inline const QString MKLocationExtra = QStringLiteral("extra");
inline const QString MKKeyEntryUID = QStringLiteral("uid");
inline const QString MKCollectionName = QStringLiteral("name");
// A result dictionary's picture (a QImage or Picture) that becomes the new entry's cover.
inline const QString MKCoverImage = QStringLiteral("coverImage");
