#pragma once
// The line edit's state, apart from its public header so that it can change
// without breaking applications: the keystroke session shared with the
// other toolkits' fields, and what a form chose (kind, places, date range).
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/formatters/WQFieldSession.h>

namespace wq {

class WQLineEditPrivate : public WQFieldSession::Field {
    Q_DECLARE_PUBLIC(WQLineEdit)
public:
    WQLineEditPrivate(WQLineEdit* edit, std::shared_ptr<WQFormatter> formatter);

    // WQFieldSession::Field: the line edit as the session sees it.
    QString text() const override { return q_ptr->QLineEdit::text(); }
    WQRange selectedRange() const override { return q_ptr->selectedRange(); }
    void setText(const QString& text) override { q_ptr->setText(text); }
    void setSelectedRange(WQRange range) override { q_ptr->setSelectedRange(range); }

    /// Gives formatter the field's date range, when the field has one of its own.
    void applyDateRange(const std::shared_ptr<WQFormatter>& formatter) const;
    /// valueChanged and dateChanged for a new object value.
    void emitTypedValue(const QVariant& value);

    WQLineEdit* q_ptr;
    WQFieldSession session;
    WQLineEdit::FormatterKind kind = WQLineEdit::NoFormatter;
    std::weak_ptr<WQFormatter> kindFormatter; // the formatter the kind installed
    int places = 2;
    bool hasDateRange = false; ///< the range below was set on the field
    QDate minimumDate;
    QDate maximumDate;
};

} // namespace wq
