#pragma once
/// \class wq::WQWarningSettingsPage
/// A settings page listing the warnings the user has silenced with "Don't
/// show again", each with its own "Show again" button, and one button to
/// show them all again. It follows changes made anywhere in the application.

#include <WQGeneral/WQWidgetsExport.h>

#include <QWidget>

class QPushButton;
class QVBoxLayout;

namespace wq {

/// \addtogroup alerts
/// @{

class WQ_WIDGETS_EXPORT WQWarningSettingsPage : public QWidget {
    Q_OBJECT
public:
    /// A page listing every warning that can be silenced.
    explicit WQWarningSettingsPage(QWidget* parent = nullptr);

    /// The button that shows every warning again (disabled when none is silenced).
    QPushButton* showAllButton() const { return _wq_showAll; }

private:
    void _wq_rebuild();

    QVBoxLayout* _wq_rows = nullptr;
    QPushButton* _wq_showAll = nullptr;
};

/// @}

} // namespace wq
