#include <WQGeneral/numbers/WQDigitSet.h>

#include <QChar>
#include <QList>

#include <algorithm>

namespace wq {

WQDigitSet WQDigitSet::decimalDigitsPlus(std::initializer_list<QStringView> extras)
{
    WQDigitSet set = characters(extras);
    set._wq_digits = true;
    return set;
}

WQDigitSet WQDigitSet::characters(std::initializer_list<QStringView> extras)
{
    WQDigitSet set;
    for (QStringView extra : extras)
        set._wq_add(extra);
    return set;
}

WQDigitSet WQDigitSet::invertedSet() const
{
    WQDigitSet set = *this;
    set._wq_inverted = !_wq_inverted;
    return set;
}

void WQDigitSet::_wq_add(QStringView extra)
{
    for (char32_t c : extra.toUcs4()) {
        if (c < 128)
            _wq_ascii[c >> 6] |= std::uint64_t(1) << (c & 63);
        else if (std::find(_wq_others.begin(), _wq_others.end(), c) == _wq_others.end())
            _wq_others.push_back(c);
    }
}

bool WQDigitSet::contains(char32_t c) const
{
    bool member;
    if (c < 128)
        member = (_wq_ascii[c >> 6] >> (c & 63)) & 1;
    else
        member = std::find(_wq_others.begin(), _wq_others.end(), c) != _wq_others.end();
    if (!member && _wq_digits)
        member = c < 128 ? (c >= '0' && c <= '9') : QChar::category(c) == QChar::Number_DecimalDigit;
    return member != _wq_inverted;
}

qsizetype WQDigitSet::indexIn(QStringView text) const
{
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        char32_t c = text[i].unicode();
        qsizetype width = 1;
        if (QChar::isHighSurrogate(c) && i + 1 < size && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            width = 2;
        }
        if (contains(c))
            return i;
        i += width - 1;
    }
    return -1;
}

} // namespace wq
