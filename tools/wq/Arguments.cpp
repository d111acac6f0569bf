#include "Command.h"

namespace wq::tool {

bool isOption(const QString& arg)
{
    if (arg.startsWith(u"--"))
        return arg.size() > 2;
    return arg.size() >= 2 && arg[0] == u'-' && arg[1].isLetter();
}

Arguments::Arguments(const QStringList& args)
{
    const qsizetype end = args.indexOf(QStringLiteral("--"));
    _wq_beforeEnd = end < 0 ? args : args.first(end);
    if (end >= 0)
        _wq_afterEnd = args.sliced(end + 1);
}

bool Arguments::flag(const QString& name)
{
    return _wq_beforeEnd.removeAll(name) > 0;
}

QString Arguments::option(const QString& name)
{
    QString value = takeOption(name);
    if (!value.isNull() && !takeOption(name).isNull())
        throw UsageError{QStringLiteral("%1 is given more than once").arg(name)};
    return value;
}

QString Arguments::takeOption(const QString& name)
{
    const QString prefix = name + u'=';
    for (qsizetype i = 0; i < _wq_beforeEnd.size(); ++i) {
        const QString& arg = _wq_beforeEnd.at(i);
        if (arg.startsWith(prefix)) {
            QString value = arg.sliced(prefix.size());
            _wq_beforeEnd.remove(i);
            return value;
        }
        if (arg == name) {
            // The value is the option's by position, even when it starts with "-".
            if (i + 1 >= _wq_beforeEnd.size())
                throw UsageError{QStringLiteral("%1 needs a value").arg(name)};
            QString value = _wq_beforeEnd.at(i + 1);
            _wq_beforeEnd.remove(i, 2);
            return value;
        }
    }
    return QString();
}

QStringList Arguments::operands() const
{
    for (const QString& arg : _wq_beforeEnd)
        if (isOption(arg))
            throw UsageError{QStringLiteral("unknown option \"%1\" (put \"--\" before an operand that starts with \"-\")")
                                 .arg(arg)};
    return _wq_beforeEnd + _wq_afterEnd;
}

} // namespace wq::tool
