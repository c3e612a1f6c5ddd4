#include "CliContext.h"
#include "Commands.h"

#include <QFile>

namespace Commands {

int help(const CliContext&, const QStringList& args) {
  QFile file(QStringLiteral(":/docs/cli.md"));
  if (!file.open(QIODevice::ReadOnly)) return CliContext::failure(QStringLiteral("the help text is missing"));
  const QString text = QString::fromUtf8(file.readAll());
  if (args.isEmpty()) {
    CliContext::print(text);
    return 0;
  }
  const QString heading = QStringLiteral("### %1\n").arg(args.first());
  const qsizetype start = text.indexOf(heading);
  if (start < 0) return CliContext::usage(QStringLiteral("unknown command '%1'").arg(args.first()));
  const qsizetype end = text.indexOf(QStringLiteral("\n### "), start + heading.size());
  CliContext::print(text.mid(start + 4, end < 0 ? -1 : end - start - 3));
  return 0;
}

}  // namespace Commands
