#include "WQPickerFormat.h"

#include <QList>

namespace wq::datefields {
namespace {

struct Token {
    QString text;
    bool field;
};

bool isFieldLetter(QChar c) { return c == u'd' || c == u'M' || c == u'y'; }

QList<Token> tokenize(const QString& pattern)
{
    QList<Token> tokens;
    const qsizetype n = pattern.size();
    for (qsizetype i = 0; i < n;) {
        const QChar c = pattern[i];
        if (isFieldLetter(c)) {
            qsizetype j = i;
            while (j < n && pattern[j] == c)
                ++j;
            QString run = pattern.mid(i, j - i);
            if (c == u'y')
                run = QStringLiteral("yyyy");
            else if (run.size() > 2) // month names are not typed into a picker
                run = run.left(2);
            tokens.append({run, true});
            i = j;
        } else if (c == u'\'') {
            // Quoted literal text; '' is a quote.
            qsizetype j = i + 1;
            QString literal;
            while (j < n) {
                if (pattern[j] == u'\'') {
                    if (j + 1 < n && pattern[j + 1] == u'\'') {
                        literal += u'\'';
                        j += 2;
                        continue;
                    }
                    ++j;
                    break;
                }
                literal += pattern[j++];
            }
            if (!tokens.isEmpty() && !tokens.last().field)
                tokens.last().text += literal;
            else
                tokens.append({literal, false});
            i = j;
        } else if (c.isLetter()) {
            ++i; // weekday names and other fields have no place in a picker
        } else {
            if (!tokens.isEmpty() && !tokens.last().field)
                tokens.last().text += c;
            else
                tokens.append({QString(c), false});
            ++i;
        }
    }
    return tokens;
}

} // namespace

QString pickerDisplayFormat(const QString& pattern, bool showDay)
{
    QList<Token> tokens = tokenize(pattern);
    if (!showDay) {
        for (qsizetype i = 0; i < tokens.size(); ++i) {
            if (tokens[i].field && tokens[i].text.startsWith(u'd')) {
                // The day goes with the separator after it, or before it when last.
                qsizetype from = i;
                qsizetype to = i + 1;
                if (to < tokens.size() && !tokens[to].field)
                    ++to;
                else if (from > 0 && !tokens[from - 1].field)
                    --from;
                tokens.remove(from, to - from);
                break;
            }
        }
    }
    // Leading and trailing literals (blanks, stray punctuation) are dropped.
    while (!tokens.isEmpty() && !tokens.first().field)
        tokens.removeFirst();
    while (!tokens.isEmpty() && !tokens.last().field)
        tokens.removeLast();

    bool hasYear = false;
    bool hasMonth = false;
    bool hasDay = false;
    QString format;
    for (const Token& token : tokens) {
        if (token.field) {
            hasYear |= token.text.startsWith(u'y');
            hasMonth |= token.text.startsWith(u'M');
            hasDay |= token.text.startsWith(u'd');
            format += token.text;
        } else {
            QString quoted = token.text;
            quoted.replace(u'\'', QStringLiteral("''"));
            format += u'\'' + quoted + u'\'';
        }
    }
    if (!hasYear || !hasMonth || (showDay && !hasDay))
        return showDay ? QStringLiteral("yyyy-MM-dd") : QStringLiteral("yyyy-MM");
    return format;
}

} // namespace wq::datefields
