#include "WQKeyTranslation.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>

#include <QInputMethodEvent>
#include <QKeyEvent>

namespace wq {
namespace {

// Only the framework's own formatters are known to read ASCII digits; a
// custom one gets what was typed.
bool readsAsciiDigits(const WQFormatter* formatter)
{
    return dynamic_cast<const WQNumberFormatter*>(formatter) || dynamic_cast<const WQDateFormatter*>(formatter);
}

// The separator an amount or number field reads as its decimal point.
QString decimalSeparator(const WQFormatter* formatter)
{
    if (const auto* money = dynamic_cast<const WQMoneyFormatter*>(formatter))
        return money->localizedDecimalSeparator();
    if (const auto* decimal = dynamic_cast<const WQDecimalFormatter*>(formatter))
        return decimal->decimalSeparator();
    if (const auto* number = dynamic_cast<const WQNumberFormatter*>(formatter))
        return number->decimalSeparator();
    return QString();
}

// Arabic-Indic, Persian, Devanagari ... digits as 0 to 9.
QString asciiDigits(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const char32_t c : text.toUcs4()) {
        if (c >= 128 && QChar::category(c) == QChar::Number_DecimalDigit)
            out += QChar(u'0' + QChar::digitValue(c));
        else
            out += QString::fromUcs4(&c, 1);
    }
    return out;
}

bool isKeypadDecimalKey(const QKeyEvent& key)
{
    return key.modifiers().testFlag(Qt::KeypadModifier) && (key.key() == Qt::Key_Period || key.key() == Qt::Key_Comma);
}

} // namespace

std::unique_ptr<QEvent> WQTranslatedInput(const QEvent& event, const WQFormatter* formatter)
{
    if (!readsAsciiDigits(formatter))
        return nullptr;
    if (event.type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(event);
        QString text = asciiDigits(key.text());
        if (isKeypadDecimalKey(key) && !decimalSeparator(formatter).isEmpty())
            text = decimalSeparator(formatter);
        if (text == key.text())
            return nullptr;
        return std::make_unique<QKeyEvent>(key.type(), key.key(), key.modifiers(), key.nativeScanCode(),
                                           key.nativeVirtualKey(), key.nativeModifiers(), text, key.isAutoRepeat(),
                                           quint16(key.count()), key.device());
    }
    if (event.type() == QEvent::InputMethod) {
        const auto& input = static_cast<const QInputMethodEvent&>(event);
        const QString commit = asciiDigits(input.commitString());
        if (commit == input.commitString())
            return nullptr;
        auto translated = std::make_unique<QInputMethodEvent>(input.preeditString(), input.attributes());
        translated->setCommitString(commit, input.replacementStart(), input.replacementLength());
        return translated;
    }
    return nullptr;
}

} // namespace wq
