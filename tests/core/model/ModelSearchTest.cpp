#include <WQGeneral/model/WQBaseModelObject.h>
#include <WQGeneral/model/WQModelSearch.h>

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <cmath>
#include <deque>

using namespace wq;

namespace {

class Item : public WQBaseModelObject {
public:
    explicit Item(quint32 identifier, int tag = 0) : tag(tag) { setVeltranoID(identifier); }
    int tag;
};

// Owns the items and hands out lists of raw pointers to them.
struct Items {
    std::deque<Item> storage;
    QList<Item*> make(std::initializer_list<quint32> identifiers)
    {
        QList<Item*> list;
        for (quint32 identifier : identifiers)
            list << &storage.emplace_back(identifier, int(storage.size()));
        return list;
    }
};

} // namespace

TEST(ModelSearch, FindInArrayAnswersTheFirstMatch)
{
    Items items;
    const QList<Item*> list = items.make({7, 0xFFFFFFFFu, 3, 7});
    EXPECT_EQ(WQFindObjectWithIDInArray(7, list), list[0]) << "the lower index of two";
    EXPECT_EQ(WQFindObjectWithIDInArray(0xFFFFFFFFu, &list), list[1]);
    EXPECT_EQ(WQFindObjectWithIDInArray(4, list), nullptr);
    EXPECT_EQ(WQFindObjectWithIDInArray(7, QList<Item*>{}), nullptr);
    EXPECT_EQ(WQFindObjectWithIDInArray(7, static_cast<const QList<Item*>*>(nullptr)), nullptr);

    const QList<std::shared_ptr<Item>> shared{std::make_shared<Item>(5), nullptr, std::make_shared<Item>(9)};
    EXPECT_EQ(WQFindObjectWithIDInArray(9, shared), shared[2]);
    EXPECT_EQ(WQFindObjectWithIDInArray(0, shared), nullptr) << "a null element is never a match";
}

TEST(ModelSearch, SortingIsUnsignedAndStableAndSortedFindUsesIt)
{
    Items items;
    QList<Item*> list = items.make({0x80000000u, 5, 0xFFFFFFFFu, 5, 0, 17});
    EXPECT_EQ(WQSortByVeltranoIDComparator(list[1], list[0]), -1) << "unsigned: 5 is below 0x80000000";
    EXPECT_EQ(WQSortByVeltranoIDComparator(list[2], list[5]), 1);
    EXPECT_EQ(WQSortByVeltranoIDComparator(list[1], list[3]), 0);

    WQSortArrayByVeltranoID(list);
    QList<quint32> sorted;
    for (const Item* item : list)
        sorted << item->veltranoID();
    EXPECT_EQ(sorted, (QList<quint32>{0, 5, 5, 17, 0x80000000u, 0xFFFFFFFFu}));
    EXPECT_LT(list[1]->tag, list[2]->tag) << "equal identifiers keep their order";

    // The two historical preconditions are checked: no over-read, no endless search.
    for (quint32 sought : {0u, 5u})
        EXPECT_EQ(WQFindObjectWithIDInSortedArray(sought, QList<Item*>{}), nullptr);
    EXPECT_EQ(WQFindObjectWithIDInSortedArray(0, static_cast<const QList<Item*>*>(nullptr)), nullptr);

    // Against a linear search over random sorted lists, one element and up,
    // with identifiers on both sides of 0x80000000.
    QRandomGenerator random(20240501);
    for (int round = 0; round < 200; ++round) {
        QList<std::shared_ptr<Item>> shared;
        const int size = int(random.bounded(1, 40));
        for (int i = 0; i < size; ++i)
            shared << std::make_shared<Item>(random.generate() % 64 + (random.bounded(2) ? 0xFFFFFF00u : 0u));
        WQSortArrayByVeltranoID(shared);
        for (quint32 sought = 0; sought < 64; sought += 3) {
            for (quint32 identifier : {sought, sought + 0xFFFFFF00u}) {
                const auto found = WQFindObjectWithIDInSortedArray(identifier, shared);
                const auto expected = WQFindObjectWithIDInArray(identifier, shared);
                EXPECT_EQ(bool(found), bool(expected)) << identifier;
                if (found) {
                    EXPECT_EQ(found->veltranoID(), identifier);
                }
            }
        }
    }
}

TEST(SortedArraySearch, EqualToFindsAndReportsInsertionLocations)
{
    // Every size, every gap: a found object leaves the out-place alone; a
    // missing one reports the location that keeps the list sorted.
    qsizetype where = -1;
    for (int size = 0; size <= 40; ++size) {
        QList<int> odd;
        for (int i = 0; i < size; ++i)
            odd << 2 * i + 1;
        for (int value = 0; value <= 2 * size + 1; ++value) {
            where = -1;
            const qsizetype index = sortedArray_indexOfObjectEqualTo(odd, value, &where);
            EXPECT_EQ(sortedArray_indexOfObjectEqualTo(odd, value), index);
            const auto lower = std::lower_bound(odd.begin(), odd.end(), value) - odd.begin();
            const bool present = value % 2 && value < 2 * size;
            EXPECT_EQ(index, present ? lower : WQNotFound) << size << " " << value;
            EXPECT_EQ(where, present ? -1 : lower) << size << " " << value;
        }
    }

    // compare() of the sought object, as QString offers it.
    const QStringList names{QStringLiteral("apple"), QStringLiteral("melon"), QStringLiteral("pear")};
    EXPECT_EQ(sortedArray_indexOfObjectEqualTo(names, QStringLiteral("pear")), 2);
    EXPECT_EQ(sortedArray_indexOfObjectEqualTo(names, QStringLiteral("kiwi"), &where), WQNotFound);
    EXPECT_EQ(where, 1);

    // An unordered answer is neither ascending nor descending: "the same".
    EXPECT_EQ(sortedArray_indexOfObjectEqualTo(QList<double>{1.0, 2.0, 3.0}, std::nan("")), 1);

    // A comparison of one's own, e.g. model objects by identifier.
    Items items;
    const QList<Item*> byID = items.make({2, 4, 8});
    Item sought(5);
    EXPECT_EQ(sortedArray_indexOfObjectEqualTo(byID, &sought, &where,
                                               [](const Item* a, const Item* b) { return WQSortByVeltranoIDComparator(a, b); }),
              WQNotFound);
    EXPECT_EQ(where, 2);
}

TEST(SortedArraySearch, IdenticalToOrdersByAddress)
{
    // Every other item of a pool is listed, in address order.
    std::deque<Item> pool;
    QList<const Item*> list;
    for (int i = 0; i < 12; ++i)
        pool.emplace_back(quint32(i));
    for (int i = 0; i < 12; i += 2)
        list << &pool[size_t(i)];
    std::sort(list.begin(), list.end(), std::less<const Item*>());
    for (int i = 0; i < 12; ++i) {
        const Item* item = &pool[size_t(i)];
        const auto lower = std::lower_bound(list.begin(), list.end(), item, std::less<const Item*>()) - list.begin();
        qsizetype where = -1;
        EXPECT_EQ(sortedArray_indexOfObjectIdenticalTo(list, item, &where), i % 2 ? WQNotFound : lower) << i;
        EXPECT_EQ(where, i % 2 ? lower : -1) << i;
    }

    // Equal in value, another instance: not found.
    const QList<std::shared_ptr<QString>> strings{std::make_shared<QString>(QStringLiteral("x"))};
    EXPECT_EQ(sortedArray_indexOfObjectIdenticalTo(strings, strings[0]), 0);
    EXPECT_EQ(sortedArray_indexOfObjectIdenticalTo(strings, std::make_shared<QString>(QStringLiteral("x"))), WQNotFound);
    qsizetype where = -1;
    EXPECT_EQ(sortedArray_indexOfObjectIdenticalTo(QList<const Item*>{}, &pool[0], &where), WQNotFound);
    EXPECT_EQ(where, 0);
}
