#pragma once
/// \file
/// Rounding binary doubles as if they were decimals: half-to-even, with an
/// absolute tolerance that absorbs the representation error of the scaled
/// value. Results depend on plain IEEE double arithmetic (no fused or
/// extended-precision steps); the build keeps it that way.

#include <WQGeneral/WQCoreExport.h>

#include <cstdint>

namespace wq {

/// \addtogroup numeric
/// @{

/// x rounded to the places that factor (a power of ten, 100 for two places)
/// stands for. A scaled value within 1e-7 of a half counts as a half. Every
/// input has a defined answer: a finite x so large that x * factor overflows
/// comes back unchanged (it is whole already), infinities and NaN come back
/// as they are, and a factor of 0 gives NaN.
WQ_CORE_EXPORT double RoundDoubleToPlaces(std::uint32_t factor, double x);
/// Rounded to 2 decimal places.
WQ_CORE_EXPORT double RoundDoubleToTwoPlaces(double x);
/// Rounded to 7 decimal places.
WQ_CORE_EXPORT double RoundDoubleToSevenPlaces(double x);

/// Rounds to seven places on an eight-digit truncation: only the eighth digit
/// decides (above 5 up, exactly 5 up when the seventh is odd). Stores the
/// whole part and the fraction in units of 1e-7, both with the sign of x.
/// Values above 2147483647 (and +infinity) store 2147483647 and 0 and come
/// back unrounded. Values below -2147483648, -infinity and NaN are not
/// caught: they take the processor's truncation, the most negative 32-bit
/// value, with no undefined conversion, and the answer is then meaningless
/// (for -1e10 even positive). Callers check the range first, as wq does.
WQ_CORE_EXPORT double RoundDoubleToSevenPlacesReturn32BitIntegers(double x, std::int32_t& wholePart, std::int32_t& fraction);

/// The vector unit this asked about is never present.
WQ_CORE_EXPORT std::int8_t WQ_AltiVecIsPresent();

/// @}

} // namespace wq
