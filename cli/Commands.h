#pragma once

#include <QStringList>

struct CliContext;

// Each command takes the words after its name and returns the exit status.
namespace Commands {
int help(const CliContext& context, const QStringList& args);
int settings(const CliContext& context, const QStringList& args);
int fields(const CliContext& context, const QStringList& args);
int searchTypes(const CliContext& context, const QStringList& args);
int add(const CliContext& context, const QStringList& args);
int edit(const CliContext& context, const QStringList& args);
int remove(const CliContext& context, const QStringList& args);
int list(const CliContext& context, const QStringList& args);
int collections(const CliContext& context, const QStringList& args);
int collection(const CliContext& context, const QStringList& args);
int totals(const CliContext& context, const QStringList& args);
int show(const CliContext& context, const QStringList& args);
// "export" is a keyword of the language.
int exportEntries(const CliContext& context, const QStringList& args);
int print(const CliContext& context, const QStringList& args);
int link(const CliContext& context, const QStringList& args);
int open(const CliContext& context, const QStringList& args);
int import(const CliContext& context, const QStringList& args);
int tags(const CliContext& context, const QStringList& args);
int library(const CliContext& context, const QStringList& args);
int discid(const CliContext& context, const QStringList& args);
int lookupDisc(const CliContext& context, const QStringList& args);
int cddb(const CliContext& context, const QStringList& args);
int websearch(const CliContext& context, const QStringList& args);
int scan(const CliContext& context, const QStringList& args);
int stats(const CliContext& context, const QStringList& args);
int duplicates(const CliContext& context, const QStringList& args);
}  // namespace Commands
