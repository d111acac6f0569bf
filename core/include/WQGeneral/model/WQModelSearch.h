#pragma once
/// \file
/// Finding model objects by veltranoID, sorting by it, and binary searches over
/// ordered lists that also tell where a missing object would go.
///
/// Lists hold pointer-likes (raw pointers, shared_ptr, QPointer ...) to objects
/// that answer veltranoID(); identifiers compare as unsigned 32-bit numbers. A
/// null element counts as identifier 0 and is never answered as a match.
///
/// One deliberate change from the historical behaviour: WQFindObjectWithIDInSortedArray
/// checks its two preconditions itself. An empty list, or no list at all, answers
/// nothing instead of reading past the end or searching forever.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QList>

#include <algorithm>
#include <compare>
#include <concepts>
#include <cstdint>
#include <memory>
#include <type_traits>

namespace wq {

/// \addtogroup model
/// @{

template <typename P>
concept WQIdentifiedPointer = requires(const P& p) {
    { p->veltranoID() } -> std::convertible_to<quint32>;
    { static_cast<bool>(p) };
};

/// \cond
template <WQIdentifiedPointer P>
quint32 _wq_veltranoIDOf(const P& object)
{
    return object ? quint32(object->veltranoID()) : 0u;
}
/// \endcond

/// The first element, from index 0 up, with that identifier; a null P when none
/// has it or the list is absent or empty.
template <WQIdentifiedPointer P>
P WQFindObjectWithIDInArray(quint32 identifier, const QList<P>* list)
{
    if (!list)
        return P{};
    for (const P& object : *list)
        if (object && quint32(object->veltranoID()) == identifier)
            return object;
    return P{};
}

/// The same over a list that is there.
template <WQIdentifiedPointer P>
P WQFindObjectWithIDInArray(quint32 identifier, const QList<P>& list)
{
    return WQFindObjectWithIDInArray(identifier, &list);
}

/// Binary search in a list sorted ascending by identifier.
template <WQIdentifiedPointer P>
P WQFindObjectWithIDInSortedArray(quint32 identifier, const QList<P>* list)
{
    if (!list || list->isEmpty())
        return P{};
    qsizetype low = 0;
    qsizetype high = list->size() - 1;
    while (low <= high) {
        const qsizetype probe = (low + high) / 2;
        const P& object = list->at(probe);
        const quint32 probed = _wq_veltranoIDOf(object);
        if (probed > identifier) {
            if (probe == 0)
                break;
            high = probe - 1;
        } else if (probed < identifier) {
            low = probe + 1;
        } else {
            return object;
        }
    }
    return P{};
}

/// The same over a list that is there.
template <WQIdentifiedPointer P>
P WQFindObjectWithIDInSortedArray(quint32 identifier, const QList<P>& list)
{
    return WQFindObjectWithIDInSortedArray(identifier, &list);
}

/// -1, 0 or 1 as a's identifier is below, equal to or above b's.
template <WQIdentifiedPointer A, WQIdentifiedPointer B>
int WQSortByVeltranoIDComparator(const A& a, const B& b, void* /*context*/ = nullptr)
{
    const quint32 left = _wq_veltranoIDOf(a);
    const quint32 right = _wq_veltranoIDOf(b);
    return left < right ? -1 : (left > right ? 1 : 0);
}

/// In place, ascending; objects with the same identifier keep their order.
template <WQIdentifiedPointer P>
void WQSortArrayByVeltranoID(QList<P>& list)
{
    std::stable_sort(list.begin(), list.end(),
                     [](const P& a, const P& b) { return WQSortByVeltranoIDComparator(a, b) < 0; });
}

// --- Searches that also report the insertion location ---------------------

/// The shared shape: compare(element) answers <0 when the sought object goes
/// before the element, 0 when it is the one, >0 when it goes after. The
/// probing (including the stop when a "before" answer comes at probe 0) and
/// the insertion rule are relied on by callers and kept exactly.
template <typename T, typename Compare>
qsizetype _wq_sortedArraySearch(const QList<T>& list, Compare compare, qsizetype* insertionLocation)
{
    if (list.isEmpty()) {
        if (insertionLocation)
            *insertionLocation = 0;
        return WQNotFound;
    }
    qsizetype low = 0;
    qsizetype high = list.size() - 1;
    qsizetype probe = 0;
    qsizetype result = WQNotFound;
    int last = 0;
    while (low <= high) {
        probe = (low + high) / 2;
        last = compare(list.at(probe));
        if (last < 0) {
            if (low + high < 2)
                break;
            high = probe - 1;
        } else if (last == 0) {
            result = probe;
            break;
        } else {
            low = probe + 1;
        }
    }
    if (result != WQNotFound || !insertionLocation)
        return result;
    *insertionLocation = last > 0 ? probe + 1 : probe;
    return WQNotFound;
}

/// \cond
template <typename P>
std::uintptr_t _wq_addressOf(const P& pointer)
{
    return reinterpret_cast<std::uintptr_t>(static_cast<const volatile void*>(std::to_address(pointer)));
}
/// \endcond

/// Index of that very object in a list ordered by address, else WQNotFound
/// and, when insertionLocation is given, where it would have to go. An equal
/// but distinct object is not found.
template <typename P, typename S>
qsizetype sortedArray_indexOfObjectIdenticalTo(const QList<P>& list, const S& object,
                                               qsizetype* insertionLocation = nullptr)
{
    const std::uintptr_t sought = _wq_addressOf(object);
    return _wq_sortedArraySearch(list, [sought](const P& element) {
        const std::uintptr_t address = _wq_addressOf(element);
        return sought < address ? -1 : (sought == address ? 0 : 1);
    }, insertionLocation);
}

/// The answer of a three-way comparison reduced to -1, 0 or 1. An unordered
/// answer (NaN) counts as "same", as neither ascending nor descending.
template <typename R>
int _wq_orderSign(const R& answer)
{
    if constexpr (std::is_arithmetic_v<R>)
        return answer < 0 ? -1 : (answer > 0 ? 1 : 0);
    else
        return std::is_lt(answer) ? -1 : (std::is_gt(answer) ? 1 : 0);
}

/// How the sought object compares with an element: its compare() member when
/// it has one (QString, QByteArray ...), else <=>, else < both ways.
struct WQ_CORE_EXPORT WQDefaultCompare {
    /// -1 when sought goes before element, 0 when they match, 1 when it goes after.
    template <typename S, typename T>
    int operator()(const S& sought, const T& element) const
    {
        if constexpr (requires { sought.compare(element); })
            return _wq_orderSign(sought.compare(element));
        else if constexpr (requires { sought <=> element; })
            return _wq_orderSign(sought <=> element);
        else
            return sought < element ? -1 : (element < sought ? 1 : 0);
    }
};

/// Index of an element that compares the same as object in a list ordered by
/// that comparison, else WQNotFound and, when insertionLocation is given,
/// where it would have to go.
template <typename T, typename S, typename Compare = WQDefaultCompare>
qsizetype sortedArray_indexOfObjectEqualTo(const QList<T>& list, const S& object,
                                           qsizetype* insertionLocation = nullptr, Compare compare = {})
{
    return _wq_sortedArraySearch(list, [&](const T& element) { return _wq_orderSign(compare(object, element)); },
                                 insertionLocation);
}

/// @}

} // namespace wq
