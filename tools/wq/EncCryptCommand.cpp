// wq encrypt [--authenticated] [--iterations N] [password option] IN OUT
// wq decrypt [password option] IN OUT
// wq inspect ENVELOPE
// Password options: --password-file FILE, --password-stdin; otherwise the
// terminal is asked, without echo. A password is never taken from the
// command line, where other users could read it.

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
    const std::optional<QByteArray> input = readAll(args[0]);
    if (!input)
        return kExitUsage;
    const std::optional<QString> document = utf8Text(*input, args[0]);
    if (!document)
        return kExitUsage;
    std::optional<QString> password = readPassword(source, true);
    if (!password)
        return kExitUsage;
    const QString envelope = authenticated
        ? wq::xml_encryptDocumentAuthenticatedWithPassword(*document, *password, iterations)
        : wq::xml_encryptDocumentWithPassword(*document, *password);
    forget(*password);
    if (envelope.isEmpty()) {
        err(QStringLiteral("the document could not be encrypted"));
        return kExitFailure;
    }
    return writeAll(args[1], envelope.toUtf8()) ? kExitOK : kExitFailure;
}

struct Envelope {
    QString text;
    wq::WQEnvelopeInfo info;
};

// Reads an envelope file and checks its shape; otherwise says why and
// answers nothing.
std::optional<Envelope> readEnvelope(const QString& path)
{
    const std::optional<QByteArray> input = readAll(path);
    if (!input)
        return std::nullopt;
    std::optional<QString> text = utf8Text(*input, path);
    if (!text)
        return std::nullopt;
    wq::WQEnvelopeInfo info = wq::xml_inspectEnvelope(*text);
    if (info.error != wq::WQEnvelopeError::None) {
        err(QStringLiteral("%1: %2").arg(path, wq::WQEnvelopeErrorDescription(info.error)));
        return std::nullopt;
    }
    return Envelope{std::move(*text), std::move(info)};
}

int runDecrypt(const QStringList& arguments)
{
    static const char* usage = "usage: wq decrypt [--password-file FILE | --password-stdin] IN OUT";
    QStringList args = arguments;
    const PasswordSource source = takePasswordSource(args);
    if (!checkFiles(args, source, usage))
        return kExitUsage;
    // Refuse what is not an envelope before asking for a password.
    const std::optional<Envelope> envelope = readEnvelope(args[0]);
    if (!envelope)
        return kExitUsage;
    std::optional<QString> password = readPassword(source, false);
    if (!password)
        return kExitUsage;
    const wq::WQDecryptedDocument opened = wq::xml_decryptDocumentWithPassword(envelope->text, *password);
    forget(*password);
    if (!opened.ok()) {
        err(QStringLiteral("%1: %2").arg(args[0], wq::WQEnvelopeErrorDescription(opened.error)));
        return opened.error == wq::WQEnvelopeError::WrongPasswordOrDamaged ? kExitFailure : kExitUsage;
    }
    return writeAll(args[1], opened.document.toUtf8()) ? kExitOK : kExitFailure;
}

int runInspect(const QStringList& args)
{
    if (args.size() != 1) {
        err(QStringLiteral("usage: wq inspect ENVELOPE"));
        return kExitUsage;
    }
    const std::optional<Envelope> envelope = readEnvelope(args[0]);
    if (!envelope)
        return kExitUsage;
    const wq::WQEnvelopeInfo& info = envelope->info;
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
const Registrar decryptRegistrar{QStringLiteral("decrypt"),
                                 QStringLiteral("decrypt [--password-file FILE | --password-stdin] IN OUT"), &runDecrypt};
const Registrar inspectRegistrar{QStringLiteral("inspect"), QStringLiteral("inspect ENVELOPE"), &runInspect};

} // namespace
