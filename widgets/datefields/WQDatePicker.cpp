#include <WQGeneral/datefields/WQDatePicker.h>

namespace wq {
namespace {

WQDatePicker::Factory& factorySlot()
{
    static WQDatePicker::Factory factory;
    return factory;
}

} // namespace

WQDatePicker::WQDatePicker(QWidget* parent) : QDateEdit(parent) {}

WQDatePicker::~WQDatePicker() = default;

void WQDatePicker::setApplicationFactory(Factory factory)
{
    factorySlot() = std::move(factory);
}

std::unique_ptr<QDateEdit> WQDatePicker::makePicker()
{
    if (const Factory& factory = factorySlot()) {
        if (std::unique_ptr<QDateEdit> picker = factory())
            return picker;
    }
    return std::make_unique<QDateEdit>();
}

} // namespace wq
