// Arbitrary edits under odd settings: every answer must leave a selection
// inside the text, and no input may crash or read out of bounds.

#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include "MoneyTestSupport.h"

#include <gtest/gtest.h>

#include <random>

using namespace wq;
using namespace Qt::StringLiterals;

namespace {

QString randomText(std::mt19937& rng, int maxLength)
{
    static const QString alphabet = u"0123456789.,-()$ €kr'CHF:x\u202F\u0663\U0001D7D9"_s;
    QString text;
    const int length = std::uniform_int_distribution<int>(0, maxLength)(rng);
    for (int i = 0; i < length; ++i)
        text += alphabet[std::uniform_int_distribution<qsizetype>(0, alphabet.size() - 1)(rng)];
    return text;
}

void judgeRandomEdits(WQFormatter& formatter, std::mt19937& rng, int rounds)
{
    for (int i = 0; i < rounds; ++i) {
        const QString original = randomText(rng, 12);
        const qsizetype a = std::uniform_int_distribution<qsizetype>(0, original.size())(rng);
        const qsizetype b = std::uniform_int_distribution<qsizetype>(0, original.size() - a)(rng);
        const bool deleting = rng() % 4 == 0;
        const QString inserted = deleting ? QString() : randomText(rng, 3);
        QString partial = QString(original).replace(a, b, inserted);
        WQRange range{a + inserted.size(), 0};
        if (deleting && b == 0 && a > 0) {
            partial = QString(original).remove(a - 1, 1);
            range = {a - 1, 0};
        }
        QString error;
        const WQEditScope scope({WQEditEvent::Type::KeyDown, deleting ? QString(QChar(127)) : inserted, false});
        formatter.isPartialStringValid(&partial, &range, original, {a, b}, &error);
        ASSERT_GE(range.location, 0) << original.toStdString();
        ASSERT_GE(range.length, 0);
        ASSERT_LE(range.end(), partial.size()) << original.toStdString() << " -> " << partial.toStdString();
        QVariant value;
        formatter.getObjectValue(&value, partial, &error);
        formatter.stringForObjectValue(value);
    }
}

} // namespace

TEST(MoneyRobustness, ArbitraryEditsUnderOddSettings)
{
    std::mt19937 rng(20240613);
    const QVariantMap settings[] = {
        test::dollarDict(),
        test::currencyDict(u" €"_s, u"#,##0.00 $"_s, u"(#,##0.00 $)"_s, u"\u202F"_s, u","_s),
        test::currencyDict(u" kr."_s, u"#,##0.00 $"_s, u"-#,##0.00 $"_s, u"."_s, u"."_s),
        test::currencyDict(u"CHF"_s, u"$ #,##0.000"_s, u"$-#,##0.000"_s, u"::"_s, u""_s),
        test::currencyDict(u""_s, u""_s, u""_s, u""_s, u"0"_s),
        QVariantMap{},
    };
    for (const QVariantMap& dict : settings) {
        for (bool atm : {false, true}) {
            WQMoneyFormatterOwner owner(dict, atm);
            for (qint8 places : {qint8(0), qint8(2), qint8(18), qint8(-3)})
                judgeRandomEdits(*owner.moneyFormatter(places), rng, 300);
        }
    }
    WQPositiveIntegerFormatter integer;
    judgeRandomEdits(integer, rng, 2000);
}
