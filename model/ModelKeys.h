#pragma once

#include <QString>

// Entity names and the keys that tie records together.
namespace ModelKeys {
inline const QString entityCD = QStringLiteral("CD");
inline const QString entityTrack = QStringLiteral("Track");
inline const QString entityLink = QStringLiteral("Link");
inline const QString uid = QStringLiteral("uid");
inline const QString tracksSet = QStringLiteral("tracksSet");
inline const QString linksSet = QStringLiteral("linksSet");
inline const QString collections = QStringLiteral("collections");
}  // namespace ModelKeys
