// Side panels beside the register (the accounts tree, a budget box, a note
// and an About text with links), each in a focus-ring scroll area and
// reordered by dragging it; the register's context menu, which follows the
// clicked row; and a Clear button beside the entry row (left of Enter)
// that is hidden, keeping its place, while the row is empty.

#include "RegisterWindow.h"
#include "ShowcaseText.h"
#include "ShowcaseFeature.h"
#include "SidePanels.h"

#include "KeyTyping.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/dragging/WQDragImage.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/views/WQFlippedBox.h>
#include <WQGeneral/views/WQFocusableScrollView.h>
#include <WQGeneral/views/WQHideableCells.h>
#include <WQGeneral/views/WQURLTextView.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QFormLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QSet>
#include <QSettings>
#include <QTextDocument>
#include <QTimer>

#include <cmath>
#include <memory>

namespace showcase {
namespace {

// What a mouse would send: a press, moves with the button held, a release.
void sendMouse(QWidget* target, QEvent::Type type, QPoint pos, Qt::MouseButtons held = Qt::LeftButton)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    if (type == QEvent::MouseButtonRelease)
        held = Qt::NoButton;
    QMouseEvent event(type, pos, target->mapTo(target->window(), pos), target->mapToGlobal(pos), button, held,
                      Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

void click(QWidget* target, QPoint pos)
{
    // Sent events skip the platform's click-to-focus.
    if (target->focusPolicy() & Qt::ClickFocus)
        target->setFocus(Qt::MouseFocusReason);
    sendMouse(target, QEvent::MouseButtonPress, pos);
    sendMouse(target, QEvent::MouseButtonRelease, pos);
}

void rightClick(QWidget* target, QPoint pos)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, target->mapToGlobal(pos));
    QApplication::sendEvent(target, &event);
}

void closePopups()
{
    while (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
}

QString noteText()
{
    return Text::tr("<p>Reconcile against the <a href=\"https://example.com/statements/2026-03\">March statement</a> "
                    "before the 20th.</p><p>The <a href=\"https://example.com/rates\">savings rates</a> changed on "
                    "the 1st.</p>");
}

QString aboutText()
{
    return Text::tr("<p><b>WQGeneral showcase</b> 0.1: a register window built only from the framework's public "
                    "API.</p><p>Read the <a href=\"https://example.com/wqgeneral/readme\">guide</a> or "
                    "<a href=\"https://example.com/wqgeneral/issues\">report a problem</a>.</p>");
}

const QString kBudgetKey = QStringLiteral("Showcase/budget/");

// A hidden cell keeps its place but is no stop for Tab: nothing would show
// where the focus went.
template <typename Cell>
void setCellShown(Cell& cell, bool shown)
{
    cell.setCellHidden(!shown);
    cell.setFocusPolicy(shown ? Qt::StrongFocus : Qt::NoFocus);
}

class ViewsAndPanels : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        _window = &window;
        SidePanels& panels = window.sidePanels();
        panels.addPanel(QStringLiteral("Budget"), Text::tr("Budget"), _makeBudget());
        _note = _makeLinkText(QStringLiteral("Note"), Text::tr("Note"), noteText());
        panels.addPanel(QStringLiteral("Note"), Text::tr("Note"), _note);
        _about = _makeLinkText(QStringLiteral("About"), Text::tr("About"), aboutText());
        panels.addPanel(QStringLiteral("About"), Text::tr("About"), _about);

        _buildContextMenu(window);

        _clear = new wq::WQHideableButtonCell(Text::tr("Clear"), window.entryRow());
        _clear->setObjectName(QStringLiteral("clear"));
        _clear->setAutoDefault(false);
        _clear->setToolTip(Text::tr("Empties the entry row"));
        setCellShown(*_clear, false);
        window.addButton(_clear);
        QObject::connect(_clear, &QPushButton::clicked, _clear, [this] { _clearRow(); });
        _watchRow();
        // Features after this one may add fields too.
        QTimer::singleShot(0, _clear, [this] { _watchRow(); });
    }

    QList<TourStep> tourSteps(RegisterWindow& window) override
    {
        SidePanels& panels = window.sidePanels();
        QPointer<wq::WQDragAndDropView> budget = panels.panel(QStringLiteral("Budget"));
        wq::WQTableView* table = &window.table();
        QWidget* payee = window.entryRow()->findChild<QWidget*>(QStringLiteral("payee"));
        // Where the dragged panel is dropped: high on the About panel, so
        // between it and the Note.
        const auto dropPoint = [&panels] {
            const QWidget* about = panels.panel(QStringLiteral("About"));
            return about ? about->geometry().topLeft() + QPoint(120, 6) : QPoint(120, panels.height() - 4);
        };
        const auto rowPoint = [table](int row) {
            if (row < 0)
                return QPoint(30, table->viewport()->height() - 8);
            return table->visualRect(table->model()->index(row, 1)).center();
        };
        return {
            {QStringLiteral("budget: click Groceries, type 400 (ring round its panel, period shown)"), _groceries,
             [this] {
                 click(_groceries, QPoint(10, 5));
                 typeText(_groceries, QStringLiteral("400"));
             }},
            {QStringLiteral("panels: drag the Budget title 4 points down (drag in progress)"), nullptr,
             [this, budget, &panels, dropPoint] {
                 if (!budget)
                     return;
                 // A drag under a real display waits for the real button.
                 QTimer::singleShot(400, [] { QDrag::cancel(); });
                 const QPoint press(60, 8);
                 sendMouse(budget, QEvent::MouseButtonPress, press);
                 sendMouse(budget, QEvent::MouseMove, press + QPoint(0, 4));
                 sendMouse(budget, QEvent::MouseButtonRelease, press + QPoint(0, 4));
                 // Show the drag as it looks on the way to its drop place.
                 const std::unique_ptr<QMimeData> data = budget->dragMimeData();
                 const QPoint at = dropPoint();
                 QDragEnterEvent enter(at, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
                 QApplication::sendEvent(&panels, &enter);
                 _showDragImage(*budget, panels.mapTo(_window, at), press);
             }},
            {QStringLiteral("panels: drop it between Note and About"), nullptr,
             [this, budget, &panels, dropPoint] {
                 delete _dragImage.data();
                 if (!budget)
                     return;
                 const std::unique_ptr<QMimeData> data = budget->dragMimeData();
                 QDropEvent drop(dropPoint(), Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
                 QApplication::sendEvent(&panels, &drop);
             }},
            {QStringLiteral("register: right-click Corner Grocery (it alone is selected, menu shown)"), nullptr,
             [table, rowPoint] {
                 table->selectRow(0);
                 rightClick(table->viewport(), rowPoint(1));
             }},
            {QStringLiteral("register: choose Mark cleared"), nullptr,
             [this] {
                 closePopups();
                 _markCleared->trigger();
             }},
            {QStringLiteral("register: nothing selected, right-click below the rows (all items off)"), nullptr,
             [table, rowPoint] {
                 table->clearSelection();
                 rightClick(table->viewport(), rowPoint(-1));
             }},
            {QStringLiteral("entry row: type a payee (the Clear button shows)"), payee,
             [payee] {
                 closePopups();
                 if (!payee)
                     return;
                 payee->setFocus();
                 typeText(payee, QStringLiteral("Bakery"));
             }},
            {QStringLiteral("entry row: click Clear (row empty, button hidden in its place)"), payee,
             [this] { click(_clear, _clear->rect().center()); }},
        };
    }

private:
    QWidget* _makeBudget()
    {
        auto* box = new wq::WQFlippedBox(Text::tr("March"));
        auto* form = new QFormLayout(box);
        const auto money = [box](const QString& name) {
            auto* field = new wq::WQLineEdit(wq::WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2), box);
            field->setObjectName(name);
            field->setAlignment(Qt::AlignRight);
            return field;
        };
        _groceries = money(QStringLiteral("groceries budget"));
        _utilities = money(QStringLiteral("utilities budget"));
        _period = new wq::WQHideablePopUpButtonCell(box);
        _period->setObjectName(QStringLiteral("budget period"));
        _period->addItems({Text::tr("every month"), Text::tr("every quarter"), Text::tr("once")});
        _period->setToolTip(Text::tr("How often the budget repeats; shown once a budget is typed"));
        setCellShown(*_period, false);
        _total = new QLabel(box);
        _total->setAlignment(Qt::AlignRight);
        form->addRow(Text::tr("Groceries"), _groceries);
        form->addRow(Text::tr("Utilities"), _utilities);
        form->addRow(Text::tr("Repeats"), _period);
        form->addRow(Text::tr("Total"), _total);
        // Read row by row, each caption before its field.
        for (int row = 0; row < form->rowCount(); ++row)
            for (const QFormLayout::ItemRole role : {QFormLayout::LabelRole, QFormLayout::FieldRole})
                if (QLayoutItem* item = form->itemAt(row, role); item && item->widget())
                    item->widget()->raise();
        _groceries->setToolTip(Text::tr("What March's groceries may cost"));
        _utilities->setToolTip(Text::tr("What March's power, water and internet may cost"));
        // The budget is kept between runs.
        QSettings settings;
        for (wq::WQLineEdit* field : {_groceries, _utilities}) {
            const QString key = kBudgetKey + field->objectName();
            if (const QVariant kept = settings.value(key); kept.isValid())
                field->setObjectValue(kept.toDouble());
            QObject::connect(field, &wq::WQLineEdit::editedTextChanged, box, [this] { _updateBudget(); });
            QObject::connect(field, &wq::WQLineEdit::objectValueChanged, box, [key](const QVariant& value) {
                if (value.isValid())
                    QSettings().setValue(key, value.toDouble());
                else
                    QSettings().remove(key);
            });
        }
        _period->setCurrentIndex(settings.value(kBudgetKey + _period->objectName(), 0).toInt());
        QObject::connect(_period, &QComboBox::currentIndexChanged, box, [key = kBudgetKey + _period->objectName()](int index) {
            QSettings().setValue(key, index);
        });
        _updateBudget();
        return box;
    }

    void _updateBudget()
    {
        double total = 0;
        bool any = false;
        const auto formatter = wq::WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2);
        for (wq::WQLineEdit* field : {_groceries, _utilities}) {
            if (field->text().isEmpty())
                continue;
            any = true;
            QVariant value;
            QString error;
            if (formatter->getObjectValue(&value, field->text(), &error))
                total += value.toDouble();
        }
        setCellShown(*_period, any);
        _total->setText(formatter->stringForObjectValue(total).value_or(QString()));
    }

    static wq::WQURLTextView* _makeLinkText(const QString& key, const QString& name, const QString& html)
    {
        auto* text = new wq::WQURLTextView;
        text->setObjectName(key);
        text->setHtml(html);
        // A text view reads as a label: its name, then its text.
        text->setAccessibleName(name);
        text->setAccessibleDescription(text->toPlainText());
        text->setFrameShape(QFrame::NoFrame);
        // Tall enough for its text at the panels' width, in the font it will
        // have on screen.
        // (Measured on a copy: the view lays its own document out at its
        // current width.)
        text->ensurePolished();
        const std::unique_ptr<QTextDocument> copy(text->document()->clone());
        copy->setTextWidth(SidePanels::kWidth - 4);
        text->setFixedHeight(int(std::ceil(copy->size().height())) + 2);
        return text;
    }

    void _buildContextMenu(RegisterWindow& window)
    {
        wq::WQTableView& table = window.table();
        RegisterBook& book = window.book();
        auto* menu = new QMenu(&table);
        QAction* remove = menu->addAction(Text::tr("Delete"));
        QAction* duplicate = menu->addAction(Text::tr("Duplicate"));
        menu->addSeparator();
        _markCleared = menu->addAction(Text::tr("Mark cleared"));
        table.setMenu(menu);

        QObject::connect(remove, &QAction::triggered, &table, [&table, &book] { book.remove(table.selectedRows()); });
        QObject::connect(duplicate, &QAction::triggered, &table, [&table, &book] {
            // The copies are what the user goes on with.
            const QList<int> copies = book.duplicate(table.selectedRows());
            QItemSelection selection;
            for (int row : copies)
                selection.select(book.index(row, 0), book.index(row, book.columnCount() - 1));
            table.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
            if (!copies.isEmpty())
                table.selectionModel()->setCurrentIndex(book.index(copies.first(), 0), QItemSelectionModel::NoUpdate);
        });
        QObject::connect(_markCleared, &QAction::triggered, &table,
                         [&table, &book] { book.markCleared(table.selectedRows()); });
    }

    // The entry row's text fields that Clear empties: all but the dates.
    QList<wq::WQLineEdit*> _rowFields() const
    {
        QList<wq::WQLineEdit*> fields;
        for (wq::WQLineEdit* field : _window->entryRow()->findChildren<wq::WQLineEdit*>())
            if (!dynamic_cast<const wq::WQDateFormatter*>(field->formatter().get()) && !field->isHidden())
                fields << field;
        return fields;
    }

    void _watchRow()
    {
        for (wq::WQLineEdit* field : _rowFields())
            if (!_watched.contains(field)) {
                _watched.insert(field);
                QObject::connect(field, &QLineEdit::textChanged, _clear, [this] { _updateClear(); });
            }
        _updateClear();
    }

    void _updateClear()
    {
        const QList<wq::WQLineEdit*> fields = _rowFields();
        setCellShown(*_clear, std::any_of(fields.begin(), fields.end(), [](const wq::WQLineEdit* f) { return !f->text().isEmpty(); }));
    }

    void _clearRow()
    {
        for (wq::WQLineEdit* field : _rowFields())
            field->setObjectValue(QVariant());
        _window->showMessage(QString());
        if (QWidget* payee = _window->entryRow()->findChild<QWidget*>(QStringLiteral("payee")))
            payee->setFocus();
    }

    // The drag image where the pointer is, for the tour's picture (an
    // offscreen drag shows none of its own).
    void _showDragImage(const wq::WQDragAndDropView& view, QPoint pointer, QPoint pressed)
    {
        const QPixmap image = view.dragImage();
        const QSizeF imageSize = image.deviceIndependentSize();
        const QPointF origin = wq::WQDragImageOrigin(view.size(), imageSize);
        auto* label = new QLabel(_window);
        label->setPixmap(image);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        label->resize(imageSize.toSize());
        label->move(pointer - (pressed - origin.toPoint()));
        label->show();
        label->raise();
        delete _dragImage.data();
        _dragImage = label;
    }

    RegisterWindow* _window = nullptr;
    wq::WQLineEdit* _groceries = nullptr;
    wq::WQLineEdit* _utilities = nullptr;
    wq::WQHideablePopUpButtonCell* _period = nullptr;
    QLabel* _total = nullptr;
    wq::WQURLTextView* _note = nullptr;
    wq::WQURLTextView* _about = nullptr;
    wq::WQHideableButtonCell* _clear = nullptr;
    QSet<const QLineEdit*> _watched;
    QAction* _markCleared = nullptr;
    QPointer<QLabel> _dragImage;   // the window's child while shown
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeViewsAndPanels()
{
    return std::make_unique<ViewsAndPanels>();
}

} // namespace showcase
