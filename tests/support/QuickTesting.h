#pragma once
// Shared by the Qt Quick tests: a window showing a QML document that imports
// WQGeneral, with the keyboard focus, typed into with real key events.

#include <WQGeneral/quick/WQQuickFormattedField.h>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QtTest/QTest>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <memory>

namespace wq::test {

class QuickWindow {
public:
    // Shows a document: "import WQGeneral" and Qt Quick Controls come first.
    explicit QuickWindow(const QByteArray& body)
    {
        view.engine()->addImportPath(QStringLiteral(WQ_QML_IMPORT_PATH));
        QQmlComponent component(view.engine());
        component.setData("import QtQuick\nimport QtQuick.Controls\nimport WQGeneral\n" + body, QUrl());
        QObject* root = component.create();
        if (!root)
            ADD_FAILURE() << component.errorString().toStdString();
        view.setContent(QUrl(), &component, root);
        view.resize(480, 320);
        view.show();
        view.requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
    }

    // The object named name (an item, a popup, an owner).
    template <typename T = QQuickItem>
    T* find(const char* name) const
    {
        QObject* root = view.rootObject();
        T* found = root && root->objectName() == QLatin1String(name) ? qobject_cast<T*>(root) : nullptr;
        if (!found && root)
            found = root->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    // The driver of the formatted text field named name.
    WQQuickFormattedField& field(const char* name) const
    {
        WQQuickFormattedField* driver = WQQuickFormattedField::of(find(name));
        EXPECT_NE(driver, nullptr) << name;
        return *driver;
    }
    // Gives the named field the keyboard, as clicking it does.
    QQuickItem* focus(const char* name) const
    {
        QQuickItem* item = find(name);
        item->forceActiveFocus(Qt::MouseFocusReason);
        return item;
    }
    static QString text(const QQuickItem* item) { return item->property("text").toString(); }

    void type(const QString& keys)
    {
        for (QChar key : keys)
            QTest::keyClick(&view, char(key.toLatin1()));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { QTest::keyClick(&view, key, modifiers); }

    QQuickView view;
};

} // namespace wq::test
