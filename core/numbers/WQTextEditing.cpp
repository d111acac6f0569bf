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

int WQTextEditChain::_add(bool collapse, QStringView needle)
{
    Edit edit;
    edit.needle = needle;
    edit.collapse = collapse;
    _edits.append(std::move(edit));
    if (!needle.isEmpty())
        _firstCharacters |= quint64(1) << (needle.front().unicode() % 64);
    return int(_edits.size() - 1);
}

bool WQTextEditChain::_idle() const
{
    return std::all_of(_edits.begin(), _edits.end(), [](const Edit& e) { return e.pending.isEmpty(); });
}

void WQTextEditChain::_emit(int unit)
{
    if (unit == kCaret)
        _caretOut = _out - _outStart;
    else
        *_out++ = char16_t(unit);
}

void WQTextEditChain::_push(qsizetype index, int unit)
{
    if (index == _edits.size()) {
        _emit(unit);
        return;
    }
    Edit& edit = _edits[index];
    if (edit.needle.isEmpty() || (unit == kCaret && edit.pending.isEmpty())) {
        _push(index + 1, unit);
        return;
    }
    edit.pending.append(unit);
    if (unit != kCaret)
        _settle(index);
}

// Decides what the held characters are: an occurrence (removed), the start
// of one (kept back), or characters that begin none (passed on, one at a
// time, since a later one may still begin an occurrence).
void WQTextEditChain::_settle(qsizetype index)
{
    Edit& edit = _edits[index];
    const qsizetype length = edit.needle.size();
    const qsizetype whole = edit.collapse ? 2 * length : length;
    for (;;) {
        qsizetype matched = 0;
        bool prefix = true;
        for (const int unit : edit.pending) {
            if (unit == kCaret)
                continue;
            if (unit != edit.needle[matched % length].unicode()) {
                prefix = false;
                break;
            }
            ++matched;
        }
        if (prefix && matched < whole)
            return;
        if (prefix) {
            ++edit.count;
            // The removal takes a caret inside it to where it stood.
            bool caret = false;
            QVarLengthArray<int, 8> kept;
            qsizetype seen = 0;
            for (const int unit : edit.pending) {
                if (unit != kCaret)
                    ++seen;
                if (edit.collapse && seen <= length && !(unit == kCaret && seen == length))
                    kept.append(unit);
                else if (unit == kCaret)
                    caret = true;
            }
            if (caret)
                kept.append(kCaret);
            edit.pending = std::move(kept);
            // A collapse keeps the first of the pair: it may begin the next pair.
            if (!edit.collapse) {
                edit.pending.clear();
                if (caret)
                    _push(index + 1, kCaret);
            }
            return;
        }
        // No occurrence begins at the first held character: it goes on,
        // with a caret in front of it.
        qsizetype first = 0;
        while (edit.pending[first] == kCaret)
            ++first;
        QVarLengthArray<int, 8> passed(edit.pending.begin(), edit.pending.begin() + first + 1);
        edit.pending.remove(0, first + 1);
        while (!edit.pending.isEmpty() && edit.pending.front() == kCaret) {
            passed.append(kCaret);
            edit.pending.remove(0);
        }
        for (const int unit : passed)
            _push(index + 1, unit);
        if (edit.pending.isEmpty())
            return;
    }
}

void WQTextEditChain::run(QStringView text, QString& out, qsizetype* caret)
{
    for (Edit& edit : _edits) {
        edit.count = 0;
        edit.pending.clear();
    }
    // Edits only remove: the result is never longer than the text.
    const qsizetype base = out.size();
    out.resize(base + text.size());
    _outStart = reinterpret_cast<char16_t*>(out.data()) + base;
    _out = _outStart;
    _caretOut = -1;
    const qsizetype caretAt = caret ? std::clamp<qsizetype>(*caret, 0, text.size()) : -1;

    const char16_t* const units = text.utf16();
    const quint64 firstCharacters = _firstCharacters;
    bool idle = true;
    qsizetype i = 0;
    for (const qsizetype end : {caretAt, text.size()}) {
        while (i < end) {
            if (idle) {
                // Most characters begin no needle and pass every edit untouched.
                char16_t* out = _out;
                while (i < end && !((firstCharacters >> (units[i] % 64)) & 1))
                    *out++ = units[i++];
                _out = out;
                if (i == end)
                    break;
                const char16_t c = units[i++];
                qsizetype first = 0;
                while (first < _edits.size()
                       && (_edits[first].needle.isEmpty() || _edits[first].needle.front() != c))
                    ++first;
                if (first == _edits.size()) {
                    *_out++ = c;
                    continue;
                }
                // The earlier edits would pass it on as it is.
                if (!_edits[first].collapse && _edits[first].needle.size() == 1) {
                    ++_edits[first].count;
                    continue;
                }
                _push(first, c);
            } else {
                _push(0, units[i++]);
            }
            idle = _idle();
        }
        if (caret && end == caretAt)
            _push(0, kCaret);
    }
    // Nothing held back can still become an occurrence.
    for (qsizetype index = 0; index < _edits.size(); ++index) {
        const QVarLengthArray<int, 8> held = std::move(_edits[index].pending);
        _edits[index].pending.clear();
        for (const int unit : held)
            _push(index + 1, unit);
    }
    out.truncate(_out - reinterpret_cast<char16_t*>(out.data()));
    if (caret)
        *caret = _caretOut;
}

} // namespace wq
