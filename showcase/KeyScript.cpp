#include "KeyScript.h"

#include "FieldReport.h"
#include "KeyTyping.h"
#include "RegisterWindow.h"

#include <QApplication>
#include <QHash>
#include <QLineEdit>

#include <cstdio>

namespace showcase {
namespace {

struct Named {
    Qt::Key key;
    const char* text;
};

const QHash<QString, Named>& namedKeys()
{
    static const QHash<QString, Named> keys{
        {QStringLiteral("esc"), {Qt::Key_Escape, "\x1b"}},   {QStringLiteral("tab"), {Qt::Key_Tab, "\t"}},
        {QStringLiteral("return"), {Qt::Key_Return, "\r"}},  {QStringLiteral("enter"), {Qt::Key_Enter, "\r"}},
        {QStringLiteral("bs"), {Qt::Key_Backspace, "\b"}},   {QStringLiteral("del"), {Qt::Key_Delete, "\x7f"}},
        {QStringLiteral("left"), {Qt::Key_Left, ""}},        {QStringLiteral("right"), {Qt::Key_Right, ""}},
        {QStringLiteral("up"), {Qt::Key_Up, ""}},            {QStringLiteral("down"), {Qt::Key_Down, ""}},
        {QStringLiteral("home"), {Qt::Key_Home, ""}},        {QStringLiteral("end"), {Qt::Key_End, ""}},
        {QStringLiteral("space"), {Qt::Key_Space, " "}},     {QStringLiteral("lt"), {Qt::Key_Less, "<"}},
    };
    return keys;
}

// Qt's key codes for printable ASCII are the upper-case characters.
Qt::Key keyForCharacter(QChar c)
{
    const char16_t u = c.toUpper().unicode();
    return u >= 0x20 && u < 0x7f ? Qt::Key(u) : Qt::Key_unknown;
}

std::optional<KeyStroke> parseNamed(const QString& inside, QString* error)
{
    KeyStroke stroke;
    stroke.label = u'<' + inside + u'>';
    QStringList parts = inside.split(u'+');
    // "Alt++" names the plus key itself.
    if (inside.endsWith(QStringLiteral("++"))) {
        parts = inside.left(inside.size() - 2).split(u'+');
        parts << QStringLiteral("+");
    }
    const QString name = parts.takeLast();
    for (const QString& modifier : parts) {
        const QString m = modifier.toLower();
        if (m == u"alt")
            stroke.modifiers |= Qt::AltModifier;
        else if (m == u"ctrl")
            stroke.modifiers |= Qt::ControlModifier;
        else if (m == u"shift")
            stroke.modifiers |= Qt::ShiftModifier;
        else {
            *error = QStringLiteral("unknown modifier \"%1\" in %2").arg(modifier, stroke.label);
            return std::nullopt;
        }
    }
    if (const auto it = namedKeys().constFind(name.toLower()); it != namedKeys().constEnd()) {
        stroke.key = it->key;
        stroke.text = QString::fromLatin1(it->text);
        if (stroke.key == Qt::Key_Tab && stroke.modifiers.testFlag(Qt::ShiftModifier))
            stroke.key = Qt::Key_Backtab;
    } else if (name.size() == 1 && keyForCharacter(name[0]) != Qt::Key_unknown) {
        stroke.key = keyForCharacter(name[0]);
        stroke.text = stroke.modifiers.testFlag(Qt::ControlModifier) ? QString() : name;
    } else {
        *error = QStringLiteral("unknown key %1").arg(stroke.label);
        return std::nullopt;
    }
    return stroke;
}

void print(const QString& line)
{
    std::fputs(line.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// One pass of the event loop and what it queues (a calculator opening,
// a closed one going away).
void settle()
{
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

std::optional<QList<KeyStroke>> parseKeys(const QString& keys, QString* error)
{
    QList<KeyStroke> strokes;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        if (keys[i] == u'<') {
            const qsizetype close = keys.indexOf(u'>', i + 2);
            if (close < 0) {
                *error = QStringLiteral("\"<\" without \">\" (write <lt> for the key itself)");
                return std::nullopt;
            }
            const std::optional<KeyStroke> stroke = parseNamed(keys.mid(i + 1, close - i - 1), error);
            if (!stroke)
                return std::nullopt;
            strokes << *stroke;
            i = close;
            continue;
        }
        const Qt::Key key = keyForCharacter(keys[i]);
        if (key == Qt::Key_unknown) {
            *error = QStringLiteral("no key types \"%1\"").arg(keys[i]);
            return std::nullopt;
        }
        strokes << KeyStroke{QString(keys[i]), key, Qt::NoModifier, QString(keys[i])};
    }
    return strokes;
}

int runKeys(RegisterWindow& window, const QString& fieldName, const QString& keys)
{
    QString error;
    const std::optional<QList<KeyStroke>> strokes = parseKeys(keys, &error);
    if (!strokes) {
        std::fprintf(stderr, "wq-showcase: %s\n", qPrintable(error));
        return 2;
    }
    QWidget* field = window.findChild<QWidget*>(fieldName);
    if (!field || !field->isWidgetType() || fieldName.isEmpty()) {
        std::fprintf(stderr, "wq-showcase: no field named \"%s\" (date, amount, payments, rate, payee)\n",
                     qPrintable(fieldName));
        return 2;
    }
    window.show();
    window.activateWindow();
    settle();
    // The field takes the focus as tabbing into it does: all selected.
    field->setFocus(Qt::TabFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(field))
        edit->selectAll();
    settle();

    const auto report = [&](const QString& label) {
        QString line = label.leftJustified(8) + u' ' + describeField(field);
        if (const QString tape = describeCalculator(); !tape.isEmpty())
            line += QStringLiteral("  ") + tape;
        print(line);
    };
    report(QStringLiteral("(start)"));
    for (const KeyStroke& stroke : *strokes) {
        // A keyboard types into whatever has the focus: the calculator's
        // editing field while it is open.
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : field;
        pressKey(target, stroke.key, stroke.modifiers, stroke.text);
        settle();
        report(stroke.label);
    }
    return 0;
}

} // namespace showcase
