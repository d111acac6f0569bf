#include "detail/WQTextEditing.h"

#include <algorithm>

namespace wq {

qsizetype _wq_find(QStringView haystack, QStringView needle, qsizetype from)
{
    if (needle.isEmpty() || from < 0 || from > haystack.size())
        return -1;
    return haystack.indexOf(needle, from);
}

bool _wq_containsText(QStringView haystack, QStringView needle)
{
    return _wq_find(haystack, needle) >= 0;
}

QString _wq_insertedText(const QString& proposed, WQRange proposedRange, WQRange originalRange)
{
    const qsizetype from = std::clamp<qsizetype>(originalRange.location, 0, proposed.size());
    const qsizetype to = std::clamp<qsizetype>(proposedRange.location, 0, proposed.size());
    return to > from ? proposed.mid(from, to - from) : QString();
}

void _wq_removeAt(QString& text, qsizetype at, qsizetype length, qsizetype& caret)
{
    text.remove(at, length);
    if (at < caret)
        caret -= std::min(length, caret - at);
}

qsizetype _wq_removeAll(QString& text, QStringView needle, qsizetype& caret)
{
    qsizetype removed = 0;
    for (qsizetype at = _wq_find(text, needle); at >= 0; at = _wq_find(text, needle, at)) {
        _wq_removeAt(text, at, needle.size(), caret);
        ++removed;
    }
    return removed;
}

void _wq_collapseDoubled(QString& text, QStringView needle, qsizetype& caret)
{
    if (needle.isEmpty())
        return;
    QString doubled = needle.toString();
    doubled += needle;
    for (qsizetype at = text.indexOf(doubled); at >= 0; at = text.indexOf(doubled, at))
        _wq_removeAt(text, at + needle.size(), needle.size(), caret);
}

void _wq_dropLeadingZeros(QString& text, qsizetype& caret)
{
    if (text.size() <= 1)
        return;
    const qsizetype limit = caret;
    qsizetype zeros = 0;
    while (zeros < text.size() && text[zeros] == u'0') {
        if (zeros + 1 <= limit)
            --caret;
        ++zeros;
    }
    if (zeros == text.size()) {
        text.truncate(1);
        caret = 1;
    } else if (zeros > 0) {
        text.remove(0, zeros);
    }
}

} // namespace wq
