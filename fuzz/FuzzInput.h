#pragma once
// Splits a fuzzer's bytes into the pieces a target needs.

#include <QString>

#include <cstddef>
#include <cstdint>

namespace wq::fuzz {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : _data(data), _size(size) {}

    std::uint8_t byte()
    {
        if (_pos >= _size)
            return 0;
        return _data[_pos++];
    }

    // Text up to the next NUL byte (or the end), read as UTF-8.
    QString text()
    {
        const std::size_t start = _pos;
        while (_pos < _size && _data[_pos] != 0)
            ++_pos;
        const QString s = QString::fromUtf8(reinterpret_cast<const char*>(_data + start), qsizetype(_pos - start));
        if (_pos < _size)
            ++_pos;
        return s;
    }

    QByteArray rest()
    {
        const QByteArray bytes(reinterpret_cast<const char*>(_data + _pos), qsizetype(_size - _pos));
        _pos = _size;
        return bytes;
    }

private:
    const std::uint8_t* _data;
    std::size_t _size;
    std::size_t _pos = 0;
};

} // namespace wq::fuzz
