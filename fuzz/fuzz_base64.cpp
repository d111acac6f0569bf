// The lenient Base64 decoder on arbitrary text, and the encoder round trip.
#include "FuzzInput.h"

#include <WQGeneral/encoding/WQBase64.h>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)wq::dataWithBase64EncodedString(bytes);
    (void)wq::dataWithBase64EncodedString(QStringView(QString::fromUtf8(bytes)));
    const QString encoded = wq::base64EncodingWithLineLength(bytes, 0);
    const auto decoded = wq::dataWithBase64EncodedString(QStringView(encoded));
    // Empty text decodes to nothing by design; everything else must round-trip.
    if (size > 0 && (!decoded || *decoded != bytes))
        std::abort();
    return 0;
}
