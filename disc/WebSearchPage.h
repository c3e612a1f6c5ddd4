#pragma once

#include "CddbReply.h"

#include <QByteArray>
#include <optional>

// The web database's search form and result page. Pure functions: the network is the caller's.
namespace WebSearchPage {

inline const QString searchPath = QStringLiteral("/freedb_search.php");
inline const QString resultPagePath = QStringLiteral("/freedb_search_fmt.php?cat=");

// The form body for the words, every blank made "+" and nothing else escaped, as ISO Latin 1.
QByteArray formBody(const QString& words);
// The category+discid key of a pasted result-page address; nullopt for other text.
std::optional<QString> keyOfResultPageAddress(const QString& text);
// The results of a search page, decoded as ISO Latin 1: titles with " / " shown as ":", keys
// category+discid. Items without a title or a record link are left out.
CddbReply::Matches parse(const QByteArray& page);

}  // namespace WebSearchPage
