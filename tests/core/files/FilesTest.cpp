#include <WQGeneral/files/WQFiles.h>

#include "FileTesting.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <unistd.h>

using namespace wq;

namespace {

void touch(const QString& path, const QByteArray& bytes = {})
{
    ASSERT_TRUE(test::writeBytes(path, bytes)) << qPrintable(path);
}

// report.txt, report-1.txt, report-2.txt ... in folder.
QString numbered(const QString& folder, int n)
{
    return folder + (n > 0 ? QStringLiteral("/report-%1.txt").arg(n) : QStringLiteral("/report.txt"));
}

QString unique(const QString& folder, const QString& name = QStringLiteral("report"),
               const QString& extension = QStringLiteral("txt"))
{
    // A URL that is not a file's answers an empty path here.
    return WQUniqueFileURLWithBasePathFileNameAndExtension(folder, name, extension).toLocalFile();
}

} // namespace

TEST(UniqueFileURL, NumbersTakenNamesUpTo499)
{
    QTemporaryDir folder;
    const QString base = folder.path();
    EXPECT_EQ(unique(base), numbered(base, 0));
    EXPECT_EQ(unique(base + u'/'), numbered(base, 0)) << "a trailing slash changes nothing";
    for (int taken : {0, 1}) {
        touch(numbered(base, taken));
        EXPECT_EQ(unique(base), numbered(base, taken + 1));
    }

    // Nothing is reserved between calls, and a gap is filled; past 499 the
    // last name is answered although taken.
    touch(numbered(base, 3));
    EXPECT_EQ(unique(base), numbered(base, 2));
    for (int n = 2; n < 500; ++n)
        touch(numbered(base, n));
    EXPECT_EQ(unique(base), numbered(base, 499));
    EXPECT_FALSE(QFileInfo::exists(numbered(base, 500)));

    // A relative folder is taken from the working directory.
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(base));
    const QString relative = unique(QStringLiteral("."), QStringLiteral("new"), QStringLiteral("csv"));
    QDir::setCurrent(previous);
    EXPECT_EQ(relative, base + QStringLiteral("/new.csv"));
}

TEST(UniqueFileURL, UnusableFoldersFallBackToTheDesktop)
{
    QTemporaryDir folder;
    ASSERT_TRUE(QDir::homePath().startsWith(QDir::tempPath())) << "tests run in a throw-away home";
    const QString desktop = QDir::homePath() + QStringLiteral("/Desktop");
    EXPECT_EQ(WQDesktopFolderPath(), desktop);

    const QString plainFile = folder.path() + QStringLiteral("/plain");
    const QString readOnly = folder.path() + QStringLiteral("/locked");
    touch(plainFile);
    ASSERT_TRUE(QDir().mkdir(readOnly));
    QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::ExeOwner);
    // Root may write anywhere, so only an unprivileged run can try read-only.
    QStringList unusable{plainFile, folder.path() + QStringLiteral("/missing"), QString()};
    if (::access(QFile::encodeName(readOnly).constData(), W_OK) != 0)
        unusable << readOnly;
    for (const QString& path : unusable)
        EXPECT_EQ(unique(path), numbered(desktop, 0)) << qPrintable(path);
    QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    // Numbering applies on the desktop as well.
    ASSERT_TRUE(createAllDirectoriesAtPath(desktop));
    for (int n : {0, 1})
        touch(numbered(desktop, n));
    EXPECT_EQ(unique(plainFile), numbered(desktop, 2));
    for (int n : {0, 1})
        QFile::remove(numbered(desktop, n));

    // The session's own desktop folder wins over ~/Desktop.
    const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    ASSERT_TRUE(createAllDirectoriesAtPath(config));
    touch(config + QStringLiteral("/user-dirs.dirs"), "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
    const QString german = QDir::homePath() + QStringLiteral("/Schreibtisch");
    EXPECT_EQ(WQDesktopFolderPath(), german);
    EXPECT_EQ(unique(plainFile, QStringLiteral("a"), QStringLiteral("b")), german + QStringLiteral("/a.b"));
    QFile::remove(config + QStringLiteral("/user-dirs.dirs"));
}

TEST(CreateAllDirectories, MakesEveryMissingParent)
{
    QTemporaryDir folder;
    const QString file = folder.path() + QStringLiteral("/file");
    touch(file);
    for (const QString& bad : {QString(), QStringLiteral(""), file, file + QStringLiteral("/below")})
        EXPECT_FALSE(createAllDirectoriesAtPath(bad)) << qPrintable(bad);

    const QString deep = folder.path() + QStringLiteral("/a/b/c");
    EXPECT_TRUE(createAllDirectoriesAtPath(deep));
    EXPECT_TRUE(QFileInfo(deep).isDir());
    EXPECT_TRUE(createAllDirectoriesAtPath(deep)) << "an existing folder is success";

    const auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    EXPECT_TRUE(createAllDirectoriesAtPath(folder.path() + QStringLiteral("/x/y"), ownerOnly));
    for (const char* made : {"/x/y", "/x"})   // parents too
        EXPECT_EQ(QFile::permissions(folder.path() + QLatin1StringView(made)) & 0x7077, ownerOnly) << made;
}
