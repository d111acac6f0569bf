#include <WQGeneral/alerts/WQSuppressibleMessageBox.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/alerts/WQWindowController.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QCheckBox>
#include <QGuiApplication>
#include <QPointer>

namespace wq {

void WQAddSuppressionCheckBox(QMessageBox& box, const QString& key)
{
    auto* checkBox = new QCheckBox(WQStrings::tr("Don't show again"), &box);
    box.setCheckBox(checkBox);
    const QPointer<QCheckBox> ticked(checkBox);
    QObject::connect(&box, &QDialog::finished, checkBox, [ticked, key] {
        if (ticked && ticked->isChecked())
            WQWarningSuppression::suppress(key);
    });
}

QMessageBox::StandardButton WQSuppressibleWarning(QWidget* parent, const QString& key, const QString& title,
                                                  const QString& information, QMessageBox::StandardButtons buttons,
                                                  QMessageBox::StandardButton defaultButton)
{
    if (WQWarningSuppression::isSuppressed(key))
        return defaultButton;
    QMessageBox box(QMessageBox::Warning, QGuiApplication::applicationDisplayName(), title, buttons, parent);
    box.setInformativeText(information);
    box.setDefaultButton(defaultButton);
    WQAddSuppressionCheckBox(box, key);
    return QMessageBox::StandardButton(box.exec());
}

bool WQWindowController::sheetForSuppressibleWarning(const QString& title, const QString& information,
                                                     const QString& suppressionKey)
{
    if (!WQWarningSuppression::isSuppressed(suppressionKey))
        _wq_startAlertSheetTitle(title, information, suppressionKey);
    return false;
}

} // namespace wq
