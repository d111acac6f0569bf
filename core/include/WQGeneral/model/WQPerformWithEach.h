#pragma once
/// \file
/// Sends one operation to a receiver once per element of a list or set, the
/// element being the operation's single argument. Return values are dropped.

#include <WQGeneral/platform/WQExceptions.h>

#include <QList>
#include <QSet>

#include <functional>

namespace wq {

/// \addtogroup model
/// @{

/// operation: a member function pointer of the receiver taking one element, or
/// a callable taking (receiver, element). The count is read once; a list that
/// shrinks under the loop throws NSRangeException instead of being read past
/// its end.
template <typename Receiver, typename Operation, typename T>
void performSelectorWithEachObjectInArray(Receiver& receiver, Operation&& operation, const QList<T>& list)
{
    const qsizetype count = list.size();
    for (qsizetype index = 0; index < count; ++index) {
        if (index >= list.size())
            throw NSRangeException(QStringLiteral("index %1 beyond bounds [0 .. %2]").arg(index).arg(list.size() - 1));
        // A copy, so the operation may change the list it came from.
        const T element = list.at(index);
        std::invoke(operation, receiver, element);
    }
}

/// The same over a list that may be absent (nothing happens).
template <typename Receiver, typename Operation, typename T>
void performSelectorWithEachObjectInArray(Receiver& receiver, Operation&& operation, const QList<T>* list)
{
    if (list)
        performSelectorWithEachObjectInArray(receiver, std::forward<Operation>(operation), *list);
}

/// In the set's own order, which is not defined.
template <typename Receiver, typename Operation, typename T>
void performSelectorWithEachObjectInSet(Receiver& receiver, Operation&& operation, const QSet<T>& set)
{
    const QList<T> elements = set.values();
    performSelectorWithEachObjectInArray(receiver, std::forward<Operation>(operation), elements);
}

/// The same over a set that may be absent (nothing happens).
template <typename Receiver, typename Operation, typename T>
void performSelectorWithEachObjectInSet(Receiver& receiver, Operation&& operation, const QSet<T>* set)
{
    if (set)
        performSelectorWithEachObjectInSet(receiver, std::forward<Operation>(operation), *set);
}

/// @}

} // namespace wq
