// wq date: calendar dates from the command line. Dates are read and printed
// in the XML storage layout: YYYY-MM-DD, a longer year allowed, a negative
// year with its minus sign within the four characters (-044-03-15) as the
// storage writer puts it, or in front of four digits (-0044-03-15).

#include "Command.h"

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QRegularExpression>

#include <optional>

namespace {

using wq::WQDate;
using namespace wq::tool;

const QString kDateUsage = QStringLiteral(
    "date make Y M D | info DATE | from-day N | add DATE YEARS MONTHS DAYS | "
    "since DATE OTHER [--units ymd|y|m|d|ym|yd|md] | format FORMAT DATE [--locale NAME]");

const QString kDateHelp = QStringLiteral(
    "Calendar dates. DATE is YYYY-MM-DD; a year may have more digits, and a negative\n"
    "year is written as the storage layout writes it (-044-03-15) or with four digits\n"
    "(-0044-03-15). Put \"--\" before the operands when one starts with \"--\".\n"
    "\n"
    "  make Y M D           the date of year Y, month M, day D (overflow carries over)\n"
    "  info DATE            its day of the common era, day of the week, day of the year\n"
    "  from-day N           the date of day N of the common era (1 = 0001-01-01)\n"
    "  add DATE Y M D       the date that many years, months and days later\n"
    "  since DATE OTHER     the difference, in the --units asked for (default ymd)\n"
    "  format FORMAT DATE   the date through percent directives, under --locale NAME\n"
    "\n"
    "  wq date make -- -44 3 15      prints -044-03-15\n"
    "  wq date info -0044-03-15");

qint64 signedArgument(const QString& text, const char* what)
{
    bool ok = false;
    const qint64 value = text.toLongLong(&ok);
    if (!ok)
        throw UsageError{QStringLiteral("%1 must be a whole number, not \"%2\"").arg(QLatin1String(what), text)};
    return value;
}

quint64 unsignedArgument(const QString& text, const char* what)
{
    bool ok = false;
    const quint64 value = text.startsWith(u'-') ? 0 : text.toULongLong(&ok);
    if (!ok)
        throw UsageError{QStringLiteral("%1 must be a whole number of 0 or more, not \"%2\"").arg(QLatin1String(what), text)};
    return value;
}

WQDate dateArgument(const QString& text)
{
    static const QRegularExpression layout(QStringLiteral("^(-\\d{3,18}|\\d{4,18})-(\\d{2})-(\\d{2})$"));
    const QRegularExpressionMatch match = layout.match(text);
    if (!match.hasMatch())
        throw UsageError{QStringLiteral("\"%1\" is not a date in the YYYY-MM-DD layout").arg(text)};
    const QString year = match.captured(1);
    // Four-character years (-044 too) go through the storage reader itself.
    if (year.size() == 4) {
        if (const std::optional<WQDate> date = WQDate::optimizedDateWithStringXMLFormat(text))
            return *date;
        throw UsageError{QStringLiteral("\"%1\" is not a date").arg(text)};
    }
    return WQDate(year.toLongLong(), match.captured(2).toULongLong(), match.captured(3).toULongLong());
}

void expectCount(const QStringList& args, qsizetype count, const char* shape)
{
    if (args.size() != count)
        throw UsageError{QStringLiteral("usage: wq date %1").arg(QLatin1String(shape))};
}

int make(const QStringList& args)
{
    expectCount(args, 3, "make Y M D");
    const WQDate date(signedArgument(args[0], "the year"), unsignedArgument(args[1], "the month"),
                      unsignedArgument(args[2], "the day"));
    out(date.optimizedStringXMLFormat());
    return kExitOK;
}

int info(const QStringList& args)
{
    expectCount(args, 1, "info DATE");
    const WQDate date = dateArgument(args[0]);
    out(QStringLiteral("dayOfCommonEra=%1 dayOfWeek=%2 dayOfYear=%3")
            .arg(date.dayOfCommonEra())
            .arg(date.dayOfWeek())
            .arg(date.dayOfYear()));
    return kExitOK;
}

int fromDay(const QStringList& args)
{
    expectCount(args, 1, "from-day N");
    // Below day 1 the library logs its own message on stderr.
    const std::optional<WQDate> date = WQDate::dateWithDayOfCommonEra(signedArgument(args[0], "the day number"));
    if (!date)
        return kExitFailure;
    out(date->optimizedStringXMLFormat());
    return kExitOK;
}

int add(const QStringList& args)
{
    expectCount(args, 4, "add DATE YEARS MONTHS DAYS");
    const WQDate date = dateArgument(args[0]);
    out(date.dateByAddingYears(signedArgument(args[1], "the years"), signedArgument(args[2], "the months"),
                               signedArgument(args[3], "the days"))
            .optimizedStringXMLFormat());
    return kExitOK;
}

int since(Arguments& arguments)
{
    QString units = arguments.option(QStringLiteral("--units"));
    const QStringList args = arguments.operands();
    if (units.isNull())
        units = QStringLiteral("ymd");
    static const QStringList allowed{"ymd", "y", "m", "d", "ym", "yd", "md"};
    if (!allowed.contains(units))
        throw UsageError{QStringLiteral("--units must be one of ymd, y, m, d, ym, yd, md, not \"%1\"").arg(units)};
    expectCount(args, 2, "since DATE OTHER [--units ymd|y|m|d|ym|yd|md]");
    const WQDate date = dateArgument(args[0]);
    const WQDate other = dateArgument(args[1]);
    const WQDate::Difference difference = date.yearsMonthsDaysSinceDate(
        other, units.contains(u'y'), units.contains(u'm'), units.contains(u'd'));
    QStringList parts;
    if (difference.years)
        parts << QStringLiteral("years=%1").arg(*difference.years);
    if (difference.months)
        parts << QStringLiteral("months=%1").arg(*difference.months);
    if (difference.days)
        parts << QStringLiteral("days=%1").arg(*difference.days);
    out(parts.join(u' '));
    return kExitOK;
}

int format(Arguments& arguments)
{
    const QString locale = arguments.option(QStringLiteral("--locale"));
    const QStringList args = arguments.operands();
    expectCount(args, 2, "format FORMAT DATE [--locale NAME]");
    static const QRegularExpression localeName(QStringLiteral("^[A-Za-z]{1,8}([_-][A-Za-z0-9]{1,8})*(\\.[A-Za-z0-9-]+)?(@[A-Za-z0-9]+)?$"));
    if (!locale.isNull()) {
        if (!localeName.match(locale).hasMatch())
            throw UsageError{QStringLiteral("\"%1\" is not a locale name").arg(locale)};
        wq::WQRegionalSettings::setLocale(wq::WQRegionalSettings::Category::Time, locale);
    }
    const WQDate date = dateArgument(args[1]);
    out(date.descriptionWithCalendarFormat(args[0]));
    return kExitOK;
}

int runDate(const QStringList& list)
{
    // The verb comes first (after "--" too); the options, wherever they
    // stand, are the verb's.
    const bool ended = list.value(0) == u"--";
    const QString sub = list.value(ended ? 1 : 0);
    if (sub.isEmpty())
        throw UsageError{QStringLiteral("usage: wq ") + kDateUsage};
    Arguments rest(ended ? QStringList{QStringLiteral("--")} + list.sliced(2) : list.sliced(1));
    try {
        if (sub == u"since")
            return since(rest);
        if (sub == u"format")
            return format(rest);
        const QStringList args = rest.operands();
        if (sub == u"make")
            return make(args);
        if (sub == u"info")
            return info(args);
        if (sub == u"from-day")
            return fromDay(args);
        if (sub == u"add")
            return add(args);
    } catch (const wq::WQException& e) {
        throw UsageError{e.reason()};
    }
    throw UsageError{QStringLiteral("unknown date command \"%1\"; usage: wq %2").arg(sub, kDateUsage)};
}

const Registrar dateRegistrar{QStringLiteral("date"), kDateUsage, kDateHelp, &runDate};

} // namespace
