#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <ostream>

#include "PathText.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {

using namespace PathText;

TEST(PathText, ResolvesSymbolicLinks) {
  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  const QString realDir = QFileInfo(dir.path()).canonicalFilePath();
  const QString target = realDir + QStringLiteral("/music.flac");
  QFile file(target);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  const QString link = realDir + QStringLiteral("/link.flac");
  const QString linkToLink = realDir + QStringLiteral("/link2.flac");
  ASSERT_TRUE(QFile::link(target, link));
  ASSERT_TRUE(QFile::link(link, linkToLink));

  EXPECT_EQ(stringByResolvingAliasInPath(target), target);
  EXPECT_EQ(stringByResolvingAliasInPath(linkToLink), target);

  const QString missing = realDir + QStringLiteral("/missing.flac");
  EXPECT_EQ(stringByResolvingAliasInPath(missing), missing);
  const QString dangling = realDir + QStringLiteral("/dangling.flac");
  ASSERT_TRUE(QFile::link(missing, dangling));
  EXPECT_EQ(stringByResolvingAliasInPath(dangling), dangling);
  EXPECT_EQ(stringByResolvingAliasInPath(QString()), QString());
}

}  // namespace
