#pragma once
/// \class wq::WQTableView
/// A table view whose context menu follows the row that was clicked: a right
/// click on a row that is not selected selects that row alone (a click on a
/// selected row keeps a multiple selection), then the delegate, if there is
/// one, gives the menu for that row (-1 below the last row); without a
/// delegate the table's own menu is shown, with every item disabled when no
/// row is selected.

#include <WQGeneral/WQWidgetsExport.h>

#include <QMenu>
#include <QTableView>

#include <memory>

namespace wq {

/// \addtogroup views
/// @{

class WQTableView;

/// What a WQTableView asks before it shows its context menu.
class WQ_WIDGETS_EXPORT WQTableViewDelegate {
public:
    virtual ~WQTableViewDelegate() = default;
    /// The menu for a right click on row, -1 below the last row; nullptr for
    /// none. The table does not take the menu over.
    virtual QMenu* tableViewContextMenuForRow(WQTableView& tableView, int row) = 0;
};

class WQTableViewPrivate;

class WQ_WIDGETS_EXPORT WQTableView : public QTableView {
    Q_OBJECT
public:
    /// A table view without menu.
    explicit WQTableView(QWidget* parent = nullptr);
    ~WQTableView() override;

    /// Not owned; it must outlive the table or be cleared first.
    WQTableViewDelegate* delegate() const noexcept;
    /// Sets the delegate (not owned).
    void setDelegate(WQTableViewDelegate* delegate) noexcept;

    /// The table's own menu; the table takes it as a child.
    QMenu* menu() const;
    /// Sets the table's own menu; the table takes it as a child.
    void setMenu(QMenu* menu);

    /// Rows with any selected cell, in order.
    QList<int> selectedRows() const;

    /// Takes the focus, selects the clicked row as above and answers the menu
    /// to show for a right click at pos (viewport coordinates); nullptr for
    /// none. A disabled copy is the table's and lives until the next call.
    QMenu* menuForEvent(const QPoint& pos);

protected:
    /// Shows the menu that menuForEvent() answers at the click.
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    Q_DECLARE_PRIVATE_D(_wq_d, WQTableView)
    std::unique_ptr<WQTableViewPrivate> _wq_d;
};

/// @}

} // namespace wq
