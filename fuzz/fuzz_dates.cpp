// Date text: the percent-directive reader and writer, and the date formatter's
// finished-text parse and keystroke judgement.
#include "FuzzEdit.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/platform/WQExceptions.h>

#include <QCoreApplication>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    wq::fuzz::Input in(data, size);
    const std::uint8_t mode = in.byte();
    const QString format = in.text();
    if (mode % 3 == 0) {
        const QString text = in.text();
        try {
            const wq::WQDate date = wq::WQDate::dateWithString(text, format);
            (void)date.descriptionWithCalendarFormat(format);
        } catch (const wq::WQException&) {
            // A bad format is reported as an exception by design.
        }
        return 0;
    }
    static const QStringList shortFormats = {QStringLiteral("M/d/yy"), QStringLiteral("dd.MM.yy"),
                                             QStringLiteral("y-MM-dd"), QStringLiteral("d/M/y")};
    wq::WQDateFormatter formatter(shortFormats[mode % shortFormats.size()]);
    formatter.setTodayProvider([] { return wq::WQDate::dateWithYear(2026, 11, 22); });
    if (mode % 3 == 1) {
        QVariant value;
        QString error;
        if (formatter.getObjectValue(&value, format, &error))
            (void)formatter.stringForObjectValue(value);
        return 0;
    }
    wq::fuzz::judgeEdit(formatter, in);
    return 0;
}
