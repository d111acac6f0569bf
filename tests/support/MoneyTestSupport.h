#pragma once
// Money formatter tests: an owner with settable currency settings, the
// settings of the worked examples, and a fixture owning one owner.

#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>

#include <QString>
#include <QVariantMap>

#include "TypingField.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

namespace wq::test {

class TestDelegate : public WQMoneyFormatterDelegate {
public:
    std::optional<QVariantMap> currencySymbolDict() const override { return dict; }
    bool user_input_like_ATM() const override { return atm; }
    std::optional<QVariantMap> dict;
    bool atm = false;
};

inline QVariantMap currencyDict(const QString& symbol, const QString& positive, const QString& negative,
                                const QString& thousands, const QString& decimal)
{
    return {{QStringLiteral("NSCurrencySymbol"), symbol},
            {QStringLiteral("NSPositiveCurrencyFormatString"), positive},
            {QStringLiteral("NSNegativeCurrencyFormatString"), negative},
            {QStringLiteral("NSThousandsSeparator"), thousands},
            {QStringLiteral("NSDecimalSeparator"), decimal}};
}

// The settings of the worked examples: $#,##0.00 / -$#,##0.00, "," and ".".
inline QVariantMap dollarDict(const QString& negative = QStringLiteral("-$#,##0.00"))
{
    return currencyDict(QStringLiteral("$"), QStringLiteral("$#,##0.00"), negative, QStringLiteral(","),
                        QStringLiteral("."));
}

// The symbol after the amount with a blank, "." grouping and "," decimals.
inline QVariantMap euroDict()
{
    return currencyDict(QStringLiteral(" €"), QStringLiteral("#,##0.00 $"), QStringLiteral("-#,##0.00 $"),
                        QStringLiteral("."), QStringLiteral(","));
}

// The application closes an owner: its formatters leave the registry.
inline void removeOwner(const WQNotificationSender& owner)
{
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_DelegateRemoved, &owner);
}

// A test owning one money-formatter owner; its registry entries go with it.
class MoneyTest : public ::testing::Test {
protected:
    // The owner's shared formatter, under new settings.
    WQMoneyFormatter& with(const QVariantMap& dict, qint8 places = 2)
    {
        owner.setCurrencySymbolDict(dict);
        current = owner.moneyFormatter(places);
        return *current;
    }
    WQMoneyFormatterOwner owner;
    std::shared_ptr<WQMoneyFormatter> current;
};

} // namespace wq::test
