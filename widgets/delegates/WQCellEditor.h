#pragma once
// The editor of a cell shown through a WQFormatterDelegate: a WQLineEdit that
// knows its cell, keeps a click on another cell from leaving a text it cannot
// read, hands on what the pop-up calculator or the calendar put into it, and
// in a date cell drops the calendar down.

#include <WQGeneral/fields/WQLineEdit.h>

#include <QPersistentModelIndex>
#include <QPointer>

class QAbstractItemView;

namespace wq::delegates {

class CellEditor final : public WQLineEdit {
    Q_OBJECT
public:
    // parent is the view's viewport.
    CellEditor(std::shared_ptr<WQFormatter> formatter, const QModelIndex& index, QWidget* parent);
    ~CellEditor() override;

    const QPersistentModelIndex& index() const noexcept { return _index; }
    QAbstractItemView* view() const;
    // True when nothing would be lost by leaving: no edit, or one the
    // formatter reads.
    bool canLeave() const;
    bool isDateCell() const noexcept { return _dateCell; }
    // The calendar of the date picker, under the editor.
    void dropDownCalendar();

signals:
    // The calculator or the calendar put a value into the editor.
    void valueChosen();

protected:
    // Notes the calculator that takes the focus from the editor.
    void focusOutEvent(QFocusEvent* event) override;
    // Presses on the viewport while the text cannot be read.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPersistentModelIndex _index;
    QPointer<QObject> _followedCalculator;
    bool _dateCell = false;
};

} // namespace wq::delegates
