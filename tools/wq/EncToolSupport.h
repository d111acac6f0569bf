#pragma once
// Input, output and password reading shared by the encoding and encryption
// commands. "-" names standard input or output.

#include "Command.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QString>
#include <QStringDecoder>

#include <optional>

namespace wq::tool {

// The whole of a file or of standard input; an error line when unreadable.
std::optional<QByteArray> readAll(const QString& path);
// Writes all at once: a file through a temporary that replaces it only when
// complete, so a failure never leaves a partial file.
bool writeAll(const QString& path, const QByteArray& bytes);
// UTF-8 text, or nothing (with an error line naming what) when it is not.
std::optional<QString> utf8Text(const QByteArray& bytes, const QString& what);

// Where the password comes from.
struct PasswordSource {
    QString file;          // --password-file
    bool standardInput;    // --password-stdin
};

// Takes --password-file / --password-stdin out of args.
PasswordSource takePasswordSource(QStringList& args);
// Reads the password: from the file (one trailing line break dropped), the
// first line of standard input, or the terminal without echo (asked twice
// when confirm is set). Nothing, with an error line, when it cannot.
std::optional<QString> readPassword(const PasswordSource& source, bool confirm);
// Overwrites the password's characters before it goes.
void forget(QString& password);

} // namespace wq::tool
