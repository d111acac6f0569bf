#pragma once
/// \class wq::WQCalculatorTape
/// What the pop-up calculator holds: the numbers entered so far and the
/// operator typed after each. The last operator waits for the number being
/// typed (the live operand). The total runs strictly from left to right, with
/// no precedence: 2 + 3 * 4 is 20.

#include <WQGeneral/WQCoreExport.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace wq {

/// \addtogroup calculator
/// @{

struct WQ_CORE_EXPORT WQCalculatorTape {
    /// Both lists always hold the same number of entries, at least one.
    QList<double> numbers;
    /// The operator before each number after the first.
    QStringList operators;

    /// The total with `live` as the last operator's operand. A divisor below
    /// 1e-7 in magnitude makes the total 0; an unknown operator leaves it as
    /// it is. Nothing is rounded: the money formatter decides the display.
    double total(double live) const;

    /// The tape as lines of text: the first number, then "op number" for each
    /// operator (the live text after the last one), then "= total". Numbers
    /// are shown through `display`.
    QStringList lines(const QString& liveText, double live, const std::function<QString(double)>& display) const;
};

/// @}

} // namespace wq
