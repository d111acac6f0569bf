#include <WQGeneral/encoding/WQStringUtilities.h>

#include <gtest/gtest.h>

#include <limits>

using namespace wq;

TEST(StringUtilities, ReplaceAllResumesBehindTheReplacement)
{
    const QString banana = QStringLiteral("banana");
    EXPECT_EQ(banana.constData(), stringBySearchingForString(banana, u"x", u"y").constData());
    EXPECT_EQ(banana.constData(), stringBySearchingForString(banana, u"", u"y").constData());
    EXPECT_EQ(stringBySearchingForString(banana, u"a", u"aa"), u"baanaanaa");
    EXPECT_EQ(stringBySearchingForString(banana, u"an", u""), u"ba");
    EXPECT_EQ(stringBySearchingForString(QStringLiteral("aaa"), u"aa", u"b"), u"ba");
    EXPECT_EQ(stringBySearchingForString(QStringLiteral("Aa"), u"a", u"b"), u"Ab");   // case-sensitive

    QString text = QStringLiteral("x.y.z");
    EXPECT_EQ(wq_replaceAllOccurrences(text, u".", u".."), 2);
    EXPECT_EQ(text, u"x..y..z");
    EXPECT_EQ(wq_replaceAllOccurrences(text, u"q", u"r"), 0);
}

TEST(StringUtilities, TrimWhiteSpace)
{
    const QString spaces = QStringLiteral("   ");
    EXPECT_EQ(trimWhiteSpace(spaces), u"");
    EXPECT_FALSE(trimWhiteSpace(spaces).isNull());
    const QString tight = QStringLiteral("a b");
    EXPECT_EQ(trimWhiteSpace(tight).constData(), tight.constData());
    EXPECT_EQ(trimWhiteSpace(QStringLiteral("\t\r\n a  b \n")), u"a  b");
    EXPECT_EQ(trimWhiteSpace(QStringLiteral("\u3000\u00a0x\u2028\u0085")), u"x");
    EXPECT_EQ(trimWhiteSpace(QStringLiteral("\u200bx\u200b")), u"\u200bx\u200b");   // zero-width space is no separator
    EXPECT_EQ(trimWhiteSpace(QStringLiteral("x  ")), u"x");
    EXPECT_EQ(trimWhiteSpace(QString()), QString());
}

TEST(StringUtilities, RunsOfCharactersFromASet)
{
    const WQCharacterSet digits = WQCharacterSet::characterSetWithRange(U'0', U'9');
    const QString text = QStringLiteral("ab123cd45");
    const WQRange all{0, text.size()};
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, 0, all), (WQRange{2, 3}));
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, WQBackwardsSearch, all), (WQRange{7, 2}));
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, WQBackwardsSearch, WQRange{0, 8}), (WQRange{7, 1}));
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, 0, WQRange{3, 6}), (WQRange{3, 2}));
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, WQAnchoredSearch, all), (WQRange{WQNotFound, 0}));
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, WQAnchoredSearch, WQRange{2, 7}), (WQRange{2, 3}));
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, WQAnchoredSearch | WQBackwardsSearch, all), (WQRange{7, 2}));
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, 0, WQRange{5, 100}), (WQRange{7, 2}));   // clipped
    EXPECT_EQ(rangeOfCharactersFromSet(text, digits, 0, WQRange{0, 2}), (WQRange{WQNotFound, 0}));

    const WQCharacterSet abc = WQCharacterSet::characterSetWithCharactersInString(u"abc");
    const QString upper = QStringLiteral("xxABCax");
    EXPECT_EQ(rangeOfCharactersFromSet(upper, abc, WQCaseInsensitiveSearch, {0, upper.size()}), (WQRange{2, 4}));
    EXPECT_EQ(rangeOfCharactersFromSet(upper, abc, 0, {0, upper.size()}), (WQRange{5, 1}));

    // Supplementary characters count as one character of two units.
    const char32_t smileys[] = {U'a', 0x1F600, 0x1F601, U'b'};
    const QString wide = QString::fromUcs4(smileys, 4);
    const WQCharacterSet emoji = WQCharacterSet::characterSetWithRange(0x1F600, 0x1F64F);
    EXPECT_EQ(rangeOfCharactersFromSet(wide, emoji, 0, {0, wide.size()}), (WQRange{1, 4}));
    EXPECT_EQ(rangeOfCharactersFromSet(wide, emoji, WQBackwardsSearch, {0, wide.size()}), (WQRange{1, 4}));
    EXPECT_EQ(rangeOfCharactersFromSet(wide, emoji.invertedSet(), WQBackwardsSearch, {0, wide.size()}), (WQRange{5, 1}));

    WQCharacterSet merged = WQCharacterSet::characterSetWithRange(U'a', U'c');
    merged.addCharactersInRange(U'd', U'f').addCharactersInRange(U'b', U'e');
    EXPECT_EQ(merged, WQCharacterSet::characterSetWithRange(U'a', U'f'));
    EXPECT_TRUE(merged.invertedSet().characterIsMember(0x10FFFF));
    EXPECT_FALSE(merged.invertedSet().characterIsMember(U'c'));
}

TEST(StringUtilities, UnsignedLongValueReadsLikeStrtoul)
{
    const std::uint64_t max = std::numeric_limits<std::uint64_t>::max();
    const std::pair<QString, std::uint64_t> rows[] = {
        {QStringLiteral("0x1F"), 31},  {QStringLiteral("010"), 8},      {QStringLiteral("012"), 10},
        {QStringLiteral("+7"), 7},     {QStringLiteral("-1"), max},     {QStringLiteral("-2"), max - 1},
        {QStringLiteral("1,234"), 1},  {QStringLiteral("abc42"), 42},   {QStringLiteral("x0x10"), 16},
        {QStringLiteral("99999999999999999999999"), max},               {QStringLiteral("\u00e9\u00e9 5"), 5},
        {QString(), 0},                {QStringLiteral("no digits at all"), 0}, {QStringLiteral("+-5"), 0},
        // Only what fits the 60-byte buffer is read.
        {QString(58, u'x') + u'5', 5}, {QString(59, u'x') + u'5', 0},   {QString(56, u'x') + QStringLiteral("1234"), 123},
    };
    for (const auto& [text, value] : rows)
        EXPECT_EQ(wq_unsignedLongValue(text), value) << text.toStdString();
}

TEST(StringUtilities, LanguageCodesAndPascalStrings)
{
    const std::pair<const char*, const char*> table[] = {
        {"English", "en"}, {"French", "fr"},  {"German", "de"},  {"Japanese", "jp"}, {"Chinese", "cn"},
        {"Spanish", "es"}, {"Italian", "it"}, {"Swedish", "se"}, {"Dutch", "nl"},    {"Portuguese", "pt"},
    };
    for (const auto& [name, code] : table)
        EXPECT_EQ(iso3166CodeForLanguageName(QString::fromLatin1(name)), QString::fromLatin1(code));
    const QString lower = QStringLiteral("english");
    EXPECT_EQ(iso3166CodeForLanguageName(lower).constData(), lower.constData());
    EXPECT_EQ(iso3166CodeForLanguageName(QStringLiteral("Klingon")), u"Klingon");

    EXPECT_EQ(stringWithPString(QByteArrayView("\x05Hello, world", 13)), u"Hello");
    const QString empty = stringWithPString(QByteArrayView("\x00", 1));
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_FALSE(empty.isNull());
    EXPECT_EQ(stringWithPString(QByteArrayView("\x05\x80\x8E\xA5\xDB\xF0", 6)), u"\u00c4\u00e9\u2022\u20ac\uf8ff");
    EXPECT_TRUE(stringWithPString(QByteArrayView("\x09short", 6)).isNull());
    EXPECT_TRUE(stringWithPString(QByteArrayView()).isNull());
}
