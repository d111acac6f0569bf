#pragma once
// Input, output and password reading shared by the encoding and encryption
// commands. "-" names standard input or output.

#include "Command.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QSaveFile>
#include <QString>

#include <limits>
#include <memory>
#include <optional>

namespace wq::tool {

// A file or standard input, read piece by piece.
class Input {
public:
    Input() = default;
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    // False, with an error line, when it cannot be opened.
    bool open(const QString& path);
    // Up to length bytes; 0 at the end, -1 (with an error line) on failure.
    qsizetype read(char* into, qsizetype length);
    // The size of a regular file, else -1.
    qint64 size() const { return _wq_size; }

private:
    int _wq_fd = -1;
    bool _wq_owned = false;
    qint64 _wq_size = -1;
    QString _wq_path;
};

// A file written through a temporary that replaces it only when complete
// (so a failure never leaves a partial file), or standard output.
class Output {
public:
    // secret: the file is created readable and writable by its owner only.
    bool open(const QString& path, bool secret = false);
    bool write(QByteArrayView bytes);
    // The same place as a device, for writers that stream into it; what
    // they write is kept only by commit().
    QIODevice& device();
    bool commit();

private:
    std::unique_ptr<QSaveFile> _wq_file;
    std::unique_ptr<QFile> _wq_standardOutput;
    QString _wq_path;
    bool _wq_failed = false;
};

// The whole of a file or of standard input, refused (with an error line)
// when it has more than limit bytes; a file is refused by its size, unread.
std::optional<QByteArray> readAll(const QString& path, qsizetype limit = std::numeric_limits<qsizetype>::max());
// Writes all at once, as Output does.
bool writeAll(const QString& path, QByteArrayView bytes, bool secret = false);
// UTF-8 text, or nothing (with an error line naming what) when it is not.
std::optional<QString> utf8Text(const QByteArray& bytes, const QString& what);

// Where the password comes from.
struct PasswordSource {
    QString file;          // --password-file
    bool standardInput;    // --password-stdin
};

// Takes --password-file / --password-stdin out of args; "--password-file -"
// is standard input too.
PasswordSource takePasswordSource(Arguments& args);
// Reads the password: from the file (one trailing line break dropped), the
// first line of standard input, or the terminal without echo (asked twice
// when confirm is set). Nothing, with an error line, when it cannot, when
// it is longer than kWQMaximumPasswordLength bytes, or when it is empty and
// emptyRefusal is not empty (the error then ends with that reason). Every
// buffer it passed through is wiped.
std::optional<QString> readPassword(const PasswordSource& source, bool confirm, const QString& emptyRefusal);
// Overwrites the password's characters before it goes.
void forget(QString& password);

} // namespace wq::tool
