#pragma once

#include <QString>

// Keys the framework publishes for dictionaries that cross into the product layer.
inline const QString MKIdentifier = QStringLiteral("identifier");
inline const QString MKLocationExtra = QStringLiteral("extra");
inline const QString MKKeyEntryUID = QStringLiteral("uid");
inline const QString MKCollectionName = QStringLiteral("name");
