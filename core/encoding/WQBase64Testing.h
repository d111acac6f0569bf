#pragma once
// Not public (not installed): the code paths of the Base64 coder. Vector
// kernels where the processor has them, the scalar code otherwise; every path
// gives the same results, and tests, benchmarks and the fuzz target pin one
// to compare them.

namespace wq {

enum class WQBase64Path { Scalar, SSSE3, AVX2, AVX512 };

// The widest path this processor runs (chosen at start-up).
WQBase64Path _wq_base64BestPath();
// The path in force now.
WQBase64Path _wq_base64Path();
// Switches the whole process to a path; false, and no change, when the
// processor cannot run it.
bool _wq_setBase64Path(WQBase64Path path);

} // namespace wq
