#include <WQGeneral/dateformatter/WQDateFormatter.h>

#include "WQDateIncrementKeys.h"

#include <QChar>

namespace wq {

using namespace dateformatter;

WQDateFormatter::WQDateFormatter(const QString& format)
    : mIncrementerSet(QStringLiteral("+=-tT%1%2%3").arg(QChar(kEnDash), QChar(kNotEqual), QChar(kPlusMinus)))
{
    setDateFormat(format);
}

void WQDateFormatter::setDateFormat(const QString& format)
{
    const bool changed = !mFormat.isNull() && mFormat != format;
    mFormat = format;
    _wq_processFormat();
    if (changed)
        WQNotificationCenter::defaultCenter().postNotificationName(kWQNotif_FormatterChanged, this);
}

void WQDateFormatter::_wq_processFormat()
{
    const QString& f = mFormat;
    const qsizetype n = f.size();
    char16_t separator = 0;
    unsigned p = 0;

    if (!f.contains(u'%')) {
        // Date-pattern letters. The character a year or month field stops at
        // becomes the separator and is stepped over unexamined.
        for (qsizetype i = 0; i < n; ++i) {
            char16_t c = f[i].unicode();
            if (c == u'y') {
                int run = 1;
                while (i + 1 < n) {
                    c = f[++i].unicode();
                    if (c != u'y')
                        break;
                    ++run;
                }
                mFlags.showCentury = run > 2;
                ++p;
                if (separator == 0 && c != u'y')
                    separator = c;
            } else if (c == u'M') {
                const bool two = i + 1 < n && f[i + 1] == u'M';
                mFlags.zeroPadMonth = two;
                mFlags.monthPosition = p & 3;
                ++p;
                if (two)
                    ++i;
                if (separator == 0 && i + 1 < n)
                    separator = f[++i].unicode();
            } else if (c == u'd') {
                const bool two = i + 1 < n && f[i + 1] == u'd';
                mFlags.zeroPadDate = two;
                mFlags.dayPosition = p & 3;
                ++p;
                if (two)
                    ++i;
            }
        }
    } else {
        // Percent directives; every occurrence of the letters counts. %y sets
        // showCentury and %Y clears it, the reverse of what they print: kept
        // for the formats stored by earlier releases.
        for (qsizetype i = 0; i < n; ++i) {
            const char16_t c = f[i].unicode();
            if (c == u'y' || c == u'Y') {
                mFlags.showCentury = c == u'y';
                ++p;
                if (separator == 0 && i + 1 < n)
                    separator = f[++i].unicode();
            } else if (c == u'm') {
                mFlags.zeroPadMonth = !(i > 0 && f[i - 1] == u'1');
                mFlags.monthPosition = p & 3;
                ++p;
                if (separator == 0 && i + 1 < n)
                    separator = f[++i].unicode();
            } else if (c == u'd' || c == u'e') {
                mFlags.zeroPadDate = c == u'd';
                mFlags.dayPosition = p & 3;
                ++p;
            }
        }
    }

    mLocalizedDateSeparatorString = QString(QChar(separator));
    mInvertedDecimalSetPlusLocalizedSeparatorsCharacterSet.separator = separator;
}

bool WQDateFormatter::InvertedCharacterSet::contains(char32_t c) const noexcept
{
    if (c == separator || isIncrementKey(c))
        return false;
    return !QChar::isDigit(c);
}

bool WQDateFormatter::InvertedCharacterSet::intersects(QStringView text) const noexcept
{
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        char32_t c = text[i].unicode();
        // Digits outside the basic plane (mathematical digits, for one) are
        // digits too; a lone surrogate is nothing allowed.
        if (QChar::isHighSurrogate(c) && i + 1 < n && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        if (contains(c))
            return true;
    }
    return false;
}

void WQDateFormatter::setTodayProvider(TodayProvider provider)
{
    _wq_todayProvider = std::move(provider);
}

std::optional<WQDate> WQDateFormatter::today() const
{
    return _wq_todayProvider ? _wq_todayProvider() : WQDate::date();
}

QString WQDateFormatter::_wq_render(const WQDate& date) const
{
    return date.descriptionWithCalendarFormat(mFormat, systemDefinedDateInformation());
}

std::optional<QString> WQDateFormatter::stringForObjectValue(const QVariant& value) const
{
    if (value.metaType() == QMetaType::fromType<WQDate>())
        return _wq_render(value.value<WQDate>());
    if (value.metaType() == QMetaType::fromType<QString>())
        return value.toString();
    return std::nullopt;
}

} // namespace wq
