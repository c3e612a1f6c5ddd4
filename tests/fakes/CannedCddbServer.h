#pragma once

#include "CannedHttpServer.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// A CDDB server and its web search on 127.0.0.1. Queries get queryReply; a read of a category in
// readCategories gets the shared record of Chagall Guevara's album (9a0bed0d), any other read
// "401"; the search page is searchPage; any other path is not found. Tests change the members
// between requests.
class CannedCddbServer {
 public:
  CannedCddbServer();

  QByteArray queryReply = "200 rock 9a0bed0d Chagall Guevara / Chagall Guevara\n";
  QStringList readCategories{"rock", "misc"};
  QByteArray searchPage =
      "<a href=\"/freedb_search.php#1\"><i title=\"Chagall Guevara / Chagall Guevara\">"
      "<a href=\"/freedb/rock/9a0bed0d\">x</a></i></div>";

  QString address() const { return http_.address(); }
  QList<CannedHttpServer::Request> requests() const { return http_.requests(); }

 private:
  std::optional<QByteArray> answer(const CannedHttpServer::Request& request) const;

  // Last, so that it stops answering before the members above go.
  CannedHttpServer http_;
};
