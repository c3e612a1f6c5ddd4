#pragma once

#include <QString>
#include <QVariant>
#include <functional>

class CollectionsController;
class Entry;
class EntriesController;
class MyFieldsControllerShared;
class Platform;
class Store;
class StringTable;
class WindowSystem;

// What an import reaches of the application: the catalogue, the window, the platform, and the
// few steps of the controller that also tell the window and the user.
struct ImportServices {
  Store& store;
  CollectionsController& collections;
  EntriesController& entries;
  WindowSystem& windowSystem;
  const StringTable& strings;
  Platform& platform;
  MyFieldsControllerShared* fields = nullptr;
  // Saves the catalogue, telling the user when it fails; false then.
  std::function<bool()> save;
  // Shows the entry in the list, selected.
  std::function<void(Entry*)> select;
  // Writes the picture as the entry's cover; false when it is no picture or cannot be written.
  std::function<bool(Entry&, const QVariant&)> setCover;
  // The "Import Duplicates" setting as it is now.
  std::function<bool()> importDuplicates;
  // The open catalogue's folder; empty for a catalogue in memory.
  std::function<QString()> dataFolder;
};
