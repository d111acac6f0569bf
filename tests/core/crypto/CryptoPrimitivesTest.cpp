#include <WQGeneral/crypto/WQCrypto.h>

#include <gtest/gtest.h>

#include <set>

using namespace wq;

namespace {

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

} // namespace

TEST(CryptoPrimitives, SHA1PublishedDigests)
{
    EXPECT_EQ(SHA1Hash("abc"), hex("a9993e364706816aba3e25717850c26c9cd0d89d"));
    EXPECT_EQ(SHA1Hash(QByteArray()), hex("da39a3ee5e6b4b0d3255bfef95601890afd80709"));
    EXPECT_EQ(SHA1Hash("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              hex("84983e441c3bd26ebaae4aa1f95129e5e54670f1"));
}

TEST(CryptoPrimitives, HMACKeyIsTheReceiver)
{
    struct Case {
        QByteArray key;
        QByteArray message;
        const char* mac;
    };
    QByteArray key4;
    for (char b = 1; b <= 25; ++b)
        key4.append(b);
    const Case cases[] = {
        {QByteArray(20, '\x0b'), "Hi There", "b617318655057264e28bc0b6fb378c8ef146be00"},
        {"Jefe", "what do ya want for nothing?", "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"},
        {QByteArray(20, '\xaa'), QByteArray(50, '\xdd'), "125d7342b9ac11cd91a39af48aa17b4f63f175d3"},
        {key4, QByteArray(50, '\xcd'), "4c9007f4026250c6bc8414f9bf50c86c2d7235da"},
        {QByteArray(20, '\x0c'), "Test With Truncation", "4c1a03424b55e07fe7f27be1d58bb9324a9a5a04"},
        {QByteArray(80, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First",
         "aa4ae5e15272d00e95705637ce8a3b55ed402112"},
        {QByteArray(80, '\xaa'), "Test Using Larger Than Block-Size Key and Larger Than One Block-Size Data",
         "e8e99d0f45237d786d6bbaa7965c7808bbff1a91"},
    };
    for (const Case& c : cases) {
        // Called on the key, with the message as the argument named key.
        EXPECT_EQ(HMAC_SHA1WithKey(c.key, c.message), hex(c.mac)) << c.mac;
        EXPECT_NE(HMAC_SHA1WithKey(c.message, c.key), hex(c.mac)) << c.mac;
    }
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

    // Empty plain text is one block; lengths round up to the next block.
    for (const auto& [length, size] : {std::pair{0, 16}, std::pair{15, 16}, std::pair{17, 32}})
        EXPECT_EQ(AES128EncryptWithDerivedKey(QByteArray(length, 'x'), key, iv).value_or("").size(), size) << length;

    // A damaged last block shows as a padding error.
    QByteArray damaged = cipher + paddingBlock;
    damaged[damaged.size() - 1] = char(damaged.back() ^ 0x01);
    EXPECT_FALSE(AES128DecryptWithDerivedKey(damaged, key, iv).has_value());
    EXPECT_FALSE(AES128DecryptWithDerivedKey(cipher.first(20), key, iv).has_value());
}

TEST(CryptoPrimitives, PasswordKeyAndItsByteRule)
{
    // PBKDF2-HMAC-SHA1, 1000 iterations, 16 bytes, computed independently.
    // Non-ASCII: only as many UTF-8 bytes as the password has UTF-16 units.
    const char32_t smiley = 0x1F600;
    const std::tuple<QString, QByteArray, const char*> cases[] = {
        {QStringLiteral("password"), "salt", "6e88be8bad7eae9d9e10aa061224034f"},
        {QStringLiteral("passwordPASSWORDpassword"), "saltSALTsaltSALTsaltSALTsaltSALTsalt", "0a4dfb12971f438977d318527bf4961f"},
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

TEST(CryptoPrimitives, RandomData)
{
    EXPECT_TRUE(randomDataOfLength(0).isEmpty());
    std::set<QByteArray> seen;
    for (int i = 0; i < 64; ++i)
        seen.insert(randomDataOfLength(16));
    EXPECT_EQ(seen.size(), 64u);   // 128 random bits do not repeat
    // Every byte value turns up in a large enough sample.
    std::set<char> values;
    for (int i = 0; i < 40; ++i) {
        const QByteArray sample = randomDataOfLength(255);
        ASSERT_EQ(sample.size(), 255);
        values.insert(sample.begin(), sample.end());
    }
    EXPECT_EQ(values.size(), 256u);
}
