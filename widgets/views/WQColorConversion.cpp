#include <WQGeneral/views/WQColorConversion.h>

#include <array>

namespace wq {

QColor newCGColorRef(const QColor& color)
{
    // Room for the most components any model has (CMYK and alpha), zeroed,
    // so a model that reads fewer leaves the rest at 0.
    std::array<float, 5> c{};
    switch (color.spec()) {
    case QColor::Rgb:
        color.getRgbF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromRgbF(c[0], c[1], c[2], c[3]).toRgb();
    case QColor::ExtendedRgb:
        color.getRgbF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromRgbF(c[0], c[1], c[2], c[3]).toExtendedRgb();
    case QColor::Hsv:
        color.getHsvF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromHsvF(c[0], c[1], c[2], c[3]);
    case QColor::Hsl:
        color.getHslF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromHslF(c[0], c[1], c[2], c[3]);
    case QColor::Cmyk:
        color.getCmykF(&c[0], &c[1], &c[2], &c[3], &c[4]);
        return QColor::fromCmykF(c[0], c[1], c[2], c[3], c[4]);
    case QColor::Invalid:
        break;
    }
    return QColor();
}

} // namespace wq
