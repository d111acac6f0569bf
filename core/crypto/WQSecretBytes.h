#pragma once
// A byte buffer for passwords and keys that is wiped before it is freed.

#include <QString>

#include <cstdint>
#include <vector>

namespace wq {

class WQSecretBytes {
public:
    WQSecretBytes() = default;
    explicit WQSecretBytes(qsizetype size) : _wq_bytes(size_t(size)) {}
    WQSecretBytes(const WQSecretBytes&) = delete;
    WQSecretBytes& operator=(const WQSecretBytes&) = delete;
    WQSecretBytes(WQSecretBytes&&) = default;   // the moved-from buffer is left empty
    WQSecretBytes& operator=(WQSecretBytes&&) = delete;
    ~WQSecretBytes();

    std::uint8_t* data() { return _wq_bytes.data(); }
    const std::uint8_t* data() const { return _wq_bytes.data(); }
    qsizetype size() const { return qsizetype(_wq_bytes.size()); }
    void truncate(qsizetype size);

private:
    std::vector<std::uint8_t> _wq_bytes;
};

// The password's UTF-8 bytes. With cutToUnitCount the bytes are cut to as
// many as the password has UTF-16 units, as the classic envelopes were made.
WQSecretBytes _wq_passwordBytes(const QString& password, bool cutToUnitCount);

} // namespace wq
