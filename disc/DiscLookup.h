#pragma once

#include <QList>
#include <QStringList>
#include <optional>

class Freedb;
class MusicBrainz;
class Platform;
class SitePlugin;

// The inserted disc asked of the online sources in the user's order, until one knows it.
class DiscLookup {
 public:
  enum class Source { musicBrainz, cddb };
  // The names the settings and the command line use: "MusicBrainz" and "CDDB", any case.
  static std::optional<Source> sourceNamed(const QString& name);
  // The sources a list of names gives, in its order, unknown names and repeats left out.
  static QList<Source> sourcesNamed(const QStringList& names);

  struct Outcome {
    // The display texts of the matches; nullopt (after the no-CD sheet) without a disc.
    std::optional<QStringList> titles;
    SitePlugin* site = nullptr;  // the source that knew the disc
    // "Source: what went wrong" for each source that gave no answer.
    QStringList problems;
  };

  DiscLookup(Freedb& freedb, MusicBrainz& musicBrainz, const Platform& platform)
      : freedb_(freedb), musicBrainz_(musicBrainz), platform_(platform) {}
  Outcome run(const QList<Source>& sources);

 private:
  Freedb& freedb_;
  MusicBrainz& musicBrainz_;
  const Platform& platform_;
};
