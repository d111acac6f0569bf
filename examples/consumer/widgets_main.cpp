// Links WQGeneral::Widgets from an installed prefix: a calculating money
// field in a form made in Designer, a table with a money column that
// calculates and a date column, a plain line edit judged by a validator, and
// the toolkit's bridge there without any set-up call.
#include "ui_AmountForm.h"

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/delegates/WQFormatterDelegate.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/validators/WQFormatterValidator.h>

#include <QApplication>
#include <QStandardItemModel>
#include <QTableView>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QWidget window;
    Ui::AmountForm form;
    form.setupUi(&window);
    wq::WQLineEdit* field = form.amountField;

    // A register in a few lines: dates and amounts, shown and edited as the
    // fields show and edit them.
    QStandardItemModel model(0, 2);
    model.appendRow({new QStandardItem, new QStandardItem});
    model.setData(model.index(0, 0), QVariant::fromValue(wq::WQDate(2024, 3, 5)));
    model.setData(model.index(0, 1), -1200.5);
    auto* table = new QTableView(&window);
    table->setModel(&model);
    auto* dates = new wq::WQFormatterDelegate(wq::WQLineEdit::Date, 2, table);
    table->setItemDelegateForColumn(0, dates);
    auto* amounts = new wq::WQFormatterDelegate(wq::WQLineEdit::CalculatingMoney, 2, table);
    amounts->setNegativeBrush(Qt::red);
    table->setItemDelegateForColumn(1, amounts);

    QLineEdit* plain = new QLineEdit(&window);
    auto* validator = new wq::WQFormatterValidator(wq::WQMakeFormatter(wq::WQLineEdit::Money, 2), plain);
    plain->setValidator(validator);
    form.rows->addRow(table);
    form.rows->addRow(plain);

    window.show();
    window.activateWindow();
    QApplication::processEvents();
    field->setFocus();
    field->setObjectValue(12.5);
    const bool bridged = wq::WQToolkit::shared().keyFieldEditor() == field;
    const QString amount = amounts->displayText(model.index(0, 1).data(), QLocale());
    const QString date = dates->displayText(model.index(0, 0).data(), QLocale());
    QString typed = QStringLiteral("1234");
    validator->fixup(typed);
    // WQDate is a Qt metatype without a call: a QVariant of one reads as a QDate.
    const bool converts = model.index(0, 0).data().toDate() == QDate(2024, 3, 5);
    std::printf("consumer (widgets): amount field shows %s, table shows %s and %s, validator finishes 1234 as %s, "
                "toolkit bridge %s\n",
                qPrintable(field->text()), qPrintable(amount), qPrintable(date), qPrintable(typed),
                bridged ? "registered" : "MISSING");
    const bool calculating = field->formatterKind() == wq::WQLineEdit::CalculatingMoney;
    return bridged && calculating && !field->text().isEmpty() && amount.startsWith(u'-') && !date.isEmpty()
                   && typed != QStringLiteral("1234") && converts
               ? 0
               : 1;
}
