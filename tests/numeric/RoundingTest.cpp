#include <WQGeneral/numeric/WQRounding.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace wq;

namespace {

struct Split {
    double result;
    std::int32_t whole;
    std::int32_t fraction;
};

Split split(double x)
{
    Split s{0, -42, -42};
    s.result = RoundDoubleToSevenPlacesReturn32BitIntegers(x, s.whole, s.fraction);
    return s;
}

} // namespace

TEST(Rounding, TwoPlacesHalvesToEven)
{
    EXPECT_EQ(RoundDoubleToTwoPlaces(0.125), 0.12);
    EXPECT_EQ(RoundDoubleToTwoPlaces(0.135), 0.14);
    EXPECT_EQ(RoundDoubleToTwoPlaces(2.675), 2.68);
    EXPECT_EQ(RoundDoubleToTwoPlaces(-2.675), -2.68);
    EXPECT_EQ(RoundDoubleToTwoPlaces(1.005), 1.0);   // 100.49999999999999 is within the tolerance of 100.5
    EXPECT_EQ(RoundDoubleToTwoPlaces(1.015), 1.02);
    EXPECT_EQ(RoundDoubleToTwoPlaces(0.124), 0.12);
    EXPECT_EQ(RoundDoubleToTwoPlaces(0.126), 0.13);
    EXPECT_EQ(RoundDoubleToTwoPlaces(-0.126), -0.13);
    EXPECT_EQ(RoundDoubleToTwoPlaces(1234567.891), 1234567.89);
    // A scaled value 2e-7 away from the half is outside the tolerance.
    EXPECT_EQ(RoundDoubleToPlaces(1, 2.5000002), 3.0);
    EXPECT_EQ(RoundDoubleToPlaces(1, 2.50000009), 2.0);
    EXPECT_EQ(RoundDoubleToPlaces(1000, 0.0005), 0.0);
    EXPECT_EQ(RoundDoubleToPlaces(1000, 0.0015), 0.002);

    EXPECT_EQ(RoundDoubleToTwoPlaces(0.0), 0.0);
    EXPECT_EQ(RoundDoubleToTwoPlaces(-0.0), 0.0);
    EXPECT_TRUE(std::isnan(RoundDoubleToTwoPlaces(std::nan(""))));
}

TEST(Rounding, SevenPlacesBothWays)
{
    EXPECT_EQ(RoundDoubleToSevenPlaces(0.12345675), 0.1234568);
    EXPECT_EQ(RoundDoubleToSevenPlaces(0.300000051), 0.3000001);

    Split s = split(1.5);
    EXPECT_EQ(s.result, 1.5);
    EXPECT_EQ(s.whole, 1);
    EXPECT_EQ(s.fraction, 5000000);

    s = split(-1.5);
    EXPECT_EQ(s.result, -1.5);
    EXPECT_EQ(s.whole, -1);
    EXPECT_EQ(s.fraction, -5000000);

    s = split(0.99999999);   // eighth digit 9 carries into the whole part
    EXPECT_EQ(s.whole, 1);
    EXPECT_EQ(s.fraction, 0);
    EXPECT_EQ(s.result, 1.0);

    s = split(-0.99999999);
    EXPECT_EQ(s.whole, -1);
    EXPECT_EQ(s.fraction, 0);

    // Only the eighth digit counts: 0.300000051 truncates to ...0005 with an
    // even seventh digit and stays down, unlike the factor-based rounding.
    s = split(0.300000051);
    EXPECT_EQ(s.whole, 0);
    EXPECT_EQ(s.fraction, 3000000);
    EXPECT_EQ(s.result, 0.3);

    s = split(0.12345675);   // eighth digit 5 after an odd seventh: up
    EXPECT_EQ(s.fraction, 1234568);
    s = split(0.12345665);   // ... after an even seventh: down
    EXPECT_EQ(s.fraction, 1234566);
    s = split(0.12345676);
    EXPECT_EQ(s.fraction, 1234568);
    s = split(2.25);
    EXPECT_EQ(s.whole, 2);
    EXPECT_EQ(s.fraction, 2500000);

    for (double zero : {0.0, -0.0}) {
        s = split(zero);
        EXPECT_EQ(s.whole, 0);
        EXPECT_EQ(s.fraction, 0);
        EXPECT_EQ(s.result, 0.0);
        EXPECT_EQ(RoundDoubleToSevenPlaces(zero), 0.0);
    }
}

TEST(Rounding, SevenPlacesOutOfRange)
{
    Split s = split(3000000000.0);
    EXPECT_EQ(s.whole, 2147483647);
    EXPECT_EQ(s.fraction, 0);
    EXPECT_EQ(s.result, 3000000000.0);

    s = split(2147483647.0);
    EXPECT_EQ(s.whole, 2147483647);
    EXPECT_EQ(s.fraction, 0);

    s = split(-2147483648.0);
    EXPECT_EQ(s.whole, std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(s.fraction, 0);

    // Below the 32-bit range the truncation gives the most negative value,
    // as the processor does; nothing traps.
    s = split(-3000000000.0);
    EXPECT_EQ(s.whole, std::numeric_limits<std::int32_t>::min());
    s = split(std::nan(""));
    EXPECT_EQ(s.whole, std::numeric_limits<std::int32_t>::min());

    EXPECT_EQ(WQ_AltiVecIsPresent(), 0);
}
