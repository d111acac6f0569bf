#include "FieldReport.h"

#include "RegisterWindow.h"

#include <WQGeneral/calculator/WQCalculateWindowController.h>

#include <QLineEdit>

namespace showcase {

QString describeField(const QWidget* field)
{
    if (!field)
        return QStringLiteral("(no field)");
    QString line = QStringLiteral("%1 \"%2\"").arg(field->objectName(), RegisterWindow::shownText(field));
    if (const auto* edit = qobject_cast<const QLineEdit*>(field)) {
        const int location = edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition();
        line += QStringLiteral(" [%1,%2]").arg(location).arg(edit->selectedText().size());
    }
    return line;
}

QString describeCalculator()
{
    const wq::WQCalculateWindowController* calculator = wq::WQCalculateWindowController::openCalculator();
    if (!calculator)
        return QString();
    return QStringLiteral("tape: ") + calculator->tapeLines().join(QStringLiteral(" | "));
}

} // namespace showcase
