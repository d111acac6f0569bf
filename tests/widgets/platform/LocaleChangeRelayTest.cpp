#include <WQGeneral/platform/WQLocaleChangeRelay.h>
#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;

TEST(LocaleChangeRelay, OneToolkitLocaleChangeBecomesOneFrameworkChange)
{
    QWidget window, palette; // each window gets its own copy of the change
    window.show();
    palette.show();
    int localeChanges = 0, numberChanges = 0, token = 0;
    auto& center = WQNotificationCenter::distributedCenter();
    center.addObserver(&token, kWQNotif_CurrentLocaleDidChange, nullptr, [&](const WQNotification&) { ++localeChanges; });
    center.addObserver(&token, kWQNotif_AppleNumberPreferencesChanged, nullptr,
                       [&](const WQNotification&) { ++numberChanges; });

    QEvent before(QEvent::LocaleChange);
    QCoreApplication::sendEvent(&window, &before);
    test::spinFor(20);
    EXPECT_EQ(localeChanges, 0) << "nothing is relayed before the relay is installed";

    WQInstallLocaleChangeRelay();
    WQInstallLocaleChangeRelay(); // a second install must not double the relay
    const quint64 generation = WQRegionalSettings::generation();
    // The toolkit hands each window its own copy of one change.
    for (QWidget* w : {&window, &palette}) {
        QEvent change(QEvent::LocaleChange);
        QCoreApplication::sendEvent(w, &change);
    }
    EXPECT_EQ(localeChanges, 0) << "the change is announced after the toolkit has handled it";
    ASSERT_TRUE(test::spinUntil([&] { return localeChanges > 0; }));
    test::spinFor(20);

    EXPECT_EQ(localeChanges, 1);
    EXPECT_EQ(numberChanges, 1);
    EXPECT_GT(WQRegionalSettings::generation(), generation) << "caches must see the change";
    center.removeObserver(&token);
}
