// A form that uses the framework's widgets, loaded through QUiLoader with the
// Designer plugin the build made, then used with real key events.

#include <QDateEdit>
#include <QFile>
#include <QLineEdit>
#include <QMetaEnum>
#include <QScrollArea>
#include <QTableView>
#include <QTest>
#include <QTextBrowser>
#include <QUiLoader>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

class DesignerForm : public ::testing::Test {
protected:
    void SetUp() override
    {
        loader.clearPluginPaths();
        loader.addPluginPath(QStringLiteral(WQ_DESIGNER_PLUGIN_DIR));
        QFile file(QStringLiteral(WQ_DESIGNER_FORM));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        form.reset(loader.load(&file));
        ASSERT_TRUE(form) << loader.errorString().toStdString();
    }

    template <typename T = QWidget>
    T* child(const QString& name) const
    {
        auto* widget = form->findChild<T*>(name);
        EXPECT_TRUE(widget) << name.toStdString();
        return widget;
    }

    // The enum key of the field's formatterKind property.
    static QString kindOf(const QLineEdit& field)
    {
        const QMetaObject* meta = field.metaObject();
        const QMetaProperty property = meta->property(meta->indexOfProperty("formatterKind"));
        return QString::fromLatin1(property.enumerator().valueToKey(property.read(&field).toInt()));
    }

    QUiLoader loader;
    std::unique_ptr<QWidget> form;
};

// A class the plugin did not offer would load as its base class.
TEST_F(DesignerForm, WidgetsComeOutOfTheirClassWithTheirContentsAndFieldsTypeThroughTheirKind)
{
    const std::pair<QString, const char*> widgets[] = {
        {u"amountField"_s, "wq::WQLineEdit"},
        {u"datePicker"_s, "wq::WQDatePicker"},
        {u"dragAndDropView"_s, "wq::WQDragAndDropView"},
        {u"scrollView"_s, "wq::WQFocusableScrollView"},
        {u"linkTextView"_s, "wq::WQURLTextView"},
        {u"tableView"_s, "wq::WQTableView"},
    };
    for (const auto& [name, className] : widgets) {
        const QWidget* widget = child(name);
        ASSERT_TRUE(widget);
        EXPECT_STREQ(widget->metaObject()->className(), className);
    }
    // Children laid out inside the containers stay there.
    EXPECT_EQ(child<QScrollArea>(u"scrollView"_s)->widget(), child(u"scrollViewContents"_s));
    EXPECT_TRUE(child(u"dragAndDropView"_s)->isAncestorOf(child(u"dragLabel"_s)));
    EXPECT_TRUE(child<QTextBrowser>(u"linkTextView"_s)->toHtml().contains(u"https://example.com/terms"_s));

    form->show();
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));

    struct Row {
        QString name;
        QString kind;
        int places;
        QString keys;
        QString whileTyping;  // after the keys, before editing ends
        QString finished;     // after Return
    };
    const Row rows[] = {
        {u"amountField"_s, u"Money"_s, 2, u"1234.5"_s, u"$1,234.5"_s, u"$1,234.50"_s},
        {u"calculatingField"_s, u"CalculatingMoney"_s, 3, u"2.5"_s, u"$2.5"_s, u"$2.500"_s},
        {u"longYearField"_s, u"ExtendedDate"_s, 2, u"3/5/1999"_s, u"3/5/1999"_s, u"3/5/1999"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name.toStdString());
        auto* field = child<QLineEdit>(row.name);
        ASSERT_TRUE(field);
        EXPECT_EQ(kindOf(*field), row.kind);
        EXPECT_EQ(field->property("places").toInt(), row.places);
        field->setFocus();
        QTest::keyClicks(field, row.keys);
        EXPECT_EQ(field->text(), row.whileTyping);
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(field->text(), row.finished);
    }
    // Places changed on a loaded field reformat it; a kind is set by name, as
    // Designer's property editor sets it.
    auto* amount = child<QLineEdit>(u"amountField"_s);
    ASSERT_TRUE(amount->setProperty("places", 3));
    EXPECT_EQ(amount->text(), u"$1,234.500"_s);
    ASSERT_TRUE(amount->setProperty("formatterKind", u"WholeNumber"_s));
    EXPECT_EQ(kindOf(*amount), u"WholeNumber"_s);
}


} // namespace
