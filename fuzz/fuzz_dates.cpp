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
    static const QStringList shortFormats = {QStringLiteral("M/d/yy"),   QStringLiteral("dd.MM.yy"),
                                             QStringLiteral("y-MM-dd"),  QStringLiteral("d/M/y"),
                                             QStringLiteral("d"),        QStringLiteral("%1m/%e/%Y")};
    const qsizetype formatIndex = (mode / 3) % shortFormats.size();
    // A day-only format shows a stepped date without its month, so its
    // rewrites need not read back (1 stepped back shows 31, in any month).
    const bool rendersWholeDate = shortFormats[formatIndex] != QStringLiteral("d");
    wq::WQDateFormatter formatter(shortFormats[formatIndex]);
    formatter.setTodayProvider([] { return wq::WQDate::dateWithYear(2026, 11, 22); });
    if (mode % 3 == 1) {
        QVariant value;
        QString error;
        if (formatter.getObjectValue(&value, format, &error))
            (void)formatter.stringForObjectValue(value);
        else if (error.isEmpty())
            std::abort(); // a refusal always says why
        return 0;
    }
    // Any edit, sane ranges or not, gets an answer a field can act on: an
    // acceptance keeps the proposal and says nothing, and a rewrite puts the
    // caret at its end and is a date the formatter reads back.
    const wq::fuzz::Judgement j = wq::fuzz::judgeEdit(formatter, in, mode & 0x80);
    if (j.accepted && (!j.error.isEmpty() || j.text != j.proposed))
        std::abort();
    if (j.rewritten
        && (j.accepted || (rendersWholeDate && !formatter.dateForString(j.text)) || j.range.location != j.text.size()
            || j.range.length != 0))
        std::abort();
    return 0;
}
