#pragma once
// A window controller with a sample toolbar dictionary: two actions, a
// search field as a view, an item with both a view and an action, an item
// that is allowed but not in the default set.

#include "FieldTesting.h"

#include <WQGeneral/alerts/WQWindowController.h>
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include <WQTestSupport.h>

#include <QLineEdit>
#include <QMainWindow>
#include <QSettings>

namespace wq::test {

class SampleController : public WQWindowController {
    Q_OBJECT
    Q_PROPERTY(QWidget* searchField READ searchField)
public:
    explicit SampleController(QStringList defaults = {QStringLiteral("new"), QStringLiteral("delete"),
                                                      kWQToolbarFlexibleSpaceItemIdentifier,
                                                      QStringLiteral("search")})
        : WQWindowController(std::make_unique<QMainWindow>()), defaults(std::move(defaults))
    {
        _search = new QLineEdit(window());
        _search->setObjectName(QStringLiteral("search"));
        _search->resize(180, 26);
        window()->resize(640, 200);
    }

    QWidget* searchField() const { return _search; }

    std::optional<QVariantMap> toolbarDictionary() const override
    {
        if (!hasDictionary)
            return std::nullopt;
        auto item = [](const char* label, const char* palette, const char* tip, const char* image, const char* action) {
            QVariantMap description{{kWQToolbarItemKey_Label, QString::fromLatin1(label)},
                                    {kWQToolbarItemKey_PaletteLabel, QString::fromLatin1(palette)},
                                    {kWQToolbarItemKey_ToolTip, QString::fromLatin1(tip)}};
            if (image)
                description.insert(kWQToolbarItemKey_ImageName, QString::fromLatin1(image));
            if (action)
                description.insert(kWQToolbarItemKey_Action, QString::fromLatin1(action));
            return description;
        };
        QVariantMap search = item("Search", "Search Field", "Find payees", "LittleRightArrow", "newTransaction");
        search.insert(kWQToolbarItemKey_View, QStringLiteral("searchField"));
        return QVariantMap{
            {kWQToolbarKey_ItemInfoByIdentifier,
             QVariantMap{{QStringLiteral("new"), item("New", "New Transaction", "Add a transaction", "LittleRightArrow",
                                                      "newTransaction")},
                         {QStringLiteral("delete"), item("Delete", "Delete Transaction", "Delete the selection",
                                                         nullptr, "deleteTransaction")},
                         {QStringLiteral("report"), item("Report", "", "", nullptr, "report")},
                         {QStringLiteral("unlabelled"), QVariantMap{}},
                         {QStringLiteral("search"), search},
                         {QStringLiteral("broken"), QVariantMap{{kWQToolbarItemKey_View, QStringLiteral("noSuchView")}}}}},
            {kWQToolbarKey_DefaultItemIdentifiers, defaults},
            {kWQToolbarKey_AllowedItemIdentifiers,
             QStringList{"new", "delete", "report", "search", "unlabelled", "broken"}},
        };
    }

    QStringList defaults;
    bool hasDictionary = true;

public slots:
    // The actions the dictionary names, answered so that it may name them.
    void newTransaction() {}
    void deleteTransaction(QObject*) {}
    void report() {}

private:
    QLineEdit* _search;
};

// Every test starts without saved toolbars.
class ToolbarTest : public ::testing::Test {
protected:
    void SetUp() override { QSettings().remove(QStringLiteral("Toolbars")); }
    void TearDown() override { QSettings().remove(QStringLiteral("Toolbars")); }
};

} // namespace wq::test
