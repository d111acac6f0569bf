#pragma once
// What the two hideable cells share: the flag, and a filter that swallows
// the paint events of the cell and of every widget inside it (not of its
// pop-up windows) while it is hidden.

#include <QObject>

class QWidget;

namespace wq {

class WQHideableCellState : public QObject {
    Q_OBJECT
public:
    // A child of cell, gone with it.
    explicit WQHideableCellState(QWidget& cell);

    bool hidden() const noexcept { return _wq_hidden; }
    void setHidden(bool hidden);
    bool isOpaque() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void _wq_watch(QWidget& widget);

    QWidget& _wq_cell;
    bool _wq_hidden = false;
    // What the cell painted behind itself before it was hidden.
    bool _wq_autoFill = false;
    bool _wq_opaquePaint = false;
};

// Makes the accessible interfaces of the cells report them invisible while
// hidden. Safe to call more than once.
void WQInstallHideableCellAccessibility();

} // namespace wq
