#include "QuickTour.h"

#include <WQGeneral/quick/WQQuickAlertSheets.h>
#include <WQGeneral/quick/WQQuickCalculator.h>

#include <QDir>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>

#include <cstdio>

namespace showcase {
namespace {

struct Step {
    const char* field;  // the field shown after the keys
    bool tabInto;       // the keys go to it (tabbed into); else where the keyboard is
    const char* keys;   // typed as written; <Return>, <Esc> and <Tab> are keys
    const char* what;
};

const Step kSteps[] = {
    {"date", true, "3/15/26+", "the date, then + steps it a day on"},
    {"payee", true, "Rent", "the payee"},
    {"amount", true, "2+3*4", "an amount; + opens the calculator, the tape runs left to right"},
    {"amount", false, "=", "= writes the total back"},
    {"amount", false, "<Return>", "Return records the transaction; the date field takes the keys"},
    {"amount", true, "12+5<Esc>", "Escape leaves the field as it was when the calculator opened"},
    {"amount", false, "x", "x is refused: a sheet with \"Don't show again\""},
    {"amount", false, "<Return>", "Return closes the sheet"},
};

// Where keys go: the focused item, else the window.
void typeInto(QQuickWindow& window, const QString& keys)
{
    static const QList<QPair<QString, Qt::Key>> named = {
        {QStringLiteral("<Return>"), Qt::Key_Return}, {QStringLiteral("<Esc>"), Qt::Key_Escape},
        {QStringLiteral("<Tab>"), Qt::Key_Tab}};
    for (qsizetype at = 0; at < keys.size();) {
        bool wasNamed = false;
        for (const auto& [name, key] : named) {
            if (keys.mid(at, name.size()) == name) {
                QTest::keyClick(&window, key);
                at += name.size();
                wasNamed = true;
                break;
            }
        }
        if (!wasNamed)
            QTest::keyClick(&window, keys.at(at++).toLatin1());
        // A person types slower than the event loop turns: deferred steps
        // (the calculator opening, its rows growing) run between keys.
        QTest::qWait(20);
    }
}

QString describe(const QQuickItem* field)
{
    const int start = field->property("selectionStart").toInt();
    const int end = field->property("selectionEnd").toInt();
    const int caret = field->property("cursorPosition").toInt();
    return QStringLiteral("%1 \"%2\" [%3,%4]")
        .arg(field->objectName(), field->property("text").toString())
        .arg(end > start ? start : caret)
        .arg(end - start);
}

} // namespace

int runQuickTour(QQuickWindow& window, const QString& directory)
{
    QDir().mkpath(directory);
    auto* sheets = window.findChild<wq::WQQuickAlertSheets*>(QStringLiteral("sheets"));
    int number = 0;
    for (const Step& step : kSteps) {
        auto* field = window.findChild<QQuickItem*>(QString::fromLatin1(step.field));
        if (!field) {
            std::fprintf(stderr, "tour: no field %s\n", step.field);
            return 1;
        }
        if (step.tabInto && !field->hasActiveFocus())
            field->forceActiveFocus(Qt::TabFocusReason);
        typeInto(window, QString::fromLatin1(step.keys));
        QString line = QStringLiteral("%1  %2").arg(QString::fromLatin1(step.keys), -10).arg(describe(field));
        if (const wq::WQQuickCalculator* calculator = wq::WQQuickCalculator::openCalculator())
            line += QStringLiteral("  tape: ") + calculator->tapeLines().join(QStringLiteral(" | "));
        if (sheets && sheets->isShowing())
            line += QStringLiteral("  sheet: ") + sheets->title();
        std::printf("%s\n    (%s)\n", qPrintable(line), step.what);
        const QString shot = QDir(directory).filePath(QStringLiteral("%1-%2.png").arg(++number, 2, 10, QLatin1Char('0')).arg(QString::fromLatin1(step.field)));
        window.grabWindow().save(shot);
    }
    auto* transactions = window.findChild<QQuickItem*>(QStringLiteral("register"));
    std::printf("register: %d transactions; screenshots in %s\n",
                transactions ? transactions->property("count").toInt() : 0, qPrintable(directory));
    return 0;
}

} // namespace showcase
