#pragma once
// The date formatter's state, kept out of its public header so that it can
// change without breaking applications.
#include <WQGeneral/dateformatter/WQDateFormatter.h>

namespace wq {

struct WQDateFormatter::_wq_Private {
    /// Everything but decimal digits, the separator and the increment keys.
    struct InvertedCharacterSet {
        char16_t separator = 0;
        bool contains(char32_t c) const noexcept;
        bool intersects(QStringView text) const noexcept;
    };
    struct Flags {
        quint8 showCentury : 1;
        quint8 zeroPadDate : 1;
        quint8 zeroPadMonth : 1;
        quint8 monthPosition : 2;
        quint8 dayPosition : 2;
    };

    explicit _wq_Private(QString incrementers) : incrementerSet(std::move(incrementers)) {}

    QString format;
    QString localizedSeparator;
    InvertedCharacterSet invertedDecimalSetPlusLocalizedSeparators;
    QString incrementerSet;
    Flags flags{0, 0, 0, 0, 0};
    TodayProvider todayProvider;
    std::optional<WQDate> minimumDate;
    std::optional<WQDate> maximumDate;
};

} // namespace wq
