// Shared formatters, their owners, their settings and the notifications
// that keep them current.

#include <WQGeneral/money/WQCalculateMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <QElapsedTimer>

#include <cstdlib>
#include <new>

using namespace wq;
using namespace Qt::StringLiterals;

namespace {

using Senders = std::vector<const WQNotificationSender*>;
using test::Heard;

std::shared_ptr<WQMoneyFormatter> shared(WQMoneyFormatterDelegate& owner, qint8 places = 2, bool calculating = false)
{
    return WQMoneyFormatter::moneyFormatterForDelegate(&owner, places, calculating);
}

QStringList settingsOf(const WQMoneyFormatter& f)
{
    return {f.localizedCurrencySymbol(), f.localizedThousandsSeparator(), f.localizedDecimalSeparator(),
            f.localizedPositiveFormat(), f.localizedNegativeFormat()};
}

QVariantMap poundsDict()
{
    return test::currencyDict(u"£"_s, u"$#,##0.00"_s, u"-$#,##0.00"_s, u","_s, u"."_s);
}

} // namespace

TEST(MoneyRegistry, SharesPerOwnerPlacesAndKind)
{
    WQMoneyFormatterOwner a, b;
    auto a2 = shared(a);
    EXPECT_EQ(shared(a), a2);
    EXPECT_EQ(a.moneyFormatter(), a2);
    EXPECT_NE(shared(a, 3), a2);
    EXPECT_NE(shared(b), a2);

    // The calculating kind is an entry of its own, with the same patterns.
    const auto calc = shared(a, 2, true);
    ASSERT_NE(dynamic_cast<WQCalculateMoneyFormatter*>(calc.get()), nullptr);
    EXPECT_EQ(dynamic_cast<WQCalculateMoneyFormatter*>(a2.get()), nullptr);
    EXPECT_EQ(calc->positiveFormat(), u"$#,##0.00");
    EXPECT_EQ(shared(a, 2, true), calc);

    // Removing an owner drops its entries only; the factory then makes new ones.
    const std::weak_ptr<WQMoneyFormatter> old = a2;
    a2.reset();
    const auto b2 = shared(b);
    test::removeOwner(a);
    EXPECT_TRUE(old.expired());
    EXPECT_EQ(shared(b), b2);
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 1);
    const auto fresh = shared(a);
    EXPECT_EQ(fresh->delegate(), &a);
    test::removeOwner(a);
    test::removeOwner(b);
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 0);
}

TEST(MoneyRegistry, OwnerGoneWithoutNoticeIsNotCalled)
{
    // Two owners that post nothing, one after the other, at the same address.
    alignas(WQMoneyFormatterDelegate) unsigned char storage[sizeof(WQMoneyFormatterDelegate)];
    auto* first = new (storage) WQMoneyFormatterDelegate;
    const auto formatter = shared(*first);
    EXPECT_EQ(formatter->delegate(), first);
    first->~WQMoneyFormatterDelegate();
    EXPECT_EQ(formatter->delegate(), nullptr);
    EXPECT_FALSE(formatter->isATMMode());
    formatter->reloadSettings();
    EXPECT_EQ(formatter->stringForAmount(2), u"$2.00");

    auto* second = new (storage) WQMoneyFormatterDelegate;
    const auto other = shared(*second);
    EXPECT_NE(other, formatter);
    EXPECT_EQ(other->delegate(), second);
    test::removeOwner(*second);
    second->~WQMoneyFormatterDelegate();
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 0);
}

TEST(MoneyOwner, PostsItsNotificationsAndItsFormattersFollowAtOnce)
{
    Heard changes(kWQNotif_MoneyFormatterChanged), currencies(kWQNotification_CurrencyChanged),
        removals(kWQNotification_DelegateRemoved);
    auto owner = std::make_unique<WQMoneyFormatterOwner>(test::dollarDict());
    const auto plain = owner->moneyFormatter();
    const auto calculating = owner->moneyFormatter(0, true);
    const auto unlisted = shared(*owner, 3); // not handed out by the owner
    owner->setUserInputLikeATM(true);
    EXPECT_TRUE(plain->isATMMode());

    // Those it handed out show the new currency as the notification goes out.
    QStringList seenWhenPosted;
    WQObservation whenPosted;
    whenPosted.observe(kWQNotification_CurrencyChanged, owner.get(), [&](const WQNotification&) {
        seenWhenPosted = {plain->stringForAmount(1), calculating->stringForAmount(1)};
    });
    owner->setCurrencySymbolDict(poundsDict());
    EXPECT_EQ(currencies.objects, Senders{owner.get()});
    EXPECT_EQ(seenWhenPosted, (QStringList{u"£1.00"_s, u"£1"_s}));
    EXPECT_EQ(unlisted->stringForAmount(1), u"$1.000") << "the others wait for the settling delay";
    // The two re-read at once changed in one turn of the loop: one posting.
    ASSERT_TRUE(test::spinUntil([&] { return changes.objects.size() == 2; }));
    EXPECT_EQ(changes.objects, (Senders{plain.get(), unlisted.get()}));
    EXPECT_EQ(unlisted->stringForAmount(1), u"£1.000");

    // The same settings again announce nothing; nullopt is the system's.
    owner->setCurrencySymbolDict(poundsDict());
    EXPECT_EQ(currencies.objects.size(), 1u);
    owner->setCurrencySymbolDict(std::nullopt);
    EXPECT_EQ(plain->localizedCurrencySymbol(), WQMoneyFormatter::systemCurrencySymbol());
    EXPECT_EQ(currencies.objects.size(), 2u);

    // Gone, it takes its formatters out of the registry; fields holding one keep it.
    const WQMoneyFormatterOwner* gone = owner.get();
    owner.reset();
    EXPECT_EQ(removals.objects, Senders{gone});
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 0);
    EXPECT_EQ(plain->delegate(), nullptr);
    EXPECT_EQ(plain->stringForAmount(1), u"$1.00");
}

TEST(MoneyOwner, AnOwnerLivingUntilTheProcessEndsLeavesCleanly)
{
    // In a fresh process, where the owner is made before anything it talks to.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static WQMoneyFormatterOwner owner(test::dollarDict());
            std::exit(owner.moneyFormatter()->stringForAmount(1) == u"$1.00" ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(MoneySettings, CustomOrSystemBySettingsFlag)
{
    test::ScopedLocale locale(u"de_DE"_s);
    QVariantMap swiss = test::currencyDict(u"CHF "_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u"'"_s, u"."_s);
    WQMoneyFormatterOwner owner(swiss);
    const QStringList custom{u"CHF "_s, u"'"_s, u"."_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s};
    EXPECT_EQ(settingsOf(WQMoneyFormatter(&owner)), custom);
    swiss.insert(kWQCurrencyKey_UseSystem, 0);
    owner.setCurrencySymbolDict(swiss);
    EXPECT_EQ(settingsOf(WQMoneyFormatter(&owner)), custom);
    swiss.insert(kWQCurrencyKey_UseSystem, 1);
    owner.setCurrencySymbolDict(swiss);
    EXPECT_EQ(settingsOf(WQMoneyFormatter(&owner)),
              (QStringList{u" €"_s, u"."_s, u","_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s}));
    // Missing custom entries leave the fields empty; display still answers.
    owner.setCurrencySymbolDict(QVariantMap{{kWQCurrencyKey_Code, u"XXX"_s}});
    WQMoneyFormatter empty(&owner);
    EXPECT_TRUE(empty.localizedCurrencySymbol().isEmpty());
    EXPECT_EQ(empty.stringForAmount(1234.5), u"1234");
}

TEST(MoneySettings, SystemSymbolTakesThePatternsBlank)
{
    const struct { QString locale; const char16_t* symbol; const char16_t* positive; } rows[] = {
        {u"de_DE"_s, u" €", u"#,##0.00 $"}, {u"de_AT"_s, u"€ ", u"$ #,##0.00"},   {u"en_IE"_s, u"€", u"$#,##0.00"},
        {u"en_US"_s, u"$", u"$#,##0.00"},   {u"ja_JP"_s, u"￥", u"$#,##0"},       {u"de_CH"_s, u"CHF ", u"$ #,##0.00"},
        {u"he_IL"_s, u" ₪", u"#,##0.00 $"}, // a direction mark stood between blank and symbol
    };
    for (const auto& row : rows) {
        test::ScopedLocale locale(row.locale);
        SCOPED_TRACE(row.locale.toStdString());
        WQMoneyFormatter f;
        EXPECT_EQ(f.localizedCurrencySymbol(), row.symbol);
        EXPECT_EQ(f.localizedPositiveFormat(), row.positive);
    }
    test::ScopedLocale swiss(u"de_CH"_s);
    EXPECT_EQ(WQMoneyFormatter::systemNegativeCurrencyFormat(), u"$-#,##0.00");
    QString positive, negative;
    WQNumberSettings::legacyCurrencyFormats(u"'x'¤\u00A0#,##0.00;(¤#,##0.00'')"_s, &positive, &negative);
    EXPECT_EQ(positive, u"x$ #,##0.00");
    EXPECT_EQ(negative, u"($#,##0.00')");
}

TEST(MoneyNotifications, FirstReadSilentABurstReadOnceLaterReadsPostOnlyChanges)
{
    Heard changes(kWQNotif_MoneyFormatterChanged);
    WQMoneyFormatterOwner owner(test::dollarDict()), other(test::dollarDict());
    const auto f = shared(owner); // straight from the registry: re-read on notice only
    const auto untouched = shared(other);
    test::spinFor(50);
    EXPECT_TRUE(changes.objects.empty());

    // The re-read waits 0.2 s after the currency-changed notification, once
    // for a burst of them; a formatter destroyed before it comes due is skipped.
    auto doomed = std::make_shared<WQMoneyFormatter>(&owner);
    QElapsedTimer timer;
    timer.start();
    owner.setCurrencySymbolDict(poundsDict());
    for (int i = 0; i < 4; ++i)
        WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_CurrencyChanged, &owner);
    doomed.reset();
    EXPECT_EQ(f->localizedCurrencySymbol(), u"$");
    ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
    EXPECT_GE(timer.elapsed(), 190);
    test::spinFor(300);
    EXPECT_EQ(changes.objects, Senders{f.get()});
    EXPECT_EQ(f->stringForAmount(3), u"£3.00");
    EXPECT_EQ(untouched->localizedCurrencySymbol(), u"$");

    // Nothing differs: no posting.
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_CurrencyChanged, &owner);
    test::spinFor(350);
    EXPECT_EQ(changes.objects.size(), 1u);
}

TEST(MoneyNotifications, NumberPreferencesReachFormattersWithoutOwner)
{
    Heard changes(kWQNotif_MoneyFormatterChanged);
    WQMoneyFormatter system;
    EXPECT_EQ(system.stringForAmount(-1234.5), u"-$1,234.50");
    {
        test::ScopedLocale locale(u"de_DE"_s);
        ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
        EXPECT_EQ(changes.objects.front(), &system);
        EXPECT_EQ(system.stringForAmount(-1234.5), u"-1.234,50 €");
    }
    ASSERT_TRUE(test::spinUntil([&] { return changes.objects.size() == 2; }));
    EXPECT_EQ(system.stringForAmount(-1234.5), u"-$1,234.50");
}
