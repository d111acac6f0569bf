#pragma once
// Where the calculator's rows go, in the window's own coordinates (y grows
// downwards). The tape is laid out from the bottom up, so these are the
// upward frames of the original design turned over: number i at the top of
// row i, operator i beside number i + 1, the editing field in row n, a band
// of 6 points whose bottom line is the separator, and the total at the bottom.

#include <QRect>

namespace wq::calculator {

constexpr int kOperatorWidth = 16;
constexpr int kRightMargin = 2;
constexpr int kBand = 6;
// The window starts this far left of the field, so the numbers line up
// with the field's text and the operators stand in the margin.
constexpr int kLeftOverhang = kOperatorWidth + kRightMargin;

// Height of a window with n operators and rows of height L.
constexpr int windowHeight(int n, int L) { return (n + 2) * L + kBand; }

struct Layout {
    int width;       // W
    int height;      // H
    int lineHeight;  // L

    QRect number(int i) const { return {kOperatorWidth, i * lineHeight, width - kLeftOverhang, lineHeight}; }
    QRect mathOperator(int i) const { return {0, (i + 1) * lineHeight, kOperatorWidth, lineHeight}; }
    QRect editingField(int n) const { return {kOperatorWidth, n * lineHeight, width - kLeftOverhang, lineHeight}; }
    QRect total() const { return {0, height - lineHeight, width, lineHeight}; }
    QRect separator() const { return {4, height - lineHeight - 1, width - 8, 1}; }
};

} // namespace wq::calculator
