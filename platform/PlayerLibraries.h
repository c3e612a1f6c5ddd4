#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>

// The music players' libraries a Linux desktop has: where each player keeps its library, and
// reading one whichever player wrote it.
class PlayerLibraries {
 public:
  // The usual places, in the order they are tried: Rhythmbox, Strawberry, Clementine. They
  // follow XDG_DATA_HOME and XDG_CONFIG_HOME.
  static QStringList usualPaths();
  // The first of them that exists; empty when none does.
  static QString find();
  // The tracks of a Rhythmbox library or a Strawberry or Clementine database, told apart by
  // content; empty for anything else.
  static QVariantList read(const QString& path);
};
