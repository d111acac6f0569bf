#pragma once
// Draws a named image in place of a header's sort arrow. Qt's headers only
// know the style's two arrows; the collapsed-outline mark is an image of the
// application's, drawn where the arrow would be.

#include <QProxyStyle>

class QHeaderView;

namespace wq {

class WQHeaderIndicatorStyle : public QProxyStyle {
    Q_OBJECT
public:
    // Header properties: the image's name, and the section it marks.
    static constexpr char kImageProperty[] = "wqIndicatorImage";
    static constexpr char kSectionProperty[] = "wqIndicatorSection";
    // The name that stands for the style's descending-sort (downward) arrow.
    static constexpr char kDescendingImageName[] = "NSDescendingSortIndicator";

    // Gives the header this style (once; the header owns it). Sorting by
    // clicking a section afterwards removes the image.
    static void install(QHeaderView& header);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;

private:
    WQHeaderIndicatorStyle() = default;
};

} // namespace wq
