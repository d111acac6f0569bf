#include "RegisterStore.h"

#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/money/WQMoneyConstants.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
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

QString notSaved(const QString& why)
{
    return QStringLiteral("The register could not be saved: %1").arg(why);
}

// Writes contents whole or not at all, readable by its owner only; the error, or nothing.
QString writeFile(const QString& path, const QByteArray& contents)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return notSaved(file.errorString());
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(contents) != contents.size() || !file.commit())
        return notSaved(file.errorString());
    return QString();
}

// The loaded register from the file's (decrypted) XML.
RegisterStore::Loaded parsed(RegisterStore::Loaded loaded, const QByteArray& xml)
{
    std::optional<RegisterStore::Contents> contents = RegisterStore::fromXml(xml);
    if (!contents) {
        loaded.error = QStringLiteral("The register file is damaged; it was left as it is.");
        return loaded;
    }
    loaded.ok = true;
    loaded.contents = std::move(*contents);
    return loaded;
}

// The envelope opened, or why not.
RegisterStore::Loaded opened(RegisterStore::Loaded loaded, const wq::WQDecryptedDocumentUTF8& document)
{
    if (document.ok())
        return parsed(std::move(loaded), document.document);
    loaded.wrongPassword = document.error == wq::WQEnvelopeError::WrongPasswordOrDamaged;
    loaded.error = wq::WQEnvelopeErrorDescription(document.error);
    return loaded;
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

QVariantMap RegisterStore::systemCurrency()
{
    // As the money formatter reads the system's settings, blank and all, so
    // that amounts look the same before and after they are recorded.
    const QString positive = wq::WQMoneyFormatter::systemPositiveCurrencyFormat();
    QString symbol = wq::WQMoneyFormatter::systemCurrencySymbol();
    if (positive.endsWith(QStringLiteral(" $")))
        symbol.prepend(u' ');
    else if (positive.startsWith(QStringLiteral("$ ")))
        symbol.append(u' ');
    const QLocale monetary(wq::WQRegionalSettings::localeName(wq::WQRegionalSettings::Category::Monetary));
    return {{wq::kWQCurrencyKey_UseSystem, 0},
            {wq::kWQCurrencyKey_Code, monetary.currencySymbol(QLocale::CurrencyIsoCode)},
            {wq::kWQCurrencyKey_CurrencySymbol, symbol},
            {wq::kWQCurrencyKey_PositiveCurrencyFormatString, positive},
            {wq::kWQCurrencyKey_NegativeCurrencyFormatString, wq::WQMoneyFormatter::systemNegativeCurrencyFormat()},
            {wq::kWQCurrencyKey_ThousandsSeparator, wq::WQMoneyFormatter::systemCurrencyThousandsSeparator()},
            {wq::kWQCurrencyKey_DecimalSeparator, wq::WQDecimalFormatter::systemDecimalSeparator()}};
}

QByteArray RegisterStore::toXml(const Contents& contents)
{
    QByteArray xml;
    QXmlStreamWriter writer(&xml);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("register"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("2"));
    if (contents.currency) {
        // Every entry, whatever the application put there: numbers and texts.
        writer.writeStartElement(QStringLiteral("currency"));
        for (auto it = contents.currency->cbegin(); it != contents.currency->cend(); ++it) {
            writer.writeStartElement(QStringLiteral("setting"));
            writer.writeAttribute(QStringLiteral("key"), it.key());
            const bool number = it.value().typeId() != QMetaType::QString;
            writer.writeAttribute(number ? QStringLiteral("number") : QStringLiteral("text"),
                                  number ? QString::number(it.value().toDouble(), 'g', QLocale::FloatingPointShortest)
                                         : it.value().toString());
            writer.writeEndElement();
        }
        writer.writeEndElement();
    }
    for (const Transaction& t : contents.transactions) {
        writer.writeStartElement(QStringLiteral("transaction"));
        writer.writeAttribute(QStringLiteral("date"), isoDate(t.date));
        writer.writeAttribute(QStringLiteral("payee"), t.payee);
        // The shortest text that reads back as the same number: -84.17, not
        // the digits of its binary neighbourhood.
        writer.writeAttribute(QStringLiteral("amount"), QString::number(t.amount, 'g', QLocale::FloatingPointShortest));
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

std::optional<RegisterStore::Contents> RegisterStore::fromXml(QByteArrayView xml)
{
    QXmlStreamReader reader(xml.toByteArray());
    Contents contents;
    if (!reader.readNextStartElement() || reader.name() != u"register")
        return std::nullopt;
    while (reader.readNextStartElement()) {
        if (reader.name() == u"currency" && !contents.currency && contents.transactions.isEmpty()) {
            QVariantMap currency;
            while (reader.readNextStartElement()) {
                const QXmlStreamAttributes a = reader.attributes();
                bool number = true;
                if (reader.name() != u"setting" || !a.hasAttribute(QStringLiteral("key")))
                    return std::nullopt;
                if (a.hasAttribute(QStringLiteral("number")))
                    currency.insert(a.value(QStringLiteral("key")).toString(),
                                    a.value(QStringLiteral("number")).toDouble(&number));
                else
                    currency.insert(a.value(QStringLiteral("key")).toString(), a.value(QStringLiteral("text")).toString());
                if (!number)
                    return std::nullopt;
                reader.skipCurrentElement();
            }
            contents.currency = std::move(currency);
            continue;
        }
        if (reader.name() != u"transaction")
            return std::nullopt;
        const QXmlStreamAttributes a = reader.attributes();
        const std::optional<wq::WQDate> date = fromIsoDate(a.value(QStringLiteral("date")));
        bool number = false;
        const double amount = a.value(QStringLiteral("amount")).toDouble(&number);
        if (!date || !number || !std::isfinite(amount))
            return std::nullopt;
        contents.transactions.append(Transaction{*date, a.value(QStringLiteral("payee")).toString(), amount,
                                                 a.value(QStringLiteral("shown")).toString(),
                                                 a.value(QStringLiteral("cleared")) == QStringLiteral("yes")});
        reader.skipCurrentElement();
    }
    if (reader.hasError())
        return std::nullopt;
    return contents;
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
    return loadAsync(password).result();
}

QFuture<RegisterStore::Loaded> RegisterStore::loadAsync(const QString& password) const
{
    Loaded loaded;
    QFile file(_path);
    if (!file.exists()) {
        loaded.ok = true;
        return QtFuture::makeReadyFuture(loaded);
    }
    loaded.exists = true;
    if (!file.open(QIODevice::ReadOnly)) {
        loaded.error = QStringLiteral("The register could not be read: %1").arg(file.errorString());
        return QtFuture::makeReadyFuture(loaded);
    }
    const QByteArray bytes = file.readAll();
    if (wq::xml_inspectEnvelopeUTF8(bytes, {}, wq::WQEnvelopeDetail::Structure).error != wq::WQEnvelopeError::None)
        return QtFuture::makeReadyFuture(parsed(loaded, bytes));
    loaded.encrypted = true;
    return wq::xml_decryptDocumentUTF8WithPasswordAsync(bytes, password)
        .then([loaded](const wq::WQDecryptedDocumentUTF8& document) { return opened(loaded, document); });
}

std::optional<QString> RegisterStore::_refusal() const
{
    if (!isLocked())
        return QStringLiteral("The register is open in another window; changes here are not kept.");
    return std::nullopt;
}

bool RegisterStore::save(const Contents& contents, const QString& password, QString* error) const
{
    QString problem = _refusal().value_or(QString());
    if (problem.isEmpty()) {
        const QByteArray xml = toXml(contents);
        problem = writeFile(_path, password.isEmpty() ? xml : wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(xml, password));
    }
    if (error)
        *error = problem;
    return problem.isEmpty();
}

QFuture<QString> RegisterStore::saveAsync(const Contents& contents, const QString& password) const
{
    if (const std::optional<QString> refusal = _refusal())
        return QtFuture::makeReadyFuture(*refusal);
    const QByteArray xml = toXml(contents);
    const QString path = _path;
    if (password.isEmpty())
        return QtFuture::makeReadyFuture(writeFile(path, xml));
    return wq::xml_encryptDocumentUTF8AuthenticatedWithPasswordAsync(xml, password)
        .then([path](const QByteArray& envelope) {
            return envelope.isEmpty() ? notSaved(QStringLiteral("it could not be encrypted")) : writeFile(path, envelope);
        });
}

} // namespace showcase
