#pragma once
// Text to UTF-8 for the envelopes' text interfaces: byte for byte what
// QString::toUtf8() gives (a lone surrogate becomes "?"), but with whole
// runs of ASCII narrowed sixteen units at a time, into a buffer given huge
// pages. Envelopes are ASCII, documents mostly are.

#include <QByteArray>
#include <QStringView>

namespace wq {

QByteArray _wq_toUTF8(QStringView text);

} // namespace wq
