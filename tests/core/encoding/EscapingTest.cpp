#include <WQGeneral/encoding/WQEscaping.h>

#include <gtest/gtest.h>

using namespace wq;

namespace {

QString fromUcs4(std::initializer_list<char32_t> codePoints)
{
    const std::u32string text(codePoints);
    return QString::fromUcs4(text.data(), qsizetype(text.size()));
}

QString units(std::initializer_list<char16_t> codeUnits)
{
    return QString(reinterpret_cast<const QChar*>(std::data(codeUnits)), qsizetype(codeUnits.size()));
}

bool sameData(const QString& a, const QString& b)
{
    return a.constData() == b.constData();
}

} // namespace

TEST(XMLEscaping, EncodesTheFiveCharactersAmpersandFirst)
{
    EXPECT_EQ(xml_encodedForXML(QStringLiteral("a&lt;b")), u"a&amp;lt;b");
    EXPECT_EQ(xml_encodedForXML(QStringLiteral("<a href=\"x\">'&'</a>")),
              u"&lt;a href=&quot;x&quot;&gt;&apos;&amp;&apos;&lt;/a&gt;");
    EXPECT_EQ(xml_encodedForXML(QStringLiteral("\u00e9t\u00e9 & co")), u"\u00e9t\u00e9 &amp; co");

    const QString clean = QStringLiteral("nothing to do here, \u00e9\u4e2d");
    EXPECT_TRUE(sameData(xml_encodedForXML(clean), clean));
    EXPECT_TRUE(sameData(validXMLString(clean), clean));
}

TEST(XMLEscaping, DropsWhatXMLForbidsWithTheStoredBounds)
{
    EXPECT_EQ(xml_encodedForXML(QStringLiteral("a\u0001b\uFFFDc")), u"abc");
    EXPECT_EQ(validXMLString(QStringLiteral("\t\n\r ok")), u"\t\n\r ok");
    EXPECT_EQ(validXMLString(QString(QChar(0)) + QStringLiteral("x\u000Bx\u001F")), u"xx");

    // The three upper bounds are one short of XML's own.
    EXPECT_EQ(validXMLString(fromUcs4({0xD7FE, 0xD7FF, 0xE000})), fromUcs4({0xD7FE, 0xE000}));
    EXPECT_EQ(validXMLString(fromUcs4({0xFFFC, 0xFFFD, 0xFFFE, 0xFFFF})), fromUcs4({0xFFFC}));
    EXPECT_EQ(validXMLString(fromUcs4({0x10000, 0x1F600, 0x10FFFE, 0x10FFFF})), fromUcs4({0x10000, 0x1F600, 0x10FFFE}));

    // A pair is one character; an unpaired surrogate is one unit that goes.
    EXPECT_EQ(validXMLString(units({u'a', 0xD83D, u'b'})), u"ab");
    EXPECT_EQ(validXMLString(units({u'a', 0xDE00, u'b'})), u"ab");
    EXPECT_EQ(validXMLString(units({0xDE00, 0xD83D})), u"");
    EXPECT_EQ(validXMLString(units({0xD83D, 0xD83D, 0xDE00})), fromUcs4({0x1F600}));
    EXPECT_EQ(xml_encodedForXML(units({u'<', 0xDBFF, 0xDFFF, u'>'})), u"&lt;&gt;");   // U+10FFFF
}

TEST(XMLEscaping, DecodesInItsOrderWithAmpLast)
{
    EXPECT_EQ(xml_decodedFromXML(QStringLiteral("a&amp;lt;b")), u"a&lt;b");
    EXPECT_EQ(xml_decodedFromXML(QStringLiteral("&lt;&gt;&quot;&apos;&#38;&amp;")), u"<>\"'&&");
    EXPECT_EQ(xml_decodedFromXML(QStringLiteral("&amp;amp;")), u"&amp;");
    EXPECT_EQ(xml_decodedFromXML(QStringLiteral("&#60;&nbsp;&#x26;")), u"&#60;&nbsp;&#x26;");
    // "&#38;" is replaced in its own pass; the "&amp;" that leaves behind is
    // then met by the last pass.
    EXPECT_EQ(xml_decodedFromXML(QStringLiteral("&#38;amp;")), u"&");
    EXPECT_EQ(xml_decodedFromXML(QStringLiteral("&#38;#38;")), u"&#38;");

    const QString plain = QStringLiteral("no entities");
    EXPECT_TRUE(sameData(xml_decodedFromXML(plain), plain));

    const QString text = QStringLiteral("Tom & \"Jerry\" <cat's>");
    EXPECT_EQ(xml_decodedFromXML(xml_encodedForXML(text)), text);
}

TEST(XMLEscaping, BoolValueAndAppending)
{
    for (const char* yes : {"true", "TRUE", "True", "yes", "Yes", "YES", "1"})
        EXPECT_TRUE(xml_boolValue(QString::fromLatin1(yes))) << yes;
    for (const char* no : {" true", "true ", "01", "false", "0", "", "y", "2", "truth"})
        EXPECT_FALSE(xml_boolValue(QString::fromLatin1(no))) << no;

    QString xml = QStringLiteral("<r>");
    xml_appendTag(xml, QStringLiteral("name"), QStringLiteral("a<b"));
    xml_appendTag(xml, QStringLiteral("empty"), QString());
    xml_appendStringEncodedForXML(xml, QString());
    xml_appendStringEncodedForXML(xml, QStringLiteral("'\u0002'"));
    EXPECT_EQ(xml, u"<r><name>a&lt;b</name><empty></empty>&apos;&apos;");
}

TEST(CSVEscaping, QuotesAndCommas)
{
    EXPECT_EQ(csv_encodedForCSV(QStringLiteral("1,5")), u"\"1,5\"");
    EXPECT_EQ(csv_encodedForCSV(QStringLiteral("say \"hi\"")), u"say \"\"hi\"\"");
    EXPECT_EQ(csv_encodedForCSV(QStringLiteral("a \"b\", c")), u"\"a \"\"b\"\", c\"");
    // Line breaks and leading spaces without a comma stay unenclosed.
    EXPECT_EQ(csv_encodedForCSV(QStringLiteral("  two\nlines")), u"  two\nlines");
    const QString plain = QStringLiteral("plain");
    EXPECT_TRUE(sameData(csv_encodedForCSV(plain), plain));

    EXPECT_EQ(csv_decodedFromCSV(QStringLiteral("say \"\"hi\"\"")), u"say \"hi\"");
    EXPECT_EQ(csv_decodedFromCSV(QStringLiteral("\"1,5\"")), u"\"1,5\"");   // the splitter removes those
    EXPECT_EQ(csv_decodedFromCSV(QStringLiteral("\"\"\"")), u"\"\"");

    QString line = QStringLiteral("x,");
    csv_appendStringEncodedForCSV(line, QStringLiteral("1,5"));
    csv_appendStringEncodedForCSV(line, QString());
    EXPECT_EQ(line, u"x,\"1,5\"");
}

TEST(URLEscaping, EscapesExactlyTheIllegalCharacters)
{
    const QString legal = QStringLiteral("!$&'()*+,-./:;=?@_~");
    for (char16_t c = 0; c < 128; ++c) {
        const QString in(QChar{c});
        const bool keep = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')
            || legal.contains(QChar{c});
        const QString expected = keep ? in : QStringLiteral("%%1").arg(int(c), 2, 16, QChar(u'0')).toUpper();
        EXPECT_EQ(url_encodedForURL(in), expected) << int(c);
    }
    EXPECT_EQ(url_encodedForURL(QStringLiteral("a b")), u"a%20b");
    EXPECT_EQ(url_encodedForURL(QStringLiteral("\u00e9\u20ac")), u"%C3%A9%E2%82%AC");
    EXPECT_EQ(url_encodedForURL(fromUcs4({0x1F600})), u"%F0%9F%98%80");
    EXPECT_EQ(url_encodedForURL(units({u'x', 0xD83D})), u"x%EF%BF%BD");
    const QString clean = QStringLiteral("en_US-1.0/a?b=c&d");
    EXPECT_TRUE(sameData(url_encodedForURL(clean), clean));
}

TEST(URLEscaping, AppendsParameters)
{
    QString url = QStringLiteral("https://example.com/u");
    url_appendValue(url, QStringLiteral("a b"), QStringLiteral("x"), true);
    url_appendValue(url, QStringLiteral("fr"), QStringLiteral("lang uage"), false);
    url_appendStringEncodedForURL(url, QStringLiteral("#"));
    url_appendStringEncodedForURL(url, QString());
    EXPECT_EQ(url, u"https://example.com/u?x=a%20b&lang%20uage=fr%23");
}
