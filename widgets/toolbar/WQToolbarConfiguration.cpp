#include "WQToolbarConfiguration.h"

#include <WQGeneral/toolbar/WQToolbar.h>

#include <QSet>

namespace wq::detail {
namespace {

// Where a new default item goes in the user's list.
qsizetype placeFor(const QStringList& chosen, const QStringList& defaults, qsizetype indexInDefaults)
{
    for (qsizetype i = indexInDefaults - 1; i >= 0; --i)
        if (!WQToolbar::isStandardItemIdentifier(defaults[i]))
            if (const qsizetype at = chosen.indexOf(defaults[i]); at >= 0)
                return at + 1;
    for (qsizetype i = indexInDefaults + 1; i < defaults.size(); ++i)
        if (!WQToolbar::isStandardItemIdentifier(defaults[i]))
            if (const qsizetype at = chosen.indexOf(defaults[i]); at >= 0)
                return at;
    return chosen.size();
}

} // namespace

QStringList mergedItemIdentifiers(const QStringList& saved, const QStringList& savedDefaults,
                                  const QStringList& defaults, const QStringList& allowed)
{
    QStringList chosen = saved;
    if (savedDefaults != defaults) {
        for (qsizetype i = 0; i < defaults.size(); ++i) {
            const QString& identifier = defaults[i];
            if (WQToolbar::isStandardItemIdentifier(identifier) || savedDefaults.contains(identifier)
                || chosen.contains(identifier) || !allowed.contains(identifier))
                continue;
            chosen.insert(placeFor(chosen, defaults, i), identifier);
        }
    }
    QStringList kept;
    QSet<QString> seen;
    for (const QString& identifier : chosen) {
        if (WQToolbar::isStandardItemIdentifier(identifier)) {
            kept << identifier;
            continue;
        }
        if ((allowed.contains(identifier) || defaults.contains(identifier)) && !seen.contains(identifier)) {
            seen.insert(identifier);
            kept << identifier;
        }
    }
    return kept;
}

} // namespace wq::detail
