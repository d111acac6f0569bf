#pragma once
// A formatter for field tests: refuses "x" with a message and "!" silently,
// upper-cases the text on "u" (selecting it all), rewrites "=" into exactly
// what was proposed, reads whole numbers (after its prefix), and keeps a
// record of the last judgement and of what the toolkit said during it.

#include <WQGeneral/formatters/WQFormatter.h>

#include <ostream>

namespace wq::test {

class ProbeFormatter : public WQFormatter {
public:
    struct Edit {
        QString original;
        WQRange originalRange;
        QString proposed;
        WQRange proposedRange;
        bool operator==(const Edit&) const = default;
    };
    Edit last;
    WQEditEvent event;
    WQFieldEditor* editor = nullptr;
    QString editorString;
    int calls = 0;
    QString prefix;

    std::optional<QString> stringForObjectValue(const QVariant& value) const override
    {
        if (value.metaType() == QMetaType::fromType<int>())
            return prefix + QString::number(value.toInt());
        return std::nullopt;
    }

    bool getObjectValue(QVariant* value, const QString& string, QString* error) const override
    {
        bool ok = false;
        const int number = QString(string).remove(prefix).toInt(&ok);
        if (ok)
            *value = number;
        else if (error)
            *error = QStringLiteral("Not a number.");
        return ok;
    }

    bool isPartialStringValid(QString* partial, WQRange* range, const QString& original, WQRange originalRange,
                              QString* error) override
    {
        ++calls;
        last = {original, originalRange, *partial, *range};
        event = WQToolkit::shared().currentEvent();
        editor = WQToolkit::shared().keyFieldEditor();
        editorString = editor ? editor->string() : QString();
        const QString inserted = partial->mid(originalRange.location, range->location - originalRange.location);
        if (inserted.contains(u'x'))
            *error = QStringLiteral("\"x\" is not valid here");
        if (inserted.contains(u'x') || inserted.contains(u'!'))
            return false;
        if (inserted.contains(u'u')) {
            const QString upper = partial->remove(u'u').toUpper();
            return rewriteProposal(partial, range, upper, {0, upper.size()});
        }
        if (inserted.contains(u'='))
            return rewriteProposal(partial, range, *partial, *range);
        return true;
    }

    // Announces a change of display, as a formatter whose settings changed.
    void announceChange() { WQNotificationCenter::defaultCenter().postNotificationName(kWQNotif_FormatterChanged, this); }
};

inline void PrintTo(const ProbeFormatter::Edit& e, std::ostream* os)
{
    *os << '"' << e.original.toStdString() << "\" {" << e.originalRange.location << ", " << e.originalRange.length
        << "} -> \"" << e.proposed.toStdString() << "\" {" << e.proposedRange.location << ", "
        << e.proposedRange.length << '}';
}

} // namespace wq::test
