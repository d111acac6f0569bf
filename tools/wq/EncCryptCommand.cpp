// wq encrypt [--authenticated] [--iterations N] [password option] IN OUT
// wq decrypt [--max-size MIB] [password option] IN OUT
// wq inspect [--max-size MIB] ENVELOPE
// Password options: --password-file FILE, --password-stdin; otherwise the
// terminal is asked, without echo. A password is never taken from the
// command line, where other users could read it.
//
// Documents and envelopes stay in their UTF-8 bytes from file to file.

#include "EncToolSupport.h"

#include <WQGeneral/crypto/WQEncryptedDocument.h>

namespace {

using namespace wq::tool;

bool checkFiles(const QStringList& args, const PasswordSource& password, const char* usage)
{
    if (args.size() != 2 || args[0].startsWith(u"--") || args[1].startsWith(u"--")) {
        err(QString::fromLatin1(usage));
        return false;
    }
    if (password.standardInput && args[0] == u"-") {
        err(QStringLiteral("standard input cannot carry both the password and the document"));
        return false;
    }
    return true;
}

// --max-size in mebibytes, or the reader's default.
std::optional<wq::WQEnvelopeLimits> takeLimits(QStringList& args)
{
    wq::WQEnvelopeLimits limits;
    const QString text = takeOption(args, QStringLiteral("--max-size"));
    if (text.isNull())
        return limits;
    bool ok = false;
    const qlonglong mebibytes = text.toLongLong(&ok);
    constexpr qlonglong kMost = 1024 * 1024;   // a tebibyte
    if (!ok || mebibytes < 1 || mebibytes > kMost) {
        err(QStringLiteral("--max-size takes a number of mebibytes from 1 to %1, not \"%2\"").arg(kMost).arg(text));
        return std::nullopt;
    }
    limits.maximumSize = qsizetype(mebibytes) * 1024 * 1024;
    return limits;
}

int runEncrypt(const QStringList& arguments)
{
    static const char* usage =
        "usage: wq encrypt [--authenticated [--iterations N]] [--password-file FILE | --password-stdin] IN OUT";
    QStringList args = arguments;
    const bool authenticated = takeFlag(args, QStringLiteral("--authenticated"));
    const QString iterationText = takeOption(args, QStringLiteral("--iterations"));
    const PasswordSource source = takePasswordSource(args);
    if (!checkFiles(args, source, usage))
        return kExitUsage;
    std::uint32_t iterations = wq::kWQAuthenticatedIterationCount;
    if (!iterationText.isNull()) {
        bool ok = false;
        iterations = iterationText.toUInt(&ok);
        if (!authenticated || !ok || iterations == 0 || iterations > wq::kWQMaximumIterationCount) {
            err(QStringLiteral("--iterations goes with --authenticated and takes 1 to %1").arg(wq::kWQMaximumIterationCount));
            return kExitUsage;
        }
    }
    const std::optional<QByteArray> document = readAll(args[0]);
    if (!document)
        return kExitUsage;
    if (!QByteArrayView(*document).isValidUtf8()) {
        err(QStringLiteral("%1 is not UTF-8 text").arg(args[0]));
        return kExitUsage;
    }
    std::optional<QString> password = readPassword(source, true);
    if (!password)
        return kExitUsage;
    const QByteArray envelope = authenticated
        ? wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(*document, *password, iterations)
        : wq::xml_encryptDocumentUTF8WithPassword(*document, *password);
    forget(*password);
    if (envelope.isEmpty()) {
        err(QStringLiteral("the document could not be encrypted"));
        return kExitFailure;
    }
    return writeAll(args[1], envelope) ? kExitOK : kExitFailure;
}

// Reads an envelope file and checks its shape; otherwise says why and
// answers nothing.
std::optional<QByteArray> readEnvelope(const QString& path, const wq::WQEnvelopeLimits& limits, wq::WQEnvelopeInfo* info,
                                       wq::WQEnvelopeDetail detail)
{
    std::optional<QByteArray> envelope = readAll(path, limits.maximumSize);
    if (!envelope)
        return std::nullopt;
    wq::WQEnvelopeInfo inspected = wq::xml_inspectEnvelopeUTF8(*envelope, limits, detail);
    if (inspected.error != wq::WQEnvelopeError::None) {
        err(QStringLiteral("%1: %2").arg(path, wq::WQEnvelopeErrorDescription(inspected.error)));
        return std::nullopt;
    }
    if (info)
        *info = std::move(inspected);
    return envelope;
}

int runDecrypt(const QStringList& arguments)
{
    static const char* usage = "usage: wq decrypt [--max-size MIB] [--password-file FILE | --password-stdin] IN OUT";
    QStringList args = arguments;
    const std::optional<wq::WQEnvelopeLimits> limits = takeLimits(args);
    const PasswordSource source = takePasswordSource(args);
    if (!limits || !checkFiles(args, source, usage))
        return kExitUsage;
    // Refuse what is not an envelope before asking for a password.
    wq::WQEnvelopeInfo info;
    const std::optional<QByteArray> envelope = readEnvelope(args[0], *limits, &info, wq::WQEnvelopeDetail::Structure);
    if (!envelope)
        return kExitUsage;
    if (!info.authenticated)
        err(QStringLiteral("note: %1 is a classic envelope, which is not protected against tampering "
                           "(wq encrypt --authenticated makes one that is)").arg(args[0]));
    std::optional<QString> password = readPassword(source, false);
    if (!password)
        return kExitUsage;
    const wq::WQDecryptedDocumentUTF8 opened = wq::xml_decryptDocumentUTF8WithPassword(*envelope, *password, *limits);
    forget(*password);
    if (!opened.ok()) {
        err(QStringLiteral("%1: %2").arg(args[0], wq::WQEnvelopeErrorDescription(opened.error)));
        return opened.error == wq::WQEnvelopeError::WrongPasswordOrDamaged ? kExitFailure : kExitUsage;
    }
    // Plain text: readable by its owner only.
    return writeAll(args[1], opened.document, true) ? kExitOK : kExitFailure;
}

int runInspect(const QStringList& arguments)
{
    QStringList args = arguments;
    const std::optional<wq::WQEnvelopeLimits> limits = takeLimits(args);
    if (!limits || args.size() != 1) {
        err(QStringLiteral("usage: wq inspect [--max-size MIB] ENVELOPE"));
        return kExitUsage;
    }
    wq::WQEnvelopeInfo info;
    if (!readEnvelope(args[0], *limits, &info, wq::WQEnvelopeDetail::Everything))
        return kExitUsage;
    out(QStringLiteral("encryption:      %1%2").arg(info.encryptionAlgorithm,
                                                      info.authenticated ? QStringLiteral(" (authenticated)") : QString()));
    out(QStringLiteral("key derivation:  %1").arg(info.keyDerivationAlgorithm));
    out(QStringLiteral("pseudo-random:   %1").arg(info.pseudoRandomFunction.isEmpty()
                                                       ? QStringLiteral("(not given: HMAC-SHA1)")
                                                       : info.pseudoRandomFunction));
    out(QStringLiteral("iterations:      %1").arg(info.iterationCount));
    out(QStringLiteral("key length:      %1 bytes").arg(info.keyLength));
    out(QStringLiteral("salt length:     %1 bytes").arg(info.salt.size()));
    out(QStringLiteral("IV length:       %1 bytes").arg(info.iv.size()));
    out(QStringLiteral("cipher text:     %1 bytes%2").arg(info.cipherText.size())
            .arg(info.authenticated ? QStringLiteral(" (with a 16-byte tag)") : QString()));
    return kExitOK;
}

const Registrar encryptRegistrar{
    QStringLiteral("encrypt"),
    QStringLiteral("encrypt [--authenticated [--iterations N]] [--password-file FILE | --password-stdin] IN OUT"),
    &runEncrypt};
const Registrar decryptRegistrar{
    QStringLiteral("decrypt"),
    QStringLiteral("decrypt [--max-size MIB] [--password-file FILE | --password-stdin] IN OUT"), &runDecrypt};
const Registrar inspectRegistrar{QStringLiteral("inspect"), QStringLiteral("inspect [--max-size MIB] ENVELOPE"),
                                 &runInspect};

} // namespace
