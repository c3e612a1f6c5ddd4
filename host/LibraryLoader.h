#pragma once

#include <QVariantList>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

class TrackData;

// Reads the player's library into the track data on a thread of its own, one read at a time;
// whoever asks while a read runs is told when that read ends.
class LibraryLoader {
 public:
  explicit LibraryLoader(TrackData& trackData) : trackData_(trackData) {}
  ~LibraryLoader() { wait(); }
  LibraryLoader(const LibraryLoader&) = delete;
  LibraryLoader& operator=(const LibraryLoader&) = delete;

  // Starts a read of the tracks `read` gives unless a read runs; `loaded`, when given, runs on
  // the reading thread once the library is in.
  void start(std::function<QVariantList()> read, std::function<void()> loaded = {});
  bool running() const;
  // Returns once no read runs.
  void wait();

 private:
  TrackData& trackData_;
  mutable std::mutex mutex_;
  bool running_ = false;
  std::vector<std::function<void()>> listeners_;
  std::thread thread_;
};
