#include "CliOptions.h"

std::optional<CliOptions> CliOptions::parse(const QStringList& arguments, QString* message) {
  CliOptions options;
  for (int i = 0; i < arguments.size(); ++i) {
    const QString& a = arguments[i];
    auto takeValue = [&](QString* into) {
      if (i + 1 >= arguments.size()) {
        *message = QStringLiteral("%1 needs a value").arg(a);
        return false;
      }
      *into = arguments[++i];
      return true;
    };
    if (a == QLatin1String("--catalogue")) {
      if (!takeValue(&options.catalogue)) return std::nullopt;
    } else if (a == QLatin1String("--settings")) {
      if (!takeValue(&options.settings)) return std::nullopt;
    } else if (a == QLatin1String("--server")) {
      if (!takeValue(&options.server)) return std::nullopt;
    } else if (a == QLatin1String("--musicbrainz-server")) {
      if (!takeValue(&options.musicBrainzServer)) return std::nullopt;
    } else if (a == QLatin1String("--cover-server")) {
      if (!takeValue(&options.coverServer)) return std::nullopt;
    } else if (a == QLatin1String("--button")) {
      QString n;
      if (!takeValue(&n)) return std::nullopt;
      bool ok = false;
      options.button = n.toInt(&ok);
      if (!ok || options.button < 1) {
        *message = QStringLiteral("--button needs a button number from 1, not '%1'").arg(n);
        return std::nullopt;
      }
    } else if (a == QLatin1String("--json")) {
      options.json = true;
    } else if (a == QLatin1String("--quiet")) {
      options.quiet = true;
    } else if (a == QLatin1String("--version")) {
      options.version = true;
    } else {
      options.words << a;
    }
  }
  return options;
}

std::optional<CommandArguments> CommandArguments::parse(const QStringList& words, const QStringList& valueOptions,
                                                        const QStringList& flagOptions, QString* message) {
  CommandArguments args;
  for (int i = 0; i < words.size(); ++i) {
    const QString& w = words[i];
    if (w.startsWith(QLatin1String("--"))) {
      if (valueOptions.contains(w)) {
        if (i + 1 >= words.size()) {
          *message = QStringLiteral("%1 needs a value").arg(w);
          return std::nullopt;
        }
        args.values_[w] << words[++i];
      } else if (flagOptions.contains(w)) {
        args.flags_ << w;
      } else {
        *message = QStringLiteral("unknown option %1").arg(w);
        return std::nullopt;
      }
    } else {
      args.positional << w;
    }
  }
  return args;
}
