#include <WQGeneral/files/WQFiles.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <unistd.h>

using namespace wq;

namespace {

void touch(const QString& path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
}

QString desktop()
{
    return QDir::homePath() + QStringLiteral("/Desktop");
}

} // namespace

TEST(UniqueFileURL, NumbersTakenNamesUpTo499)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const QString base = folder.path();

    QUrl url = WQUniqueFileURLWithBasePathFileNameAndExtension(base, QStringLiteral("report"), QStringLiteral("txt"));
    EXPECT_TRUE(url.isLocalFile());
    EXPECT_EQ(url.toLocalFile(), base + QStringLiteral("/report.txt"));
    EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(base + u'/', QStringLiteral("report"), QStringLiteral("txt")), url)
        << "a trailing slash changes nothing";

    touch(base + QStringLiteral("/report.txt"));
    EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(base, QStringLiteral("report"), QStringLiteral("txt")).toLocalFile(),
              base + QStringLiteral("/report-1.txt"));
    touch(base + QStringLiteral("/report-1.txt"));
    url = WQUniqueFileURLWithBasePathFileNameAndExtension(base, QStringLiteral("report"), QStringLiteral("txt"));
    EXPECT_EQ(url.toLocalFile(), base + QStringLiteral("/report-2.txt"));
    EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(base, QStringLiteral("report"), QStringLiteral("txt")), url)
        << "nothing is reserved between calls";

    // A gap is filled; past 499 the last name is answered although taken.
    touch(base + QStringLiteral("/report-3.txt"));
    EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(base, QStringLiteral("report"), QStringLiteral("txt")).toLocalFile(),
              base + QStringLiteral("/report-2.txt"));
    for (int n = 2; n < 500; ++n)
        touch(base + QStringLiteral("/report-%1.txt").arg(n));
    EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(base, QStringLiteral("report"), QStringLiteral("txt")).toLocalFile(),
              base + QStringLiteral("/report-499.txt"));
    EXPECT_FALSE(QFileInfo::exists(base + QStringLiteral("/report-500.txt")));

    // A relative folder is taken from the working directory.
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(base));
    url = WQUniqueFileURLWithBasePathFileNameAndExtension(QStringLiteral("."), QStringLiteral("new"), QStringLiteral("csv"));
    QDir::setCurrent(previous);
    EXPECT_EQ(url.toLocalFile(), base + QStringLiteral("/new.csv"));
}

TEST(UniqueFileURL, UnusableFoldersFallBackToTheDesktop)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    ASSERT_TRUE(QDir::homePath().startsWith(QDir::tempPath())) << "tests run in a throw-away home";
    EXPECT_EQ(WQDesktopFolderPath(), desktop());

    const QString plainFile = folder.path() + QStringLiteral("/plain");
    touch(plainFile);
    for (const QString& unusable : {plainFile, folder.path() + QStringLiteral("/missing"), QString()})
        EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(unusable, QStringLiteral("report"), QStringLiteral("txt")).toLocalFile(),
                  desktop() + QStringLiteral("/report.txt"))
            << qPrintable(unusable);

    // Read-only: root may write anywhere, so only an unprivileged run can tell.
    const QString readOnly = folder.path() + QStringLiteral("/locked");
    ASSERT_TRUE(QDir().mkdir(readOnly));
    QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::ExeOwner);
    if (::access(QFile::encodeName(readOnly).constData(), W_OK) != 0) {
        EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(readOnly, QStringLiteral("report"), QStringLiteral("txt")).toLocalFile(),
                  desktop() + QStringLiteral("/report.txt"));
    }
    QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    // Numbering applies on the desktop as well.
    ASSERT_TRUE(createAllDirectoriesAtPath(desktop()));
    touch(desktop() + QStringLiteral("/report.txt"));
    touch(desktop() + QStringLiteral("/report-1.txt"));
    EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(plainFile, QStringLiteral("report"), QStringLiteral("txt")).toLocalFile(),
              desktop() + QStringLiteral("/report-2.txt"));
    QFile::remove(desktop() + QStringLiteral("/report.txt"));
    QFile::remove(desktop() + QStringLiteral("/report-1.txt"));

    // The session's own desktop folder wins over ~/Desktop.
    const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    ASSERT_TRUE(createAllDirectoriesAtPath(config));
    QFile dirs(config + QStringLiteral("/user-dirs.dirs"));
    ASSERT_TRUE(dirs.open(QIODevice::WriteOnly));
    dirs.write("XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n");
    dirs.close();
    const QString german = QDir::homePath() + QStringLiteral("/Schreibtisch");
    EXPECT_EQ(WQDesktopFolderPath(), german);
    EXPECT_EQ(WQUniqueFileURLWithBasePathFileNameAndExtension(plainFile, QStringLiteral("a"), QStringLiteral("b")).toLocalFile(),
              german + QStringLiteral("/a.b"));
    dirs.remove();
}

TEST(CreateAllDirectories, MakesEveryMissingParent)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    EXPECT_FALSE(createAllDirectoriesAtPath(QString()));
    EXPECT_FALSE(createAllDirectoriesAtPath(QStringLiteral("")));

    const QString deep = folder.path() + QStringLiteral("/a/b/c");
    EXPECT_TRUE(createAllDirectoriesAtPath(deep));
    EXPECT_TRUE(QFileInfo(deep).isDir());
    EXPECT_TRUE(createAllDirectoriesAtPath(deep)) << "an existing folder is success";

    const QString locked = folder.path() + QStringLiteral("/x/y");
    const auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    EXPECT_TRUE(createAllDirectoriesAtPath(locked, ownerOnly));
    EXPECT_EQ(QFile::permissions(locked) & 0x7077, ownerOnly);
    EXPECT_EQ(QFile::permissions(folder.path() + QStringLiteral("/x")) & 0x7077, ownerOnly) << "parents too";

    const QString file = folder.path() + QStringLiteral("/file");
    touch(file);
    EXPECT_FALSE(createAllDirectoriesAtPath(file));
    EXPECT_FALSE(createAllDirectoriesAtPath(file + QStringLiteral("/below")));
}
