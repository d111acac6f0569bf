#pragma once
/// \class wq::WQDatePicker
/// The date picker that WQSetupDateField puts in place of a text field: a
/// plain QDateEdit, or the application's own WQDatePicker subclass once it is
/// registered.

#include <WQGeneral/WQWidgetsExport.h>

#include <QDateEdit>

#include <concepts>
#include <functional>
#include <memory>

namespace wq {

/// \addtogroup datefields
/// @{

class WQ_WIDGETS_EXPORT WQDatePicker : public QDateEdit {
    Q_OBJECT
public:
    /// Makes the picker WQSetupDateField() puts in place.
    using Factory = std::function<std::unique_ptr<QDateEdit>()>;

    /// A date picker.
    explicit WQDatePicker(QWidget* parent = nullptr);
    ~WQDatePicker() override;

    /// From now on, date fields are set up with a T.
    template <std::derived_from<WQDatePicker> T>
    static void registerApplicationClass()
    {
        setApplicationFactory([] { return std::make_unique<T>(); });
    }
    /// An empty factory goes back to plain QDateEdit pickers.
    static void setApplicationFactory(Factory factory);
    /// A new picker of the registered class, without parent.
    static std::unique_ptr<QDateEdit> makePicker();
};

/// @}

} // namespace wq
