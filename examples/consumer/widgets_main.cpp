// Links WQGeneral::Widgets from an installed prefix: a calculating money
// field in a form made in Designer, and the toolkit's bridge there without
// any set-up call.
#include "ui_AmountForm.h"

#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/formatters/WQToolkit.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QWidget window;
    Ui::AmountForm form;
    form.setupUi(&window);
    wq::WQLineEdit* field = form.amountField;
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    field->setFocus();
    field->setObjectValue(12.5);
    const bool bridged = wq::WQToolkit::shared().keyFieldEditor() == field;
    std::printf("consumer (widgets): amount field shows %s, toolkit bridge %s\n", qPrintable(field->text()),
                bridged ? "registered" : "MISSING");
    const bool calculating = field->formatterKind() == wq::WQLineEdit::CalculatingMoney;
    return bridged && calculating && !field->text().isEmpty() ? 0 : 1;
}
