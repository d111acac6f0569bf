// The encrypted-document reader on arbitrary envelopes: an answer, never a crash.
#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString envelope = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)wq::xml_decryptDocumentWithPassword(envelope, QStringLiteral("password"));
    return 0;
}
