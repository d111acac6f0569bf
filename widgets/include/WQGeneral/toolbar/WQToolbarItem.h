#pragma once
/// \class wq::WQToolbarItem
/// One item of a WQToolbar: a button with an image, a label under it and a
/// message it sends (see WQActionMessage.h), or a widget of the window's (a
/// search field, a pop-up menu) shown in the toolbar instead of a button.

#include <WQGeneral/WQWidgetsExport.h>

#include <QPointer>
#include <QSize>
#include <QString>
#include <QWidgetAction>

#include <memory>

namespace wq {

class WQToolbarItemPrivate;

/// \addtogroup toolbar
/// @{

class WQ_WIDGETS_EXPORT WQToolbarItem : public QWidgetAction {
    Q_OBJECT
public:
    /// An item without label, image or view.
    explicit WQToolbarItem(const QString& itemIdentifier, QObject* parent = nullptr);
    ~WQToolbarItem() override;

    /// The identifier the item was made for.
    const QString& itemIdentifier() const noexcept;
    /// Separators and spaces, which every toolbar offers.
    bool isStandardItem() const;

    /// The text under the image; the same as QAction::text().
    QString label() const { return text(); }
    /// Sets the label shown in the toolbar.
    void setLabel(const QString& label);
    /// The name shown in the customization dialog; the label when empty.
    QString paletteLabel() const;
    /// Sets the label shown in the customization palette.
    void setPaletteLabel(const QString& paletteLabel);

    /// The widget shown instead of a button. It is not owned: when the item
    /// leaves the toolbar the widget is hidden and handed back to the window.
    QWidget* view() const;
    /// Sets the widget shown instead of a button (not owned).
    void setView(QWidget* view);
    /// Limits put on the view while it is in the toolbar; an empty size sets none.
    QSize minSize() const noexcept;
    /// Sets the smallest size of the item's view.
    void setMinSize(QSize size);
    /// The largest size of the item's view.
    QSize maxSize() const noexcept;
    /// Sets the largest size of the item's view.
    void setMaxSize(QSize size);

protected:
    /// The view when there is one, else a tool button for the action.
    QWidget* createWidget(QWidget* parent) override;
    /// Hides the view and hands it back to its window instead of deleting it.
    void deleteWidget(QWidget* widget) override;

private:

    Q_DECLARE_PRIVATE_D(_wq_d, WQToolbarItem)
    std::unique_ptr<WQToolbarItemPrivate> _wq_d;
};

/// @}

} // namespace wq
