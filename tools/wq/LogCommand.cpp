// wq log: the application log of one application of the maker.

#include "Command.h"

#include <WQGeneral/log/WQLogClass.h>

#include <QDateTime>
#include <QTimeZone>

#include <iostream>
#include <string>

namespace {

using namespace wq::tool;

const QString kLogUsage = QStringLiteral("log [--app NAME] path | write [MESSAGE...] | tail [N] | trim-before DATE | clean");
const QString kLogHelp = QStringLiteral(
    "The application log of one application (--app NAME, default wq).\n"
    "\n"
    "  path              where the log file is\n"
    "  write MESSAGE...  adds the words as one entry; without them, each line of\n"
    "                    standard input becomes an entry as it arrives (empty lines\n"
    "                    are skipped)\n"
    "  tail [N]          the last N lines (default 10)\n"
    "  trim-before DATE  drops the entries before DATE (YYYY-MM-DD, YYYY-MM-DDTHH:MM:SS\n"
    "                    or YYYY-MM-DD HH:MM:SS +ZZZZ)\n"
    "  clean             empties the log\n"
    "\n"
    "  make 2>&1 | wq log --app builds write");

// Each line of standard input as one entry, logged as soon as it is read
// (so a long-running producer can be piped in).
int writeLines(const wq::WQLogClass& log)
{
    std::string line;
    while (std::getline(std::cin, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty())
            continue;
        const QByteArrayView bytes(line.data(), qsizetype(line.size()));
        if (!bytes.isValidUtf8()) {
            err(QStringLiteral("standard input is not UTF-8 text"));
            return kExitUsage;
        }
        log.log(QString::fromUtf8(bytes));
    }
    if (std::cin.bad()) {
        err(QStringLiteral("cannot read standard input"));
        return kExitUsage;
    }
    return kExitOK;
}

// The log's own stamp form, ISO 8601 (local time when no zone is given), or
// a bare date meaning local midnight.
QDateTime parseCutOff(const QString& text)
{
    QDateTime when = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss t"));
    if (!when.isValid() && text.size() == 25 && (text[20] == u'+' || text[20] == u'-')) {
        const QDateTime local = QDateTime::fromString(text.left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        bool hoursOK = false, minutesOK = false;
        const int hours = QStringView(text).mid(21, 2).toInt(&hoursOK);
        const int minutes = QStringView(text).mid(23, 2).toInt(&minutesOK);
        if (local.isValid() && hoursOK && minutesOK && minutes < 60) {
            const int offset = (hours * 3600 + minutes * 60) * (text[20] == u'-' ? -1 : 1);
            when = QDateTime(local.date(), local.time(), QTimeZone(offset));
        }
    }
    if (!when.isValid())
        when = QDateTime::fromString(text, Qt::ISODate);
    if (!when.isValid()) {
        const QDate date = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
        if (date.isValid())
            when = date.startOfDay();
    }
    return when;
}

int runLog(const QStringList& list)
{
    Arguments arguments(list);
    QString app = arguments.option(QStringLiteral("--app"));
    QStringList args = arguments.operands();
    if (app.isNull())
        app = QStringLiteral("wq");
    if (args.isEmpty()) {
        err(QStringLiteral("log needs one of: path, write, tail, trim-before, clean"));
        return kExitUsage;
    }
    if (!wq::WQLogClass::isUsableApplicationName(app)) {
        err(QStringLiteral("\"%1\" cannot name an application's log: give one folder name, not empty, "
                           "\".\" or \"..\", without \"/\" or \"\\\"").arg(app));
        return kExitUsage;
    }
    const QString action = args.takeFirst();
    const wq::WQLogClass log(app);
    if (!log.isEnabled()) {
        err(QStringLiteral("the log folder for \"%1\" could not be made").arg(app));
        return kExitFailure;
    }

    if (action == u"path" && args.isEmpty()) {
        out(log.logFilePath());
        return kExitOK;
    }
    if (action == u"write") {
        if (args.isEmpty())
            return writeLines(log);
        log.log(args.join(u' '));
        return kExitOK;
    }
    if (action == u"tail" && args.size() <= 1) {
        quint64 lines = 10;
        if (!args.isEmpty()) {
            bool ok = false;
            lines = args.front().toULongLong(&ok);
            if (!ok) {
                err(QStringLiteral("tail: \"%1\" is not a line count").arg(args.front()));
                return kExitUsage;
            }
        }
        const std::optional<QString> text = log.logDataWithMaxLines(lines);
        if (!text) {
            err(QStringLiteral("cannot read %1").arg(log.logFilePath()));
            return kExitFailure;
        }
        const QByteArray bytes = text->toUtf8();
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        return kExitOK;
    }
    if (action == u"trim-before" && args.size() == 1) {
        const QDateTime cutOff = parseCutOff(args.front());
        if (!cutOff.isValid()) {
            err(QStringLiteral("trim-before: \"%1\" is not a date (YYYY-MM-DD, YYYY-MM-DDTHH:MM:SS or YYYY-MM-DD HH:MM:SS +ZZZZ)")
                    .arg(args.front()));
            return kExitUsage;
        }
        log.clearLogDataBeforeDate(cutOff);
        return kExitOK;
    }
    if (action == u"clean" && args.isEmpty()) {
        log.cleanLogFile();
        return kExitOK;
    }
    err(QStringLiteral("log %1: bad arguments").arg(action));
    return kExitUsage;
}

const Registrar logRegistrar{QStringLiteral("log"), kLogUsage, kLogHelp, &runLog};

} // namespace
