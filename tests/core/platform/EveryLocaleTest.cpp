// Every UTF-8 locale installed: a date a field shows is the date it reads,
// also typed key by key; whole numbers and decimals show as they are typed
// and read; an amount shown, typed or typed ATM-style is the amount read,
// also with numbers and money in different locales.

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include "MoneyTestSupport.h"
#include "ToolRunner.h"

#include <langinfo.h>
#include <locale.h>

#include <cmath>
#include <cstring>

using namespace wq;
using Category = WQRegionalSettings::Category;

namespace {

QStringList installedUtf8Locales()
{
    QStringList names;
    const QByteArray listed = test::runProgram(QStringLiteral("locale"), {QStringLiteral("-a")}).out;
    for (const QString& name : QString::fromLocal8Bit(listed).split(u'\n', Qt::SkipEmptyParts)) {
        const locale_t handle = newlocale(LC_CTYPE_MASK, name.toLocal8Bit().constData(), locale_t(0));
        if (!handle)
            continue;
        if (std::strcmp(nl_langinfo_l(CODESET, handle), "UTF-8") == 0)
            names.append(name);
        freelocale(handle);
    }
    return names;
}

// What goes wrong with a date in the time locale; empty when nothing does.
QString dateFault()
{
    // A day no month can be, in a year other than today's.
    const WQDate date(2024, 11, 23);
    WQDateFormatter formatter(WQDateFormatter::shortDateFormat());
    const QString shown = formatter.stringForObjectValue(QVariant::fromValue(date)).value_or(QString());
    QString error;
    const std::optional<WQDate> read = formatter.dateForString(shown, &error);
    if (read != date)
        return QStringLiteral("date \"%1\" reads %2").arg(shown, read ? read->description() : error);
    test::TypingField field(formatter);
    if (field.type(shown) != shown)
        return QStringLiteral("typing date \"%1\" gives \"%2\" %3").arg(shown, field.text(), field.lastError);
    return {};
}

// What goes wrong with whole numbers and decimals in the numeric locale.
QString numberFault()
{
    WQPositiveIntegerFormatter whole;
    const QString shown = whole.stringForObjectValue(1234567).value_or(QString());
    test::TypingField field(whole);
    if (field.type(u"1234567"_qs) != shown)
        return QStringLiteral("typing 1234567 gives \"%1\", shown as \"%2\"").arg(field.text(), shown);
    WQDecimalFormatter decimal;
    const QString rate = decimal.stringForObjectValue(4.25).value_or(QString());
    const test::Reading read = test::readWith(decimal, rate);
    if (!read.ok || read.value.toDouble() != 4.25)
        return QStringLiteral("decimal \"%1\" reads %2").arg(rate, read.value.toString());
    return {};
}

double amountOf(const WQMoneyFormatter& formatter, const QString& text)
{
    const test::Reading read = test::readWith(formatter, text);
    return read.error.isEmpty() ? read.value.toDouble() : std::nan("");
}

// What goes wrong with amounts under the system settings in force.
QString moneyFault(test::TestDelegate& owner, WQMoneyFormatter& formatter)
{
    formatter.reloadSettings();
    QStringList faults;
    for (const double amount : {1234567.89, -1234567.89}) {
        const QString shown = formatter.stringForAmount(amount);
        if (amountOf(formatter, shown) != amount)
            faults << QStringLiteral("\"%1\" reads %2").arg(shown).arg(amountOf(formatter, shown), 0, 'f');
    }
    const QString keys[] = {u"1234"_qs + formatter.localizedDecimalSeparator() + u"56"_qs, u"123456"_qs};
    for (const bool atm : {false, true}) {
        owner.atm = atm;
        test::TypingField field(formatter);
        field.type(keys[atm]);
        if (amountOf(formatter, field.text()) != 1234.56)
            faults << QStringLiteral("typing %1%2 gives \"%3\"").arg(keys[atm], atm ? u" (ATM)"_qs : QString(), field.text());
    }
    owner.atm = false;
    return faults.join(u"; ");
}

TEST(EveryLocale, DatesAndAmountsShownAreRead)
{
    const QStringList locales = installedUtf8Locales();
    ASSERT_GT(locales.size(), 100) << "the locales-all package is missing";
    test::TestDelegate owner; // system settings
    WQMoneyFormatter& money = *WQMoneyFormatter::moneyFormatterForDelegate(&owner, 2);
    QStringList failures;
    for (const QString& name : locales) {
        test::ScopedLocale locale(name);
        const auto note = [&](const QString& where, const QString& fault) {
            if (!fault.isEmpty())
                failures << name + where + u": "_qs + fault;
        };
        note(QString(), dateFault());
        note(QString(), numberFault());
        note(QString(), moneyFault(owner, money));
        // Numbers and currency set apart, either decimal separator.
        for (const char* numbers : {"en_US", "de_DE"}) {
            WQRegionalSettings::setLocale(Category::Numeric, QString::fromLatin1(numbers));
            note(u" with "_qs + QString::fromLatin1(numbers) + u" numbers"_qs, moneyFault(owner, money));
        }
    }
    test::removeOwner(owner);
    EXPECT_TRUE(failures.isEmpty()) << failures.size() << " of " << locales.size() << " locales fail:\n"
                                    << failures.join(u'\n').toStdString();
}

} // namespace
