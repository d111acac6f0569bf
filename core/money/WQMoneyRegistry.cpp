#include <WQGeneral/money/WQCalculateMoneyFormatter.h>
#include <WQGeneral/platform/WQNotificationQueue.h>

#include <map>
#include <vector>

namespace wq {
namespace {

using Registry = std::map<QString, std::shared_ptr<WQMoneyFormatter>>;

std::unique_ptr<Registry>& registrySlot()
{
    // The centres and the queue a formatter's destructor talks to must
    // outlive the registry, so they are made first.
    WQNotificationCenter::defaultCenter();
    WQNotificationCenter::distributedCenter();
    WQNotificationQueue::defaultQueue();
    static std::unique_ptr<Registry> registry;
    return registry;
}

QString addressPrefix(const WQNotificationSender* delegate)
{
    return QString::asprintf("%p ", static_cast<const void*>(delegate));
}

} // namespace

qsizetype WQMoneyFormatter::registeredFormatterCount()
{
    const auto& registry = registrySlot();
    return registry ? qsizetype(registry->size()) : 0;
}

std::shared_ptr<WQMoneyFormatter> WQMoneyFormatter::moneyFormatterForDelegate(WQMoneyFormatterDelegate* delegate,
                                                                              qint8 decimalPlaces, bool canCalculate)
{
    const WQNotificationSender* owner = delegate;
    const QString key = QString::asprintf(canCalculate ? "%p %d WQCalculateMoneyFormatter" : "%p %d WQMoneyFormatter",
                                          static_cast<const void*>(owner), int(decimalPlaces));
    auto& registry = registrySlot();
    if (registry) {
        const auto it = registry->find(key);
        // An entry whose owner died without saying so belongs to nobody
        // now; a new owner at the same address gets a fresh formatter.
        if (it != registry->end() && (!delegate || it->second->delegate()))
            return it->second;
    }

    QString negative = QStringLiteral("-$#,##0");
    if (decimalPlaces > 0)
        negative += u'.' + QString(decimalPlaces, u'0');

    std::shared_ptr<WQMoneyFormatter> formatter;
    if (canCalculate)
        formatter = std::make_shared<WQCalculateMoneyFormatter>(delegate);
    else
        formatter = std::make_shared<WQMoneyFormatter>(delegate);
    formatter->setNegativeFormat(negative);
    formatter->setPositiveFormat(negative.mid(1));

    if (!registry)
        registry = std::make_unique<Registry>();
    (*registry)[key] = formatter;
    return formatter;
}

void WQMoneyFormatter::_wq_removed_delegate(const WQNotificationSender* delegate)
{
    auto& registry = registrySlot();
    if (!registry)
        return;
    const QString prefix = addressPrefix(delegate);
    // The formatters die after the registry is consistent again, since a
    // dying formatter may be the one whose notification led here.
    std::vector<std::shared_ptr<WQMoneyFormatter>> dropped;
    for (auto it = registry->begin(); it != registry->end();) {
        if (it->first.startsWith(prefix)) {
            dropped.push_back(std::move(it->second));
            it = registry->erase(it);
        } else {
            ++it;
        }
    }
    if (registry->empty())
        registry.reset();
}

} // namespace wq
