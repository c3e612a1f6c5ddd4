#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QVariantMap>

// The JSON answers of the MusicBrainz web service turned into result lists and the same result
// dictionaries a CDDB read gives. Pure functions of the bytes: the network is the caller's.
namespace MusicBrainzReply {

// Releases found, index-parallel: display texts, release identifiers, and the result dictionary
// of each (empty where the answer held too little, as a keyword search does).
struct Releases {
  QStringList titles, keys;
  QList<QVariantMap> results;
};

// The releases of a disc-id or toc answer ({"releases": [...]}). Each dictionary describes the
// medium holding the disc: the one listing discID, else the first of trackCount tracks, else the
// first medium.
Releases discReleases(const QByteArray& reply, const QString& discID, int trackCount);
// The releases of a release search answer: titles and keys only.
Releases searchResults(const QByteArray& reply);
// One release answer (/ws/2/release/MBID) as a result dictionary; empty when it is none.
QVariantMap release(const QByteArray& reply, const QString& discID, int trackCount);
// The service's own words in an error answer ({"error": "..."}); empty when there are none.
QString errorMessage(const QByteArray& reply);

}  // namespace MusicBrainzReply
