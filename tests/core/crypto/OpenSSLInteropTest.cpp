// The primitives against published vectors, and envelopes against the
// openssl command-line tool, an implementation that shares nothing with ours
// but the library underneath.

#include <WQGeneral/crypto/WQCrypto.h>
#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include "ToolRunner.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QStandardPaths>

#include <optional>

using namespace wq;

namespace {

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

// Runs "openssl <command>" (arguments separated by single spaces) on input.
std::optional<QByteArray> openssl(const QString& command, const QByteArray& input = QByteArray())
{
    const test::ToolRun run = test::runProgram(QStandardPaths::findExecutable(QStringLiteral("openssl")), command.split(u' '),
                                               {.input = input, .timeoutMs = 60000});
    if (run.exitCode != 0) {
        ADD_FAILURE() << "openssl " << command.toStdString() << ": " << run.err.toStdString();
        return std::nullopt;
    }
    return run.out;
}

// PBKDF2-HMAC-SHA1, 1000 iterations, 16 bytes, as hex.
QString opensslKey(const QByteArray& passwordBytes, const QByteArray& salt)
{
    const auto out = openssl(QStringLiteral("kdf -keylen 16 -kdfopt digest:SHA1 -kdfopt hexpass:%1 -kdfopt hexsalt:%2 "
                                            "-kdfopt iter:1000 PBKDF2")
                                 .arg(QString::fromLatin1(passwordBytes.toHex()), QString::fromLatin1(salt.toHex())));
    return out ? QString::fromLatin1(*out).remove(u':').trimmed().toLower() : QString();
}

// Plain AES-128-CBC with PKCS#7 padding, the tool's "enc" with an explicit key.
std::optional<QByteArray> opensslCipher(const char* direction, const QString& key, const QByteArray& iv, const QByteArray& input)
{
    return openssl(QStringLiteral("enc %1 -aes-128-cbc -K %2 -iv %3")
                       .arg(QLatin1StringView(direction), key, QString::fromLatin1(iv.toHex())), input);
}

QByteArray fromBase64(const QString& text)
{
    return QByteArray::fromBase64(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
}

} // namespace

class OpenSSLInterop : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(QStringLiteral("openssl")).isEmpty())
            GTEST_SKIP() << "the openssl tool is not installed";
    }
};

TEST_F(OpenSSLInterop, ToolDecryptsOurEnvelope)
{
    const QString document = QStringLiteral("<ledger><payee>Caf\u00e9 \u65e5\u672c</payee><amount>-12.50</amount></ledger>");
    // The second password is not ASCII: the tool gets the bytes our key rule picks.
    const std::pair<QString, QByteArray> passwords[] = {
        {QStringLiteral("Tr0ub4dor&3"), QByteArray("Tr0ub4dor&3")},
        {QStringLiteral("p\u00e4ssw\u00f6rd"), QByteArray("p\xc3\xa4ssw\xc3\xb6")},
    };
    const QRegularExpression pattern(QStringLiteral(
        "<Specified>([A-Za-z0-9+/=]+)</Specified>.*<CipherValue>([A-Za-z0-9+/]{22}==)([A-Za-z0-9+/=]+)</CipherValue>"));
    for (const auto& [password, bytes] : passwords) {
        const QString envelope = xml_encryptDocumentWithPassword(document, password);
        const QRegularExpressionMatch match = pattern.match(envelope);
        ASSERT_TRUE(match.hasMatch()) << envelope.toStdString();
        const QByteArray salt = fromBase64(match.captured(1));
        const QByteArray iv = fromBase64(match.captured(2));
        const QByteArray cipherText = fromBase64(match.captured(3));
        const QString key = opensslKey(bytes, salt);
        ASSERT_EQ(key.size(), 32);
        EXPECT_EQ(QString::fromUtf8(opensslCipher("-d", key, iv, cipherText).value_or("<failed>")), document);
    }
}

TEST_F(OpenSSLInterop, WeReadAnEnvelopeTheToolBuilt)
{
    const auto salt = openssl(QStringLiteral("rand 13"));
    const auto iv = openssl(QStringLiteral("rand 16"));
    ASSERT_TRUE(salt && iv);
    ASSERT_EQ(iv->size(), 16);
    const QString document = QStringLiteral("<doc>\u00c5ngstr\u00f6m &amp; \u00e9t\u00e9</doc>\n");
    const QByteArray password = "correct horse battery staple";
    const QString key = opensslKey(password, *salt);
    ASSERT_EQ(key.size(), 32);
    const auto cipherText = opensslCipher("-e", key, *iv, document.toUtf8());
    ASSERT_TRUE(cipherText.has_value());
    const auto base64 = [](const QByteArray& bytes) { return QString::fromLatin1(bytes.toBase64()); };
    const QString envelope =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<EncryptedData xmlns=\"http://www.w3.org/2001/04/xmlenc#\" MimeType=\"text/xml\">\n"
                       "  <EncryptionMethod Algorithm=\"http://www.w3.org/2001/04/xmlenc#aes128-cbc\"/>\n"
                       "  <ds:KeyInfo xmlns:ds=\"http://www.w3.org/2000/09/xmldsig#\">\n"
                       "    <xenc11:DerivedKey xmlns:xenc11=\"http://www.w3.org/2009/xmlenc11#\""
                       " xmlns:pkcs-5=\"http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#\">\n"
                       "      <xenc11:KeyDerivationMethod Algorithm=\"http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#pbkdf2\">\n"
                       "        <pkcs-5:PBKDF2-params>\n"
                       "          <Salt><Specified>%1</Specified></Salt>\n"
                       "          <IterationCount>1000</IterationCount>\n"
                       "          <KeyLength>16</KeyLength>\n"
                       "          <PRF Algorithm=\"http://www.w3.org/2000/09/xmldsig#hmac-sha1\"/>\n"
                       "        </pkcs-5:PBKDF2-params>\n"
                       "      </xenc11:KeyDerivationMethod>\n"
                       "    </xenc11:DerivedKey>\n"
                       "  </ds:KeyInfo>\n"
                       "  <CipherData><CipherValue>%2%3</CipherValue></CipherData>\n"
                       "</EncryptedData>\n")
            .arg(base64(*salt), base64(*iv), base64(*cipherText));
    const WQDecryptedDocument opened = xml_decryptDocumentWithPassword(envelope, QString::fromLatin1(password));
    ASSERT_TRUE(opened.ok()) << int(opened.error);
    EXPECT_EQ(opened.document, document);
    EXPECT_EQ(xml_decryptDocumentWithPassword(envelope, QStringLiteral("wrong")).error, WQEnvelopeError::WrongPasswordOrDamaged);
}

TEST(CryptoPrimitives, SHA1AndHMACWhoseKeyIsTheReceiver)
{
    EXPECT_EQ(SHA1Hash("abc"), hex("a9993e364706816aba3e25717850c26c9cd0d89d"));
    // Called on the key, with the message as the argument named key.
    const QByteArray key = "Jefe", message = "what do ya want for nothing?";
    EXPECT_EQ(HMAC_SHA1WithKey(key, message), hex("effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"));
    EXPECT_EQ(HMAC_SHA1WithKey(QByteArray(), QByteArray()).size(), 20);
}

TEST(CryptoPrimitives, AES128CBCPublishedVectors)
{
    const QByteArray key = hex("2b7e151628aed2a6abf7158809cf4f3c");
    const QByteArray iv = hex("000102030405060708090a0b0c0d0e0f");
    const QByteArray plain = hex("6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
                                 "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710");
    const QByteArray cipher = hex("7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
                                  "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7");
    // A whole block of padding follows input that fills its blocks.
    const QByteArray paddingBlock = hex("8cb82807230e1321d3fae00d18cc2012");

    const auto encrypted = AES128EncryptWithDerivedKey(plain, key, iv);
    ASSERT_TRUE(encrypted.has_value());
    EXPECT_EQ(*encrypted, cipher + paddingBlock);
    EXPECT_EQ(AES128DecryptWithDerivedKey(cipher + paddingBlock, key, iv), plain);

    // Only the first 16 bytes of key and IV are read; shorter ones fail.
    EXPECT_EQ(AES128EncryptWithDerivedKey(plain, key + "extra", iv + "extra"), encrypted);
    EXPECT_FALSE(AES128EncryptWithDerivedKey(plain, key.first(15), iv).has_value());
    EXPECT_FALSE(AES128EncryptWithDerivedKey(plain, key, iv.first(8)).has_value());

    // Padding fills up to the next whole block, and every valid length of it
    // comes off again.
    for (int n = 0; n <= 32; ++n) {
        const QByteArray sealed = AES128EncryptWithDerivedKey(QByteArray(n, 'p'), key, iv).value_or("");
        EXPECT_EQ(sealed.size(), (n / 16 + 1) * 16) << n;
        EXPECT_EQ(AES128DecryptWithDerivedKey(sealed, key, iv), QByteArray(n, 'p')) << n;
    }
    // Blocks must be whole, and paddings that are not are refused: 0, 17,
    // and 3 bytes of which one differs.
    EXPECT_FALSE(AES128DecryptWithDerivedKey(encrypted->left(15), key, iv).has_value());
    EXPECT_FALSE(AES128DecryptWithDerivedKey(QByteArray(), key, iv).has_value());
    const QByteArray last[] = {QByteArray(15, 'p') + '\x00', QByteArray(15, 'p') + '\x11',
                               QByteArray(13, 'p') + "\x02\x03\x03", QByteArray(16, '\x10').replace(0, 1, "\x0f")};
    for (const QByteArray& plain : last) {
        const QByteArray sealed = AES128EncryptWithDerivedKey(plain, key, iv)->left(16);   // drop the added block
        EXPECT_FALSE(AES128DecryptWithDerivedKey(sealed, key, iv).has_value()) << plain.toHex().toStdString();
    }
}

TEST(CryptoPrimitives, PasswordKeyAndItsByteRule)
{
    // PBKDF2-HMAC-SHA1, 1000 iterations, 16 bytes, computed independently.
    // Non-ASCII: only as many UTF-8 bytes as the password has UTF-16 units.
    const char32_t smiley = 0x1F600;
    const std::tuple<QString, QByteArray, const char*> cases[] = {
        {QStringLiteral("password"), "salt", "6e88be8bad7eae9d9e10aa061224034f"},
        {QString::fromLatin1("pass\0word", 9), QByteArray("sa\0lt", 5), "d38b20dc311abf08ea78d470d530e942"},
        {QString(), "salt", "ea0add357d61a71039c093d784150987"},
        {QStringLiteral("\u00e9"), "NaCl-salt", "310bca6e995964b94f844dc139eb4525"},         // C3
        {QStringLiteral("\u65e5\u672c"), "NaCl-salt", "658233c26c8457727fae998dcfda1c57"},   // E6 97
        {QString::fromUcs4(&smiley, 1), "NaCl-salt", "9446757ee07e43ca75d68d49ae679c79"},     // F0 9F
    };
    for (const auto& [password, salt, derived] : cases) {
        const WQAESKey key = pkcs_pbkdf2_derive_aes128_key_with_salt(password, salt);
        EXPECT_TRUE(key.isValid());
        EXPECT_EQ(key, WQAESKey(hex(derived))) << derived;
    }
    EXPECT_FALSE(WQAESKey(QByteArray(15, 'k')).isValid());

    const QByteArray salt = "NaCl-salt";
    const QByteArray iv(16, '\x42');
    const QByteArray plain = "some document text";
    const auto cipher = AES128EncryptWithPassword(plain, QStringLiteral("p\u00e4ss"), salt, iv);
    ASSERT_TRUE(cipher.has_value());
    EXPECT_EQ(AES128DecryptWithPassword(*cipher, QStringLiteral("p\u00e4ss"), salt, iv), plain);
    EXPECT_EQ(AES128EncryptWithDerivedKey(plain, pkcs_pbkdf2_derive_aes128_key_with_salt(QStringLiteral("p\u00e4ss"), salt).bytes(), iv),
              cipher);
}
