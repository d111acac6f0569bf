#pragma once
/// \class wq::WQDigitSet
/// The small character sets the number formatters filter keystrokes with:
/// decimal digits (Unicode Nd) and/or a handful of extra characters, or the
/// inverse of such a set. Membership is by code point.

#include <WQGeneral/WQCoreExport.h>

#include <QString>
#include <QStringView>

#include <cstdint>
#include <vector>

namespace wq {

/// \addtogroup numbers
/// @{

class WQ_CORE_EXPORT WQDigitSet {
public:
    WQDigitSet() = default;

    /// Decimal digits plus every character of each extra string.
    static WQDigitSet decimalDigitsPlus(std::initializer_list<QStringView> extras);
    /// Exactly the characters of the given strings.
    static WQDigitSet characters(std::initializer_list<QStringView> extras);

    /// Every character not in this set.
    WQDigitSet invertedSet() const;

    /// True when c is in the set.
    bool contains(char32_t c) const;
    /// Index (UTF-16) of the first character of text in this set, or -1.
    qsizetype indexIn(QStringView text) const;
    /// True when text holds a character of this set.
    bool intersects(QStringView text) const { return indexIn(text) >= 0; }

    friend bool operator==(const WQDigitSet&, const WQDigitSet&) = default;

private:
    void _wq_add(QStringView extra);
    bool _wq_digits = false;
    bool _wq_inverted = false;
    /// ASCII members as a bitmap; the rest, few as they are, in a short list.
    std::uint64_t _wq_ascii[2] = {0, 0};
    std::vector<char32_t> _wq_others;
};

/// @}

} // namespace wq
