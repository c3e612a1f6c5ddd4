#pragma once

#include <QString>
#include <QVariantList>
#include <optional>

// The system's music player, asked through its scripting interface.
class MusicPlayer {
 public:
  virtual ~MusicPlayer() = default;
  // Runs the script and returns its result list (nested lists for list items, texts and
  // numbers otherwise); nullopt with the player's error message set when it fails.
  virtual std::optional<QVariantList> runScript(const QString& source, QString* errorMessage) = 0;
};
