#include "Tour.h"

#include "RegisterWindow.h"
#include "ShowcaseFeature.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPainter>
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

// The window as the user sees it: with its open menus and other windows
// (which grab() leaves out) drawn where they are on the screen.
QPixmap picture(QWidget& window)
{
    QPixmap shot = window.grab();
    QPainter painter(&shot);
    for (QWidget* other : QApplication::topLevelWidgets())
        if (other != &window && other->isVisible())
            painter.drawPixmap(window.mapFromGlobal(other->mapToGlobal(QPoint())), other->grab());
    return shot;
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

} // namespace

int runTour(RegisterWindow& window, const std::vector<std::unique_ptr<ShowcaseFeature>>& features,
            const QString& directory)
{
    if (!QDir().mkpath(directory)) {
        std::fprintf(stderr, "wq-showcase: cannot create %s\n", qPrintable(directory));
        return 1;
    }
    window.resize(900, 420);
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
        if (!picture(window).save(file)) {
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
            for (const QString& refusal : refusals)
                print(QStringLiteral("     refused: %1").arg(refusal));
            shoot(step.title);
        }
    }
    print(QStringLiteral("%1 screenshots in %2").arg(number + 1).arg(QDir(directory).absolutePath()));
    return failures ? 1 : 0;
}

} // namespace showcase
