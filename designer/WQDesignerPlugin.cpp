#include "WQDesignerPlugin.h"

#include "WQDesignerWidget.h"

#include <WQGeneral/datefields/WQDatePicker.h>
#include <WQGeneral/dragging/WQDragAndDropView.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/views/WQFocusableScrollView.h>
#include <WQGeneral/views/WQTableView.h>
#include <WQGeneral/views/WQURLTextView.h>

namespace wq::designer {

namespace {

template <typename Widget>
std::function<QWidget*(QWidget*)> maker()
{
    return [](QWidget* parent) -> QWidget* { return new Widget(parent); };
}

QList<WidgetDescription> descriptions()
{
    return {
        {QStringLiteral("wq::WQLineEdit"), QStringLiteral("<WQGeneral/fields/WQLineEdit.h>"),
         QStringLiteral("Formatted Line Edit"), QStringLiteral("amountField"),
         QStringLiteral("A line edit that checks and formats every keystroke"),
         QStringLiteral("A text field run by one of the framework's entry formatters: dates, whole "
                        "numbers, decimals, money amounts or calculating money amounts. Choose it "
                        "with formatterKind; places sets the decimal places of money."),
         false,
         QStringLiteral("<property name=\"formatterKind\"><enum>wq::WQLineEdit::Money</enum></property>"
                        "<property name=\"places\"><number>2</number></property>"),
         maker<WQLineEdit>()},
        {QStringLiteral("wq::WQDatePicker"), QStringLiteral("<WQGeneral/datefields/WQDatePicker.h>"),
         QStringLiteral("Date Picker"), QStringLiteral("datePicker"),
         QStringLiteral("A date editor with the framework's increment keys"),
         QStringLiteral("The date picker that the framework's date fields turn into."), false, {},
         maker<WQDatePicker>()},
        {QStringLiteral("wq::WQDragAndDropView"), QStringLiteral("<WQGeneral/dragging/WQDragAndDropView.h>"),
         QStringLiteral("Drag and Drop View"), QStringLiteral("dragAndDropView"),
         QStringLiteral("A panel the user drags as a whole"),
         QStringLiteral("A view that, with dragging on, starts a drag of itself (its tag and its "
                        "delegate) when pressed and moved."),
         true, {}, maker<WQDragAndDropView>()},
        {QStringLiteral("wq::WQFocusableScrollView"), QStringLiteral("<WQGeneral/views/WQFocusableScrollView.h>"),
         QStringLiteral("Focus Ring Scroll View"), QStringLiteral("scrollView"),
         QStringLiteral("A scroll area that shows the focus frame while anything in it has the focus"),
         QStringLiteral("A scroll area drawn as focused whenever it or a widget inside it has the "
                        "keyboard focus."),
         true,
         QStringLiteral("<property name=\"widgetResizable\"><bool>true</bool></property>"
                        "<widget class=\"QWidget\" name=\"scrollViewContents\"/>"),
         maker<WQFocusableScrollView>()},
        {QStringLiteral("wq::WQURLTextView"), QStringLiteral("<WQGeneral/views/WQURLTextView.h>"),
         QStringLiteral("Link Text View"), QStringLiteral("linkTextView"),
         QStringLiteral("Read-only rich text whose links show a hand cursor"),
         QStringLiteral("A read-only rich text view whose links, and only its links, show the hand "
                        "cursor and open in the browser."),
         false, {}, maker<WQURLTextView>()},
        {QStringLiteral("wq::WQTableView"), QStringLiteral("<WQGeneral/views/WQTableView.h>"),
         QStringLiteral("Context Menu Table"), QStringLiteral("tableView"),
         QStringLiteral("A table whose context menu follows the clicked row"),
         QStringLiteral("A table view that selects the row under a right click and shows the "
                        "menu for that row."),
         false, {}, maker<WQTableView>()},
    };
}

} // namespace

WQDesignerPlugin::WQDesignerPlugin(QObject* parent) : QObject(parent)
{
    for (auto& description : descriptions())
        _widgets.append(new WQDesignerWidget(std::move(description), this));
}

} // namespace wq::designer
