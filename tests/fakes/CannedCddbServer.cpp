#include "CannedCddbServer.h"

#include <QFile>

namespace {

QByteArray readReply(const QString& file) {
  QFile f(QStringLiteral(DISCARY_TEST_DATA "/disc/") + file);
  if (!f.open(QIODevice::ReadOnly)) return {};
  QByteArray body = "210 rock 9a0bed0d CD database entry follows\n" + f.readAll();
  return body + (body.endsWith('\n') ? ".\n" : "\n.\n");
}

}  // namespace

CannedCddbServer::CannedCddbServer()
    : http_([this](const CannedHttpServer::Request& request) { return answer(request); }) {}

std::optional<QByteArray> CannedCddbServer::answer(const CannedHttpServer::Request& request) const {
  if (request.path == "/freedb_search.php") return CannedHttpServer::ok(searchPage);
  if (request.path != "/~cddb/cddb.cgi") return CannedHttpServer::status(404);
  if (request.body.startsWith("cmd=cddb+query+")) return CannedHttpServer::ok(queryReply, true);
  // "cmd=cddb+read+<category>+<disc id>&hello=..."
  const QList<QByteArray> words = request.body.split('&').first().split('+');
  if (words.size() == 4 && readCategories.contains(QString::fromLatin1(words.at(2)))) {
    return CannedHttpServer::ok(readReply(QStringLiteral("cddb-file_9a0bed0d.xmcd")), true);
  }
  return CannedHttpServer::ok("401 No such CD entry in database.\n", true);
}
