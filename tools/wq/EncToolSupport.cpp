#include "EncToolSupport.h"

#include <cstdio>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace wq::tool {

std::optional<QByteArray> readAll(const QString& path)
{
    QFile file;
    const bool opened = path == u"-" ? file.open(stdin, QIODevice::ReadOnly) : (file.setFileName(path), file.open(QIODevice::ReadOnly));
    if (!opened) {
        err(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
        return std::nullopt;
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        err(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
        return std::nullopt;
    }
    return bytes;
}

bool writeAll(const QString& path, const QByteArray& bytes)
{
    if (path == u"-") {
        const size_t written = std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        if (written != size_t(bytes.size()) || std::fflush(stdout) != 0) {
            err(QStringLiteral("cannot write to standard output"));
            return false;
        }
        return true;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        err(QStringLiteral("cannot write %1: %2").arg(path, file.errorString()));
        return false;
    }
    return true;
}

std::optional<QString> utf8Text(const QByteArray& bytes, const QString& what)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) {
        err(QStringLiteral("%1 is not UTF-8 text").arg(what));
        return std::nullopt;
    }
    return text;
}

PasswordSource takePasswordSource(QStringList& args)
{
    PasswordSource source;
    source.file = takeOption(args, QStringLiteral("--password-file"));
    source.standardInput = takeFlag(args, QStringLiteral("--password-stdin"));
    return source;
}

void forget(QString& password)
{
    if (!password.isEmpty())
        password.fill(QChar(0));   // the buffer is not shared here: fill writes into it
    password.clear();
}

namespace {

void wipe(std::string& text)
{
    volatile char* p = text.data();
    for (size_t i = 0; i < text.size(); ++i)
        p[i] = 0;
    text.clear();
}

void dropLineBreak(std::string& line)
{
    if (!line.empty() && line.back() == '\n')
        line.pop_back();
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
}

std::optional<QString> decodedPassword(std::string& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString password = decoder.decode(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
    wipe(bytes);
    if (decoder.hasError()) {
        forget(password);
        err(QStringLiteral("the password is not UTF-8 text"));
        return std::nullopt;
    }
    return password;
}

// One line from the terminal with echo off; the terminal is restored
// whatever happens.
std::optional<std::string> promptWithoutEcho(int tty, const char* prompt)
{
    termios saved{};
    if (::tcgetattr(tty, &saved) != 0)
        return std::nullopt;
    termios quiet = saved;
    quiet.c_lflag &= ~tcflag_t(ECHO);
    quiet.c_lflag |= ECHONL;
    // Echo goes off (dropping anything typed ahead) before the prompt shows,
    // so that nothing typed after the prompt is lost or shown.
    if (::tcsetattr(tty, TCSAFLUSH, &quiet) != 0)
        return std::nullopt;
    if (::write(tty, prompt, std::strlen(prompt)) < 0) {
        ::tcsetattr(tty, TCSANOW, &saved);
        return std::nullopt;
    }
    std::string line;
    char c = 0;
    bool ok = false;
    while (::read(tty, &c, 1) == 1) {
        if (c == '\n') {
            ok = true;
            break;
        }
        line.push_back(c);
    }
    c = 0;
    ::tcsetattr(tty, TCSANOW, &saved);
    if (!ok) {
        wipe(line);
        return std::nullopt;
    }
    dropLineBreak(line);
    return line;
}

} // namespace

std::optional<QString> readPassword(const PasswordSource& source, bool confirm)
{
    if (!source.file.isEmpty() && source.standardInput) {
        err(QStringLiteral("give either --password-file or --password-stdin, not both"));
        return std::nullopt;
    }
    if (!source.file.isEmpty()) {
        QFile file(source.file);
        if (!file.open(QIODevice::ReadOnly)) {
            err(QStringLiteral("cannot read %1: %2").arg(source.file, file.errorString()));
            return std::nullopt;
        }
        QByteArray contents = file.readAll();
        std::string bytes(contents.constData(), size_t(contents.size()));
        contents.fill('\0');
        dropLineBreak(bytes);
        return decodedPassword(bytes);
    }
    if (source.standardInput) {
        std::string bytes;
        int c = 0;
        while ((c = std::fgetc(stdin)) != EOF && c != '\n')
            bytes.push_back(char(c));
        dropLineBreak(bytes);
        return decodedPassword(bytes);
    }
    const int tty = ::open("/dev/tty", O_RDWR | O_CLOEXEC);
    if (tty < 0) {
        err(QStringLiteral("no terminal to ask for the password; use --password-file or --password-stdin"));
        return std::nullopt;
    }
    std::optional<std::string> first = promptWithoutEcho(tty, "Password: ");
    std::optional<std::string> second;
    if (first && confirm)
        second = promptWithoutEcho(tty, "Password again: ");
    ::close(tty);
    if (!first || (confirm && !second)) {
        err(QStringLiteral("no password was read from the terminal"));
        return std::nullopt;
    }
    const bool same = !confirm || *first == *second;
    if (second)
        wipe(*second);
    if (!same) {
        wipe(*first);
        err(QStringLiteral("the two passwords differ"));
        return std::nullopt;
    }
    return decodedPassword(*first);
}

} // namespace wq::tool
