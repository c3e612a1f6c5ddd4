#include "LibraryLoader.h"

#include "TrackData.h"

void LibraryLoader::start(std::function<QVariantList()> read, std::function<void()> loaded) {
  std::lock_guard lock(mutex_);
  if (loaded) listeners_.push_back(std::move(loaded));
  if (running_) return;
  // An earlier read has ended; its thread only waits to be joined.
  if (thread_.joinable()) thread_.join();
  running_ = true;
  thread_ = std::thread([this, read = std::move(read)] {
    trackData_.loadLibrary(read());
    std::vector<std::function<void()>> listeners;
    {
      std::lock_guard lock(mutex_);
      running_ = false;
      listeners.swap(listeners_);
    }
    for (auto& listener : listeners) listener();
  });
}

bool LibraryLoader::running() const {
  std::lock_guard lock(mutex_);
  return running_;
}

void LibraryLoader::wait() {
  std::thread finished;
  {
    std::lock_guard lock(mutex_);
    finished = std::move(thread_);
  }
  if (finished.joinable()) finished.join();
}
