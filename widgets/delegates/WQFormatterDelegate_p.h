#pragma once
// The delegate's state, kept out of its public header so that it can change
// without breaking applications: the formatter and the display texts kept
// per value.
#include <WQGeneral/delegates/WQFormatterDelegate.h>

namespace wq {

struct WQFormatterDelegate::Shown {
    QString text;
    bool number = false;
    bool negative = false;
    /// The text laid out for painting, kept with it.
    mutable QStaticText laidOut;
    mutable QFont laidOutFont;
    /// Lays the text out in font (once) and answers whether one line of it fits width.
    bool fitsOneLine(const QFont& font, int width) const;
};

/// A value as a cache key: its type and bits (a date's year, month and day).
struct WQFormatterDelegate::ValueKey {
    int type = 0;
    qint64 bits = 0;
    quint64 more = 0;
    friend bool operator==(const ValueKey&, const ValueKey&) = default;
    friend size_t qHash(const ValueKey& key, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, key.type, key.bits, key.more);
    }
};

class WQFormatterDelegatePrivate {
public:
    explicit WQFormatterDelegatePrivate(std::shared_ptr<WQFormatter> formatter) : formatter(std::move(formatter)) {}

    std::shared_ptr<WQFormatter> formatter;
    WQObservation formatterObservation;
    int valueRole = Qt::EditRole;
    QBrush negativeBrush;
    Qt::Alignment alignment;
    QHash<WQFormatterDelegate::ValueKey, WQFormatterDelegate::Shown> texts; ///< display texts by value, until the formatter changes
    WQFormatterDelegate::Shown uncached;
    bool styling = false; ///< inside initStyleOption(), which sets the text itself
};

} // namespace wq
