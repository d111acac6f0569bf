// Envelopes against the openssl command-line tool, an implementation that
// shares nothing with ours but the library underneath.

#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include "ToolRunner.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QStandardPaths>

#include <optional>

using namespace wq;

namespace {

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
