#include <WQGeneral/views/WQColorConversion.h>

#include <array>

namespace wq {

QColor newCGColorRef(const QColor& color)
{
    // Room for the most components any model has (CMYK and alpha), zeroed,
    // so a model that reads fewer leaves the rest at 0.
    std::array<float, 5> c{};
    // A QColor equals another only in the same model, so a colour equal to
    // its conversion into a model is held in that model.
    if (!color.isValid())
        return QColor();
    if (color == color.toRgb()) {
        color.getRgbF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromRgbF(c[0], c[1], c[2], c[3]).toRgb();
    }
    if (color == color.toExtendedRgb()) {
        color.getRgbF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromRgbF(c[0], c[1], c[2], c[3]).toExtendedRgb();
    }
    if (color == color.toHsv()) {
        color.getHsvF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromHsvF(c[0], c[1], c[2], c[3]);
    }
    if (color == color.toHsl()) {
        color.getHslF(&c[0], &c[1], &c[2], &c[3]);
        return QColor::fromHslF(c[0], c[1], c[2], c[3]);
    }
    color.getCmykF(&c[0], &c[1], &c[2], &c[3], &c[4]);
    return QColor::fromCmykF(c[0], c[1], c[2], c[3], c[4]);
}

} // namespace wq
