#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <QElapsedTimer>

#include <new>

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;
using wq::test::TestDelegate;

namespace {

class CalculatingFormatter : public WQMoneyFormatter {
public:
    using WQMoneyFormatter::WQMoneyFormatter;
};

// Counts kWQNotif_MoneyFormatterChanged postings and remembers their objects.
struct ChangeCounter {
    ChangeCounter()
    {
        observation.observe(kWQNotif_MoneyFormatterChanged, nullptr, [this](const WQNotification& n) {
            objects.push_back(n.object);
        });
    }
    std::vector<const WQNotificationSender*> objects;
    WQObservation observation;
};

void removeOwner(const TestDelegate& owner)
{
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_DelegateRemoved, &owner);
}

} // namespace

TEST(MoneyRegistry, SharesPerOwnerPlacesAndKind)
{
    TestDelegate a, b;
    auto a2 = WQMoneyFormatter::moneyFormatterForDelegate(&a, 2);
    EXPECT_EQ(WQMoneyFormatter::moneyFormatterForDelegate(&a, 2), a2);
    EXPECT_NE(WQMoneyFormatter::moneyFormatterForDelegate(&a, 3), a2);
    EXPECT_NE(WQMoneyFormatter::moneyFormatterForDelegate(&b, 2), a2);
    EXPECT_EQ(a2->positiveFormat(), u"$#,##0.00");
    EXPECT_EQ(a2->negativeFormat(), u"-$#,##0.00");
    const auto a0 = WQMoneyFormatter::moneyFormatterForDelegate(&a, 0);
    EXPECT_EQ(a0->positiveFormat(), u"$#,##0");
    EXPECT_EQ(a0->negativeFormat(), u"-$#,##0");
    EXPECT_EQ(WQMoneyFormatter::moneyFormatterForDelegate(&a, 3)->negativeFormat(), u"-$#,##0.000");
    EXPECT_EQ(WQMoneyFormatter::moneyFormatterForDelegate(&a, -1)->positiveFormat(), u"$#,##0");

    // Without a maker there is no calculating formatter, and nothing is kept.
    const qsizetype before = WQMoneyFormatter::registeredFormatterCount();
    EXPECT_EQ(WQMoneyFormatter::moneyFormatterForDelegate(&a, 2, true), nullptr);
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), before);
    WQMoneyFormatter::setCalculatingFormatterMaker(
        [](WQMoneyFormatterDelegate* d) { return std::make_shared<CalculatingFormatter>(d); });
    const auto calc = WQMoneyFormatter::moneyFormatterForDelegate(&a, 2, true);
    ASSERT_NE(calc, nullptr);
    EXPECT_NE(calc, a2);
    EXPECT_NE(dynamic_cast<CalculatingFormatter*>(calc.get()), nullptr);
    EXPECT_EQ(calc->positiveFormat(), u"$#,##0.00");
    EXPECT_EQ(WQMoneyFormatter::moneyFormatterForDelegate(&a, 2, true), calc);
    WQMoneyFormatter::setCalculatingFormatterMaker({});

    // Removing an owner drops its entries only; the factory then makes new ones.
    const std::weak_ptr<WQMoneyFormatter> old = a2;
    a2.reset();
    const auto b2 = WQMoneyFormatter::moneyFormatterForDelegate(&b, 2);
    removeOwner(a);
    EXPECT_TRUE(old.expired());
    EXPECT_EQ(WQMoneyFormatter::moneyFormatterForDelegate(&b, 2), b2);
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 1);
    const auto fresh = WQMoneyFormatter::moneyFormatterForDelegate(&a, 2);
    EXPECT_EQ(fresh->delegate(), &a);
    removeOwner(a);
    removeOwner(b);
    // The last entry gone, the registry itself goes.
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
    const auto formatter = WQMoneyFormatter::moneyFormatterForDelegate(first, 2);
    EXPECT_TRUE(formatter->isATMMode());
    first->~TestDelegate();
    EXPECT_EQ(formatter->delegate(), nullptr);
    EXPECT_FALSE(formatter->isATMMode());
    formatter->_wq_setUpInstanceVariables();
    EXPECT_EQ(formatter->stringForAmount(2), u"$2.00");

    auto* second = new (storage) TestDelegate;
    const auto other = WQMoneyFormatter::moneyFormatterForDelegate(second, 2);
    EXPECT_NE(other, formatter);
    EXPECT_EQ(other->delegate(), second);
    removeOwner(*second);
    second->~TestDelegate();
    EXPECT_EQ(WQMoneyFormatter::registeredFormatterCount(), 0);
}

TEST(MoneySettings, CustomOrSystemBySettingsFlag)
{
    test::ScopedLocale locale(u"de_DE"_s);
    TestDelegate owner;
    const auto swiss = test::currencyDict(u"CHF "_s, u"$ #,##0.00"_s, u"-$ #,##0.00"_s, u"'"_s, u"."_s);
    owner.dict = swiss;
    {
        WQMoneyFormatter f(&owner);
        EXPECT_EQ(f.localizedCurrencySymbol(), u"CHF ");
        EXPECT_EQ(f.localizedThousandsSeparator(), u"'");
        EXPECT_EQ(f.localizedPositiveFormat(), u"$ #,##0.00");
    }
    owner.dict->insert(kWQCurrencyKey_UseSystem, 0);
    EXPECT_EQ(WQMoneyFormatter(&owner).localizedDecimalSeparator(), u".");
    owner.dict->insert(kWQCurrencyKey_UseSystem, 1);
    {
        WQMoneyFormatter f(&owner);
        EXPECT_EQ(f.localizedCurrencySymbol(), u" €");
        EXPECT_EQ(f.localizedThousandsSeparator(), u".");
        EXPECT_EQ(f.localizedDecimalSeparator(), u",");
        EXPECT_EQ(f.localizedPositiveFormat(), u"#,##0.00 $");
        EXPECT_EQ(f.localizedNegativeFormat(), u"-#,##0.00 $");
    }
    // Missing custom entries leave the fields empty; display still answers.
    owner.dict = QVariantMap{{kWQCurrencyKey_Code, u"XXX"_s}};
    WQMoneyFormatter empty(&owner);
    EXPECT_TRUE(empty.localizedCurrencySymbol().isEmpty());
    EXPECT_EQ(empty.stringForAmount(1234.5), u"1234");
}

TEST(MoneySettings, SystemSymbolTakesThePatternsBlank)
{
    const struct { const char16_t* locale; const char16_t* symbol; const char16_t* positive; } rows[] = {
        {u"de_DE", u" €", u"#,##0.00 $"},
        {u"de_AT", u"€ ", u"$ #,##0.00"},
        {u"en_IE", u"€", u"$#,##0.00"},
        {u"en_US", u"$", u"$#,##0.00"},
        {u"ja_JP", u"￥", u"$#,##0"},
        {u"de_CH", u"CHF ", u"$ #,##0.00"},
    };
    for (const auto& row : rows) {
        test::ScopedLocale locale(QString::fromUtf16(row.locale));
        WQMoneyFormatter f;
        EXPECT_EQ(f.localizedCurrencySymbol(), QString::fromUtf16(row.symbol)) << QString::fromUtf16(row.locale).toStdString();
        EXPECT_EQ(f.localizedPositiveFormat(), QString::fromUtf16(row.positive));
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
    const auto f = WQMoneyFormatter::moneyFormatterForDelegate(&owner, 2);
    test::spinFor(50);
    EXPECT_TRUE(changes.objects.empty());

    // The re-read waits 0.2 s after the currency-changed notification.
    owner.dict = test::currencyDict(u"€"_s, u"$#,##0.00"_s, u"-$#,##0.00"_s, u","_s, u"."_s);
    QElapsedTimer timer;
    timer.start();
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_CurrencyChanged, &owner);
    EXPECT_EQ(f->localizedCurrencySymbol(), u"$");
    ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
    EXPECT_GE(timer.elapsed(), 190);
    EXPECT_EQ(changes.objects, std::vector<const WQNotificationSender*>{f.get()});
    EXPECT_EQ(f->stringForAmount(3), u"€3.00");

    // Nothing differs: no posting.
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_CurrencyChanged, &owner);
    test::spinFor(350);
    EXPECT_EQ(changes.objects.size(), 1u);
    removeOwner(owner);
}

TEST(MoneyNotifications, ChangesCoalesceAndDeadFormattersAreSkipped)
{
    ChangeCounter changes;
    TestDelegate first, second;
    first.dict = second.dict = test::dollarDict();
    const auto a = WQMoneyFormatter::moneyFormatterForDelegate(&first, 2);
    const auto b = WQMoneyFormatter::moneyFormatterForDelegate(&second, 2);
    const auto pound = test::currencyDict(u"£"_s, u"$#,##0.00"_s, u"-$#,##0.00"_s, u","_s, u"."_s);
    // Two formatters changing in one turn of the loop post the name once.
    first.dict = second.dict = pound;
    a->_wq_setUpInstanceVariables();
    b->_wq_setUpInstanceVariables();
    ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
    test::spinFor(50);
    EXPECT_EQ(changes.objects, std::vector<const WQNotificationSender*>{a.get()});

    // A burst of notifications is read once, after it settles; a formatter
    // destroyed before its re-read comes due is skipped.
    changes.objects.clear();
    auto doomed = std::make_shared<WQMoneyFormatter>(&first);
    first.dict = test::dollarDict();
    for (int i = 0; i < 5; ++i)
        WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_CurrencyChanged, &first);
    doomed.reset();
    ASSERT_TRUE(test::spinUntil([&] { return !changes.objects.empty(); }));
    test::spinFor(300);
    EXPECT_EQ(changes.objects, std::vector<const WQNotificationSender*>{a.get()});
    EXPECT_EQ(a->localizedCurrencySymbol(), u"$");
    EXPECT_EQ(b->localizedCurrencySymbol(), u"£");
    removeOwner(first);
    removeOwner(second);
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
