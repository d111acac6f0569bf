// Links WQGeneral::Widgets from an installed prefix: a calculating money
// field in a window, and the toolkit's bridge there without any set-up call.
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>

#include <QApplication>
#include <QVBoxLayout>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QWidget window;
    auto* field = new wq::WQLineEdit(wq::WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2, true), &window);
    (new QVBoxLayout(&window))->addWidget(field);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    field->setFocus();
    field->setObjectValue(12.5);
    const bool bridged = wq::WQToolkit::shared().keyFieldEditor() == field;
    std::printf("consumer (widgets): amount field shows %s, toolkit bridge %s\n", qPrintable(field->text()),
                bridged ? "registered" : "MISSING");
    return bridged && !field->text().isEmpty() ? 0 : 1;
}
