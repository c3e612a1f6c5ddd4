#include "HugePageHeap.h"

#include <cstdint>
#if defined(__GLIBC__)
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

void HugePageHeap::install() {
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
  constexpr std::uintptr_t hugePage = 2 << 20;
  constexpr int reserve = 512 << 20;
  mallopt(M_TRIM_THRESHOLD, reserve * 2);
  mallopt(M_TOP_PAD, reserve);
  // Large blocks (indexes, sort keys, the database's cache) come from the heap too, and the block
  // below with them: this is the most the library takes.
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  void* block = malloc(16 << 20);
  mallopt(M_TOP_PAD, 128 << 10);
  if (!block) return;
  const std::uintptr_t start = (reinterpret_cast<std::uintptr_t>(block) + hugePage - 1) & ~(hugePage - 1);
  const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(sbrk(0)) & ~(hugePage - 1);
  if (end > start) madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
  free(block);
#endif
}
