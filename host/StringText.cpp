#include "StringText.h"

namespace StringText {

bool isNotEmpty(const QString& text) { return !text.isEmpty(); }

std::optional<QString> stringBetween(const QString& text, const QString& start, const QString& end) {
  const qsizetype startAt = text.indexOf(start);
  if (startAt < 0) {
    return std::nullopt;
  }
  const qsizetype contentAt = startAt + start.size();
  const qsizetype endAt = text.indexOf(end, contentAt);
  if (endAt < 0) {
    return std::nullopt;
  }
  return text.mid(contentAt, endAt - contentAt);
}

QStringList stringsBetween(const QString& text, const QString& start, const QString& end) {
  QStringList result;
  // Empty markers would match everywhere without moving forward.
  if (start.isEmpty() || end.isEmpty()) {
    return result;
  }
  qsizetype from = 0;
  while (true) {
    const qsizetype startAt = text.indexOf(start, from);
    if (startAt < 0) {
      break;
    }
    const qsizetype contentAt = startAt + start.size();
    const qsizetype endAt = text.indexOf(end, contentAt);
    if (endAt < 0) {
      break;
    }
    result.append(text.mid(contentAt, endAt - contentAt));
    from = endAt + end.size();
  }
  return result;
}

QString stringByRemovingLeadingAndTrailingSpaces(const QString& text) { return text.trimmed(); }

}  // namespace StringText
