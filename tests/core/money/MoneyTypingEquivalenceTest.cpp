// The one-pass standard typing against the algorithm it replaced, which
// removed and inserted one occurrence at a time: random edits under random
// settings, separators and symbols of every length included.

#include "WQStandardTyping.h"
#include "detail/WQTextEditing.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

using namespace wq;

namespace {

// --- the replaced algorithm, kept here as the reference ---------------------

void collapseDoubled(QString& text, QStringView needle, qsizetype& caret)
{
    if (needle.isEmpty())
        return;
    QString doubled = needle.toString();
    doubled += needle;
    for (qsizetype at = text.indexOf(doubled); at >= 0; at = text.indexOf(doubled, at))
        _wq_removeAt(text, at + needle.size(), needle.size(), caret);
}

WQStandardTypingAnswer referenceTyping(const WQStandardTypingSettings& s, const QString& proposed, qsizetype caret,
                                       bool deleting)
{
    const QString decimal = s.decimal.toString(), thousands = s.thousands.toString(), symbol = s.symbol.toString();
    WQStandardTypingAnswer answer;
    const auto refused = [&answer](WQStandardTypingAnswer::Kind kind) {
        answer.kind = kind;
        return answer;
    };
    {
        QString scratch = proposed;
        qsizetype ignored = 0;
        collapseDoubled(scratch, decimal, ignored);
        _wq_removeAll(scratch, symbol, ignored);
        const qsizetype point = _wq_find(scratch, decimal);
        if (point >= 0) {
            const qsizetype after = point + decimal.size();
            if (after < scratch.size() && _wq_find(scratch, decimal, after) >= 0)
                return refused(WQStandardTypingAnswer::Kind::RefusedTwice);
            const qsizetype limit = s.places + (scratch.endsWith(u')') || scratch.endsWith(u'-') ? 1 : 0);
            if (scratch.size() - after > limit)
                return refused(WQStandardTypingAnswer::Kind::RefusedSilently);
        }
    }
    QString text = proposed;
    _wq_removeAll(text, thousands, caret);
    collapseDoubled(text, decimal, caret);
    _wq_removeAll(text, symbol, caret);
    if (symbol.size() > 1) {
        for (QChar c : symbol) {
            if (QStringView(&c, 1) != decimal)
                _wq_removeAll(text, QStringView(&c, 1), caret);
        }
    }
    const bool oddMinus = _wq_removeAll(text, u"-", caret) % 2;
    const bool negative = oddMinus != bool(_wq_removeAll(text, u"(", caret) % 2);
    _wq_removeAll(text, u")", caret);
    _wq_dropLeadingZeros(text, caret);
    if (s.grouping[negative] && !thousands.isEmpty()) {
        _wq_insertGrouping(text, thousands, decimal, [&](qsizetype q) {
            if (q < caret && (!deleting || QStringView(text).mid(caret, thousands.size()) != thousands))
                ++caret;
        });
    }
    caret = std::clamp<qsizetype>(caret, 0, text.size());
    if (text.isEmpty())
        answer.emptyCaret = caret;
    if (s.symbolShown[negative]) {
        if (s.symbolAtEnd) {
            text += symbol;
        } else {
            text.prepend(symbol);
            caret += symbol.size();
        }
    }
    if (negative && s.negativeSign == '-') {
        text.prepend(u'-');
        ++caret;
    } else if (negative && s.negativeSign == '(') {
        text = u'(' + text + u')';
        ++caret;
    }
    answer.text = text;
    answer.caret = caret;
    return answer;
}

// --- random settings and edits ----------------------------------------------

template <typename T, std::size_t N>
const T& pick(QRandomGenerator& g, const T (&options)[N])
{
    return options[g.bounded(int(N))];
}

struct Case {
    WQStandardTypingSettings settings; // its strings are views into randomCase's lists
    QString text;
    qsizetype caret = 0;
    bool deleting = false;
};

Case randomCase(QRandomGenerator& g, int maxLength)
{
    // Real settings most of the time, and separators that overlap each
    // other, repeat themselves or hold the characters the rewrite strips.
    static const QString separators[] = {",", ".", " ", "\u202F", "'", "", ",", ".", "..", ",.", "aa", "aba",
                                         "abab", "-", "(", "0", "$", "abcde", "\u00A0\u00A0"};
    static const QString symbols[] = {"$", "$", "kr", " \u20AC", "CHF", "US$", "", "..", "-", "(", "$$", ". ", "0",
                                      "a.b", "aa", "\u00A5"};
    Case c;
    c.settings.thousands = pick(g, separators);
    c.settings.decimal = pick(g, separators);
    c.settings.symbol = pick(g, symbols);
    c.settings.places = g.bounded(4);
    for (int sign = 0; sign < 2; ++sign) {
        c.settings.grouping[sign] = g.bounded(5) != 0;
        c.settings.symbolShown[sign] = g.bounded(4) != 0;
    }
    c.settings.symbolAtEnd = g.bounded(3) == 0;
    c.settings.negativeSign = pick(g, {'-', '-', '(', '\0'});

    // Text made mostly of digits, with the settings' strings and the signs
    // dropped in, as typing, pasting and deleting leave it.
    const QStringView pieces[] = {c.settings.thousands, c.settings.decimal, c.settings.symbol, u"-", u"(", u")", u"0",
                                  u"00", u"a", u"b", u"x", u"\u00E9"};
    const int length = g.bounded(maxLength + 1);
    while (c.text.size() < length) {
        if (g.bounded(3) == 0)
            c.text += pick(g, pieces);
        else
            c.text += QChar(u'0' + g.bounded(10));
    }
    c.caret = g.bounded(int(c.text.size()) + 1);
    c.deleting = g.bounded(3) == 0;
    return c;
}

void expectSame(const Case& c)
{
    const WQStandardTypingAnswer expected = referenceTyping(c.settings, c.text, c.caret, c.deleting);
    const WQStandardTypingAnswer actual = _wq_standardTyping(c.settings, c.text, c.caret, c.deleting);
    const auto describe = [&] {
        const WQStandardTypingSettings& s = c.settings;
        return QStringLiteral("text \"%1\" caret %2 thousands \"%3\" decimal \"%4\" symbol \"%5\" deleting %6")
            .arg(c.text, QString::number(c.caret), s.thousands, s.decimal, s.symbol, QString::number(c.deleting))
            .toStdString();
    };
    ASSERT_EQ(int(actual.kind), int(expected.kind)) << describe();
    if (expected.kind != WQStandardTypingAnswer::Kind::Rewritten)
        return;
    ASSERT_EQ(actual.text, expected.text) << describe();
    ASSERT_EQ(actual.caret, expected.caret) << describe();
    ASSERT_EQ(actual.emptyCaret, expected.emptyCaret) << describe();
}

} // namespace

TEST(MoneyTypingEquivalence, ShortAndLongEditsUnderRandomSettings)
{
    QRandomGenerator generator(2718);
    for (int round = 0; round < 200300; ++round)
        ASSERT_NO_FATAL_FAILURE(expectSame(randomCase(generator, round < 200000 ? 24 : 3000))) << "round " << round;
}

TEST(MoneyTypingEquivalence, EditChainMatchesRemovalsOneAtATime)
{
    // Needles that overlap themselves are where a single pass could differ.
    QRandomGenerator generator(1618);
    const QString needles[] = {"a", "aa", "aba", "abab", "ab", "ba", "aab"};
    for (int round = 0; round < 20000; ++round) {
        QString text;
        for (int i = generator.bounded(30); i > 0; --i)
            text += QChar(u'a' + generator.bounded(3));
        const QString first = pick(generator, needles), second = pick(generator, needles);
        const bool collapse = generator.bounded(2) == 0;
        qsizetype expectedCaret = generator.bounded(int(text.size()) + 1);
        qsizetype caret = expectedCaret;

        QString expected = text;
        const qsizetype removed = _wq_removeAll(expected, first, expectedCaret);
        if (collapse)
            collapseDoubled(expected, second, expectedCaret);
        else
            _wq_removeAll(expected, second, expectedCaret);

        WQTextEditChain chain;
        const int edit = chain.removeAll(first);
        collapse ? chain.collapseDoubled(second) : chain.removeAll(second);
        QString actual = QStringLiteral(">");
        chain.run(text, actual, &caret);
        ASSERT_EQ(actual, ">" + expected) << text.toStdString() << " " << first.toStdString() << " "
                                          << second.toStdString() << " collapse " << collapse;
        ASSERT_EQ(caret, expectedCaret) << text.toStdString();
        ASSERT_EQ(chain.count(edit), removed) << text.toStdString();
    }
}
