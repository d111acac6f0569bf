#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/menus/WQMenuExtensions.h>

#include <QAction>
#include <QMenu>
#include <QWidget>

namespace wq {
namespace {

bool sends(const QAction& item, const QByteArray& action)
{
    return wq_action(item) == action;
}

// The menus being searched, outermost first: a menu that holds itself
// somewhere below is not searched twice.
using Path = QList<const QWidget*>;

void collect(const QWidget& menu, const QByteArray& action, bool checkSubMenus,
             std::optional<QList<QAction*>>& found, Path& path)
{
    path.append(&menu);
    for (QAction* item : menu.actions()) {
        if (sends(*item, action)) {
            if (!found)
                found.emplace();
            found->append(item);
        }
        if (checkSubMenus)
            if (const QMenu* submenu = item->menu<QMenu*>(); submenu && !path.contains(submenu))
                collect(*submenu, action, true, found, path);
    }
    path.removeLast();
}

void removeAll(QWidget& menu, const QByteArray& action, Path& path)
{
    path.append(&menu);
    // By index over the shrinking list: after a removal the next item has
    // moved into the same place.
    qsizetype index = 0;
    while (index < menu.actions().size()) {
        QAction* item = menu.actions().at(index);
        if (sends(*item, action)) {
            menu.removeAction(item);
            continue;
        }
        if (QMenu* submenu = item->menu<QMenu*>(); submenu && !path.contains(submenu))
            removeAll(*submenu, action, path);
        ++index;
    }
    path.removeLast();
}

} // namespace

QAction* itemWithAction(const QWidget& menu, const QByteArray& action)
{
    for (QAction* item : menu.actions())
        if (sends(*item, action))
            return item;
    return nullptr;
}

void removeItemWithAction(QWidget& menu, const QByteArray& action)
{
    if (QAction* item = itemWithAction(menu, action))
        menu.removeAction(item);
}

std::optional<QList<QAction*>> itemsWithAction(const QWidget& menu, const QByteArray& action, bool checkSubMenus)
{
    std::optional<QList<QAction*>> found;
    Path path;
    collect(menu, action, checkSubMenus, found, path);
    return found;
}

void removeAllItemsWithAction(QWidget& menu, const QByteArray& action)
{
    Path path;
    removeAll(menu, action, path);
}

} // namespace wq
