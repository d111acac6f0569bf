#pragma once
// The money formatter's state, kept out of its public header so that it can
// change without breaking applications.
#include <WQGeneral/money/WQMoneyFormatter.h>

namespace wq {

/// What display needs from the patterns and settings, worked out once per
/// change instead of on every call (index 0 positive, 1 negative).
struct WQMoneyFormatter::_wq_DisplayPlan {
    quint64 multiplier[2] = {1, 1};
    quint8 places[2] = {0, 0};
    bool grouping[2] = {false, false};
    bool symbol[2] = {false, false};
    bool symbolAtEnd = false;
    char negativeSign = 0; ///< '-', '(' or none
    /// Single-character (or no) grouping and a separator that cannot be
    /// mistaken for a digit: the text can be laid out in one pass.
    bool direct = false;
};

struct WQMoneyFormatter::_wq_Private {
    _wq_Private(WQMoneyFormatter* formatter, WQMoneyFormatterDelegate* owner)
        : delegate(owner), self(std::make_shared<WQMoneyFormatter*>(formatter))
    {
        if (owner)
            delegateLifetime = owner->lifetimeToken();
    }

    WQMoneyFormatterDelegate* delegate = nullptr;
    std::weak_ptr<const void> delegateLifetime;
    QString localizedThousandsSeparator;
    QString localizedDecimalSeparator;
    QString localizedCurrencySymbol;
    QString localizedPositiveFormat;
    QString localizedNegativeFormat;
    WQDigitSet invertedDecimalPlusLocalizedSeparatorsCharSet;
    WQDigitSet invertedATMStyleCharSet;
    WQDigitSet currencySymbolCharSet;

    /// Deferred re-reads find the formatter through this, so one that has
    /// gone away by then is skipped.
    std::shared_ptr<WQMoneyFormatter*> self;
    bool reReadPending = false;
    _wq_DisplayPlan plan;
};

} // namespace wq
