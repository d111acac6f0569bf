// The wq tool by command-line conventions: help and version, exit statuses,
// standard output against standard error, "--", "-" for standard streams,
// the small commands, the envelope choices, passwords typed at a terminal,
// and the bash completion.

#include "ToolRunner.h"

#include <QRegularExpression>

#include <functional>

using namespace wq::test;

namespace {

class ToolConventions : public ToolScratch {
protected:
    // The tool with input on standard input and its own data folder.
    ToolRun run(const QStringList& args, const QByteArray& input = {}, const QString& outputFile = {}) const
    {
        return runProgram(QString::fromLocal8Bit(kTool), args,
                          {.input = input,
                           .outputFile = outputFile,
                           .environment = {{QStringLiteral("XDG_DATA_HOME"), dir.filePath(QStringLiteral("data"))}}});
    }

    // What bash offers for the words of a command line, the last one being typed.
    QStringList complete(const QStringList& words) const
    {
        const QString script = QStringLiteral("cd \"$1\"; source \"$0\"; shift; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($#-1)); _wq; "
                                              "printf '%s\\n' \"${COMPREPLY[@]}\"");
        const ToolRun bash = runProgram(QStringLiteral("bash"), QStringList{"-c", script, WQ_COMPLETION, dir.path()} + words);
        QStringList offered = QString::fromUtf8(bash.out).split(u'\n', Qt::SkipEmptyParts);
        offered.sort();
        return offered;
    }
};

// What a run should show: its status, and checks on its two streams.
struct Case {
    QStringList args;
    QByteArray input;
    int status;
    std::function<bool(const QByteArray&)> out;
    std::function<bool(const QByteArray&)> err;
};

auto equals(const QByteArray& expected) { return [=](const QByteArray& s) { return s == expected; }; }
auto has(const QByteArray& part) { return [=](const QByteArray& s) { return s.contains(part); }; }
auto oneLineWith(const QByteArray& part) { return [=](const QByteArray& s) { return s.count('\n') == 1 && s.contains(part); }; }
const auto empty = [](const QByteArray& s) { return s.isEmpty(); };

void check(const ToolRun& r, const Case& c)
{
    const std::string what = c.args.join(u' ').toStdString();
    EXPECT_EQ(r.exitCode, c.status) << what << "\n" << r.err.toStdString();
    EXPECT_TRUE(c.out(r.out)) << what << ": stdout " << r.out.toStdString();
    EXPECT_TRUE(c.err(r.err)) << what << ": stderr " << r.err.toStdString();
}

} // namespace

TEST_F(ToolConventions, HelpVersionStatusesTheEndOfOptionsAndTheSmallCommands)
{
    const QString in = written("in.txt", "foobar"), missing = path("missing"), unwritable = path("no/such/folder/out");
    const Case cases[] = {
        // Help asked for goes to standard output; help forced on a user goes to standard error.
        {{"--help"}, {}, 0, has("usage: wq COMMAND"), empty},
        {{"help"}, {}, 0, has("usage: wq COMMAND"), empty},
        {{"help", "money"}, {}, 0, has("usage: wq money format"), empty},
        {{"money", "--help"}, {}, 0, has("usage: wq money format"), empty},
        {{"date", "info", "-h"}, {}, 0, has("usage: wq date make"), empty},
        {{"--version"}, {}, 0, equals("wq " WQ_VERSION "\n"), empty},
        {{}, {}, 2, empty, has("usage: wq COMMAND")},
        {{"help", "nothing"}, {}, 2, empty, oneLineWith("unknown command")},
        {{"--frobnicate"}, {}, 2, empty, oneLineWith("unknown option")},
        {{"date", "since", "2024-01-01", "2023-01-01", "--units"}, {}, 2, empty, oneLineWith("--units needs a value")},
        // "--" ends the options: what follows is an operand, whatever it looks like.
        {{"money", "parse", "--5"}, {}, 2, empty, oneLineWith("unknown option \"--5\"")},
        {{"money", "parse", "--locale", "en_US", "--", "--5"}, {}, 0, [](const QByteArray& s) { return !s.isEmpty(); }, empty},
        {{"money", "format", "--locale", "en_US", "--", "-5"}, {}, 0, equals("-$5.00\n"), empty},
        {{"escape", "xml", "--", "--help", "<"}, {}, 0, equals("--help\n&lt;\n"), empty},
        {{"date", "--", "make", "2024", "1", "31"}, {}, 0, equals("2024-01-31\n"), empty},
        {{"date", "since", "--units=y", "2024-03-01", "2023-01-01"}, {}, 0, equals("years=1\n"), empty},
        // Negative numbers pass without "--" as well.
        {{"round", "2", "-0.125"}, {}, 0, equals("-0.12\n"), empty},
        // A missing input file and an unwritable output file are both usage errors.
        {{"base64", "encode", missing}, {}, 2, empty, oneLineWith("cannot read")},
        {{"encrypt", "--password-stdin", missing, path("x.enc")}, "pw\n", 2, empty, oneLineWith("cannot read")},
        {{"decrypt", "--password-stdin", missing, path("x.xml")}, "pw\n", 2, empty, oneLineWith("cannot read")},
        {{"base64", "encode", in, unwritable}, {}, 2, empty, oneLineWith("cannot write")},
        {{"encrypt", "--password-stdin", in, unwritable}, "pw\n", 2, empty, oneLineWith("cannot write")},
        // "-" is standard input and output.
        {{"base64", "encode", "-", "-"}, "foobar", 0, equals("Zm9vYmFy\n"), empty},
        {{"base64", "decode", "-"}, "Zm9vYmFy", 0, equals("foobar"), empty},
        {{"base64", "encode", "--line-length", "4"}, "foobar", 0, equals("Zm9v\nYmFy\n"), empty},
        {{"base64", "decode"}, "Zm9v\xc3\xa9", 2, empty, has("wq: ")},
        {{"escape", "csv"}, "1,5", 0, equals("\"1,5\""), empty},
        {{"escape", "url", "a b"}, {}, 0, equals("a%20b\n"), empty},
        {{"unescape", "xml", "&amp;lt;"}, {}, 0, equals("&lt;\n"), empty},
        {{"unescape", "url", "x"}, {}, 2, empty, has("wq: ")},
        {{"round", "2", "lots"}, {}, 2, empty, has("wq: ")},
    };
    for (const Case& c : cases)
        check(run(c.args, c.input), c);

    // Output that cannot be written is a failure, not a usage error.
    const ToolRun full = run({"--help"}, {}, QStringLiteral("/dev/full"));
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_TRUE(full.err.contains("cannot write to standard output"));
}

TEST_F(ToolConventions, NegativeYearsReadBackWhatTheyPrint)
{
    for (const char* year : {"-44", "-1", "-12345", "0"}) {
        const ToolRun made = run({"date", "make", "--", year, "3", "15"});
        ASSERT_EQ(made.exitCode, 0) << year << made.err.toStdString();
        const QString date = QString::fromUtf8(made.out).trimmed();
        const ToolRun later = run({"date", "add", "--", date, "0", "0", "1"});
        EXPECT_EQ(later.exitCode, 0) << date.toStdString() << later.err.toStdString();
        EXPECT_EQ(later.out, QByteArray(made.out).replace("-15\n", "-16\n")) << date.toStdString();
    }
    // The sign before four digits reads as the same year.
    EXPECT_EQ(run({"date", "info", "--", "-0044-03-15"}).out, run({"date", "info", "-044-03-15"}).out);
    EXPECT_EQ(run({"date", "since", "-0044-03-15", "-044-03-15"}).out, "years=0 months=0 days=0\n");
}

TEST_F(ToolConventions, EnvelopesAuthenticatedUnlessClassicAndWeakChoicesRefused)
{
    const QString doc = written("doc.xml", "<a>1</a>"), pw = written("pw", "secret\n");
    // The classic envelope holds only a well-formed document; the
    // authenticated one takes any text.
    const QString note = written("note.txt", "just a note");
    const Case cases[] = {
        // Through standard input and output; the authenticated envelope says nothing.
        {{"encrypt", "--password-file", pw, "-", path("auth.enc")}, "<a>1</a>", 0, empty, empty},
        {{"encrypt", "--classic", "--password-file", pw, doc, path("classic.enc")}, {}, 0, empty, oneLineWith("weak")},
        {{"encrypt", "--password-stdin", doc, path("x.enc")}, "\n", 2, empty, oneLineWith("--insecure")},
        {{"encrypt", "--classic", "--password-stdin", doc, path("x.enc")}, "\n", 2, empty, has("--insecure")},
        {{"encrypt", "--iterations", "599999", "--password-file", pw, doc, path("x.enc")}, {}, 2, empty,
         oneLineWith("600000")},
        {{"encrypt", "--classic", "--iterations", "600000", doc, path("x.enc")}, {}, 2, empty, oneLineWith("--iterations")},
        {{"encrypt", "--insecure", "--iterations", "10", "--password-stdin", doc, path("empty.enc")}, "\n", 0, empty, empty},
        {{"decrypt", "--password-stdin", path("empty.enc"), "-"}, "\n", 0, equals("<a>1</a>"), empty},
        {{"decrypt", "--password-file", "-", path("auth.enc"), "-"}, "secret\n", 0, equals("<a>1</a>"), empty},
        {{"decrypt", "--password-file", "-", path("auth.enc"), "-"}, "wrong\n", 1, empty, oneLineWith("password")},
        // Standard input is either the password or the document.
        {{"decrypt", "--password-stdin", "-", path("x.xml")}, "secret\n", 2, empty, oneLineWith("both the password")},
        {{"encrypt", "--classic", "--password-stdin", note, path("x.enc")}, "pw\n", 2, empty,
         has("is not a well-formed XML document")},
        {{"encrypt", "--iterations", "1", "--insecure", "--password-stdin", note, path("note.enc")}, "pw\n", 0, empty, empty},
        {{"decrypt", "--password-stdin", path("note.enc"), "-"}, "pw\n", 0, equals("just a note"), empty},
    };
    for (const Case& c : cases)
        check(run(c.args, c.input), c);
    const Case inspect{{"inspect", "-"}, readBytes(path("auth.enc")), 0, has("(authenticated)"), empty};
    check(run(inspect.args, inspect.input), inspect);
    const QByteArray inspected = run({"inspect", path("classic.enc")}).out;
    for (const char* line : {"aes128-cbc", "iterations:      1000\n", "IV length:       16 bytes"})
        EXPECT_TRUE(inspected.contains(line)) << line;
    EXPECT_FALSE(QFile::exists(path("x.enc")));
}

TEST_F(ToolConventions, PasswordsTypedAtATerminal)
{
    const QByteArray document = "<?xml version=\"1.0\"?>\n<ledger><payee>Caf\xc3\xa9 \xe6\x97\xa5</payee></ledger>\n";
    const QString plain = written("ledger.xml", document), sealed = path("ledger.enc");
    const QByteArray password = "gr\xc3\xbcn tea";
    ToolRun r = runOnTerminal({"encrypt", plain, sealed}, {password, password});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString();
    EXPECT_FALSE(r.out.contains(password)); // nothing echoed
    r = runOnTerminal({"decrypt", sealed, path("opened.xml")}, {password});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString();
    EXPECT_EQ(readBytes(path("opened.xml")), document);
    // Two different answers are refused and nothing is written.
    EXPECT_NE(runOnTerminal({"encrypt", plain, path("other.enc")}, {password, "green tea"}).exitCode, 0);
    EXPECT_FALSE(QFile::exists(path("other.enc")));
    // A document the classic envelope cannot hold is refused before the prompt.
    const ToolRun asked = runOnTerminal({"encrypt", "--classic", written("note.txt", "just a note"), sealed}, {});
    EXPECT_EQ(asked.exitCode, 2);
    EXPECT_TRUE(asked.out.contains("is not a well-formed XML document"));
    EXPECT_FALSE(asked.out.contains("Password"));
}

TEST_F(ToolConventions, LogWriteTakesLinesFromStandardInput)
{
    ASSERT_EQ(run({"log", "--app", "ledger", "write"}, "first\n\nsecond\r\nthird").exitCode, 0);
    ASSERT_EQ(run({"log", "--app", "ledger", "write", "--", "--fourth"}).exitCode, 0);
    const QStringList lines = QString::fromUtf8(run({"log", "--app", "ledger", "tail", "10"}).out).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    const QStringList expected{"first", "second", "third", "--fourth"};
    for (qsizetype i = 0; i < lines.size(); ++i)
        EXPECT_TRUE(lines[i].endsWith(QStringLiteral(" | ") + expected[i])) << lines[i].toStdString();
    EXPECT_EQ(run({"log", "--app", "ledger", "write"}, "\xff\n").exitCode, 2);
}

TEST_F(ToolConventions, BashCompletionKnowsTheCommands)
{
    // Every command the tool lists, and nothing else.
    QStringList listed{"help", "--help", "--version"};
    const QString overview = QString::fromUtf8(run({"help"}).out);
    const QRegularExpression commandLine(QStringLiteral("^  ([a-z0-9-]+) "), QRegularExpression::MultilineOption);
    for (auto it = commandLine.globalMatch(overview); it.hasNext();)
        listed << it.next().captured(1);
    listed.sort();
    EXPECT_GT(listed.size(), 10);
    EXPECT_EQ(complete({"wq", ""}), listed);

    written("ledger.xml", "");
    const std::pair<QStringList, QStringList> cases[] = {
        {{"wq", "date", ""}, {"add", "format", "from-day", "info", "make", "since"}},
        {{"wq", "date", "since", "--units", "y"}, {"y", "yd", "ym", "ymd"}},
        {{"wq", "encrypt", "--i"}, {"--insecure", "--iterations"}},
        {{"wq", "encrypt", "--classic", "led"}, {"ledger.xml"}},
        {{"wq", "decrypt", "--password-file", "led"}, {"ledger.xml"}},
        {{"wq", "money", "--places", "2", "f"}, {"format"}},
        {{"wq", "money", "format", "--", "--"}, {}},
    };
    for (const auto& [words, offered] : cases)
        EXPECT_EQ(complete(words), offered) << words.join(u' ').toStdString();
}
