#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVariantMap>

// The replies of a CDDB server turned into result lists and dictionaries. Pure functions of the
// bytes: the network is the caller's.
namespace CddbReply {

// Result keys (category+discid) and their display texts, index-parallel.
struct Matches {
  QStringList keys, titles;
};

// A cddb query reply (200, 210 or 211; anything else gives no match), decoded as ISO Latin 1.
Matches parseQuery(const QByteArray& reply);
// The status line of a query reply that refuses to answer (a 4xx or 5xx code, such as "500
// Unknown developer email"), trimmed; empty for matches, "no match" and text that is no reply.
QString errorOfQuery(const QByteArray& reply);
// Whether a cddb read reply of the category probe found the disc.
bool isProbeHit(const QByteArray& reply);
// A cddb read reply (210 and an xmcd record), decoded as UTF-8; empty unless it begins "210".
QVariantMap parseRead(const QByteArray& reply);

}  // namespace CddbReply
