#include "CddbReply.h"

#include "CdKeys.h"
#include "TimeText.h"

#include <limits>

namespace {

const QString slashSeparator = QStringLiteral(" / ");

// A forward-moving scanner over the reply: a scan up to a marker stops at it, or at the end.
class Scanner {
 public:
  explicit Scanner(const QString& text) : text_(text) {}
  bool atEnd() const { return position_ >= text_.size(); }
  void rewind() { position_ = 0; }
  QString scanUpTo(const QString& marker) {
    qsizetype found = text_.indexOf(marker, position_);
    if (found < 0) found = text_.size();
    const QString scanned = text_.mid(position_, found - position_);
    position_ = found;
    return scanned;
  }
  // Moves to the marker, or back to the start when there is none; true when found.
  bool seek(const QString& marker) {
    const qsizetype found = text_.indexOf(marker, position_);
    position_ = found < 0 ? 0 : found;
    return found >= 0;
  }
  QString readLine() { return scanUpTo(QStringLiteral("\n")); }

 private:
  const QString& text_;
  qsizetype position_ = 0;
};

// The first run of decimal digits, everything before it skipped; saturates like a C scanner.
qint64 firstNumber(const QString& text, bool* found = nullptr) {
  qsizetype i = 0;
  while (i < text.size() && !text.at(i).isDigit()) ++i;
  if (found) *found = i < text.size();
  qint64 value = 0;
  for (; i < text.size() && text.at(i).isDigit(); ++i) {
    value = value * 10 + text.at(i).digitValue();
    if (value > std::numeric_limits<qint32>::max()) value = std::numeric_limits<qint32>::max();
  }
  return value;
}

// A leading run of decimal digits; a text beginning with anything else reads as 0.
qint32 leadingNumber(const QString& text) {
  qint64 value = 0;
  for (qsizetype i = 0; i < text.size() && text.at(i).isDigit(); ++i) {
    value = std::min<qint64>(value * 10 + text.at(i).digitValue(), std::numeric_limits<qint32>::max());
  }
  return qint32(value);
}

QString trimmed(const QString& text) { return text.trimmed(); }

// The carriage return of the protocol's CR LF line end.
QString withoutLineEnd(const QString& value) { return value.endsWith(QLatin1Char('\r')) ? value.chopped(1) : value; }

bool readOffsets(Scanner& scanner, QStringList* durations, qint64* total) {
  if (!scanner.seek(QStringLiteral("Track frame offsets:"))) return false;
  const QString block = scanner.scanUpTo(QStringLiteral("Disc length:"));
  const QStringList lines = block.split(QLatin1Char('\n'));
  bool bad = false;
  // Offsets are written in hexadecimal and read back as decimal below, so durations come out
  // from the hexadecimal digits: the client has always shown them so, and results stay the same.
  QStringList offsets;
  for (qsizetype i = 1; i + 2 < lines.size(); ++i) {
    const qint64 offset = firstNumber(lines.at(i));
    if (offset < 1) bad = true;
    offsets << QString::number(offset, 16);
  }
  const qint64 seconds = firstNumber(scanner.readLine());
  offsets << QString::number(qint32(quint32(seconds * 75)));

  qint32 previous = leadingNumber(offsets.first());
  *total = 0;
  for (qsizetype i = 1; i < offsets.size(); ++i) {
    const qint32 current = leadingNumber(offsets.at(i));
    const qint32 duration = qint32((qint64(current) - previous) / 75);
    previous = current;
    *durations << TimeText::timeStringWithSeconds(duration);
    *total += duration;
  }
  return !bad;
}

std::optional<QString> valueOfLine(Scanner& scanner, const QString& key) {
  scanner.seek(key);
  const QString line = scanner.readLine();
  if (!line.startsWith(key)) return std::nullopt;
  // The protocol's line end is no part of the value (a stored disc identifier would keep it).
  return withoutLineEnd(line.mid(key.size()));
}

void readTrackTitles(Scanner& scanner, QStringList* names, QStringList* artists) {
  if (!scanner.seek(QStringLiteral("TTITLE"))) return;
  QString previousKey;
  while (!scanner.atEnd()) {
    const QString key = scanner.scanUpTo(QStringLiteral("="));
    const QString value = scanner.readLine().mid(1);
    scanner.scanUpTo(QStringLiteral("TTITLE"));
    const qsizetype separator = value.indexOf(slashSeparator);
    if (separator < 0) {
      if (key == previousKey && !names->isEmpty()) {
        names->last() += withoutLineEnd(value);
      } else {
        *names << withoutLineEnd(value);
        *artists << QString();
      }
      previousKey = key;
    } else {
      *names << withoutLineEnd(value.mid(separator + slashSeparator.size()));
      *artists << value.left(separator);
    }
  }
}

}  // namespace

namespace CddbReply {

Matches parseQuery(const QByteArray& bytes) {
  const QString reply = QString::fromLatin1(bytes);
  Matches matches;
  if (reply.startsWith(QLatin1String("200"))) {
    const QStringList pieces = reply.split(QLatin1Char(' '));
    const qsizetype slash = reply.indexOf(QLatin1Char('/'));
    if (pieces.size() > 2 && slash >= 0 && reply.size() > slash + 2) {
      matches.keys << pieces.at(1) + QLatin1Char('+') + pieces.at(2);
      matches.titles << reply.mid(slash + 2);
    }
  } else if (reply.startsWith(QLatin1String("210")) || reply.startsWith(QLatin1String("211"))) {
    const QStringList lines = reply.split(QLatin1Char('\n'));
    for (qsizetype i = 1; i + 1 < lines.size(); ++i) {
      const QString& line = lines.at(i);
      const QStringList pieces = line.split(QLatin1Char(' '));
      if (pieces.size() <= 2) continue;
      matches.keys << pieces.at(0) + QLatin1Char('+') + pieces.at(1);
      const qsizetype slash = line.indexOf(QLatin1Char('/'));
      matches.titles << (slash >= 0 && line.size() > slash + 2 ? line.mid(slash + 2) : line);
    }
  }
  return matches;
}

QString errorOfQuery(const QByteArray& reply) {
  const qsizetype end = reply.indexOf('\n');
  const QString line = QString::fromLatin1(reply.first(end < 0 ? reply.size() : end).left(200)).trimmed();
  const bool refused = line.size() >= 3 && (line.at(0) == QLatin1Char('4') || line.at(0) == QLatin1Char('5')) &&
                       line.at(1).isDigit() && line.at(2).isDigit() && (line.size() == 3 || line.at(3) == QLatin1Char(' '));
  return refused ? line : QString();
}

bool isProbeHit(const QByteArray& reply) { return reply.startsWith("210"); }

QVariantMap parseRead(const QByteArray& bytes) {
  QVariantMap result;
  if (!bytes.startsWith("210")) return result;
  const QString reply = QString::fromUtf8(bytes);
  Scanner scanner(reply);

  QStringList durations;
  qint64 total = 0;
  const bool good = readOffsets(scanner, &durations, &total);
  if (good && total != 0) result[CdKeys::duration] = TimeText::timeStringWithSeconds(total);

  if (const auto discID = valueOfLine(scanner, QStringLiteral("DISCID="))) result[CdKeys::discID] = *discID;
  if (const auto title = valueOfLine(scanner, QStringLiteral("DTITLE="))) {
    const qsizetype separator = title->indexOf(slashSeparator);
    if (separator >= 0) {
      result[CdKeys::title] = trimmed(title->mid(separator + slashSeparator.size()));
      result[CdKeys::artist] = trimmed(title->left(separator));
    } else {
      result[CdKeys::title] = trimmed(*title);
    }
  }
  if (const auto year = valueOfLine(scanner, QStringLiteral("DYEAR="))) result[QStringLiteral("release")] = trimmed(*year);
  if (const auto genre = valueOfLine(scanner, QStringLiteral("DGENRE=")); genre && !trimmed(*genre).isEmpty()) {
    result[CdKeys::genre] = trimmed(*genre);
  }

  QStringList names, artists;
  readTrackTitles(scanner, &names, &artists);
  if (std::all_of(artists.cbegin(), artists.cend(), [](const QString& artist) { return artist.isEmpty(); })) {
    artists.clear();
  }
  scanner.rewind();
  QVariantList tracks;
  for (qsizetype k = 0; k < names.size(); ++k) {
    QVariantMap track{{QStringLiteral("name"), names.at(k)}};
    if (k < artists.size()) track[QStringLiteral("artist")] = artists.at(k);
    if (k < durations.size()) track[QStringLiteral("duration")] = durations.at(k);
    tracks << track;
  }
  if (!tracks.isEmpty()) result[QStringLiteral("tracks")] = tracks;

  if (const auto summary = valueOfLine(scanner, QStringLiteral("EXTD="))) result[CdKeys::summary] = trimmed(*summary);
  return result;
}

}  // namespace CddbReply
