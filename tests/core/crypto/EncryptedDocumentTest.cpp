#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include <gtest/gtest.h>

#include <QBuffer>

#include "WQLargeBuffers.h"
#include "WQStitchedCBC.h"
#include "WQTextBytes.h"

#include <random>

using namespace wq;

namespace {

const QString kHead = QStringLiteral(
    "<?xml version='1.0' encoding='UTF-8'?>"
    "<EncryptedData xmlns='http://www.w3.org/2001/04/xmlenc#' MimeType='text/xml'>"
    "<EncryptionMethod Algorithm='http://www.w3.org/2001/04/xmlenc#aes128-cbc'/>"
    "<ds:KeyInfo xmlns:ds='http://www.w3.org/2000/09/xmldsig#'>"
    "<xenc11:DerivedKey xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
    "xmlns:xenc='http://www.w3.org/2001/04/xmlenc#' xmlns:xenc11='http://www.w3.org/2009/xmlenc11#' "
    "xmlns:pkcs-5='http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#'>"
    "<xenc11:KeyDerivationMethod Algorithm='http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#pbkdf2'>"
    "<pkcs-5:PBKDF2-params><Salt><Specified>");
const QString kMiddle = QStringLiteral(
    "</Specified></Salt><IterationCount>1000</IterationCount><KeyLength>16</KeyLength>"
    "<PRF Algorithm='http://www.w3.org/2001/04/xmldsig-more#hmac-sha1'/>"
    "</pkcs-5:PBKDF2-params></xenc11:KeyDerivationMethod></xenc11:DerivedKey></ds:KeyInfo>"
    "<CipherData><CipherValue>");
const QString kTail = QStringLiteral("</CipherValue></CipherData></EncryptedData>");

// A fixed salt and IV, the key the password "pw" derives with them, and an
// envelope of "<a/>" made with them and a key.
const QByteArray kSalt = "saltsalt", kIV = "IVIVIVIVIVIVIVIV";
const WQAESKey kPwKey = pkcs_pbkdf2_derive_aes128_key_with_salt(QStringLiteral("pw"), kSalt);
QString keyedEnvelope(const QByteArray& key = "0123456789abcdef")
{
    return xml_encryptDocumentWithKey(QStringLiteral("<a/>"), key, kSalt, kIV);
}

QString between(const QString& text, QStringView open, QStringView close)
{
    const qsizetype start = text.indexOf(open);
    const qsizetype end = text.indexOf(close, start + 1);
    if (start < 0 || end < 0)
        return QString();
    return text.mid(start + open.size(), end - start - open.size());
}

// Opens envelope with password and compares what comes out.
testing::AssertionResult opensAs(const QString& envelope, const QString& password, const QString& document)
{
    const WQDecryptedDocument opened = xml_decryptDocumentWithPassword(envelope, password);
    if (!opened.ok())
        return testing::AssertionFailure() << "error " << int(opened.error);
    return opened.document == document ? testing::AssertionSuccess() : testing::AssertionFailure() << "another document";
}

} // namespace

TEST(EncryptedDocument, KeyEnvelopeFollowsTheTemplateExactly)
{
    const QString saltAndIV = kHead + QStringLiteral("c2FsdHNhbHQ=") + kMiddle + QStringLiteral("SVZJVklWSVZJVklWSVZJVg==");
    EXPECT_EQ(keyedEnvelope(), saltAndIV + QStringLiteral("cizUZ3fgASBd2ZEqwcEMdA==") + kTail);
    // A key the cipher refuses leaves the cipher text out.
    EXPECT_EQ(keyedEnvelope("short"), saltAndIV + kTail);
    EXPECT_EQ(xml_decryptDocumentWithPassword(keyedEnvelope("short"), QStringLiteral("x")).error, WQEnvelopeError::DamagedValue);
    // So does an IV it refuses; without a key, text that is no XML is refused first.
    EXPECT_EQ(xml_encryptDocumentWithKey(QStringLiteral("<a/>"), "0123456789abcdef", kSalt, "IV"),
              kHead + QStringLiteral("c2FsdHNhbHQ=") + kMiddle + QStringLiteral("SVY=") + kTail);
    EXPECT_TRUE(xml_encryptDocumentWithKey(QStringLiteral("no XML"), "short", kSalt, kIV).isEmpty());

    const WQEnvelopeInfo info = xml_inspectEnvelope(keyedEnvelope());
    ASSERT_EQ(info.error, WQEnvelopeError::None);
    EXPECT_FALSE(info.authenticated);
    EXPECT_EQ(info.keyDerivationAlgorithm, u"http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#pbkdf2");
    EXPECT_EQ(info.iterationCount, 1000u);
    EXPECT_EQ(info.keyLength, 16u);
    EXPECT_EQ(AES128DecryptWithDerivedKey(info.cipherText, "0123456789abcdef", info.iv), "<a/>");
}

TEST(EncryptedDocument, EveryWriterAndReaderAgreeForEveryScript)
{
    // Envelopes differ by their random salt and IV: what must agree is what
    // each opens to, and what each reader makes of the same envelope.
    const QString documents[] = {
        QStringLiteral("<doc/>"),
        QStringLiteral("<?xml version='1.0'?><!DOCTYPE doc><doc a=\"1&quot;&apos;&lt;&gt;&amp;\">Gr\u00fc\u00dfe, "
                       "\u65e5\u672c\u8a9e, \u0627\u0644\u0639\u0631\u0628\u064a\u0629 &amp; &lt;\"'&gt;&quot;&apos;"
                       "<![CDATA[<&>]]></doc>\n"),
        QStringLiteral("<a>0123456789</a>"),   // fills its block exactly
    };
    const QString passwords[] = {
        QStringLiteral("correct horse"), QString(), QStringLiteral("p\u00e4ssw\u00f6rd"),
        QStringLiteral("\u5bc6\u7801"), QString::fromUtf8("\xf0\x9f\x98\x80k\xf0\x9f\x94\x91"),
    };
    const auto streamed = [](const QString& document, const QString& password, bool classic) {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        const bool written = classic ? xml_encryptDocumentUTF8WithPassword(document.toUtf8(), password, device)
                                     : xml_encryptDocumentUTF8AuthenticatedWithPassword(document.toUtf8(), password, device, 1);
        return written ? QString::fromUtf8(device.data()) : QString();
    };
    qsizetype shortestSalt = 100, longestSalt = 0;
    for (const QString& password : passwords) {
        for (const QString& document : documents) {
            // The password envelope: the template, a salt of random length, the IV before the cipher text.
            const QString sealed = xml_encryptDocumentWithPassword(document, password);
            ASSERT_TRUE(sealed.startsWith(kHead) && sealed.endsWith(kTail));
            const qsizetype saltSize = QByteArray::fromBase64(between(sealed, u"<Specified>", u"</Specified>").toLatin1()).size();
            shortestSalt = std::min(shortestSalt, saltSize);
            longestSalt = std::max(longestSalt, saltSize);
            const QString value = between(sealed, u"<CipherValue>", u"</CipherValue>");
            EXPECT_EQ(QByteArray::fromBase64(value.first(24).toLatin1()).size(), 16);
            EXPECT_EQ(QByteArray::fromBase64(value.mid(24).toLatin1()).size(), (document.toUtf8().size() / 16 + 1) * 16);

            const QByteArray salt = randomDataOfLength(12);
            const WQAESKey key = pkcs_pbkdf2_derive_aes128_key_with_salt(password, salt);
            const QString envelopes[] = {
                sealed,
                xml_encryptDocumentWithKey(document, key.bytes(), salt, randomDataOfLength(16)),
                xml_encryptDocumentAuthenticatedWithPassword(document, password, 1000),
                streamed(document, password, true),
                streamed(document, password, false),
                xml_encryptDocumentWithPasswordAsync(document, password).result(),
                QString::fromUtf8(xml_encryptDocumentUTF8WithPasswordAsync(document.toUtf8(), password).result()),
                xml_encryptDocumentAuthenticatedWithPasswordAsync(document, password, 1).result(),
                QString::fromUtf8(xml_encryptDocumentUTF8AuthenticatedWithPasswordAsync(document.toUtf8(), password, 1).result()),
            };
            for (const QString& envelope : envelopes) {
                EXPECT_TRUE(opensAs(envelope, password, document));
                for (const QString& tried : {password, QStringLiteral("wrong")}) {
                    const WQDecryptedDocument text = xml_decryptDocumentWithPasswordAsync(envelope, tried).result();
                    const WQDecryptedDocumentUTF8 bytes = xml_decryptDocumentUTF8WithPasswordAsync(envelope.toUtf8(), tried).result();
                    EXPECT_EQ(text.error, xml_decryptDocumentWithPassword(envelope, tried).error);
                    EXPECT_EQ(text.document, xml_decryptDocumentWithPassword(envelope, tried).document);
                    EXPECT_EQ(bytes.document, xml_decryptDocumentUTF8WithPassword(envelope.toUtf8(), tried).document);
                }
            }
        }
    }
    EXPECT_GE(shortestSalt, 8);
    EXPECT_LE(longestSalt, 16);
    EXPECT_LT(shortestSalt, longestSalt);   // the length is random too
    EXPECT_TRUE(xml_encryptDocumentWithPasswordAsync(QStringLiteral("not XML"), QStringLiteral("pw")).result().isEmpty());
    QBuffer refused;
    refused.open(QIODevice::WriteOnly);
    EXPECT_FALSE(xml_encryptDocumentUTF8WithPassword("not XML", QStringLiteral("pw"), refused));
    EXPECT_TRUE(refused.data().isEmpty());
    // Found malformed only after megabytes have been sealed and written.
    EXPECT_FALSE(xml_encryptDocumentUTF8WithPassword("<a>" + QByteArray(3 << 20, 'x') + "</b>", QStringLiteral("pw"), refused));
    // A device that takes nothing fails the write.
    QBuffer readOnly;
    readOnly.open(QIODevice::ReadOnly);
    EXPECT_FALSE(xml_encryptDocumentUTF8WithPassword("<a/>", QStringLiteral("pw"), readOnly));
    EXPECT_FALSE(xml_encryptDocumentUTF8AuthenticatedWithPassword("<a/>", QStringLiteral("pw"), readOnly, 1));
}

TEST(EncryptedDocument, ClassicEnvelopeHoldsOnlyAWellFormedDocument)
{
    // The classic envelope has nothing else to tell its own text from a
    // changed one, so its reader opens it only to a well-formed document,
    // and its writers refuse anything else rather than seal it for good.
    // The authenticated envelope's tag vouches for any text.
    const QString texts[] = {
        QString(), QStringLiteral("0123456789abcdef"), QStringLiteral("<a>1</a><b/>"), QStringLiteral("<a>&</a>"),
        QStringLiteral("<a b='1' b='2'/>"), QStringLiteral("<a>\u0001</a>"), QStringLiteral("<a></b>"),
        QStringLiteral("<a>&bogus;</a>"), QStringLiteral("<a>]]></a>"),
    };
    const QString password = QStringLiteral("pw");
    for (const QString& text : texts) {
        const QByteArray utf8 = text.toUtf8();
        EXPECT_FALSE(xml_isWellFormedDocumentUTF8(utf8)) << text.toStdString();
        EXPECT_TRUE(xml_encryptDocumentWithPassword(text, password).isEmpty()) << text.toStdString();
        EXPECT_TRUE(xml_encryptDocumentUTF8WithPassword(utf8, password).isEmpty());
        EXPECT_TRUE(xml_encryptDocumentWithKey(text, kPwKey.bytes(), kSalt, kIV).isEmpty());
        // An envelope made some other way around such a text does not open.
        const QString sealed = kHead + QString::fromLatin1(kSalt.toBase64()) + kMiddle + QString::fromLatin1(kIV.toBase64())
            + QString::fromLatin1(AES128EncryptWithDerivedKey(utf8, kPwKey.bytes(), kIV)->toBase64()) + kTail;
        EXPECT_EQ(xml_decryptDocumentWithPassword(sealed, password).error, WQEnvelopeError::WrongPasswordOrDamaged);
        EXPECT_TRUE(opensAs(xml_encryptDocumentAuthenticatedWithPassword(text, password, 1), password, text));
    }
    EXPECT_TRUE(xml_isWellFormedDocumentUTF8("<?xml version='1.0'?><a b='1'>\xc3\xa9</a>"));
    // Valid UTF-8 only, wherever a byte above 127 stands.
    // Sealed some other way, such a text opens neither as bytes nor as text
    // (whose conversion is its UTF-8 check).
    for (const char* bad : {"<a>\xff</a>", "<a>\xc0\x80</a>", "<a>\xed\xa0\x80</a>", "<a b='\xe2\x82'/>", "<a><!-- \xff --></a>",
                            "<a>\xf4\x90\x80\x80</a>", "<a>\xe2\x82</a>", "<a><![CDATA[\x01]]></a>", "<a><![CDATA[x</a>",
                            "<a><![CDATA[x"}) {
        EXPECT_FALSE(xml_isWellFormedDocumentUTF8(bad)) << bad;
        const QString sealed = kHead + QString::fromLatin1(kSalt.toBase64()) + kMiddle + QString::fromLatin1(kIV.toBase64())
            + QString::fromLatin1(AES128EncryptWithDerivedKey(bad, kPwKey.bytes(), kIV)->toBase64()) + kTail;
        EXPECT_EQ(xml_decryptDocumentWithPassword(sealed, password).error, WQEnvelopeError::WrongPasswordOrDamaged) << bad;
        EXPECT_EQ(xml_decryptDocumentUTF8WithPassword(sealed.toUtf8(), password).error, WQEnvelopeError::WrongPasswordOrDamaged);
    }
    EXPECT_TRUE(xml_isWellFormedDocumentUTF8("<\xc3\xa9 \xc3\xa9='\xe2\x82\xac'>\xf0\x9f\x98\x80<!--\xc3\xa9--></\xc3\xa9>"));
}

TEST(EncryptedDocument, OneWalkSealingWritesWhatTwoWalksDo)
{
    // Where the processor has AES instructions the classic writers check and
    // encrypt in one walk, in memory and to a device; elsewhere, one after
    // the other. Both ways seal and refuse alike, over many slices too.
    QString rows = QStringLiteral("<rows>");
    while (rows.size() < 200000)
        rows += QStringLiteral("<r a='&amp;'>%1</r>").arg(rows.size());
    const QString documents[] = {QStringLiteral("<a>x</a>"), rows + QStringLiteral("</rows>"), rows + QStringLiteral("</r>")};
    for (const QString& document : documents) {
        QString inMemory[2];
        bool streamed[2] = {};
        for (const bool oneWalk : {false, true}) {
            if (!_wq_setSealChecked(oneWalk))
                GTEST_SKIP() << "no AES instructions here: there is one way only";
            inMemory[oneWalk] = xml_encryptDocumentWithKey(document, kPwKey.bytes(), kSalt, kIV);
            QBuffer device;
            device.open(QIODevice::WriteOnly);
            streamed[oneWalk] = xml_encryptDocumentUTF8WithPassword(document.toUtf8(), QStringLiteral("pw"), device)
                && opensAs(QString::fromUtf8(device.data()), QStringLiteral("pw"), document);
        }
        EXPECT_EQ(inMemory[0], inMemory[1]);
        EXPECT_EQ(streamed[0], streamed[1]);
        EXPECT_EQ(streamed[1], xml_isWellFormedDocumentUTF8(document.toUtf8()));
    }
}

TEST(EncryptedDocument, ReaderNamesWhatIsWrong)
{
    using E = WQEnvelopeError;
    const QString good = keyedEnvelope();
    const auto errorOf = [](const QString& envelope, const QString& password = QStringLiteral("pw")) {
        return xml_decryptDocumentWithPassword(envelope, password).error;
    };
    EXPECT_EQ(errorOf(QStringLiteral("plain text, not XML")), E::NotAnEnvelope);
    EXPECT_EQ(errorOf(QStringLiteral("<EncryptedData/>")), E::NotAnEnvelope);   // no namespace
    EXPECT_EQ(errorOf(good, QStringLiteral("not the password")), E::WrongPasswordOrDamaged);

    // One change to the good envelope. (Other documents, lengths, counts,
    // truncations: the hostile corpus.)
    const struct { const char* from; const char* to; E error; } changes[] = {
        {"aes128-cbc", "aes256-cbc", E::UnsupportedAlgorithm}, {"#pbkdf2", "#scrypt", E::UnsupportedAlgorithm},
        {"hmac-sha1", "hmac-md5", E::UnsupportedAlgorithm}, {"<IterationCount>1000", "<IterationCount>0", E::DamagedValue},
        {"<IterationCount>1000", "<IterationCount>many", E::DamagedValue},
        {"<IterationCount>1000", "<IterationCount>99999999999999999999", E::DamagedValue},
        {"<ds:KeyInfo", "<ds:KeyInfo xmlns:q='&#0;'", E::DamagedValue},
        {"c2FsdHNhbHQ=", "c2Fs\n dHNhbHR=", E::DamagedValue},
        {"c2FsdHNhbHQ=", "c2FsdHNhbHR=", E::DamagedValue},   // non-canonical last group
        {"cizUZ3fgASBd2ZEqwcEMdA==", "cizUZ3fgASBd2ZEqwcEMdB==", E::DamagedValue},
        {"SVZJVklWSVZJVklWSVZJVg==", "SVZJVklWSVZJVklWSVZJVg", E::DamagedValue},
        {"SVZJVklWSVZJVklWSVZJVg==", "SVZJVklWSVZJVklWSVZJ!g==", E::DamagedValue},
        {"SVZJVklWSVZJVklWSVZJVg==", "SVZJVklW!VZJVklWSVZJVg==", E::DamagedValue},
        {"SVZJVklWSVZJVklWSVZJVg==", "SVZJVklWSVZJVklWSVZJVkI=", E::DamagedValue},
        {"cizUZ3fgASBd2ZEqwcEMdA==", "", E::DamagedValue}, {"cizUZ3fgASBd2ZEqwcEMdA==", "ciz\n!", E::DamagedValue},
        {"cizUZ3fgASBd2ZEqwcEMdA==", "cizUZ3fgASBd2ZEq", E::DamagedValue},
        {"<ds:KeyInfo", "<q:KeyInfo", E::DamagedValue},   // an undeclared prefix
        // The cipher refuses a changed last block as it refuses a wrong password.
        {"cizUZ3fgASBd2ZEqwcEMdA==", "cizUZ3fgASBd2ZEqwcEMeA==", E::WrongPasswordOrDamaged},
        // The same salt spelled out, and an empty one: both sound, neither the key's.
        {"c2FsdHNhbHQ=", "c2Fs\n dHNhbHQ=", E::WrongPasswordOrDamaged}, {"c2FsdHNhbHQ=", " \n ", E::WrongPasswordOrDamaged},
    };
    const qsizetype valueStart = good.indexOf(u"<CipherValue>"), valueEnd = good.indexOf(u"</CipherValue>");
    for (const auto& [from, to, error] : changes) {
        QString changed = good;
        const qsizetype at = changed.indexOf(QLatin1StringView(from));
        ASSERT_GE(at, 0) << from;
        changed.replace(at, qsizetype(strlen(from)), QLatin1StringView(to));
        EXPECT_EQ(errorOf(changed), error) << from << " to " << to;
        // Inspection stops short of the cipher; of the structure, short of the value.
        const E sound = error == E::WrongPasswordOrDamaged ? E::None : error;
        EXPECT_EQ(xml_inspectEnvelope(changed).error, sound) << from << " to " << to;
        EXPECT_EQ(xml_inspectEnvelopeUTF8(changed.toUtf8(), {}, WQEnvelopeDetail::Structure).error,
                  at > valueStart && at < valueEnd ? E::None : sound)
            << from << " to " << to;
    }

    // The size limit is the application's to raise. (Floods, entities and
    // absurd counts are the hostile corpus's.)
    WQEnvelopeLimits small;
    small.maximumSize = good.size() - 1;
    EXPECT_EQ(xml_decryptDocumentWithPassword(good, QStringLiteral("pw"), small).error, E::TooLarge);
    EXPECT_EQ(xml_inspectEnvelope(good, small).error, E::TooLarge);
    EXPECT_EQ(xml_decryptDocumentUTF8WithPassword(good.toUtf8(), QStringLiteral("pw"), small).error, E::TooLarge);
    small.maximumSize = good.size();
    EXPECT_NE(xml_decryptDocumentWithPassword(good, QStringLiteral("pw"), small).error, E::TooLarge);
    // The limit counts UTF-8 bytes, not characters.
    const QString accented = QString(good).replace(QStringLiteral("<CipherData>"), QStringLiteral("<!-- \u00e9 --><CipherData>"));
    small.maximumSize = accented.size();
    EXPECT_EQ(xml_decryptDocumentWithPassword(accented, QStringLiteral("pw"), small).error, E::TooLarge);
    QStringList descriptions;
    for (const E error : {E::NotAnEnvelope, E::UnsupportedAlgorithm, E::DamagedValue, E::WrongPasswordOrDamaged, E::TooLarge})
        descriptions << WQEnvelopeErrorDescription(error);
    descriptions.removeDuplicates();
    EXPECT_EQ(descriptions.size(), 5);
    EXPECT_TRUE(WQEnvelopeErrorDescription(E::None).isEmpty());
}

TEST(EncryptedDocument, AuthenticatedEnvelopeNoticesEveryChange)
{
    const QString document = QStringLiteral("<ledger><row>42.00</row></ledger>");
    const QString password = QStringLiteral("s\u00e9same");
    const QString envelope = xml_encryptDocumentAuthenticatedWithPassword(document, password, 50);
    const WQEnvelopeInfo info = xml_inspectEnvelope(envelope);
    ASSERT_EQ(info.error, WQEnvelopeError::None);
    EXPECT_TRUE(info.authenticated);
    EXPECT_EQ(info.encryptionAlgorithm, u"http://www.w3.org/2009/xmlenc11#aes128-gcm");
    EXPECT_EQ(info.pseudoRandomFunction, u"http://www.w3.org/2001/04/xmldsig-more#hmac-sha256");
    EXPECT_EQ(info.iterationCount, 50u);
    EXPECT_EQ(info.salt.size(), 16);
    EXPECT_EQ(info.iv.size(), 12);
    EXPECT_EQ(info.cipherText.size(), document.size() + 16);

    const qsizetype valueStart = envelope.indexOf(u"<CipherValue>") + 13;
    const qsizetype valueEnd = envelope.indexOf(u"</CipherValue>");
    const qsizetype saltStart = envelope.indexOf(u"<Specified>") + 11;
    const qsizetype saltEnd = envelope.indexOf(u"</Specified>");
    int refused = 0;
    for (qsizetype i = 0; i < envelope.size(); ++i) {
        QString changed = envelope;
        const QChar c = changed[i];
        changed[i] = c == u'A' ? u'B' : (c.isLetterOrNumber() ? u'A' : u'x');
        const WQDecryptedDocument opened = xml_decryptDocumentWithPassword(changed, password);
        refused += opened.ok() ? 0 : 1;
        EXPECT_TRUE(!opened.ok() || opened.document == document) << "never a different document: " << i;
        if ((i >= valueStart && i < valueEnd) || (i >= saltStart && i < saltEnd)) {
            EXPECT_TRUE(opened.error == WQEnvelopeError::WrongPasswordOrDamaged || opened.error == WQEnvelopeError::DamagedValue)
                << i << " " << int(opened.error);
        }
    }
    EXPECT_GT(refused, (valueEnd - valueStart) + (saltEnd - saltStart));
    EXPECT_EQ(xml_decryptDocumentWithPassword(envelope, QStringLiteral("sesame")).error, WQEnvelopeError::WrongPasswordOrDamaged);

    const QString byDefault = xml_encryptDocumentAuthenticatedWithPassword(QStringLiteral("<a/>"), QStringLiteral("pw"));
    EXPECT_EQ(xml_inspectEnvelope(byDefault).iterationCount, kWQAuthenticatedIterationCount);
    EXPECT_TRUE(opensAs(byDefault, QStringLiteral("pw"), QStringLiteral("<a/>")));
}

TEST(EncryptedDocument, ReaderTakesAnyXMLSpellingOfTheValue)
{
    // Large enough that the value runs over many of the reader's slices.
    QString document = QStringLiteral("<rows>");
    for (int i = 0; document.size() < 300000; ++i)
        document += QStringLiteral("<r>%1</r>").arg(i);
    document += QStringLiteral("</rows>");
    const QString password = QStringLiteral("pw");
    const QString envelope = xml_encryptDocumentWithPassword(document, password);
    const qsizetype value = envelope.indexOf(u"<CipherValue>") + 13;
    const qsizetype valueEnd = envelope.indexOf(u"</CipherValue>");
    const auto opens = [&](const QString& text) { return opensAs(text, password, document); };
    EXPECT_TRUE(opens(envelope));
    EXPECT_TRUE(opens(xml_encryptDocumentAuthenticatedWithPassword(document, password, 1)));

    // Line breaks and indentation, as an editor might leave them, between
    // the elements and inside the value.
    QString pretty = envelope;
    pretty.insert(value + 24, QStringLiteral("\n   ")).insert(value + 10, QStringLiteral("\r\n\t"));
    EXPECT_TRUE(opens(pretty.replace(QStringLiteral("><"), QStringLiteral(">\n  <"))));
    // A byte order mark, white space around the value, line ends in a count,
    // references and white space in a namespace's name.
    QString spelled = QChar(0xFEFF) + envelope;
    spelled.insert(valueEnd + 1, QStringLiteral(" \n")).insert(value + 1, QStringLiteral("\n  "));
    spelled.replace(QStringLiteral("<IterationCount>"), QStringLiteral("<IterationCount>\r\n\r"));
    EXPECT_TRUE(opens(spelled.replace(QStringLiteral("xmlns:ds="),
                                      QStringLiteral("xmlns:n='a\tb\r\nc\rd&#xE9;&#x65E5;&#x1F600;&lt;&gt;&amp;&quot;&apos;' xmlns:ds="))));

    // A character reference far into the value.
    QString referenced = envelope;
    const qsizetype at = value + 200000;
    EXPECT_TRUE(opens(referenced.replace(at, 1, QStringLiteral("&#%1;").arg(int(envelope[at].unicode())))));

    // Line breaks written as CR LF, which XML reads as LF.
    QString crlf = envelope;
    for (qsizetype i = valueEnd - 76; i > value + 24; i -= 76)
        crlf.insert(i, QStringLiteral("\r\n"));
    EXPECT_TRUE(opens(crlf));

    // The whole value in a CDATA section. (Comments in it are the hostile corpus's.)
    QString cdata = envelope;
    EXPECT_TRUE(opens(cdata.insert(valueEnd, QStringLiteral("]]>")).insert(value, QStringLiteral("<![CDATA["))));

    // Markup inside the value is damage; so is a value cut off by the end of the file.
    QString marked = envelope;
    marked.insert(value + 150000, QStringLiteral("<b/>"));
    EXPECT_EQ(xml_decryptDocumentWithPassword(marked, password).error, WQEnvelopeError::DamagedValue);
    EXPECT_EQ(xml_decryptDocumentUTF8WithPassword(marked.toUtf8(), password).error, WQEnvelopeError::DamagedValue);
    // The structure alone is sound, and says what the value will be read with.
    const WQEnvelopeInfo structure = xml_inspectEnvelopeUTF8(marked.toUtf8(), {}, WQEnvelopeDetail::Structure);
    EXPECT_EQ(structure.error, WQEnvelopeError::None);
    EXPECT_EQ(structure.salt, xml_inspectEnvelope(envelope).salt);
    EXPECT_TRUE(structure.cipherText.isEmpty());
    EXPECT_EQ(xml_decryptDocumentWithPassword(envelope.left(value + 100003), password).error, WQEnvelopeError::DamagedValue);
}

TEST(EncryptedDocument, PaddingOracleReplayGetsOneAnswer)
{
    // The attack: change the IV byte by byte and ask whether decryption
    // failed. Each of the 255 changes of the byte that decides the padding
    // (and of the first byte, which decides the document) must give the
    // same answer as a wrong password, with no text coming out.
    const QString password = QStringLiteral("pw");
    const QString envelope = xml_encryptDocumentWithKey(QStringLiteral("<a>x</a>"), kPwKey.bytes(), kSalt, kIV);
    const QString ivText = QString::fromLatin1(kIV.toBase64());
    ASSERT_TRUE(opensAs(envelope, password, QStringLiteral("<a>x</a>")));
    const WQEnvelopeError wrongPassword = xml_decryptDocumentWithPassword(envelope, QStringLiteral("guess")).error;
    for (const int at : {15, 0}) {
        for (int change = 1; change < 256; ++change) {
            QByteArray changed = kIV;
            changed[at] = char(changed[at] ^ change);
            const WQDecryptedDocument opened = xml_decryptDocumentWithPassword(
                QString(envelope).replace(ivText, QString::fromLatin1(changed.toBase64())), password);
            ASSERT_EQ(opened.error, wrongPassword) << at << " " << change;
            ASSERT_TRUE(opened.document.isEmpty());
        }
    }
}

TEST(EncryptedDocument, TextBecomesTheSameUTF8AsQtMakesIt)
{
    // Random runs of ASCII, two- and three-byte characters, pairs and lone
    // surrogates: the envelopes' own conversion must agree byte for byte.
    std::mt19937 random(17);
    const char16_t pieces[] = {u'a', u'<', 0x00E9, 0x07FF, 0x0800, 0x65E5, 0xFFFD, 0xD83D, 0xDE00, 0xDBFF, 0xDC00};
    for (int round = 0; round < 300; ++round) {
        QString text;
        const int length = int(random() % 80);
        for (int i = 0; i < length; ++i) {
            const bool run = random() % 3 == 0;
            text += run ? QString(int(random() % 40), QChar(u'x')) : QString(QChar(pieces[random() % std::size(pieces)]));
        }
        ASSERT_EQ(_wq_toUTF8(text), text.toUtf8()) << round;
    }
}

TEST(EncryptedDocument, LargeOutputsStartOnAHugePage)
{
    // Sizes below the threshold, past it, and ending on a boundary.
    for (const qsizetype size : {qsizetype(1000), qsizetype(3) << 20, (qsizetype(4) << 20) - 1, qsizetype(4) << 20}) {
        QByteArray bytes = _wq_largeBuffer<QByteArray>(size);
        QString text = _wq_largeBuffer<QString>(size, false);
        ASSERT_EQ(bytes.size(), size);
        ASSERT_EQ(text.size(), size);
        EXPECT_EQ(bytes.constData()[size], '\0');
        EXPECT_EQ(text.constData()[size], u'\0');
        std::fill(bytes.begin(), bytes.end(), 'x');
        std::fill(text.begin(), text.end(), u'x');
        bytes += 'y';
        text += u'y';
        EXPECT_TRUE(bytes.endsWith("xxy") && text.endsWith(u"xxy"));
        if (size >= kLargeBufferBytes) {
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes.constData()) % kHugePage, 0u) << size;
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(text.constData()) % kHugePage, 0u) << size;
        }
    }
    // Text of megabytes becomes the same UTF-8 through such a buffer.
    const QString big = QStringLiteral("Gr\u00fc\u00dfe \u65e5\u672c ").repeated(200000);
    EXPECT_TRUE(_wq_toUTF8(big) == big.toUtf8());
}
