#include <WQGeneral/numeric/WQRounding.h>

#include <cmath>
#include <limits>

namespace wq {

namespace {

// Truncation to 32 bits as the processor does it: out of range (or NaN)
// gives the most negative value instead of undefined behaviour.
std::int32_t truncateToInt32(double x)
{
    if (!(x > -2147483649.0 && x < 2147483648.0))
        return std::numeric_limits<std::int32_t>::min();
    return std::int32_t(x);
}

// Two's-complement negation, wrapping for the most negative value.
std::int32_t negated(std::int32_t v)
{
    return std::int32_t(0u - std::uint32_t(v));
}

} // namespace

double RoundDoubleToPlaces(std::uint32_t factor, double x)
{
    const bool negative = x < 0;
    const double f = double(factor);
    double y = x * f;
    // A value too large to scale has no places left to round: every double
    // that large is whole. Without this it would come back infinite.
    if (std::isinf(y) && std::isfinite(x))
        return x;
    if (negative)
        y = -y;
    double integral = 0;
    std::modf(y, &integral);
    double result;
    if (std::fabs(y - (integral + 0.5)) < 1e-7)
        result = std::fmod(integral, 2.0) < 1e-7 ? integral : std::ceil(integral + 0.5);
    else
        result = std::round(y);
    result /= f;
    return negative ? -result : result;
}

double RoundDoubleToTwoPlaces(double x)
{
    return RoundDoubleToPlaces(100, x);
}

double RoundDoubleToSevenPlaces(double x)
{
    return RoundDoubleToPlaces(10000000, x);
}

double RoundDoubleToSevenPlacesReturn32BitIntegers(double x, std::int32_t& wholePart, std::int32_t& fraction)
{
    const bool negative = x < 0;
    if (x > 2147483647.0) {
        wholePart = 2147483647;
        fraction = 0;
        return x;
    }
    std::int32_t w = truncateToInt32(x);
    const double rest = x - double(w);
    std::int32_t f7 = truncateToInt32(rest * 1e7);
    std::int64_t f8 = truncateToInt32(rest * 1e8);
    if (negative) {
        w = negated(w);
        f7 = negated(f7);
        f8 = -f8;
    }
    const std::int64_t d = f8 - 10 * std::int64_t(f7);
    if (d > 5 || (d == 5 && (f7 & 1))) {
        f7 = std::int32_t(std::uint32_t(f7) + 1u);
        if (f7 == 10000000) {
            w = std::int32_t(std::uint32_t(w) + 1u);
            f7 = 0;
        }
    }
    double result = double(w) + double(f7) / 1e7;
    if (negative) {
        result = -result;
        w = negated(w);
        f7 = negated(f7);
    }
    wholePart = w;
    fraction = f7;
    return result;
}

std::int8_t WQ_AltiVecIsPresent()
{
    return 0;
}

} // namespace wq
