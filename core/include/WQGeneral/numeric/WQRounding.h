#pragma once
// Rounding binary doubles as if they were decimals: half-to-even, with an
// absolute tolerance that absorbs the representation error of the scaled
// value. Results depend on plain IEEE double arithmetic (no fused or
// extended-precision steps); the build keeps it that way.

#include <cstdint>

namespace wq {

// x rounded to the places that factor (a power of ten, 100 for two places)
// stands for. A scaled value within 1e-7 of a half counts as a half.
double RoundDoubleToPlaces(std::uint32_t factor, double x);
double RoundDoubleToTwoPlaces(double x);
double RoundDoubleToSevenPlaces(double x);

// Rounds to seven places on an eight-digit truncation: only the eighth digit
// decides (above 5 up, exactly 5 up when the seventh is odd). Stores the
// whole part and the fraction in units of 1e-7, both with the sign of x.
// Values above 2147483647 store 2147483647 and 0 and come back unrounded;
// values below -2147483648 store what the processor's truncation gives.
double RoundDoubleToSevenPlacesReturn32BitIntegers(double x, std::int32_t& wholePart, std::int32_t& fraction);

// The vector unit this asked about is never present.
std::int8_t WQ_AltiVecIsPresent();

} // namespace wq
