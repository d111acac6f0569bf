// wq round PLACES VALUE [--split]

#include "EncToolSupport.h"

#include <WQGeneral/numeric/WQRounding.h>

#include <QLocale>

#include <cmath>
#include <limits>

namespace {

using namespace wq::tool;

int runRound(const QStringList& list)
{
    Arguments arguments(list);
    const bool split = arguments.flag(QStringLiteral("--split"));
    const QStringList args = arguments.operands();
    if (args.size() != 2) {
        err(QStringLiteral("usage: wq round PLACES VALUE [--split]"));
        return kExitUsage;
    }
    bool ok = false;
    const uint places = args[0].toUInt(&ok);
    if (!ok || places > 9) {
        err(QStringLiteral("places must be a whole number from 0 to 9, not \"%1\"").arg(args[0]));
        return kExitUsage;
    }
    // The value is read the C way (a point for decimals), whatever the locale.
    const double value = QLocale::c().toDouble(args[1], &ok);
    if (!ok || !std::isfinite(value)) {
        err(QStringLiteral("\"%1\" is not a number").arg(args[1]));
        return kExitUsage;
    }
    if (split) {
        if (places != 7) {
            err(QStringLiteral("--split rounds to seven places; give 7 as PLACES"));
            return kExitUsage;
        }
        // The whole part and its negation have to fit 32 bits; beyond that
        // the rounding clamps or wraps.
        if (!(value > -2147483648.0 && value <= 2147483647.0)) {
            err(QStringLiteral("%1 is out of range for --split: values run from -2147483647.9999999 to 2147483647")
                    .arg(args[1]));
            return kExitUsage;
        }
        std::int32_t whole = 0, fraction = 0;
        const double rounded = wq::RoundDoubleToSevenPlacesReturn32BitIntegers(value, whole, fraction);
        out(QStringLiteral("%1 %2 %3").arg(QString::number(rounded, 'f', 7)).arg(whole).arg(fraction));
        return kExitOK;
    }
    std::uint32_t factor = 1;
    for (uint i = 0; i < places; ++i)
        factor *= 10;
    // Scaled past the largest double the value cannot be rounded (the
    // library hands it back as it is).
    if (!std::isfinite(value * double(factor))) {
        err(QStringLiteral("%1 is out of range: rounded to %2 places, a value must stay below %3 in size")
                .arg(args[1]).arg(places).arg(std::numeric_limits<double>::max() / factor, 0, 'g', 6));
        return kExitUsage;
    }
    out(QString::number(wq::RoundDoubleToPlaces(factor, value), 'f', int(places)));
    return kExitOK;
}

const Registrar roundRegistrar{
    QStringLiteral("round"), QStringLiteral("round PLACES VALUE [--split]"),
    QStringLiteral("VALUE (a C number such as -2.675) rounded half away from zero to PLACES\n"
                   "decimal places, 0 to 9. --split rounds to 7 places and also prints the whole\n"
                   "part and the seven-digit fraction as two signed 32-bit numbers."),
    &runRound};

} // namespace
