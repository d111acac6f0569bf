#pragma once
// The user's choice of toolbar items, brought up to date with the default set
// the application ships now.

#include <QStringList>

namespace wq::detail {

// `saved` was chosen when the default set was `savedDefaults`. Items of the
// current default set that are new to it (and allowed, and not chosen
// already) join the choice after the nearest item before them in the default
// set that the user has (before the nearest one after it when there is none;
// at the end when the user has neither). Then identifiers that are neither
// standard, allowed nor default, and second copies of non-standard items, are
// dropped.
QStringList mergedItemIdentifiers(const QStringList& saved, const QStringList& savedDefaults,
                                  const QStringList& defaults, const QStringList& allowed);

} // namespace wq::detail
