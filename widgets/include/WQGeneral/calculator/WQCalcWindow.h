#pragma once
/// \class wq::WQCalcWindow
/// The pop-up calculator's window: frameless, taking the keyboard, above the
/// window it opened from and out of task bars and window lists, in the text
/// background colour.
///
/// It is a Qt::Popup. On Wayland only pop-up windows may be placed at a point
/// next to a field and take the pointer and keyboard grab; on X11 a popup is an
/// override-redirect window that stays above its parent and out of task bars.
/// Both close it when the user clicks elsewhere, which is the calculator
/// losing key status; the click then goes on to what it was aimed at, which
/// takes the focus as a click gives it. The platform adds a shadow where it
/// draws one for pop-ups (not on plain X11).

#include <WQGeneral/WQWidgetsExport.h>

#include <QWidget>

#include <memory>

namespace wq {

/// \addtogroup calculator
/// @{

class WQCalcWindowPrivate;

class WQ_WIDGETS_EXPORT WQCalcWindow : public QWidget {
    Q_OBJECT
public:
    /// `opener` is the window of the field that opens the calculator; the
    /// calculator is its child and dies with it.
    explicit WQCalcWindow(QWidget* opener);
    ~WQCalcWindow() override;

    /// Set once the calculator itself closes the window: a close that is not
    /// its own is the window losing key status.
    void setClosingByItself();

    /// A hairline drawn over the contents, since pop-ups get no shadow on
    /// many desktops; it is no part of the contents and takes no input.
    QWidget* outline() const;

signals:
    /// The toolkit closes the window: a click elsewhere, the window of the
    /// field going away.
    void resignedKey();

protected:
    /// A close the calculator did not ask for announces resignedKey().
    void closeEvent(QCloseEvent* event) override;
    /// A press outside closes the window and goes on to the widget under it.
    void mousePressEvent(QMouseEvent* event) override;
    /// Keeps the outline over the whole window.
    void resizeEvent(QResizeEvent* event) override;

private:
    Q_DECLARE_PRIVATE_D(_wq_d, WQCalcWindow)
    std::unique_ptr<WQCalcWindowPrivate> _wq_d;
};

/// @}

} // namespace wq
