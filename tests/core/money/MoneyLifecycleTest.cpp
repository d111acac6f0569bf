// Shared formatters, their owners, their settings and the notifications
// that keep them current.

#include <WQGeneral/money/WQCalculateMoneyFormatter.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <QElapsedTimer>

#include <new>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TestDelegate;

namespace {


using Senders = std::vector<const WQNotificationSender*>;

// Remembers the objects of kWQNotif_MoneyFormatterChanged postings.
struct ChangeCounter {
    ChangeCounter()
    {
        observation.observe(kWQNotif_MoneyFormatterChanged, nullptr,
                            [this](const WQNotification& n) { objects.push_back(n.object); });
    }
    Senders objects;
    WQObservation observation;
};

std::shared_ptr<WQMoneyFormatter> shared(TestDelegate& owner, qint8 places = 2, bool calculating = false)
{
    return WQMoneyFormatter::moneyFormatterForDelegate(&owner, places, calculating);
}

void post(const QString& name, const TestDelegate& owner)
{
    WQNotificationCenter::defaultCenter().postNotificationName(name, &owner);
}

QStringList settingsOf(const WQMoneyFormatter& f)
{
    return {f.localizedCurrencySymbol(), f.localizedThousandsSeparator(), f.localizedDecimalSeparator(),
            f.localizedPositiveFormat(), f.localizedNegativeFormat()};
}

} // namespace

TEST(MoneyRegistry, SharesPerOwnerPlacesAndKind)
{
    TestDelegate a, b;
    auto a2 = shared(a);
    EXPECT_EQ(shared(a), a2);
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
    post(kWQNotification_DelegateRemoved, a);
    EXPECT_TRUE(old.expired());
    EXPECT_EQ(shared(b), b2);
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 1);
    const auto fresh = shared(a);
    EXPECT_EQ(fresh->delegate(), &a);
    post(kWQNotification_DelegateRemoved, a);
    post(kWQNotification_DelegateRemoved, b);
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 0);
    // A field may still hold a removed formatter; it keeps working.
    EXPECT_EQ(fresh->stringForAmount(1), u"$1.00");
}

TEST(MoneyRegistry, OwnerGoneWithoutNoticeIsNotCalled)
{
    // Two owners, one after the other, at the same address.
    alignas(TestDelegate) unsigned char storage[sizeof(TestDelegate)];
    auto* first = new (storage) TestDelegate;
    first->atm = true;
    const auto formatter = shared(*first);
    EXPECT_TRUE(formatter->isATMMode());
    first->~TestDelegate();
    EXPECT_EQ(formatter->delegate(), nullptr);
    EXPECT_FALSE(formatter->isATMMode());
    formatter->reloadSettings();
    EXPECT_EQ(formatter->stringForAmount(2), u"$2.00");

    auto* second = new (storage) TestDelegate;
    const auto other = shared(*second);
    EXPECT_NE(other, formatter);
    EXPECT_EQ(other->delegate(), second);
    post(kWQNotification_DelegateRemoved, *second);
    second->~TestDelegate();
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 0);
}

TEST(MoneySettings, CustomOrSystemBySettingsFlag)
{
    test::ScopedLocale locale(u"de_DE"_s);
    TestDelegate owner;
    owner.dict = test::currencyDict(u"CHF "_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u"'"_s, u"."_s);
    const QStringList custom{u"CHF "_s, u"'"_s, u"."_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s};
    EXPECT_EQ(settingsOf(WQMoneyFormatter(&owner)), custom);
    owner.dict->insert(kWQCurrencyKey_UseSystem, 0);
    EXPECT_EQ(settingsOf(WQMoneyFormatter(&owner)), custom);
    owner.dict->insert(kWQCurrencyKey_UseSystem, 1);
    EXPECT_EQ(settingsOf(WQMoneyFormatter(&owner)),
              (QStringList{u" €"_s, u"."_s, u","_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s}));
    // Missing custom entries leave the fields empty; display still answers.
    owner.dict = QVariantMap{{kWQCurrencyKey_Code, u"XXX"_s}};
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

TEST(MoneyNotifications, FirstReadSilentLaterReadsPostOnlyChanges)
{
    ChangeCounter changes;
    TestDelegate owner;
    owner.dict = test::dollarDict();
    const auto f = shared(owner);
    test::spinFor(50);
    EXPECT_TRUE(changes.objects.empty());

    // The re-read waits 0.2 s after the currency-changed notification.
    owner.dict = test::currencyDict(u"€"_s, u"$#,##0.00"_s, u"-$#,##0.00"_s, u","_s, u"."_s);
    QElapsedTimer timer;
    timer.start();
    post(kWQNotification_CurrencyChanged, owner);
    EXPECT_EQ(f->localizedCurrencySymbol(), u"$");
    ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
    EXPECT_GE(timer.elapsed(), 190);
    EXPECT_EQ(changes.objects, Senders{f.get()});
    EXPECT_EQ(f->stringForAmount(3), u"€3.00");

    // Nothing differs: no posting.
    post(kWQNotification_CurrencyChanged, owner);
    test::spinFor(350);
    EXPECT_EQ(changes.objects.size(), 1u);
    post(kWQNotification_DelegateRemoved, owner);
}

TEST(MoneyNotifications, ChangesCoalesceAndDeadFormattersAreSkipped)
{
    ChangeCounter changes;
    TestDelegate first, second;
    first.dict = second.dict = test::dollarDict();
    const auto a = shared(first);
    const auto b = shared(second);
    // Two formatters changing in one turn of the loop post the name once.
    first.dict = second.dict = test::currencyDict(u"£"_s, u"$#,##0.00"_s, u"-$#,##0.00"_s, u","_s, u"."_s);
    a->reloadSettings();
    b->reloadSettings();
    ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
    test::spinFor(50);
    EXPECT_EQ(changes.objects, Senders{a.get()});

    // A burst of notifications is read once, after it settles; a formatter
    // destroyed before its re-read comes due is skipped.
    changes.objects.clear();
    auto doomed = std::make_shared<WQMoneyFormatter>(&first);
    first.dict = test::dollarDict();
    for (int i = 0; i < 5; ++i)
        post(kWQNotification_CurrencyChanged, first);
    doomed.reset();
    ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
    test::spinFor(300);
    EXPECT_EQ(changes.objects, Senders{a.get()});
    EXPECT_EQ(a->localizedCurrencySymbol(), u"$");
    EXPECT_EQ(b->localizedCurrencySymbol(), u"£");
    post(kWQNotification_DelegateRemoved, first);
    post(kWQNotification_DelegateRemoved, second);
}

TEST(MoneyNotifications, NumberPreferencesReachFormattersWithoutOwner)
{
    ChangeCounter changes;
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
