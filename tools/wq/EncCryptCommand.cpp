// wq encrypt [--classic | --iterations N] [--insecure] [password option] IN OUT
// wq decrypt [--max-size MIB] [password option] IN OUT
// wq inspect [--max-size MIB] ENVELOPE
// Password options: --password-file FILE, --password-stdin; otherwise the
// terminal is asked, without echo. A password is never taken from the
// command line, where other users could read it.
//
// Documents and envelopes stay in their UTF-8 bytes from file to file.

#include "EncToolSupport.h"

#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include <QFileDevice>

namespace {

using namespace wq::tool;

const QString kPasswordHelp = QStringLiteral(
    "The password comes from --password-file FILE (one line break at its end dropped;\n"
    "\"-\" is standard input), the first line of standard input (--password-stdin), or\n"
    "else the terminal, without echo; never from the command line, where other users\n"
    "could read it. IN and OUT may be \"-\" for standard input and output.");

// PBKDF2-HMAC-SHA256 iteration counts below this are refused without
// --insecure: OWASP Password Storage Cheat Sheet (2023), 600,000.
constexpr std::uint32_t kRecommendedIterations = wq::kWQAuthenticatedIterationCount;

QStringList files(const Arguments& args, const PasswordSource& password, const char* usage)
{
    QStringList files = args.operands();
    if (files.size() != 2)
        throw UsageError{QString::fromLatin1(usage)};
    if (password.standardInput && files.at(0) == u"-")
        throw UsageError{QStringLiteral("standard input cannot carry both the password and the document")};
    return files;
}

// --max-size in mebibytes, or the reader's default.
wq::WQEnvelopeLimits takeLimits(Arguments& args)
{
    wq::WQEnvelopeLimits limits;
    const QString text = args.option(QStringLiteral("--max-size"));
    if (text.isNull())
        return limits;
    bool ok = false;
    const qlonglong mebibytes = text.toLongLong(&ok);
    constexpr qlonglong kMost = 1024 * 1024;   // a tebibyte
    if (!ok || mebibytes < 1 || mebibytes > kMost)
        throw UsageError{QStringLiteral("--max-size takes a number of mebibytes from 1 to %1, not \"%2\"").arg(kMost).arg(text)};
    limits.maximumSize = qsizetype(mebibytes) * 1024 * 1024;
    return limits;
}

int runEncrypt(const QStringList& list)
{
    static const char* usage =
        "usage: wq encrypt [--classic | --iterations N] [--insecure] [--password-file FILE | --password-stdin] IN OUT";
    Arguments args(list);
    const bool classic = args.flag(QStringLiteral("--classic"));
    // The authenticated envelope is the default; the flag stays for scripts
    // written when it was not.
    const bool authenticated = args.flag(QStringLiteral("--authenticated"));
    const bool insecure = args.flag(QStringLiteral("--insecure"));
    const QString iterationText = args.option(QStringLiteral("--iterations"));
    const PasswordSource source = takePasswordSource(args);
    const QStringList paths = files(args, source, usage);
    if (classic && authenticated)
        throw UsageError{QStringLiteral("--classic and --authenticated exclude each other")};
    if (classic && !iterationText.isNull())
        throw UsageError{QStringLiteral("--iterations is for the authenticated envelope; the classic one always uses 1000")};
    std::uint32_t iterations = kRecommendedIterations;
    if (!iterationText.isNull()) {
        bool ok = false;
        iterations = iterationText.toUInt(&ok);
        if (!ok || iterations == 0 || iterations > wq::kWQMaximumIterationCount)
            throw UsageError{QStringLiteral("--iterations takes 1 to %1, not \"%2\"").arg(wq::kWQMaximumIterationCount).arg(iterationText)};
        if (iterations < kRecommendedIterations && !insecure)
            throw UsageError{QStringLiteral("%1 iterations are too few to slow down password guessing: %2 is the current "
                                            "recommendation for PBKDF2-HMAC-SHA256 (give --insecure to use fewer anyway)")
                                 .arg(iterations).arg(kRecommendedIterations)};
    }
    if (classic)
        err(QStringLiteral("note: the classic envelope derives its key with a fixed 1000 iterations of "
                           "PBKDF2-HMAC-SHA1, which is weak; write it only for readers that need it"));
    const std::optional<QByteArray> document = readAll(paths[0]);
    if (!document)
        return kExitUsage;
    if (!QByteArrayView(*document).isValidUtf8()) {
        err(QStringLiteral("%1 is not UTF-8 text").arg(paths[0]));
        return kExitUsage;
    }
    // Its reader opens a classic envelope only to a well-formed document, so
    // its writer refuses anything else. A person is told before typing a
    // password; otherwise the writer's own check is the only pass.
    const auto refuse = [&paths] {
        err(QStringLiteral("%1 is not a well-formed XML document, and the classic envelope takes nothing else "
                           "(it could never be opened); the authenticated envelope, the default, takes any text")
                .arg(paths[0]));
        return kExitUsage;
    };
    const bool prompting = source.file.isEmpty() && !source.standardInput;
    if (classic && prompting && !wq::xml_isWellFormedDocumentUTF8(*document))
        return refuse();
    // An output that cannot be made is found before the password is asked for.
    Output output;
    if (!output.open(paths[1]))
        return kExitUsage;
    std::optional<QString> password = readPassword(
        source, true,
        insecure ? QString() : QStringLiteral("anyone could open the document (give --insecure to use it anyway)"));
    if (!password)
        return kExitUsage;
    // Streamed into the output as it is made: the envelope is never held whole.
    const bool sealed = classic
        ? wq::xml_encryptDocumentUTF8WithPassword(*document, *password, output.device())
        : wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(*document, *password, output.device(), iterations);
    forget(*password);
    if (!sealed) {
        if (classic && !wq::xml_isWellFormedDocumentUTF8(*document))
            return refuse();
        // Not committed: the part written goes with the temporary file.
        const auto* file = qobject_cast<const QFileDevice*>(&output.device());
        err(file && file->error() != QFileDevice::NoError
                ? QStringLiteral("cannot write %1: %2").arg(paths[1], file->errorString())
                : QStringLiteral("the document could not be encrypted"));
        return kExitFailure;
    }
    return output.commit() ? kExitOK : kExitFailure;
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

int runDecrypt(const QStringList& list)
{
    static const char* usage = "usage: wq decrypt [--max-size MIB] [--password-file FILE | --password-stdin] IN OUT";
    Arguments args(list);
    const wq::WQEnvelopeLimits limits = takeLimits(args);
    const PasswordSource source = takePasswordSource(args);
    const QStringList paths = files(args, source, usage);
    // Refuse what is not an envelope, and an output that cannot be made,
    // before asking for a password.
    wq::WQEnvelopeInfo info;
    const std::optional<QByteArray> envelope = readEnvelope(paths[0], limits, &info, wq::WQEnvelopeDetail::Structure);
    if (!envelope)
        return kExitUsage;
    // Plain text: readable by its owner only.
    Output output;
    if (!output.open(paths[1], true))
        return kExitUsage;
    if (!info.authenticated)
        err(QStringLiteral("note: %1 is a classic envelope, which is not protected against tampering "
                           "(wq encrypt makes one that is)").arg(paths[0]));
    // An empty password is tried like any other: documents written with
    // --insecure must open.
    std::optional<QString> password = readPassword(source, false, QString());
    if (!password)
        return kExitUsage;
    const wq::WQDecryptedDocumentUTF8 opened = wq::xml_decryptDocumentUTF8WithPassword(*envelope, *password, limits);
    forget(*password);
    if (!opened.ok()) {
        err(QStringLiteral("%1: %2").arg(paths[0], wq::WQEnvelopeErrorDescription(opened.error)));
        return opened.error == wq::WQEnvelopeError::WrongPasswordOrDamaged ? kExitFailure : kExitUsage;
    }
    return output.write(opened.document) && output.commit() ? kExitOK : kExitFailure;
}

int runInspect(const QStringList& list)
{
    Arguments arguments(list);
    const wq::WQEnvelopeLimits limits = takeLimits(arguments);
    const QStringList args = arguments.operands();
    if (args.size() != 1)
        throw UsageError{QStringLiteral("usage: wq inspect [--max-size MIB] ENVELOPE")};
    wq::WQEnvelopeInfo info;
    if (!readEnvelope(args[0], limits, &info, wq::WQEnvelopeDetail::Everything))
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
    QStringLiteral("encrypt [--classic | --iterations N] [--insecure] [--password-file FILE | --password-stdin] IN OUT"),
    QStringLiteral("Encrypts the UTF-8 document IN into the envelope OUT, written whole or not at\n"
                   "all. By default the envelope is authenticated (AES-128-GCM, PBKDF2-HMAC-SHA256\n"
                   "with --iterations N, default and least %1): any change to it is found when it\n"
                   "is opened. --classic writes the classic envelope (AES-128-CBC, a fixed 1000\n"
                   "iterations of PBKDF2-HMAC-SHA1) for older readers; it is weak, and it takes\n"
                   "only a well-formed XML document (its reader opens nothing else).\n"
                   "--insecure allows an empty password and fewer iterations.\n"
                   "\n").arg(kRecommendedIterations) + kPasswordHelp,
    &runEncrypt};
const Registrar decryptRegistrar{
    QStringLiteral("decrypt"),
    QStringLiteral("decrypt [--max-size MIB] [--password-file FILE | --password-stdin] IN OUT"),
    QStringLiteral("Opens the envelope IN into OUT (readable by its owner only), written whole or\n"
                   "not at all. Status 1 for a wrong password or a damaged envelope. Envelopes over\n"
                   "--max-size mebibytes (default 64) are refused unread.\n"
                   "\n") + kPasswordHelp,
    &runDecrypt};
const Registrar inspectRegistrar{
    QStringLiteral("inspect"), QStringLiteral("inspect [--max-size MIB] ENVELOPE"),
    QStringLiteral("The algorithms, iteration count and sizes of an envelope, without opening it.\n"
                   "ENVELOPE may be \"-\" for standard input."),
    &runInspect};

} // namespace
