#include <WQGeneral/alerts/WQWindowController.h>

#include "WQWindowController_p.h"
#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarDictionary.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include <QBoxLayout>
#include <QMainWindow>
#include <QMessageBox>

namespace wq {

WQWindowController::WQWindowController(std::unique_ptr<QWidget> window)
    : _wq_d(std::make_unique<WQWindowControllerPrivate>(window.release(), true))
{
    _wq_adoptWindow();
}

WQWindowController::WQWindowController(QWidget& window)
    : QObject(&window), _wq_d(std::make_unique<WQWindowControllerPrivate>(&window, false))
{
    _wq_adoptWindow();
}

void WQWindowController::_wq_adoptWindow()
{
    if (_wq_d->window)
        _wq_d->window->setProperty(kWQWindowControllerProperty, QVariant::fromValue<QObject*>(this));
}

WQWindowController::~WQWindowController()
{
    for (const QPointer<QMessageBox>& waiting : _wq_d->waitingSheets)
        delete waiting.data();
    if (_wq_d->window) {
        _wq_d->window->setProperty(kWQWindowControllerProperty, QVariant());
        if (_wq_d->ownsWindow)
            delete _wq_d->window.data();
    }
}

WQWindowController* WQWindowController::controllerOf(const QWidget* window)
{
    return window ? qobject_cast<WQWindowController*>(window->property(kWQWindowControllerProperty).value<QObject*>())
                  : nullptr;
}

std::optional<QVariantMap> WQWindowController::toolbarDictionary() const
{
    return std::nullopt;
}

std::unique_ptr<WQToolbarItem> WQWindowController::toolbarItemForItemIdentifier(WQToolbar&,
                                                                                const QString& itemIdentifier, bool)
{
    const std::optional<QVariantMap> dictionary = toolbarDictionary();
    return dictionary ? WQToolbarItemFromDictionary(*dictionary, itemIdentifier, *this) : nullptr;
}

QStringList WQWindowController::toolbarDefaultItemIdentifiers(WQToolbar&)
{
    const std::optional<QVariantMap> dictionary = toolbarDictionary();
    return dictionary ? WQToolbarDefaultItemIdentifiers(*dictionary) : QStringList();
}

QStringList WQWindowController::toolbarAllowedItemIdentifiers(WQToolbar&)
{
    const std::optional<QVariantMap> dictionary = toolbarDictionary();
    return dictionary ? WQToolbarAllowedItemIdentifiers(*dictionary) : QStringList();
}

WQToolbar* WQWindowController::setUpToolbar(const QString& identifier)
{
    if (!_wq_d->window)
        return nullptr;
    delete _wq_d->toolbar.data();
    auto* toolbar = new WQToolbar(identifier, _wq_d->window);
    _wq_d->toolbar = toolbar;
    if (auto* mainWindow = qobject_cast<QMainWindow*>(_wq_d->window.data()))
        mainWindow->addToolBar(Qt::TopToolBarArea, toolbar);
    else if (auto* box = qobject_cast<QBoxLayout*>(_wq_d->window->layout()))
        box->insertWidget(0, toolbar);
    toolbar->setDelegate(this);
    return toolbar;
}

WQToolbar* WQWindowController::toolbar() const
{
    return _wq_d->toolbar;
}

QWidget* WQWindowController::window() const
{
    Q_D(const WQWindowController);
    return d->window;
}

} // namespace wq
