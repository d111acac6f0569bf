#pragma once
// The register kept between runs: one XML file, written whole through a
// temporary file and a rename, as the framework's authenticated encrypted
// document when the user chose a password. The file keeps the register's
// currency settings with its transactions, so that its amounts mean the
// same whatever the regional settings of the day. A lock file keeps a
// second instance from writing it at the same time.

#include "RegisterBook.h"

#include <QFuture>
#include <QLockFile>
#include <QString>
#include <QVariantMap>

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

    // What the file holds.
    struct Contents {
        QList<Transaction> transactions;
        // The currency settings dictionary; nothing in files written before
        // registers kept one.
        std::optional<QVariantMap> currency;

        friend bool operator==(const Contents&, const Contents&) = default;
    };

    struct Loaded {
        bool ok = false;
        bool encrypted = false;       // the file is an envelope
        bool exists = false;          // false: a new register (ok and empty)
        bool wrongPassword = false;   // the envelope did not open with the password
        Contents contents;
        QString error;                // for the user, when not ok
    };
    // A missing file loads as an empty register.
    Loaded load(const QString& password = QString()) const;
    // The same with the decryption on the thread pool; the file itself is
    // read before it answers.
    QFuture<Loaded> loadAsync(const QString& password) const;
    bool isEncrypted() const;
    // Refused without the lock, so a second instance cannot overwrite.
    bool save(const Contents& contents, const QString& password, QString* error = nullptr) const;
    // The same with the encryption and the writing on the thread pool: the
    // future's text is the error, empty when the file was written. One at a
    // time: a save must not start before the last one finished.
    QFuture<QString> saveAsync(const Contents& contents, const QString& password) const;

    static QByteArray toXml(const Contents& contents);
    static std::optional<Contents> fromXml(QByteArrayView xml);
    // The system's currency settings as they are now, as a register records
    // them: what its amounts were shown in until it kept a currency of its own.
    static QVariantMap systemCurrency();

private:
    std::optional<QString> _refusal() const;

    QString _path;
    std::unique_ptr<QLockFile> _lock;
};

} // namespace showcase
