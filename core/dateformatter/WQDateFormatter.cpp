#include <WQGeneral/dateformatter/WQDateFormatter.h>

#include "WQDateFormatter_p.h"

#include "WQDateIncrementKeys.h"

#include <QChar>

namespace wq {

using namespace dateformatter;

WQDateFormatter::WQDateFormatter(const QString& format)
    : _wq_d(std::make_unique<_wq_Private>(
          QStringLiteral("+=-tT%1%2%3").arg(QChar(kEnDash), QChar(kNotEqual), QChar(kPlusMinus))))
{
    setDateFormat(format);
}

WQDateFormatter::WQDateFormatter(const WQDateFormatter& other)
    : WQFormatter(other), WQSystemDateSettings(other), _wq_d(std::make_unique<_wq_Private>(*other._wq_d))
{
}

WQDateFormatter& WQDateFormatter::operator=(const WQDateFormatter& other)
{
    if (this != &other) {
        WQFormatter::operator=(other);
        WQSystemDateSettings::operator=(other);
        *_wq_d = *other._wq_d;
    }
    return *this;
}

WQDateFormatter::~WQDateFormatter() = default;

const QString& WQDateFormatter::dateFormat() const noexcept { return _wq_d->format; }
const QString& WQDateFormatter::localizedSeparator() const noexcept { return _wq_d->localizedSeparator; }
bool WQDateFormatter::showCentury() const noexcept { return _wq_d->flags.showCentury; }
bool WQDateFormatter::zeroPadDate() const noexcept { return _wq_d->flags.zeroPadDate; }
bool WQDateFormatter::zeroPadMonth() const noexcept { return _wq_d->flags.zeroPadMonth; }
int WQDateFormatter::monthPosition() const noexcept { return _wq_d->flags.monthPosition; }
int WQDateFormatter::dayPosition() const noexcept { return _wq_d->flags.dayPosition; }
const std::optional<WQDate>& WQDateFormatter::minimumDate() const noexcept { return _wq_d->minimumDate; }
const std::optional<WQDate>& WQDateFormatter::maximumDate() const noexcept { return _wq_d->maximumDate; }

void WQDateFormatter::setDateFormat(const QString& format)
{
    const bool changed = !_wq_d->format.isNull() && _wq_d->format != format;
    _wq_d->format = format;
    _wq_processFormat();
    if (changed)
        WQNotificationCenter::defaultCenter().postNotificationName(kWQNotif_FormatterChanged, this);
}

void WQDateFormatter::_wq_processFormat()
{
    const QString& f = _wq_d->format;
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
                _wq_d->flags.showCentury = run > 2;
                ++p;
                if (separator == 0 && c != u'y')
                    separator = c;
            } else if (c == u'M') {
                const bool two = i + 1 < n && f[i + 1] == u'M';
                _wq_d->flags.zeroPadMonth = two;
                _wq_d->flags.monthPosition = p & 3;
                ++p;
                if (two)
                    ++i;
                if (separator == 0 && i + 1 < n)
                    separator = f[++i].unicode();
            } else if (c == u'd') {
                const bool two = i + 1 < n && f[i + 1] == u'd';
                _wq_d->flags.zeroPadDate = two;
                _wq_d->flags.dayPosition = p & 3;
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
                _wq_d->flags.showCentury = c == u'y';
                ++p;
                if (separator == 0 && i + 1 < n)
                    separator = f[++i].unicode();
            } else if (c == u'm') {
                _wq_d->flags.zeroPadMonth = !(i > 0 && f[i - 1] == u'1');
                _wq_d->flags.monthPosition = p & 3;
                ++p;
                if (separator == 0 && i + 1 < n)
                    separator = f[++i].unicode();
            } else if (c == u'd' || c == u'e') {
                _wq_d->flags.zeroPadDate = c == u'd';
                _wq_d->flags.dayPosition = p & 3;
                ++p;
            }
        }
    }

    _wq_d->localizedSeparator = QString(QChar(separator));
    _wq_d->invertedDecimalSetPlusLocalizedSeparators.separator = separator;
}

bool WQDateFormatter::_wq_Private::InvertedCharacterSet::contains(char32_t c) const noexcept
{
    if (c == separator || isIncrementKey(c))
        return false;
    return !QChar::isDigit(c);
}

bool WQDateFormatter::_wq_Private::InvertedCharacterSet::intersects(QStringView text) const noexcept
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
    _wq_d->todayProvider = std::move(provider);
}

std::optional<WQDate> WQDateFormatter::today() const
{
    return _wq_d->todayProvider ? _wq_d->todayProvider() : WQDate::date();
}

QString WQDateFormatter::_wq_render(const WQDate& date) const
{
    return date.descriptionWithCalendarFormat(_wq_d->format, systemDefinedDateInformation());
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
