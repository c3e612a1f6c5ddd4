#pragma once

#include "CannedHttpServer.h"

#include <QByteArray>
#include <QHash>
#include <QString>

// The MusicBrainz web service and the cover-art service on one 127.0.0.1 port, answering from
// tests/data/musicbrainz: the disc ids in discReplies, the toc= form with tocReply, any release
// lookup with releaseReply, a release search with searchReply, and every front cover with cover
// (a PNG). An empty reply is a 404 with the service's error words. Tests change the members
// between requests.
class CannedMusicBrainzServer {
 public:
  static inline const QByteArray knownDiscID = "aHTAZe.MDUz3OgyV0zQLSQiO.Js-";  // derived_9d09130b_11tracks
  static inline const QByteArray releaseID = "c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f";

  CannedMusicBrainzServer();
  static QByteArray file(const QString& name);

  QHash<QByteArray, QByteArray> discReplies;
  QByteArray tocReply, releaseReply, searchReply, cover;
  int slowDowns = 0;  // this many "503 slow down" answers (Retry-After: 1) come first

  QString root() const { return QStringLiteral("http://") + http_.address(); }
  QList<CannedHttpServer::Request> requests() const { return http_.requests(); }

 private:
  std::optional<QByteArray> answer(const CannedHttpServer::Request& request);

  // Last, so that it stops answering before the members above go.
  CannedHttpServer http_;
};
