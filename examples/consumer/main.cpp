// Links WQGeneral::Core from an installed prefix and uses it.
#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <cstdio>

int main()
{
    int received = 0;
    int token = 0;
    auto& center = wq::WQNotificationCenter::defaultCenter();
    center.addObserver(&token, QStringLiteral("ping"), nullptr, [&](const wq::WQNotification&) { ++received; });
    center.postNotificationName(QStringLiteral("ping"));
    wq::WQRegionalSettings::setAllLocales(QStringLiteral("de_DE"));
    const QString pattern = wq::WQRegionalSettings::datePattern(wq::WQRegionalSettings::DateStyle::Short);
    std::printf("consumer: linked WQGeneral, %d notification, de_DE short date %s\n", received, qPrintable(pattern));
    return received == 1 && pattern == QStringLiteral("dd.MM.yy") ? 0 : 1;
}
