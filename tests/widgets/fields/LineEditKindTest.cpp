// The formatter a WQLineEdit installs for each kind, and how the kind and
// places follow formatters set from code.

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQCalculateMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include <gtest/gtest.h>

using namespace wq;

namespace {

template <typename T>
bool is(const std::shared_ptr<WQFormatter>& formatter)
{
    return dynamic_cast<const T*>(formatter.get()) != nullptr;
}

TEST(LineEditKind, EachKindInstallsItsFormatterPlacesFollowMoneyAndCodeMayChooseItsOwn)
{
    WQLineEdit field;
    EXPECT_EQ(field.formatterKind(), WQLineEdit::NoFormatter);
    EXPECT_EQ(field.places(), 2);

    field.setFormatterKind(WQLineEdit::Date);
    ASSERT_TRUE(is<WQDateFormatter>(field.formatter()));
    EXPECT_FALSE(static_cast<const WQDateFormatter&>(*field.formatter()).showCentury());
    field.setFormatterKind(WQLineEdit::ExtendedDate);
    ASSERT_TRUE(is<WQDateFormatter>(field.formatter()));
    EXPECT_TRUE(static_cast<const WQDateFormatter&>(*field.formatter()).showCentury());
    field.setFormatterKind(WQLineEdit::WholeNumber);
    EXPECT_TRUE(is<WQPositiveIntegerFormatter>(field.formatter()));
    field.setFormatterKind(WQLineEdit::Decimal);
    EXPECT_TRUE(is<WQDecimalFormatter>(field.formatter()));
    field.setFormatterKind(WQLineEdit::Money);
    EXPECT_TRUE(is<WQMoneyFormatter>(field.formatter()));
    EXPECT_FALSE(is<WQCalculateMoneyFormatter>(field.formatter()));
    // The shared system formatter of those places.
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2));
    field.setFormatterKind(WQLineEdit::CalculatingMoney);
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2, true));
    EXPECT_EQ(field.formatterKind(), WQLineEdit::CalculatingMoney);
    field.setFormatterKind(WQLineEdit::NoFormatter);
    EXPECT_EQ(field.formatter(), nullptr);

    // Places replace only money formatters.
    field.setFormatterKind(WQLineEdit::Money);
    field.setObjectValue(4.25);
    field.setPlaces(0);
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 0));
    EXPECT_EQ(field.text(), QStringLiteral("$4"));
    field.setPlaces(42); // beyond what the money display handles
    EXPECT_EQ(field.places(), 9);

    field.setFormatterKind(WQLineEdit::Decimal);
    const auto decimal = field.formatter();
    field.setPlaces(3);
    EXPECT_EQ(field.formatter(), decimal);
    // The places wait for the next money kind.
    field.setFormatterKind(WQLineEdit::Money);
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 3));

    // A formatter from code is custom and stays until a kind is chosen.
    field.setFormatterKind(WQLineEdit::Date);
    const auto own = std::make_shared<WQDateFormatter>(QStringLiteral("yyyy-MM-dd"));
    field.setFormatter(own);
    EXPECT_EQ(field.formatterKind(), WQLineEdit::Custom);
    field.setFormatterKind(WQLineEdit::Custom);
    field.setPlaces(4);
    EXPECT_EQ(field.formatter(), own);
    // Choosing the kind it had before installs a new formatter of that kind.
    field.setFormatterKind(WQLineEdit::Date);
    EXPECT_NE(field.formatter(), own);
    EXPECT_EQ(field.formatterKind(), WQLineEdit::Date);
    field.setFormatter(nullptr);
    EXPECT_EQ(field.formatterKind(), WQLineEdit::NoFormatter);
}

} // namespace
