#include "RegisterStore.h"

#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cmath>

namespace showcase {
namespace {

QString isoDate(const wq::WQDate& date)
{
    const qint64 year = date.yearOfCommonEra();
    return QStringLiteral("%1%2-%3-%4")
        .arg(year < 0 ? QStringLiteral("-") : QString())
        .arg(year < 0 ? -year : year, 4, 10, QLatin1Char('0'))
        .arg(date.monthOfYear(), 2, 10, QLatin1Char('0'))
        .arg(date.dayOfMonth(), 2, 10, QLatin1Char('0'));
}

std::optional<wq::WQDate> fromIsoDate(QStringView text)
{
    // Years before 1 are written with their sign.
    const bool before = text.startsWith(u'-');
    QList<QStringView> parts = text.mid(before ? 1 : 0).split(u'-');
    if (parts.size() != 3)
        return std::nullopt;
    bool y = false, m = false, d = false;
    const qint64 year = (before ? -1 : 1) * parts[0].toLongLong(&y);
    const int month = parts[1].toInt(&m);
    const int day = parts[2].toInt(&d);
    if (!y || !m || !d || month < 1 || month > 12 || day < 1 || day > wq::WQDate::daysInMonth(quint8(month), year))
        return std::nullopt;
    return wq::WQDate(year, quint64(month), quint64(day));
}

} // namespace

RegisterStore::RegisterStore(QString path) : _path(std::move(path)) {}

bool RegisterStore::lock()
{
    if (isLocked())
        return true;
    QDir().mkpath(QFileInfo(_path).absolutePath());
    _lock = std::make_unique<QLockFile>(_path + QStringLiteral(".lock"));
    // A lock left by a crashed instance is taken over by QLockFile itself.
    return _lock->tryLock(0);
}

QByteArray RegisterStore::toXml(const QList<Transaction>& transactions)
{
    QByteArray xml;
    QXmlStreamWriter writer(&xml);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("register"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("1"));
    for (const Transaction& t : transactions) {
        writer.writeStartElement(QStringLiteral("transaction"));
        writer.writeAttribute(QStringLiteral("date"), isoDate(t.date));
        writer.writeAttribute(QStringLiteral("payee"), t.payee);
        writer.writeAttribute(QStringLiteral("amount"), QString::number(t.amount, 'g', 17));
        if (!t.amountText.isEmpty())
            writer.writeAttribute(QStringLiteral("shown"), t.amountText);
        if (t.cleared)
            writer.writeAttribute(QStringLiteral("cleared"), QStringLiteral("yes"));
        writer.writeEndElement();
    }
    writer.writeEndElement();
    writer.writeEndDocument();
    return xml;
}

std::optional<QList<Transaction>> RegisterStore::fromXml(QByteArrayView xml)
{
    QXmlStreamReader reader(xml.toByteArray());
    QList<Transaction> transactions;
    if (!reader.readNextStartElement() || reader.name() != u"register")
        return std::nullopt;
    while (reader.readNextStartElement()) {
        if (reader.name() != u"transaction")
            return std::nullopt;
        const QXmlStreamAttributes a = reader.attributes();
        const std::optional<wq::WQDate> date = fromIsoDate(a.value(QStringLiteral("date")));
        bool number = false;
        const double amount = a.value(QStringLiteral("amount")).toDouble(&number);
        if (!date || !number || !std::isfinite(amount))
            return std::nullopt;
        transactions.append(Transaction{*date, a.value(QStringLiteral("payee")).toString(), amount,
                                        a.value(QStringLiteral("shown")).toString(),
                                        a.value(QStringLiteral("cleared")) == QStringLiteral("yes")});
        reader.skipCurrentElement();
    }
    if (reader.hasError())
        return std::nullopt;
    return transactions;
}

bool RegisterStore::isEncrypted() const
{
    QFile file(_path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    return wq::xml_inspectEnvelopeUTF8(file.readAll()).error == wq::WQEnvelopeError::None;
}

RegisterStore::Loaded RegisterStore::load(const QString& password) const
{
    Loaded loaded;
    QFile file(_path);
    if (!file.exists()) {
        loaded.ok = true;
        return loaded;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        loaded.error = QStringLiteral("The register could not be read: %1").arg(file.errorString());
        return loaded;
    }
    QByteArray bytes = file.readAll();
    if (wq::xml_inspectEnvelopeUTF8(bytes).error == wq::WQEnvelopeError::None) {
        loaded.encrypted = true;
        wq::WQDecryptedDocumentUTF8 opened = wq::xml_decryptDocumentUTF8WithPassword(bytes, password);
        if (!opened.ok()) {
            loaded.error = wq::WQEnvelopeErrorDescription(opened.error);
            return loaded;
        }
        bytes = std::move(opened.document);
    }
    std::optional<QList<Transaction>> transactions = fromXml(bytes);
    if (!transactions) {
        loaded.error = QStringLiteral("The register file is damaged; it was left as it is.");
        return loaded;
    }
    loaded.ok = true;
    loaded.transactions = std::move(*transactions);
    return loaded;
}

bool RegisterStore::save(const QList<Transaction>& transactions, const QString& password, QString* error) const
{
    const auto fail = [error](const QString& message) {
        if (error)
            *error = message;
        return false;
    };
    if (!isLocked())
        return fail(QStringLiteral("The register is open in another window; changes here are not kept."));
    const QByteArray xml = toXml(transactions);
    const QByteArray contents =
        password.isEmpty() ? xml : wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(xml, password);
    QSaveFile file(_path);
    if (!file.open(QIODevice::WriteOnly))
        return fail(QStringLiteral("The register could not be saved: %1").arg(file.errorString()));
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(contents) != contents.size() || !file.commit())
        return fail(QStringLiteral("The register could not be saved: %1").arg(file.errorString()));
    return true;
}

} // namespace showcase
