// The wq tool against careless and hostile use: plain text left behind,
// passwords out of bounds, names and numbers out of range, large inputs.
// (Tampered envelopes are the hostile corpus's.)

#include "ToolRunner.h"
#include "WQTestSupport.h"

#include <WQGeneral/encoding/WQBase64.h>

#include <QFileInfo>
#include <QRandomGenerator>

using namespace wq::test;

using HostileTool = ToolScratch;

TEST_F(HostileTool, PlainTextIsWrittenForItsOwnerOnly)
{
    const mode_t saved = ::umask(022);
    written("a.xml", "<a>secret</a>");
    const QString password = written("password", "pw");
    for (const bool authenticated : {false, true}) {
        QStringList encrypt{"encrypt", "--classic", "--password-file", password, path("a.xml"), path("a.enc")};
        if (authenticated)
            encrypt = QStringList{"encrypt", "--iterations", "10", "--insecure"} + encrypt.mid(2);
        ASSERT_EQ(runMeasured(encrypt).exitCode, 0);
        written("out.xml", "old");   // an existing file's mode is not kept either
        ::chmod(QFile::encodeName(path("out.xml")).constData(), 0644);
        const ToolRun r = runMeasured({"decrypt", "--password-file", password, path("a.enc"), path("out.xml")});
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_EQ(readBytes(path("out.xml")), "<a>secret</a>");
        EXPECT_EQ(modeOf(path("out.xml")), 0600u);
        EXPECT_EQ(r.err.contains("not protected against tampering"), !authenticated);
    }
    ::umask(saved);
}

TEST_F(HostileTool, PasswordsOutOfBoundsAreRefused)
{
    written("a.xml", "<a/>");
    written("empty", "");
    written("long", QByteArray(4097, 'x'));
    written("longest", QByteArray(4096, 'x') + "\r\n");
    const struct { QStringList source; QString input; const char* message; } cases[] = {
        {{"--password-stdin"}, path("empty"), "the password is empty"},
        {{"--password-file", path("empty")}, "/dev/null", "the password is empty"},
        {{"--password-stdin"}, path("long"), "longer than 4096 bytes"},
        {{"--password-file", "/dev/zero"}, "/dev/null", "longer than 4096 bytes"},
        {{"--password-stdin"}, "/dev/zero", "longer than 4096 bytes"},
    };
    for (const auto& c : cases) {
        const ToolRun r = runMeasured(QStringList{"encrypt"} + c.source + QStringList{path("a.xml"), path("a.enc")}, c.input);
        EXPECT_EQ(r.exitCode, 2) << c.message;
        EXPECT_TRUE(r.err.contains(c.message)) << r.err.toStdString();
        EXPECT_LT(r.peakKiB, 200 * 1024 * kBudgetScale);
        EXPECT_FALSE(QFile::exists(path("a.enc")));
    }
    // 4096 bytes and a line break are just right.
    EXPECT_EQ(runMeasured({"encrypt", "--password-file", path("longest"), path("a.xml"), path("a.enc")}).exitCode, 0);
    EXPECT_EQ(runMeasured({"decrypt", "--password-stdin", path("a.enc"), "-"}, path("longest")).out, "<a/>");
}

TEST_F(HostileTool, NamesAndNumbersOutOfRangeAreRefused)
{
    // (Which application names are refused is the log's own test.)
    const QStringList refused[] = {
        {"log", "--app", "../../x", "write", "hi"}, {"log", "--app", "", "write", "hi"},
        {"money", "format", "1e308"}, {"money", "format", "inf"}, {"money", "format", "-inf"}, {"money", "format", "nan"},
        {"money", "format", "9223372036854775808"},
        {"money", "parse", QStringLiteral("1") + QString(309, u'0')}, {"money", "parse", QString(30, u'9')},
        {"round", "2", "1e308"}, {"round", "2", "inf"}, {"round", "2", "nan"},
        {"round", "7", "-1e10", "--split"}, {"round", "7", "-2147483648", "--split"},
        {"round", "7", "2147483647.5", "--split"},
    };
    for (const QStringList& args : refused) {
        const ToolRun r = runMeasured(args);
        EXPECT_EQ(r.exitCode, 2) << args.join(u' ').toStdString();
        EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
        EXPECT_TRUE(r.err.startsWith("wq: ")) << args.join(u' ').toStdString();
    }
    // The edges that are in range still work.
    const std::pair<QStringList, QByteArray> accepted[] = {
        {{"money", "format", "9.2e18", "--locale", "en_US"}, "$9,200,000,000,000,000,000.00\n"},
        {{"round", "7", "-2147483647.25", "--split"}, "-2147483647.2500000 -2147483647 -2500000\n"},
        {{"round", "7", "2147483647", "--split"}, "2147483647.0000000 2147483647 0\n"},
        {{"round", "2", "1e300"}, QString::number(1e300, 'f', 2).toLatin1() + '\n'},
    };
    for (const auto& [args, out] : accepted) {
        const ToolRun r = runMeasured(args);
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        EXPECT_EQ(r.out, out);
    }
}

TEST_F(HostileTool, Base64StreamsWithTheWholeTextsResult)
{
    // Pieces of the input are read a mebibyte at a time: texts longer than
    // that, with junk, line breaks and padding in awkward places, must give
    // the library's answer for the whole text.
    const QByteArray data = randomBytes(3 * 1024 * 1024 + 7, 20240613);
    const QByteArray encoded = wq::base64EncodedBytes(data);
    QByteArray junky;
    for (qsizetype i = 0; i < encoded.size(); ++i)
        junky += (i % 97 == 0 ? QByteArray(" \n-_") : QByteArray()) + encoded[i];
    const QByteArray texts[] = {
        encoded, junky,
        encoded.left(1024 * 1024 - 1) + "R===" + encoded.mid(1024 * 1024),   // a short group at the "="
        encoded.left(4 * 262145 + 2),                                        // unpadded: the tail is dropped
        "QUJDR===",
    };
    for (const QByteArray& text : texts) {
        written("in.txt", text);
        const ToolRun r = runMeasured({"base64", "decode", path("in.txt")});
        EXPECT_EQ(r.exitCode, 0);
        EXPECT_EQ(r.out, wq::dataWithBase64EncodedString(QByteArrayView(text)).value_or(QByteArray()))
            << text.size();
    }
    written("in.bin", data);
    for (const std::uint32_t length : {0u, 4u, 6u, 76u, 1000001u}) {
        const ToolRun r = runMeasured({"base64", "encode", "--line-length", QString::number(length), path("in.bin")});
        QByteArray expected = wq::base64EncodingWithLineLength(data, length, wq::WQBase64Encoder::Own).toLatin1();
        if (!expected.endsWith('\n'))
            expected += '\n';
        EXPECT_EQ(r.out, expected) << length;
    }
    // Bytes beyond ASCII are refused, even after the "=".
    written("in.txt", "QQ==\xc3\xa9");
    EXPECT_EQ(runMeasured({"base64", "decode", path("in.txt")}).exitCode, 2);
}

TEST_F(HostileTool, PeakMemoryOnLargeInputs)
{
    // 64 MiB through Base64 both ways in fixed-size pieces, from a file
    // and through standard input and output alike.
    QByteArray data(64 * 1024 * 1024, Qt::Uninitialized);
    QRandomGenerator random(7);
    random.fillRange(reinterpret_cast<quint32*>(data.data()), data.size() / 4);
    written("big.bin", data);
    const ToolRun encoded = runMeasured({"base64", "encode", "-", path("big.b64")}, path("big.bin"));
    ASSERT_EQ(encoded.exitCode, 0);
    const ToolRun decoded = runMeasured({"base64", "decode", path("big.b64"), "-"});
    ASSERT_EQ(decoded.exitCode, 0);
    EXPECT_TRUE(decoded.out == data);
    EXPECT_LT(encoded.peakKiB, 64 * 1024 * kBudgetScale);
    EXPECT_LT(decoded.peakKiB, 64 * 1024 * kBudgetScale);
    data.clear();

    // A 10 MiB document: the envelope's work stays within three times its size.
    QByteArray document = "<ledger>";
    for (int i = 0; document.size() < 10 * 1024 * 1024; ++i)
        document += "<row n='" + QByteArray::number(i) + "'>Caf\xc3\xa9 &amp; co</row>\n";
    document += "</ledger>";
    written("doc.xml", document);
    const QString password = written("password", "pw");
    const ToolRun sealed = runMeasured({"encrypt", "--classic", "--password-file", password, path("doc.xml"), path("doc.enc")});
    ASSERT_EQ(sealed.exitCode, 0);
    const ToolRun opened = runMeasured({"decrypt", "--password-file", password, path("doc.enc"), path("back.xml")});
    ASSERT_EQ(opened.exitCode, 0);
    EXPECT_TRUE(readBytes(path("back.xml")) == document);
    const long envelopeKiB = long(QFileInfo(path("doc.enc")).size() / 1024);
    // Measured against the process's own start-up (Qt, ICU data).
    const long baseline = runMeasured({"inspect", "/dev/null"}).peakKiB;
    EXPECT_LT(sealed.peakKiB - baseline, 3 * envelopeKiB * kBudgetScale);
    EXPECT_LT(opened.peakKiB - baseline, 3 * envelopeKiB * kBudgetScale);
    RecordProperty("base64_encode_peak_kib", int(encoded.peakKiB));
    RecordProperty("decrypt_peak_kib", int(opened.peakKiB));
}
