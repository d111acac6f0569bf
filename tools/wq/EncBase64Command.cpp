// wq base64 encode|decode [--line-length N] [IN [OUT]]

#include "EncToolSupport.h"

#include <WQGeneral/encoding/WQBase64.h>

namespace {

using namespace wq::tool;

int runBase64(const QStringList& arguments)
{
    QStringList args = arguments;
    const QString lineLength = takeOption(args, QStringLiteral("--line-length"));
    if (args.isEmpty() || args.size() > 3 || (args[0] != u"encode" && args[0] != u"decode")) {
        err(QStringLiteral("usage: wq base64 encode|decode [--line-length N] [IN [OUT]]"));
        return kExitUsage;
    }
    const bool encode = args[0] == u"encode";
    const QString in = args.value(1, QStringLiteral("-"));
    const QString out = args.value(2, QStringLiteral("-"));
    bool ok = true;
    const uint length = lineLength.isNull() ? 0 : lineLength.toUInt(&ok);
    if (!ok) {
        err(QStringLiteral("the line length must be a whole number, not \"%1\"").arg(lineLength));
        return kExitUsage;
    }
    const std::optional<QByteArray> input = readAll(in);
    if (!input)
        return kExitUsage;

    if (encode) {
        // Lines are broken only on request, with the framework's own encoder.
        const QString text = length == 0
            ? wq::base64EncodingWithLineLength(*input)
            : wq::base64EncodingWithLineLength(*input, length, wq::WQBase64Encoder::Own);
        QByteArray bytes = text.toLatin1();
        if (!bytes.endsWith('\n'))
            bytes.append('\n');
        return writeAll(out, bytes) ? kExitOK : kExitFailure;
    }
    if (std::any_of(input->cbegin(), input->cend(), [](char c) { return std::uint8_t(c) >= 128; })) {
        err(QStringLiteral("%1 is not Base64 text (it holds bytes that are not ASCII)").arg(in));
        return kExitUsage;
    }
    const std::optional<QByteArray> decoded = wq::dataWithBase64EncodedString(QByteArrayView(*input));
    return writeAll(out, decoded.value_or(QByteArray())) ? kExitOK : kExitFailure;
}

const Registrar registrar{QStringLiteral("base64"), QStringLiteral("base64 encode|decode [--line-length N] [IN [OUT]]"),
                          &runBase64};

} // namespace
