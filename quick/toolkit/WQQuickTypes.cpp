#include <WQGeneral/quick/WQQuickAlertSheets.h>
#include <WQGeneral/quick/WQQuickCalculator.h>
#include <WQGeneral/quick/WQQuickFormattedField.h>
#include <WQGeneral/quick/WQQuickMoneyOwner.h>
#include <WQGeneral/quick/WQQuickTypes.h>

#include <QQmlEngine>

namespace wq {

void WQRegisterQmlTypes()
{
    static const bool registered = [] {
        const char* uri = "WQGeneral";
        qmlRegisterType<WQQuickFormattedField>(uri, 1, 0, "FormattedField");
        qmlRegisterType<WQQuickMoneyOwner>(uri, 1, 0, "MoneyOwner");
        qmlRegisterType<WQQuickAlertSheets>(uri, 1, 0, "AlertSheets");
        qmlRegisterUncreatableType<WQQuickCalculator>(uri, 1, 0, "Calculator",
                                                      QStringLiteral("A calculating money field opens the calculator"));
        return true;
    }();
    Q_UNUSED(registered);
}

} // namespace wq
