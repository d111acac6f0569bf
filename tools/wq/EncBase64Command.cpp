// wq base64 encode|decode [--line-length N] [IN [OUT]]
//
// Both directions stream in fixed-size pieces, so memory stays the same
// whatever the input's size, from files or from standard input to standard
// output alike; the result is byte for byte the whole-text encoding.

#include "EncToolSupport.h"

#include <WQGeneral/encoding/WQBase64.h>

#include <array>

namespace {

using namespace wq::tool;

// Input read at a time: a multiple of 3, so that every piece but the last
// encodes without padding.
constexpr qsizetype kEncodePiece = 3 * 256 * 1024;
constexpr qsizetype kDecodePiece = 1024 * 1024;

// Encodes, breaking lines after every lineCharacters characters (0: never),
// as the framework's own encoder does: a line feed follows each group that
// completes a line, the last one included.
int encode(Input& in, Output& out, qint64 lineCharacters)
{
    QByteArray piece(kEncodePiece, Qt::Uninitialized);
    QByteArray broken;
    qint64 column = 0;
    bool endsWithLineFeed = false;
    for (;;) {
        const qsizetype got = in.read(piece.data(), piece.size());
        if (got < 0)
            return kExitUsage;
        if (got == 0)
            break;
        const QByteArray text = wq::base64EncodedBytes(QByteArrayView(piece).first(got));
        if (lineCharacters == 0) {
            if (!out.write(text))
                break;
            endsWithLineFeed = false;
            continue;
        }
        broken.clear();
        broken.reserve(text.size() + text.size() / lineCharacters + 1);
        for (qsizetype at = 0; at < text.size();) {
            const qsizetype take = qsizetype(std::min<qint64>(lineCharacters - column, text.size() - at));
            broken.append(text.constData() + at, take);
            at += take;
            column += take;
            endsWithLineFeed = column == lineCharacters;
            if (endsWithLineFeed) {
                broken.append('\n');
                column = 0;
            }
        }
        if (!out.write(broken))
            break;
        if (got < piece.size())
            break;
    }
    if (!endsWithLineFeed)
        out.write("\n");
    return out.commit() ? kExitOK : kExitFailure;
}

enum : std::uint8_t { kSkipped, kAlphabet, kPad, kNotASCII };

constexpr std::array<std::uint8_t, 256> makeClasses()
{
    std::array<std::uint8_t, 256> table{};
    for (int c = 'A'; c <= 'Z'; ++c)
        table[size_t(c)] = kAlphabet;
    for (int c = 'a'; c <= 'z'; ++c)
        table[size_t(c)] = kAlphabet;
    for (int c = '0'; c <= '9'; ++c)
        table[size_t(c)] = kAlphabet;
    table['+'] = table['/'] = kAlphabet;
    table['='] = kPad;
    for (int c = 128; c < 256; ++c)
        table[size_t(c)] = kNotASCII;
    return table;
}
constexpr auto kClass = makeClasses();

// The lenient decoder, fed in pieces. It skips every character outside
// the alphabet, so the pieces are first filtered down to their alphabet
// characters (up to the first "="), which are then decoded a whole number
// of groups at a time. A last, short group can borrow from the group before
// it, so the final call is given that group again and its three bytes are
// dropped from the answer.
class Decoder {
public:
    explicit Decoder(Output& out) : _wq_out(out) {}

    // False once input that is not ASCII was seen.
    bool feed(QByteArrayView bytes)
    {
        const qsizetype kept = _wq_carry.size();
        _wq_carry.resize(kept + bytes.size());
        char* out = _wq_carry.data() + kept;
        for (const char c : bytes) {
            const std::uint8_t kind = kClass[std::uint8_t(c)];
            if (kind == kNotASCII)
                return false;
            if (_wq_stopped)
                continue;   // ignored, but it still has to be ASCII text
            if (kind != kSkipped)
                *out++ = c;
            _wq_stopped = kind == kPad;
        }
        _wq_carry.truncate(out - _wq_carry.constData());
        if (!_wq_stopped) {
            const qsizetype whole = _wq_carry.size() / 4 * 4;
            if (whole >= 4) {
                write(QByteArrayView(_wq_carry).first(whole), 0);
                _wq_lastGroup = QByteArrayView(_wq_carry).sliced(whole - 4, 4).toByteArray();
                _wq_carry.remove(0, whole);
            }
        }
        return true;
    }

    // An incomplete group at the end without "=" is dropped, as the decoder
    // drops it.
    void finish()
    {
        if (_wq_stopped)
            write(_wq_lastGroup + _wq_carry, _wq_lastGroup.size() / 4 * 3);
    }

private:
    void write(QByteArrayView text, qsizetype skip)
    {
        const std::optional<QByteArray> bytes = wq::dataWithBase64EncodedString(text);
        if (bytes && bytes->size() > skip)
            _wq_out.write(QByteArrayView(*bytes).sliced(skip));
    }

    Output& _wq_out;
    QByteArray _wq_carry;
    QByteArray _wq_lastGroup;
    bool _wq_stopped = false;
};

int decode(Input& in, Output& out, const QString& name)
{
    QByteArray piece(kDecodePiece, Qt::Uninitialized);
    Decoder decoder(out);
    for (;;) {
        const qsizetype got = in.read(piece.data(), piece.size());
        if (got < 0)
            return kExitUsage;
        if (got == 0)
            break;
        if (!decoder.feed(QByteArrayView(piece).first(got))) {
            err(QStringLiteral("%1 is not Base64 text (it holds bytes that are not ASCII)").arg(name));
            out.commit();
            return kExitUsage;
        }
    }
    decoder.finish();
    return out.commit() ? kExitOK : kExitFailure;
}

int runBase64(const QStringList& list)
{
    Arguments arguments(list);
    const QString lineLength = arguments.option(QStringLiteral("--line-length"));
    const QStringList args = arguments.operands();
    if (args.isEmpty() || args.size() > 3 || (args[0] != u"encode" && args[0] != u"decode")) {
        err(QStringLiteral("usage: wq base64 encode|decode [--line-length N] [IN [OUT]]"));
        return kExitUsage;
    }
    const bool encoding = args[0] == u"encode";
    const QString inName = args.value(1, QStringLiteral("-"));
    const QString outName = args.value(2, QStringLiteral("-"));
    bool ok = true;
    const uint length = lineLength.isNull() ? 0 : lineLength.toUInt(&ok);
    if (!ok) {
        err(QStringLiteral("the line length must be a whole number, not \"%1\"").arg(lineLength));
        return kExitUsage;
    }
    Input in;
    if (!in.open(inName))
        return kExitUsage;
    Output out;
    if (!out.open(outName))
        return kExitUsage;
    // Lines hold the smallest multiple of 4 characters not below the length.
    return encoding ? encode(in, out, (qint64(length) + 3) / 4 * 4) : decode(in, out, inName);
}

const Registrar base64Registrar{
    QStringLiteral("base64"), QStringLiteral("base64 encode|decode [--line-length N] [IN [OUT]]"),
    QStringLiteral("Base64 of IN into OUT, either of them \"-\" or left out for standard input\n"
                   "and output. encode breaks lines after N characters (rounded up to a multiple\n"
                   "of 4; 0, the default, never); decode skips anything outside the alphabet and\n"
                   "refuses bytes that are not ASCII."),
    &runBase64};

} // namespace
