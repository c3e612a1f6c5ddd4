#pragma once

#include <QString>

class Entry;

// Fills an entry's own fields into a template, in one pass over the text: "[KEY]" becomes the
// value, "IF_KEY ... END_KEY" is kept (markers removed) when the value is not empty and cut out
// when it is. KEY is an attribute or derived key of the entity "CD", or one of the template's
// own keys ("coverImage", "myRatingStars"). Anything else stays as it stands, so the track rows
// filled afterwards find their markers untouched; an inserted value is never read as a marker.
class EntryTemplate {
 public:
  struct Options {
    bool html = false;
    // How "releaseDate" and "originalReleaseDate" print (a date format of QDateTime); empty
    // means "yyyy".
    QString releaseDateFormat;
    // What "[coverImage]" becomes; empty when the entry has no cover.
    QString coverImageAddress;
    // What a true boolean prints as.
    QString yesText = QStringLiteral("Yes");
  };

  static inline const QString releaseDateFormatKey = QStringLiteral("releaseDateFormat");
  // Every date other than the release dates prints like "4 March 1999".
  static inline const QString dateFormat = QStringLiteral("d MMMM yyyy");
  // Characters (64 MB as UTF-16) a rendered text may reach; past it the text is left as it was.
  static constexpr qsizetype maximumLength = qsizetype(32) * 1024 * 1024;

  // False, leaving the text unchanged, when the result would pass maximumLength.
  static bool render(QString& text, const Entry& entry, const Options& options);

  // The value of one key as a template shows it, before any HTML encoding: dates by the
  // formats above, booleans as yesText or nothing, integers in decimal with 0 as nothing.
  static QString displayText(const Entry& entry, const QString& key, const Options& options);
  // The text made inert for HTML: mark-up characters and the characters markers are made of
  // become character references, so a value can add neither mark-up nor markers.
  static QString encodedForHTML(const QString& value);
  static bool isKey(const QString& key);
};
