#include "CannedMusicBrainzServer.h"

#include <QBuffer>
#include <QFile>
#include <QImage>

namespace {

QByteArray reply(const QByteArray& status, const QByteArray& type, const QByteArray& body, const QByteArray& extra = {}) {
  return "HTTP/1.0 " + status + "\r\nContent-Type: " + type + "\r\n" + extra + "Content-Length: " +
         QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QByteArray json(const QByteArray& body) {
  return body.isEmpty() ? reply("404 Not Found", "application/json", "{\"error\":\"Not Found\",\"help\":\"For usage, please see: https://musicbrainz.org/development/mmd\"}")
                        : reply("200 OK", "application/json", body);
}

}  // namespace

QByteArray CannedMusicBrainzServer::file(const QString& name) {
  QFile f(QStringLiteral(DISCARY_TEST_DATA "/musicbrainz/") + name);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

CannedMusicBrainzServer::CannedMusicBrainzServer()
    : http_([this](const CannedHttpServer::Request& request) { return answer(request); }) {
  discReplies[knownDiscID] = file(QStringLiteral("discid_aHTAZe_two-media.json"));
  releaseReply = file(QStringLiteral("release_c0f1e2d3_lookup.json"));
  searchReply = file(QStringLiteral("release-search_written-answers.json"));
  QImage image(300, 300, QImage::Format_RGB32);
  image.fill(Qt::darkCyan);
  QBuffer buffer(&cover);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
}

std::optional<QByteArray> CannedMusicBrainzServer::answer(const CannedHttpServer::Request& request) {
  const qsizetype question = request.path.indexOf('?');
  const QByteArray path = question < 0 ? request.path : request.path.first(question);
  const QByteArray query = question < 0 ? QByteArray() : request.path.mid(question + 1);
  if (path.startsWith("/release/") && path.endsWith("/front-500")) {
    return cover.isEmpty() ? reply("404 Not Found", "text/plain", "no cover") : reply("200 OK", "image/png", cover);
  }
  if (!path.startsWith("/ws/2/")) return reply("404 Not Found", "text/plain", "");
  if (slowDowns > 0) {
    --slowDowns;
    return reply("503 Service Unavailable", "application/json",
                 "{\"error\":\"Your requests are exceeding the allowable rate limit.\"}", "Retry-After: 1\r\n");
  }
  if (path.startsWith("/ws/2/discid/")) {
    const QByteArray id = path.mid(13);
    if (discReplies.contains(id)) return json(discReplies.value(id));
    return json(query.contains("toc=") ? tocReply : QByteArray());
  }
  if (path == "/ws/2/release/" || path == "/ws/2/release") return json(searchReply);
  if (path.startsWith("/ws/2/release/")) return json(releaseReply);
  return json({});
}
