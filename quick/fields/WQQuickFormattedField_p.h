#pragma once
// The formatted field's state, kept out of its public header so that it can
// change without breaking applications. It is also the session's view of
// the Qt Quick text field.
#include <WQGeneral/quick/WQQuickFormattedField.h>

#include <QQuickItem>

namespace wq {

class WQQuickFormattedFieldPrivate : public WQFieldSession::Field {
public:
    WQQuickFormattedFieldPrivate() : session(*this) {}

    // WQFieldSession::Field
    QString text() const override;
    WQRange selectedRange() const override;
    void setText(const QString& text) override;
    void setSelectedRange(WQRange range) override;

    QPointer<QQuickItem> textField; // before the session, which reads it as it starts
    WQFieldSession session;
    QObject* relay = nullptr; // the field's signals, relayed to the session
    WQQuickFormattedField::FormatterKind kind = WQQuickFormattedField::NoFormatter;
    std::weak_ptr<WQFormatter> kindFormatter; // the formatter the kind installed
    int places = 2;
    QPointer<WQQuickMoneyOwner> owner;
};

} // namespace wq
