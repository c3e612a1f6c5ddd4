#pragma once

#include <QIcon>

// Icons of the desktop's theme, with drawn ones for desktops that have no icon theme (a bare
// window manager, a container): a tool bar of blank buttons tells nobody anything.
class FallbackIcons {
 public:
  // The theme's "edit-find", else a drawn magnifier.
  static QIcon find();
  // The theme's icon of that name, else the drawn one for it (find, list-add, list-remove,
  // document-edit), else none.
  static QIcon named(const QString& name);
};
