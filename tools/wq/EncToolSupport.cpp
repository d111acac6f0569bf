#include "EncToolSupport.h"

#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include "WQLargeBuffers.h"

#include <QFile>
#include <QStringDecoder>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdint>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace wq::tool {

// --- input and output -------------------------------------------------------

Input::~Input()
{
    if (_wq_owned && _wq_fd >= 0)
        ::close(_wq_fd);
}

bool Input::open(const QString& path)
{
    _wq_path = path;
    if (path == u"-") {
        _wq_fd = STDIN_FILENO;
    } else {
        _wq_fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        _wq_owned = true;
    }
    struct stat info;
    if (_wq_fd < 0 || ::fstat(_wq_fd, &info) != 0) {
        err(QStringLiteral("cannot read %1: %2").arg(path, QString::fromLocal8Bit(std::strerror(errno))));
        return false;
    }
    if (S_ISDIR(info.st_mode)) {
        err(QStringLiteral("cannot read %1: it is a folder").arg(path));
        return false;
    }
    _wq_size = S_ISREG(info.st_mode) ? qint64(info.st_size) : -1;
    return true;
}

qsizetype Input::read(char* into, qsizetype length)
{
    qsizetype got = 0;
    while (got < length) {
        const ssize_t n = ::read(_wq_fd, into + got, size_t(length - got));
        if (n == 0)
            break;
        if (n < 0) {
            if (errno == EINTR)
                continue;
            err(QStringLiteral("cannot read %1: %2").arg(_wq_path, QString::fromLocal8Bit(std::strerror(errno))));
            return -1;
        }
        got += n;
    }
    return got;
}

bool Output::open(const QString& path, bool secret)
{
    _wq_path = path;
    if (path == u"-")
        return true;
    _wq_file = std::make_unique<QSaveFile>(path);
    if (!_wq_file->open(QIODevice::WriteOnly)
        || (secret && !_wq_file->setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner))) {
        err(QStringLiteral("cannot write %1: %2").arg(path, _wq_file->errorString()));
        _wq_file.reset();
        _wq_failed = true;
        return false;
    }
    return true;
}

bool Output::write(QByteArrayView bytes)
{
    if (_wq_failed)
        return false;
    if (_wq_file) {
        _wq_failed = _wq_file->write(bytes.data(), bytes.size()) != bytes.size();
    } else {
        for (qsizetype done = 0; done < bytes.size();) {
            const ssize_t n = ::write(STDOUT_FILENO, bytes.data() + done, size_t(bytes.size() - done));
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0) {
                _wq_failed = true;
                break;
            }
            done += n;
        }
    }
    return !_wq_failed;
}

QIODevice& Output::device()
{
    if (_wq_file)
        return *_wq_file;
    if (!_wq_standardOutput) {
        _wq_standardOutput = std::make_unique<QFile>();
        _wq_standardOutput->open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
    return *_wq_standardOutput;
}

bool Output::commit()
{
    if (_wq_standardOutput && _wq_standardOutput->error() != QFileDevice::NoError)
        _wq_failed = true;
    if (!_wq_failed && (!_wq_file || _wq_file->commit()))
        return true;
    if (_wq_file)
        _wq_file->cancelWriting();
    err(_wq_file ? QStringLiteral("cannot write %1: %2").arg(_wq_path, _wq_file->errorString())
                 : QStringLiteral("cannot write to standard output"));
    return false;
}

std::optional<QByteArray> readAll(const QString& path, qsizetype limit)
{
    Input input;
    if (!input.open(path))
        return std::nullopt;
    const auto tooLarge = [&] {
        err(QStringLiteral("%1 is larger than %2 bytes").arg(path).arg(limit));
        return std::nullopt;
    };
    if (input.size() > limit)
        return tooLarge();
    // A regular file in one piece of its own size; anything else grows.
    QByteArray bytes = _wq_largeBuffer<QByteArray>(input.size() >= 0 ? qsizetype(input.size()) : 0);
    qsizetype have = 0;
    // One byte past the limit shows that it was passed; without a limit
    // there is no byte past it.
    const qsizetype most = limit < std::numeric_limits<qsizetype>::max() ? limit + 1 : limit;
    for (;;) {
        if (have == bytes.size())
            bytes.resize(std::max<qsizetype>(64 * 1024, std::min(bytes.size() * 2, most)));
        const qsizetype got = input.read(bytes.data() + have, bytes.size() - have);
        if (got < 0)
            return std::nullopt;
        have += got;
        if (have > limit)
            return tooLarge();
        if (got == 0 || (input.size() >= 0 && have == input.size())) {
            char probe;
            if (have < bytes.size() || input.read(&probe, 1) == 0)
                break;
            return tooLarge();   // the file grew while it was read
        }
    }
    bytes.truncate(have);
    return bytes;
}

bool writeAll(const QString& path, QByteArrayView bytes, bool secret)
{
    Output output;
    return output.open(path, secret) && output.write(bytes) && output.commit();
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

// --- passwords --------------------------------------------------------------

PasswordSource takePasswordSource(Arguments& args)
{
    PasswordSource source;
    source.file = args.option(QStringLiteral("--password-file"));
    source.standardInput = args.flag(QStringLiteral("--password-stdin"));
    if (source.file == u"-" && !source.standardInput) {
        source.file.clear();
        source.standardInput = true;
    }
    return source;
}

void forget(QString& password)
{
    if (!password.isEmpty())
        password.fill(QChar(0));   // the buffer is not shared here: fill writes into it
    password.clear();
}

namespace {

// A password on its way in: a fixed buffer, never reallocated (so no copy
// is left behind in freed memory), wiped when it goes. It holds one byte
// more than a password may have and a line break, to tell a password that
// is too long from one that just fits.
class PasswordBuffer {
public:
    static constexpr qsizetype kCapacity = kWQMaximumPasswordLength + 3;

    PasswordBuffer() = default;
    PasswordBuffer(const PasswordBuffer&) = delete;
    PasswordBuffer& operator=(const PasswordBuffer&) = delete;
    ~PasswordBuffer() { wipe(); }

    void wipe()
    {
        volatile char* p = _wq_bytes.data();
        for (size_t i = 0; i < _wq_bytes.size(); ++i)
            p[i] = 0;
        _wq_length = 0;
    }
    bool full() const { return _wq_length == kCapacity; }
    void append(char c) { _wq_bytes[size_t(_wq_length++)] = c; }
    char* data() { return _wq_bytes.data(); }
    qsizetype length() const { return _wq_length; }
    void setLength(qsizetype length) { _wq_length = length; }
    void dropLineBreak()
    {
        if (_wq_length > 0 && _wq_bytes[size_t(_wq_length - 1)] == '\n')
            --_wq_length;
        if (_wq_length > 0 && _wq_bytes[size_t(_wq_length - 1)] == '\r')
            --_wq_length;
    }
    bool operator==(const PasswordBuffer& other) const
    {
        return _wq_length == other._wq_length && std::memcmp(_wq_bytes.data(), other._wq_bytes.data(), size_t(_wq_length)) == 0;
    }

private:
    std::array<char, kCapacity> _wq_bytes{};
    qsizetype _wq_length = 0;
};

// The password as text, or nothing (with the reason) when it cannot be used.
std::optional<QString> decodedPassword(PasswordBuffer& bytes, const QString& emptyRefusal)
{
    bytes.dropLineBreak();
    if (bytes.length() == 0 && !emptyRefusal.isEmpty()) {
        err(QStringLiteral("the password is empty: ") + emptyRefusal);
        return std::nullopt;
    }
    if (bytes.length() > kWQMaximumPasswordLength) {
        err(QStringLiteral("the password is longer than %1 bytes").arg(kWQMaximumPasswordLength));
        return std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString password(bytes.length(), Qt::Uninitialized);
    const QChar* end = decoder.appendToBuffer(password.data(), QByteArrayView(bytes.data(), bytes.length()));
    password.truncate(end - password.constData());
    bytes.wipe();
    if (decoder.hasError()) {
        forget(password);
        err(QStringLiteral("the password is not UTF-8 text"));
        return std::nullopt;
    }
    return password;
}

// One line from the terminal with echo off; the terminal is restored
// whatever happens.
bool promptWithoutEcho(int tty, const char* prompt, PasswordBuffer& line)
{
    termios saved{};
    if (::tcgetattr(tty, &saved) != 0)
        return false;
    termios quiet = saved;
    quiet.c_lflag &= ~tcflag_t(ECHO);
    quiet.c_lflag |= ECHONL;
    // Echo goes off (dropping anything typed ahead) before the prompt shows,
    // so that nothing typed after the prompt is lost or shown.
    if (::tcsetattr(tty, TCSAFLUSH, &quiet) != 0)
        return false;
    if (::write(tty, prompt, std::strlen(prompt)) < 0) {
        ::tcsetattr(tty, TCSANOW, &saved);
        return false;
    }
    bool ok = false;
    char c = 0;
    while (::read(tty, &c, 1) == 1) {
        if (c == '\n') {
            ok = true;
            break;
        }
        if (!line.full())
            line.append(c);
    }
    c = 0;
    ::tcsetattr(tty, TCSANOW, &saved);
    if (!ok)
        line.wipe();
    return ok;
}

} // namespace

std::optional<QString> readPassword(const PasswordSource& source, bool confirm, const QString& emptyRefusal)
{
    if (!source.file.isEmpty() && source.standardInput) {
        err(QStringLiteral("give either --password-file or --password-stdin, not both"));
        return std::nullopt;
    }
    PasswordBuffer first;
    if (!source.file.isEmpty()) {
        Input file;
        if (!file.open(source.file))
            return std::nullopt;
        // Never more than the buffer: /dev/zero gives a password too long,
        // not an endless one.
        const qsizetype got = file.read(first.data(), PasswordBuffer::kCapacity);
        if (got < 0)
            return std::nullopt;
        first.setLength(got);
        return decodedPassword(first, emptyRefusal);
    }
    if (source.standardInput) {
        int c = 0;
        while ((c = std::fgetc(stdin)) != EOF && c != '\n') {
            if (first.full())
                break;   // read no further: the password is too long whatever follows
            first.append(char(c));
        }
        return decodedPassword(first, emptyRefusal);
    }
    const int tty = ::open("/dev/tty", O_RDWR | O_CLOEXEC);
    if (tty < 0) {
        err(QStringLiteral("no terminal to ask for the password; use --password-file or --password-stdin"));
        return std::nullopt;
    }
    PasswordBuffer second;
    const bool gotFirst = promptWithoutEcho(tty, "Password: ", first);
    const bool gotSecond = gotFirst && confirm && promptWithoutEcho(tty, "Password again: ", second);
    ::close(tty);
    if (!gotFirst || (confirm && !gotSecond)) {
        err(QStringLiteral("no password was read from the terminal"));
        return std::nullopt;
    }
    if (confirm && !(first == second)) {
        err(QStringLiteral("the two passwords differ"));
        return std::nullopt;
    }
    return decodedPassword(first, emptyRefusal);
}

} // namespace wq::tool
