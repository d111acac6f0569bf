// The wq tool's encoding and envelope commands, run as a user would run them.

#include "FileTesting.h"
#include "ToolRunner.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

using namespace wq::test;

TEST(CryptTool, PromptedPasswordRoundTrip)
{
    QTemporaryDir dir;
    const QString plain = dir.filePath(QStringLiteral("ledger.xml"));
    const QString sealed = dir.filePath(QStringLiteral("ledger.enc"));
    const QString opened = dir.filePath(QStringLiteral("opened.xml"));
    const QByteArray document = "<?xml version=\"1.0\"?>\n<ledger><payee>Caf\xc3\xa9 \xe6\x97\xa5</payee></ledger>\n";
    ASSERT_TRUE(writeBytes(plain, document));
    const QByteArray password = "gr\xc3\xbcn tea";

    ToolRun r = runOnTerminal({"encrypt", plain, sealed}, {password, password});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString();
    EXPECT_FALSE(r.out.contains(password));   // nothing echoed
    r = runOnTerminal({"decrypt", sealed, opened}, {password});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString();
    EXPECT_EQ(readBytes(opened), document);

    // Two different answers are refused and nothing is written.
    const QString other = dir.filePath(QStringLiteral("other.enc"));
    EXPECT_NE(runOnTerminal({"encrypt", plain, other}, {password, "green tea"}).exitCode, 0);
    EXPECT_FALSE(QFile::exists(other));
}

TEST(CryptTool, ClassicEnvelopeRefusesWhatCouldNeverBeOpened)
{
    // Its reader opens a classic envelope only to a well-formed document.
    QTemporaryDir dir;
    const QString sealed = dir.filePath(QStringLiteral("a.enc"));
    const QString plain = dir.filePath(QStringLiteral("note.txt"));
    for (const QByteArray& text : {QByteArray(), QByteArray("just a note"), QByteArray("<a>1</a><b/>")}) {
        ASSERT_TRUE(writeBytes(plain, text));
        ToolRun r = runTool({"encrypt", "--classic", "--password-stdin", plain, sealed}, "pw\n");
        EXPECT_EQ(r.exitCode, 2) << text.toStdString();
        EXPECT_TRUE(r.err.contains("is not a well-formed XML document")) << r.err.toStdString();
        EXPECT_FALSE(QFile::exists(sealed));
        // The authenticated envelope, the default, takes any text.
        r = runTool({"encrypt", "--iterations", "1", "--insecure", "--password-stdin", plain, sealed}, "pw\n");
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
        r = runTool({"decrypt", "--password-stdin", sealed, "-"}, "pw\n");
        EXPECT_EQ(r.exitCode, 0);
        EXPECT_EQ(r.out, text);
        QFile::remove(sealed);
    }
    // A person at the terminal is told before typing a password.
    const ToolRun asked = runOnTerminal({"encrypt", "--classic", plain, sealed}, {});
    EXPECT_EQ(asked.exitCode, 2);
    EXPECT_TRUE(asked.out.contains("is not a well-formed XML document"));
    EXPECT_FALSE(asked.out.contains("Password"));
}

TEST(CryptTool, InspectAndTheSmallCommands)
{
    QTemporaryDir dir;
    const QString plain = dir.filePath(QStringLiteral("a.xml"));
    const QString sealed = dir.filePath(QStringLiteral("a.enc"));
    ASSERT_TRUE(writeBytes(plain, "<a/>"));
    ASSERT_EQ(runTool({"encrypt", "--classic", "--password-stdin", plain, sealed}, "pw\n").exitCode, 0);
    const ToolRun inspected = runTool({"inspect", sealed});
    EXPECT_EQ(inspected.exitCode, 0);
    for (const char* line : {"aes128-cbc", "iterations:      1000\n", "IV length:       16 bytes"})
        EXPECT_TRUE(inspected.out.contains(line)) << line;

    // Exit status 2 for bad input; the output is only compared on success.
    const std::tuple<QStringList, QByteArray, QByteArray, int> cases[] = {
        {{"base64", "encode"}, "foobar", "Zm9vYmFy\n", 0},
        {{"base64", "encode", "--line-length", "4"}, "foobar", "Zm9v\nYmFy\n", 0},
        {{"base64", "decode"}, "Zm9v\xc3\xa9", "", 2},
        {{"escape", "xml", "a<'b'>"}, "", "a&lt;&apos;b&apos;&gt;\n", 0},
        {{"escape", "csv"}, "1,5", "\"1,5\"", 0},
        {{"escape", "url", "a b"}, "", "a%20b\n", 0},
        {{"unescape", "xml", "&amp;lt;"}, "", "&lt;\n", 0},
        {{"unescape", "url", "x"}, "", "", 2},
        {{"round", "2", "2.675"}, "", "2.68\n", 0},
        {{"round", "7", "-1.5", "--split"}, "", "-1.5000000 -1 -5000000\n", 0},
        {{"round", "2", "lots"}, "", "", 2},
    };
    for (const auto& [args, input, out, exitCode] : cases) {
        const ToolRun r = runTool(args, input);
        EXPECT_EQ(r.exitCode, exitCode) << args.join(u' ').toStdString();
        EXPECT_TRUE(exitCode != 0 || r.out == out) << args.join(u' ').toStdString() << ": " << r.out.toStdString();
    }
}
