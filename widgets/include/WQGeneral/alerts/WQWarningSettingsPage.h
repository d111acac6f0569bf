#pragma once
/// \class wq::WQWarningSettingsPage
/// A settings page listing the warnings the user has silenced with "Don't
/// show again", each with its own "Show again" button, and one button to
/// show them all again. It follows changes made anywhere in the application.

#include <WQGeneral/WQWidgetsExport.h>

#include <QWidget>

#include <memory>

class QPushButton;

namespace wq {

/// \addtogroup alerts
/// @{

class WQWarningSettingsPagePrivate;

class WQ_WIDGETS_EXPORT WQWarningSettingsPage : public QWidget {
    Q_OBJECT
public:
    /// A page listing every warning that can be silenced.
    explicit WQWarningSettingsPage(QWidget* parent = nullptr);
    ~WQWarningSettingsPage() override;

    /// The button that shows every warning again (disabled when none is silenced).
    QPushButton* showAllButton() const;

private:
    Q_DECLARE_PRIVATE_D(_wq_d, WQWarningSettingsPage)
    std::unique_ptr<WQWarningSettingsPagePrivate> _wq_d;
};

/// @}

} // namespace wq
