// wq money: amounts shown, read and typed the way a money field does it,
// under the system settings of a locale or a custom currency.

#include "Command.h"

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QLocale>

#include <cmath>

namespace {

using namespace wq;
using namespace wq::tool;

const QString kMoneyUsage = QStringLiteral(
    "money format AMOUNT | parse TEXT | type KEYS [--atm] "
    "[--places N] [--locale NAME] [--symbol S] [--positive $#,##0.00] [--negative -$#,##0.00] "
    "[--thousands T] [--decimal D]   (KEYS: one character per key, \\b or <del> for the delete key)");

const QString kMoneyHelp = QStringLiteral(
    "Amounts shown, read and typed as a money field does it, under the system settings\n"
    "of --locale NAME (all categories) or a custom currency (--symbol and the rest; what\n"
    "is not given comes from the system's).\n"
    "\n"
    "  format AMOUNT   the amount (a C number such as -1234.5) as the field shows it\n"
    "  parse TEXT      the amount the field reads from TEXT; status 1 when it refuses it\n"
    "  type KEYS       each key as typed into an empty field, with the field after it\n"
    "  --atm           typing as on a cash machine: digits fill in from the right\n"
    "  --places N      decimal places, 0 to 9 (default 2)\n"
    "\n"
    "  wq money format -1234.5 --locale de_DE\n"
    "  wq money parse -- --5          (\"--\" lets an operand start with \"--\")");

// The document the formatter belongs to: custom settings when any was
// given (the rest filled from the system's), and the typing mode.
void readSettings(Arguments& args, WQMoneyFormatterOwner& owner, qint8& places)
{
    const QString locale = args.option(QStringLiteral("--locale"));
    if (!locale.isNull())
        WQRegionalSettings::setAllLocales(locale);
    const QString placesText = args.option(QStringLiteral("--places"));
    if (!placesText.isNull()) {
        bool ok = false;
        const int value = placesText.toInt(&ok);
        if (!ok || value < 0 || value > 9)
            throw UsageError{QStringLiteral("--places must be a whole number from 0 to 9, not \"%1\"").arg(placesText)};
        places = qint8(value);
    }
    owner.setUserInputLikeATM(args.flag(QStringLiteral("--atm")));

    const struct { const char* option; const QString& key; QString system; } custom[] = {
        {"--symbol", kWQCurrencyKey_CurrencySymbol, WQMoneyFormatter::systemCurrencySymbol()},
        {"--positive", kWQCurrencyKey_PositiveCurrencyFormatString, WQMoneyFormatter::systemPositiveCurrencyFormat()},
        {"--negative", kWQCurrencyKey_NegativeCurrencyFormatString, WQMoneyFormatter::systemNegativeCurrencyFormat()},
        {"--thousands", kWQCurrencyKey_ThousandsSeparator, WQMoneyFormatter::systemCurrencyThousandsSeparator()},
        {"--decimal", kWQCurrencyKey_DecimalSeparator, WQMoneyFormatter::systemCurrencyDecimalSeparator()},
    };
    QVariantMap dict;
    bool anyCustom = false;
    for (const auto& entry : custom) {
        const QString value = args.option(QString::fromLatin1(entry.option));
        anyCustom = anyCustom || !value.isNull();
        dict.insert(entry.key, value.isNull() ? entry.system : value);
    }
    if (anyCustom)
        owner.setCurrencySymbolDict(dict);
}

QString quoted(const QString& text) { return u'"' + text + u'"'; }

// The display shows whole parts up to 64 bits; beyond that it clamps.
bool withinDisplay(double amount)
{
    return std::isfinite(amount) && std::fabs(amount) < 9223372036854775808.0;
}

int format(const std::shared_ptr<WQMoneyFormatter>& formatter, const QString& amountText)
{
    bool ok = false;
    const double amount = QLocale::c().toDouble(amountText, &ok);
    if (!ok || !std::isfinite(amount))
        throw UsageError{QStringLiteral("AMOUNT must be a number such as -1234.5, not \"%1\"").arg(amountText)};
    if (!withinDisplay(amount))
        throw UsageError{QStringLiteral("AMOUNT %1 is out of range: amounts run from -9223372036854775807 to "
                                        "9223372036854775807").arg(amountText)};
    out(formatter->stringForAmount(amount));
    return kExitOK;
}

int parse(const std::shared_ptr<WQMoneyFormatter>& formatter, const QString& text)
{
    QVariant value;
    QString error;
    const bool ok = formatter->getObjectValue(&value, text, &error);
    if (!withinDisplay(value.toDouble()))
        throw UsageError{QStringLiteral("\"%1\" is out of range: amounts run from -9223372036854775807 to "
                                        "9223372036854775807").arg(text)};
    out(QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest));
    if (ok)
        return kExitOK;
    err(error);
    return kExitFailure;
}

// One key press as a field's editor makes it: the key replaces the selection,
// the delete key removes the selection or the character before the caret.
struct Field {
    QString text;
    WQRange selection;
};

int type(const std::shared_ptr<WQMoneyFormatter>& formatter, const QString& keys)
{
    Field field;
    for (qsizetype i = 0; i < keys.size();) {
        bool deleting = false;
        QString key;
        if (keys.mid(i, 2) == u"\\b") {
            deleting = true;
            i += 2;
        } else if (keys.mid(i, 5) == u"<del>") {
            deleting = true;
            i += 5;
        } else {
            key = keys.mid(i, keys[i].isHighSurrogate() && i + 1 < keys.size() ? 2 : 1);
            i += key.size();
        }
        QString proposal = field.text;
        WQRange proposed;
        if (deleting) {
            WQRange removed = field.selection;
            if (removed.length == 0 && removed.location > 0)
                removed = {removed.location - 1, 1};
            proposal.remove(removed.location, removed.length);
            proposed = {removed.location, 0};
        } else {
            proposal.replace(field.selection.location, field.selection.length, key);
            proposed = {field.selection.location + key.size(), 0};
        }
        QString partial = proposal;
        WQRange range = proposed;
        QString error;
        const WQEditScope scope({WQEditEvent::Type::KeyDown,
                                 deleting ? QString(QChar(WQEditEvent::DeleteCharacter)) : key, false});
        const bool accepted =
            formatter->isPartialStringValid(&partial, &range, field.text, field.selection, &error);
        const bool rewritten = scope.rewritten() || partial != proposal || range != proposed;
        if (accepted)
            field = {proposal, proposed};
        else if (rewritten)
            field = {partial, range};
        QString line = QStringLiteral("%1 -> %2 caret %3")
                           .arg(deleting ? QStringLiteral("<del>") : quoted(key), quoted(field.text))
                           .arg(field.selection.location);
        if (!accepted && !rewritten)
            line += error.isEmpty() ? QStringLiteral("  (refused)") : QStringLiteral("  refused: ") + error;
        out(line);
    }
    return kExitOK;
}

int runMoney(const QStringList& list)
{
    Arguments arguments(list);
    WQMoneyFormatterOwner owner; // its formatters leave the registry with it, however the command ends
    qint8 places = 2;
    readSettings(arguments, owner, places);
    const QStringList args = arguments.operands();
    if (args.size() != 2)
        throw UsageError{QStringLiteral("usage: wq ") + kMoneyUsage};
    const auto formatter = owner.moneyFormatter(places);
    const QString& verb = args.at(0);
    if (verb == u"format")
        return format(formatter, args.at(1));
    if (verb == u"parse")
        return parse(formatter, args.at(1));
    if (verb == u"type")
        return type(formatter, args.at(1));
    throw UsageError{QStringLiteral("unknown money command \"%1\"").arg(verb)};
}

const Registrar moneyRegistrar{QStringLiteral("money"), kMoneyUsage, kMoneyHelp, &runMoney};

} // namespace
