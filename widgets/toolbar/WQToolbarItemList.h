#pragma once
// One of the customization dialog's two lists. Dragging carries the
// dragged rows, their identifiers and the list they come from; a drop is
// announced with the row it lands before, and the dialog decides.

#include <QListWidget>

namespace wq {

class WQToolbarItemList : public QListWidget {
    Q_OBJECT
public:
    enum class Role { Palette, Toolbar };

    struct Payload {
        Role origin = Role::Palette;
        QList<int> rows;
        QStringList itemIdentifiers;
    };
    static constexpr int kIdentifierRole = Qt::UserRole + 1;

    WQToolbarItemList(Role role, QWidget* parent);
    Role role() const noexcept { return _wq_role; }

    // The drag data for a payload, and back (nullopt for foreign data).
    static QMimeData* encode(const Payload& payload);
    static std::optional<Payload> decode(const QMimeData* data);

signals:
    void dropped(const wq::WQToolbarItemList::Payload& payload, int row);
    // Return or Enter on the palette; Delete or Backspace on the toolbar.
    void activatedByKey();
    // Ctrl+Up (-1) or Ctrl+Down (+1) on the toolbar.
    void moveRequested(int delta);

protected:
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override;
    Qt::DropActions supportedDropActions() const override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int _wq_rowAt(QPoint position) const;
    void _wq_showInsertion(int row);
    Role _wq_role;
    int _wq_insertionRow = -1;  // where the insertion line is drawn, -1 for none
};

} // namespace wq
