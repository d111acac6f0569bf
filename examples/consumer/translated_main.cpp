// Links WQGeneral::Widgets and calls nothing of the core library by name
// (the widgets library brings it along): the warning settings page, in the
// language of the user's settings. Prints the text of its button.
#include <WQGeneral/alerts/WQWarningSettingsPage.h>

#include <QApplication>
#include <QPushButton>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const wq::WQWarningSettingsPage page;
    const QString text = page.showAllButton()->text();
    std::printf("%s\n", qPrintable(text));
    return text.isEmpty() ? 1 : 0;
}
