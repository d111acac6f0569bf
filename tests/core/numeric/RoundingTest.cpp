#include <WQGeneral/numeric/WQRounding.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace wq;

TEST(Rounding, FactorRoundingHalvesToEvenWithinTheTolerance)
{
    struct Row {
        std::uint32_t factor;
        double input;
        double expected;
    };
    const Row rows[] = {
        {100, 0.125, 0.12},         {100, 0.135, 0.14},   {100, 2.675, 2.68},   {100, -2.675, -2.68},
        {100, 1.005, 1.0},   // 100.49999999999999 is within the tolerance of 100.5
        {100, 1.015, 1.02},         {100, 0.124, 0.12},   {100, 0.126, 0.13},   {100, -0.126, -0.13},
        {100, 1234567.891, 1234567.89}, {100, 0.0, 0.0},  {100, -0.0, 0.0},
        {1, 2.5000002, 3.0},   // 2e-7 from the half is outside the tolerance
        {1, 2.50000009, 2.0},       {1000, 0.0005, 0.0},  {1000, 0.0015, 0.002},
        {10000000, 0.12345675, 0.1234568}, {10000000, 0.300000051, 0.3000001}, {10000000, -0.0, 0.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.factor << " " << row.input);
        EXPECT_EQ(RoundDoubleToPlaces(row.factor, row.input), row.expected);
        // The named rounders are the factor rounding at their factor.
        const double named = row.factor == 100 ? RoundDoubleToTwoPlaces(row.input)
            : row.factor == 10000000           ? RoundDoubleToSevenPlaces(row.input)
                                               : row.expected;
        EXPECT_EQ(named, row.expected);
    }
    EXPECT_TRUE(std::isnan(RoundDoubleToTwoPlaces(std::nan(""))));
}

TEST(Rounding, SevenPlacesSplitDecidesOnTheEighthDigitOnly)
{
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
    struct Row {
        double input;
        std::int32_t whole;
        std::int32_t fraction;
        double result;
    };
    const Row rows[] = {
        {1.5, 1, 5000000, 1.5},
        {-1.5, -1, -5000000, -1.5},
        {0.99999999, 1, 0, 1.0},   // the eighth digit carries into the whole part
        {-0.99999999, -1, 0, -1.0},
        // 0.300000051 truncates to ...0005 after an even seventh digit and
        // stays down, unlike the factor-based rounding.
        {0.300000051, 0, 3000000, 0.3},
        {0.12345675, 0, 1234568, 0.1234568},   // 5 after an odd seventh: up
        {0.12345665, 0, 1234566, 0.1234566},   // ... after an even seventh: down
        {0.12345676, 0, 1234568, 0.1234568},
        {2.25, 2, 2500000, 2.25},
        {0.0, 0, 0, 0.0},
        {-0.0, 0, 0, 0.0},
        {3000000000.0, kMax, 0, 3000000000.0},   // above the range: unrounded
        {2147483647.0, kMax, 0, 2147483647.0},
        {-2147483648.0, kMin, 0, std::nan("")},   // the returned value is not pinned down here
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.input);
        std::int32_t whole = -42, fraction = -42;
        const double result = RoundDoubleToSevenPlacesReturn32BitIntegers(row.input, whole, fraction);
        if (!std::isnan(row.result)) {
            EXPECT_EQ(result, row.result);
        }
        EXPECT_EQ(whole, row.whole);
        EXPECT_EQ(fraction, row.fraction);
    }
    // Below the 32-bit range the truncation gives the most negative value,
    // as the processor does; nothing traps.
    for (const double low : {-3000000000.0, std::nan("")}) {
        std::int32_t whole = 0, fraction = 0;
        RoundDoubleToSevenPlacesReturn32BitIntegers(low, whole, fraction);
        EXPECT_EQ(whole, kMin) << low;
    }
}

TEST(Rounding, ValuesTooLargeToScaleComeBackWhole)
{
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(RoundDoubleToTwoPlaces(1e308), 1e308);
    EXPECT_EQ(RoundDoubleToSevenPlaces(-1e305), -1e305);
    EXPECT_EQ(RoundDoubleToPlaces(1000000000, std::numeric_limits<double>::max()), std::numeric_limits<double>::max());
    EXPECT_EQ(RoundDoubleToTwoPlaces(inf), inf);
    EXPECT_EQ(RoundDoubleToTwoPlaces(-inf), -inf);
    // Just inside the scalable range the arithmetic still runs.
    EXPECT_EQ(RoundDoubleToTwoPlaces(1e306), 1e306);
    std::int32_t whole = 0, fraction = -1;
    EXPECT_EQ(RoundDoubleToSevenPlacesReturn32BitIntegers(inf, whole, fraction), inf);
    EXPECT_EQ(whole, 2147483647);
    EXPECT_EQ(fraction, 0);
}
