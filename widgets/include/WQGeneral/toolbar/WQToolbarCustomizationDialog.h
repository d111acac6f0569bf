#pragma once
/// \class wq::WQToolbarCustomizationDialog
/// The dialog in which the user chooses a toolbar's items: the items the
/// toolbar allows on the left (by palette label, with separator, space and
/// flexible space always there), the toolbar's items on the right. Items move
/// by drag and drop (into the toolbar, within it, back out of it), with the
/// buttons, or from the keyboard: Return or a double click adds the palette's
/// selected items, Delete removes the toolbar's, Ctrl+Up and Ctrl+Down move
/// them. "Restore Defaults" brings back the default set. The toolbar shows
/// every change at once; Cancel puts it back as it was, Done keeps the change
/// (and saves it when the toolbar autosaves).

#include <WQGeneral/WQWidgetsExport.h>

#include <QDialog>
#include <QPointer>
#include <QStringList>

class QComboBox;
class QListWidget;
class QPushButton;

#include <memory>

namespace wq {

class WQToolbarCustomizationDialogPrivate;

/// \addtogroup toolbar
/// @{

class WQToolbar;
class WQToolbarItemList;

class WQ_WIDGETS_EXPORT WQToolbarCustomizationDialog : public QDialog {
    Q_OBJECT
public:
    /// The MIME type of a drag between the two lists: the dragged rows, their
    /// item identifiers and the list they come from.
    static const QString kItemMimeType;

    /// A dialog for toolbar, window-modal on its window.
    explicit WQToolbarCustomizationDialog(WQToolbar& toolbar);
    ~WQToolbarCustomizationDialog() override;

    /// The items chosen so far, in order.
    QStringList itemIdentifiers() const;

public slots:
    /// Moves the items chosen in the palette into the toolbar list.
    void addSelectedItems();
    /// Takes the chosen items out of the toolbar list.
    void removeSelectedItems();
    /// Moves the chosen items one place up.
    void moveSelectedItemsUp() { _wq_moveSelected(-1); }
    /// Moves the chosen items one place down.
    void moveSelectedItemsDown() { _wq_moveSelected(+1); }
    /// Puts the default set back into the toolbar list.
    void restoreDefaultItems();
    /// Applies the list to the toolbar (and saves it when autosaving).
    void accept() override;
    /// Closes without changing the toolbar.
    void reject() override;

private:
    void _wq_insert(const QStringList& itemIdentifiers, int row);
    void _wq_remove(QList<int> rows);
    void _wq_move(QList<int> rows, int destination);
    void _wq_moveSelected(int delta);
    void _wq_setChosen(const QStringList& chosen, const QList<int>& selectRows);
    void _wq_fillPalette();
    void _wq_fillToolbarList(const QList<int>& selectRows);
    void _wq_updateButtons();
    QList<int> _wq_selectedRows(const QListWidget& list) const;

    Q_DECLARE_PRIVATE_D(_wq_d, WQToolbarCustomizationDialog)
    std::unique_ptr<WQToolbarCustomizationDialogPrivate> _wq_d;
};

/// @}

} // namespace wq
