#include <WQGeneral/update/WQUpdateInfo.h>

#include "FileTesting.h"
#include "WQUpdateInfoInternal.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>

using namespace wq;

namespace {

// The identifier as this application, or as another program of the maker
// with names of its own, sees it.
QString uuid(bool asOtherApplication = false)
{
    const QString name = QCoreApplication::applicationName();
    const QString organization = QCoreApplication::organizationName();
    if (asOtherApplication) {
        QCoreApplication::setApplicationName(QStringLiteral("Other Program"));
        QCoreApplication::setOrganizationName(QStringLiteral("Elsewhere"));
    }
    const QString answer = WQGatherUpdateInfoInDictionary().value(QStringLiteral("uuid")).toString();
    QCoreApplication::setApplicationName(name);
    QCoreApplication::setOrganizationName(organization);
    return answer;
}

} // namespace

TEST(UpdateInfo, InstallationIdentifierIsMadeOnceAndSharedByTheMakersApplications)
{
    const QString shared = WQSharedDefaultsFilePath();
    ASSERT_TRUE(shared.startsWith(QDir::tempPath())) << "tests run in a throw-away home";
    EXPECT_TRUE(shared.startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
    QFile::remove(shared);

    const QString first = uuid();
    static const QRegularExpression canonical(QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"));
    EXPECT_TRUE(canonical.match(first).hasMatch()) << qPrintable(first);
    ASSERT_TRUE(QFile::exists(shared)) << "written at once";
    EXPECT_EQ(uuid(), first);
    EXPECT_EQ(uuid(true), first);

    // A value another application stored is used as it stands.
    ASSERT_TRUE(test::writeBytes(shared, "[General]\ncom.veltranostudio.softwareupdate.uuid=made-by-another-program\n"));
    EXPECT_EQ(uuid(true), QStringLiteral("made-by-another-program"));

    // Gone again: a new one, different from the old.
    QFile::remove(shared);
    const QString second = uuid();
    EXPECT_TRUE(canonical.match(second).hasMatch());
    EXPECT_NE(second, first);
    EXPECT_EQ(QSettings(shared, QSettings::IniFormat).value(kWQDefaultsKey_SoftwareUpdateUUID).toString(), second);
}

TEST(UpdateInfo, EntriesAndQueryString)
{
    const QVariantMap info = WQGatherUpdateInfoInDictionary();
    EXPECT_EQ(info.value(QStringLiteral("cpu")), QStringLiteral("Intel"));
    EXPECT_GT(info.value(QStringLiteral("cpu_count")).toString().toUInt(), 0u);
    EXPECT_EQ(_wq_gatherUpdateInfo({}).keys(), (QStringList{"cpu", "cpu_count", "uuid"}));
    EXPECT_EQ(_wq_gatherUpdateInfo({QStringLiteral("pt-BR"), QStringLiteral("en")}).value(QStringLiteral("lang")),
              QStringLiteral("pt-BR"));

    // Every parameter, the first included, starts with "&".
    const QString query = WQGatherUpdateInfoForURL();
    EXPECT_TRUE(query.startsWith(u'&'));
    const QStringList parameters = query.mid(1).split(u'&');
    EXPECT_EQ(parameters.size(), info.size());
    for (auto it = info.constBegin(); it != info.constEnd(); ++it)
        EXPECT_TRUE(parameters.contains(it.key() + u'=' + it.value().toString())) << qPrintable(it.key());

    // A space is escaped, an ampersand is not.
    EXPECT_EQ(_wq_updateQuery({{QStringLiteral("lang"), QStringLiteral("en GB")}, {QStringLiteral("x"), QStringLiteral("a&b")}}),
              QStringLiteral("&lang=en%20GB&x=a&b"));
}

TEST(UpdateInfo, SystemVersionComesFromOsRelease)
{
    QTemporaryDir folder;
    const QString path = folder.path() + QStringLiteral("/os-release");
    const std::pair<QByteArray, QString> files[] = {
        {"NAME=\"Example\"\nVERSION=\"12 (bookworm)\"\nVERSION_ID=\"12\"\nID=example\n", QStringLiteral("12")},
        {"NAME=Example\nVERSION='24.04 LTS (Noble \\\"Numbat\\\")'\n", QStringLiteral("24.04 LTS (Noble \"Numbat\")")},
        {"VERSION_ID=3.19.1\n", QStringLiteral("3.19.1")},
        {"NAME=Rolling\nVERSION_CODENAME=\n# VERSION_ID=9\n", QString()},
    };
    for (const auto& [text, version] : files) {
        ASSERT_TRUE(test::writeBytes(path, text));
        EXPECT_EQ(_wq_systemVersionFromOsRelease(path), version) << text.constData();
        EXPECT_EQ(_wq_systemVersionFromOsRelease(path).isNull(), version.isNull());
    }
    EXPECT_TRUE(_wq_systemVersionFromOsRelease(folder.path() + QStringLiteral("/missing")).isNull());
    EXPECT_FALSE(WQSystemVersionForUpdate().isNull()) << "the empty string where nothing is known";
}
