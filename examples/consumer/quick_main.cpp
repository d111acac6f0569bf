// A QML application that links nothing of the framework: it imports the
// installed QML module WQGeneral (QML_IMPORT_PATH names the folder when the
// prefix is not Qt's own) and puts a calculating money field and a date
// field into a form.
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication app(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQuick
        import QtQuick.Controls
        import QtQuick.Layouts
        import WQGeneral
        Window {
            GridLayout {
                columns: 2
                Label { text: "Amount" }
                FormattedTextField { objectName: "amount"; formatterKind: FormattedTextField.CalculatingMoney; value: 12.5 }
                Label { text: "Date" }
                FormattedTextField { objectName: "date"; formatterKind: FormattedTextField.Date }
            }
        })",
                      QUrl());
    const std::unique_ptr<QObject> window(component.create());
    if (!window) {
        std::fprintf(stderr, "consumer (quick): %s\n", qPrintable(component.errorString()));
        return 1;
    }
    const auto* amount = window->findChild<QQuickItem*>(QStringLiteral("amount"));
    const QString shown = amount ? amount->property("text").toString() : QString();
    const bool valued = amount && amount->property("value").toDouble() == 12.5;
    std::printf("consumer (quick): amount field shows %s\n", qPrintable(shown));
    return valued && shown.contains(QLatin1String("12")) ? 0 : 1;
}
