#pragma once
/// \class wq::WQFormatterDelegate
/// An item delegate that shows and edits a column of an item view through a
/// WQFormatter, as a WQLineEdit shows and edits a field.
///
/// Cells are painted with the formatter's display of the value the model
/// holds under valueRole() (Qt::EditRole by default): money as the money
/// fields show it, dates in the user's short date order. Numbers are
/// right-aligned unless the model gives an alignment or alignment() is set; a
/// negative amount shown with its sign can take negativeBrush(). Display texts
/// are kept per value until the formatter announces a change, so repainting a
/// screen of cells formats nothing again.
///
/// A cell is edited in a WQLineEdit carrying the same formatter, so each
/// keystroke is judged as in a field; a refusal with a reason comes out as
/// editRefused() with the cell's index, a finished text the formatter cannot
/// read as valueRefused(), and that text is never written: the editor stays
/// open and keeps the focus (also against a click on another cell). What is
/// written is the object value: a double for money and numbers, a WQDate for
/// dates (a QDate where the cell held a QDate; either is read).
///
/// Keys in the editor: Tab and Shift+Tab write the value and go on to the next
/// or previous editable cell (in the order shown, hidden rows and columns
/// skipped; editing ends at the last one); Return writes and ends editing;
/// Escape gives up the edit and ends it. Up and Down leave the cell as the
/// view moves, but not with a text that cannot be read. In a date cell the
/// date field's keys step the date (+ = - t, Alt for months) and Alt+Down or
/// F4 (or the button at the cell's end) drops the date picker's calendar down.
///
/// With a calculating money formatter, an operator key opens the pop-up
/// calculator over the cell's editor; its total lands in the editor and is
/// written at once, and the editor stays open. A click elsewhere ends the
/// calculation and the edit and leaves the focus where the user clicked.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/formatters/WQFormatter.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QBrush>
#include <QFont>
#include <QHash>
#include <QStaticText>
#include <QStyledItemDelegate>

#include <memory>

namespace wq {

class WQFormatterDelegatePrivate;

/// \addtogroup delegates
/// @{

class WQ_WIDGETS_EXPORT WQFormatterDelegate : public QStyledItemDelegate {
    Q_OBJECT
    /// The model role that holds the cells' values.
    Q_PROPERTY(int valueRole READ valueRole WRITE setValueRole NOTIFY valueRoleChanged)
    /// The text brush of negative amounts shown with a sign; none (Qt::NoBrush) by default.
    Q_PROPERTY(QBrush negativeBrush READ negativeBrush WRITE setNegativeBrush NOTIFY negativeBrushChanged)
    /// The cells' alignment where the model gives none; 0 (the default): numbers right, the rest left.
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment NOTIFY alignmentChanged)
public:
    /// Shows and edits through formatter (shared with the editors it makes).
    explicit WQFormatterDelegate(std::shared_ptr<WQFormatter> formatter, QObject* parent = nullptr);
    /// Shows and edits through a new formatter of the kind (see WQMakeFormatter()).
    explicit WQFormatterDelegate(WQLineEdit::FormatterKind kind, int places = 2, QObject* parent = nullptr);
    ~WQFormatterDelegate() override;

    /// Cells show through the new formatter; editors made from now on use it.
    void setFormatter(std::shared_ptr<WQFormatter> formatter);
    /// The formatter in use.
    const std::shared_ptr<WQFormatter>& formatter() const noexcept;

    /// The role values are read from and written to.
    int valueRole() const noexcept;
    /// Reads and writes values under role from now on.
    void setValueRole(int role);
    /// The brush of negative amounts.
    QBrush negativeBrush() const;
    /// Qt::NoBrush leaves negative amounts in the text colour.
    void setNegativeBrush(const QBrush& brush);
    /// The alignment of cells whose model gives none (0: automatic).
    Qt::Alignment alignment() const noexcept;
    /// Sets the alignment of cells whose model gives none.
    void setAlignment(Qt::Alignment alignment);

    /// The formatter's display of value (a QDate shows as the date); empty
    /// where the formatter has none.
    QString displayText(const QVariant& value, const QLocale& locale) const override;
    /// A WQLineEdit with the formatter, aligned as the cell.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Shows the cell's value in the editor (left alone when it shows it already).
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    /// Paints the cell as the style does, with its text laid out once for
    /// every repaint.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Writes the editor's value; nothing when its text cannot be read.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

signals:
    /// A keystroke in the cell's editor was refused or rewritten with a reason.
    void editRefused(const QModelIndex& index, const QString& errorDescription);
    /// The editor's text cannot be read; it stays open.
    void valueRefused(const QModelIndex& index, const QString& errorDescription);
    /// valueRole() changed.
    void valueRoleChanged(int role);
    /// negativeBrush() changed.
    void negativeBrushChanged(const QBrush& brush);
    /// alignment() changed.
    void alignmentChanged(Qt::Alignment alignment);

protected:
    /// The cell's text, alignment and colour from the formatter.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    /// The editor's keys and focus, as described above.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Shown;
    struct ValueKey;
    const Shown& _wq_shown(const QVariant& value) const;
    const Shown& _wq_styleCell(QStyleOptionViewItem* option, const QModelIndex& index) const;
    Shown _wq_render(const QVariant& value) const;
    void _wq_followFormatter();
    void _wq_forgetTexts();
    void _wq_commit(WQLineEdit* editor);
    void _wq_move(WQLineEdit* editor, bool backwards);

    Q_DECLARE_PRIVATE_D(_wq_d, WQFormatterDelegate)
    std::unique_ptr<WQFormatterDelegatePrivate> _wq_d;
};

/// @}

} // namespace wq
