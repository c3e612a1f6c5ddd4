#include "WebSearchPage.h"

#include "StringText.h"

namespace {
const QString closing = QStringLiteral("\">");
}

namespace WebSearchPage {

QByteArray formBody(const QString& words) {
  QString body = QStringLiteral("page=1&words=%1&allcats=YES&grouping=none").arg(words);
  body.replace(QLatin1Char(' '), QLatin1Char('+'));
  return body.toLatin1();
}

std::optional<QString> keyOfResultPageAddress(const QString& text) {
  if (!text.startsWith(QLatin1String("http")) || !text.contains(resultPagePath)) return std::nullopt;
  const qsizetype cat = text.indexOf(QLatin1String("cat="));
  const qsizetype ampersand = text.indexOf(QLatin1Char('&'), cat);
  if (ampersand < 0) return std::nullopt;
  const QString category = text.mid(cat, ampersand - cat);
  qsizetype end = text.indexOf(closing, ampersand);
  if (end < 0) end = text.size();
  const QString identifier = text.mid(ampersand, end - ampersand);
  if (category.size() <= 4 || identifier.size() <= 4) return std::nullopt;
  return category.mid(4) + QLatin1Char('+') + identifier.mid(4);
}

CddbReply::Matches parse(const QByteArray& page) {
  const QString text = QString::fromLatin1(page);
  CddbReply::Matches matches;
  const QStringList items = StringText::stringsBetween(text, QStringLiteral("a href=\"") + searchPath + QLatin1Char('#'),
                                                        QStringLiteral("</div>"));
  for (const QString& item : items) {
    const auto title = StringText::stringBetween(item, QStringLiteral("title=\""), closing);
    const auto link = StringText::stringBetween(item, QStringLiteral("/freedb/"), closing);
    if (!title || !link) continue;
    matches.titles << QString(*title).replace(QStringLiteral(" / "), QStringLiteral(":"));
    matches.keys << QString(*link).replace(QLatin1Char('/'), QLatin1Char('+'));
  }
  return matches;
}

}  // namespace WebSearchPage
