#include "CliApplication.h"
#include "GuiApplication.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <cstdint>
#include <memory>
#if defined(__GLIBC__)
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace {

QtMessageHandler previousHandler = nullptr;

// Without a session (cron, a container, su) Qt warns on every start of a GUI application that
// XDG_RUNTIME_DIR is unset, and then uses a folder of its own; a printing command line has
// nothing to do with that folder and should not print the warning among its own messages.
void quietAboutRuntimeDir(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))) return;
  previousHandler(type, context, message);
}

// A catalogue of 100,000 entries is a quarter of a gigabyte of small allocations: in 4 KB pages,
// some 40,000 page faults and a fifth of the time to open it. So the heap is grown once, by half a
// gigabyte of address space (no memory until touched), marked for huge pages, and never trimmed.
void backHeapWithHugePages() {
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

}  // namespace

int main(int argc, char* argv[]) {
  backHeapWithHugePages();
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  QCoreApplication::setApplicationName(QStringLiteral("discary"));
  QCoreApplication::setApplicationVersion(QStringLiteral(DISCARY_VERSION));
  if (GuiApplication::wanted(arguments)) {
    QApplication app(argc, argv);
    return GuiApplication::run(arguments);
  }
  std::unique_ptr<QCoreApplication> app;
  if (CliApplication::paints(arguments)) {
    // Painting text needs fonts, and so a GUI application; a command line shows no window, so
    // it never needs a display either.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    previousHandler = qInstallMessageHandler(quietAboutRuntimeDir);
    app = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(previousHandler);
    // A cover that is not a picture prints as an empty frame; the decoder's complaints about it
    // would only bury the command's own messages.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio.*.warning=false"));
  } else {
    app = std::make_unique<QCoreApplication>(argc, argv);
  }
  return CliApplication::run(arguments);
}
