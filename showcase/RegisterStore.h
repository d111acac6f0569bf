#pragma once
// The register kept between runs: one XML file, written whole through a
// temporary file and a rename, as the framework's authenticated encrypted
// document when the user chose a password. A lock file keeps a second
// instance from writing it at the same time.

#include "RegisterBook.h"

#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>

namespace showcase {

class RegisterStore {
public:
    explicit RegisterStore(QString path);

    const QString& path() const { return _path; }
    // False while another instance holds the register; it may still be
    // read, but must not be written.
    bool lock();
    bool isLocked() const { return _lock && _lock->isLocked(); }

    struct Loaded {
        bool ok = false;
        bool encrypted = false;       // the file is an envelope
        QList<Transaction> transactions;
        QString error;                // for the user, when not ok
    };
    // A missing file loads as an empty register.
    Loaded load(const QString& password = QString()) const;
    bool isEncrypted() const;
    // Refused without the lock, so a second instance cannot overwrite.
    bool save(const QList<Transaction>& transactions, const QString& password, QString* error = nullptr) const;

    static QByteArray toXml(const QList<Transaction>& transactions);
    static std::optional<QList<Transaction>> fromXml(QByteArrayView xml);

private:
    QString _path;
    std::unique_ptr<QLockFile> _lock;
};

} // namespace showcase
