#pragma once
// The column of panels beside the register. Any widget can be a panel: it
// sits under a title, in a scroll area that shows the focus ring while
// something in it has the keyboard focus, and the whole panel is dragged by
// its title (or any part that does not take the mouse itself) to another
// place in the column. The column is the drop side: it reads the dragged
// panel's tag back from the drag and accepts only its own panels.

#include <WQGeneral/dragging/WQDragAndDropView.h>

#include <QList>
#include <QWidget>

class QMimeData;
class QVBoxLayout;

namespace wq {
class WQFocusableScrollView;
}

namespace showcase {

class SidePanels : public QWidget, public wq::WQDragAndDropViewDelegate {
    Q_OBJECT
public:
    explicit SidePanels(QWidget* parent = nullptr);
    ~SidePanels() override;

    static constexpr int kWidth = 270;

    // Adds a panel at the bottom under a title; key names it for the code
    // and the settings (the title is translated). The column takes content
    // over. The panel is as tall as content's size hint (or its maximum
    // height if smaller), up to a limit past which it scrolls. Answers the
    // panel's tag.
    int addPanel(const QString& key, const QString& title, QWidget* content);
    // The panels' keys, top to bottom.
    QStringList order() const;
    // Puts the panels in the order the user last left them (kept in the
    // settings whenever a panel is moved); panels not named there stay
    // below in their own order.
    void restoreOrder();
    // Moves a panel to a place (0 = top), as a drop there does; the order is
    // kept.
    void moveToPlace(const QString& key, int place);
    wq::WQDragAndDropView* panel(const QString& key) const;
    wq::WQFocusableScrollView* scrollArea(const QString& key) const;

    // The place (0 = top) a drop at y (column coordinates) would give a panel.
    int placeAt(int y) const;
    // The tag of our panel a drag carries, or -1.
    int draggedPanel(const QMimeData* data) const;

    // The label a panel's drag shows: its title.
    std::optional<QString> dragStringForWQDragAndDropView(const wq::WQDragAndDropView& view) override;

signals:
    void panelMoved(const QString& key, int place);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Panel {
        QString key;
        QString title;
        wq::WQDragAndDropView* view;
        wq::WQFocusableScrollView* area;
    };
    const Panel* _find(int tag) const;
    void _moveTo(wq::WQDragAndDropView* view, int place);
    void _showDropPlace(int place);

    QVBoxLayout* _layout = nullptr;
    QList<Panel> _panels;
    int _nextTag = 1;
    int _dropPlace = -1;   // where the indicator is drawn, -1 for none
};

} // namespace showcase
