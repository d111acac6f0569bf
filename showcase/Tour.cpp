#include "Tour.h"

#include "FieldReport.h"
#include "RegisterWindow.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/calculator/WQCalcWindow.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QPixmap>
#include <QRegularExpression>
#include <QStringList>

#include <cstdio>

namespace showcase {
namespace {

// Lets deferred work (a field taking the focus back, say) run.
void settle()
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 40)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
}

QString slug(const QString& title)
{
    QString s = title.toLower();
    s.replace(QRegularExpression(QStringLiteral("[^a-z0-9]+")), QStringLiteral("-"));
    return s.left(48).remove(QRegularExpression(QStringLiteral("^-+|-+$")));
}

void print(const QString& line)
{
    std::fputs(line.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
}

// The window as the user sees it: its open sheets, dialogs and menus are
// windows of their own, drawn over it where they stand.
QPixmap screenshot(QWidget& window)
{
    QPixmap shot = window.grab();
    QPainter painter(&shot);
    const QPoint origin = window.mapToGlobal(QPoint(0, 0));
    painter.setPen(QColor(0, 0, 0, 110));
    // What grab() leaves out: sheets (the window's children), open menus and
    // the calculator's pop-up (windows of their own).
    QList<QWidget*> windows = window.findChildren<QWidget*>();
    for (QWidget* popup : QApplication::topLevelWidgets())
        if (popup != &window && !windows.contains(popup))
            windows.append(popup);
    for (QWidget* child : windows) {
        if (!child->isWindow() || !child->isVisible())
            continue;
        const QPoint at = child->mapToGlobal(QPoint(0, 0)) - origin;
        painter.drawPixmap(at, child->grab());
        painter.drawRect(QRect(at, child->size()).adjusted(-1, -1, 0, 0));
    }
    return shot;
}

// A user answers a sheet before going on: the tour prints it and presses
// its default button.
void answerSheets(QWidget& window)
{
    for (int guard = 0; guard < 20; ++guard) {
        QMessageBox* sheet = nullptr;
        for (QMessageBox* box : window.findChildren<QMessageBox*>())
            if (box->isVisible())
                sheet = box;
        if (!sheet)
            break;
        QAbstractButton* answer = sheet->defaultButton();
        for (QAbstractButton* button : sheet->buttons())
            if (!answer && sheet->buttonRole(button) == QMessageBox::AcceptRole)
                answer = button;
        print(QStringLiteral("     sheet: \"%1\"%2, answered %3")
                  .arg(sheet->text(), sheet->checkBox() ? QStringLiteral(" with \"Don't show again\"") : QString(),
                       answer ? answer->text().remove(u'&') : QStringLiteral("by closing")));
        if (answer)
            answer->click();
        else
            sheet->reject();
        settle();
    }
    // A window system gives the window back its activation when its sheet
    // closes; the offscreen platform does not.
    if (!window.isActiveWindow()) {
        window.activateWindow();
        settle();
    }
}

} // namespace

int runTour(RegisterWindow& window, const std::vector<std::unique_ptr<ShowcaseFeature>>& features,
            const QString& directory)
{
    if (!QDir().mkpath(directory)) {
        std::fprintf(stderr, "wq-showcase: cannot create %s\n", qPrintable(directory));
        return 1;
    }
    window.resize(1000, 560);
    window.show();
    window.activateWindow();
    settle();

    QStringList refusals;
    QObject::connect(&window, &RegisterWindow::refusalShown, &window,
                     [&refusals](const QString& message) { refusals.append(message); });

    int number = 0;
    int failures = 0;
    auto shoot = [&](const QString& title) {
        const QString file = QDir(directory).filePath(
            QStringLiteral("%1-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(slug(title)));
        if (!screenshot(window).save(file)) {
            ++failures;
            print(QStringLiteral("     (could not save %1)").arg(file));
        }
    };

    print(QStringLiteral("[%1] the register window").arg(number, 2, 10, QLatin1Char('0')));
    shoot(QStringLiteral("window"));
    for (const auto& feature : features) {
        for (const TourStep& step : feature->tourSteps(window)) {
            ++number;
            refusals.clear();
            if (step.act)
                step.act();
            settle();
            print(QStringLiteral("[%1] %2").arg(number, 2, 10, QLatin1Char('0')).arg(step.title));
            if (step.field)
                print(QStringLiteral("     %1 shows \"%2\"")
                          .arg(step.field->objectName(), RegisterWindow::shownText(step.field)));
            if (const QString tape = describeCalculator(); !tape.isEmpty())
                print(QStringLiteral("     %1").arg(tape));
            for (const QString& refusal : refusals)
                print(QStringLiteral("     refused: %1").arg(refusal));
            shoot(step.title);
            answerSheets(window);
        }
    }
    print(QStringLiteral("%1 screenshots in %2").arg(number + 1).arg(QDir(directory).absolutePath()));
    return failures ? 1 : 0;
}

} // namespace showcase
