// The bounded date-text cache against a plain model of it, text keys that
// reach the same entries as rendering, and several threads rendering at
// once, each with its own texts but one numbering of formats.

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include "WQDateTesting.h"
#include "WQDateTextCache.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <list>
#include <map>
#include <thread>
#include <vector>

using wq::_wq_renderWithCalendarFormat;
using wq::_wq_textCacheSize;
using wq::WQDate;
using wq::WQDateTextCache;

TEST(DateTextCache, AgreesWithAPlainModelUnderRandomUse)
{
    // A list in use order and a map: what the table and its removals must
    // match. Key n sets each of the five fields from its own bits, so keys
    // that differ in one field only meet; clustered years make long probe runs.
    const auto keyOf = [](qint64 n) {
        return WQDateTextCache::Key{(n >> 4) * 1024, quint32(n & 1), quint32(n >> 1 & 1), quint8(1 + (n >> 2 & 1)),
                                    quint8(1 + (n >> 3 & 1))};
    };
    QRandomGenerator generator(99);
    for (qsizetype capacity : {1, 2, 7, 64, 500}) {
        WQDateTextCache cache(capacity);
        std::list<qint64> order;
        std::map<qint64, std::pair<QString, std::list<qint64>::iterator>> model;
        for (int step = 0; step < 20000; ++step) {
            // Few distinct keys for the small caches, so that hits, misses and
            // evictions all happen.
            const qint64 n = generator.bounded(qint64(capacity) * 3);
            if (generator.bounded(2)) {
                const QString* found = cache.find(keyOf(n));
                const auto it = model.find(n);
                ASSERT_EQ(found != nullptr, it != model.end()) << capacity << " step " << step;
                if (found) {
                    EXPECT_EQ(*found, it->second.first);
                    order.erase(it->second.second);
                    order.push_front(n);
                    it->second.second = order.begin();
                }
            } else {
                // Storing again replaces the text and counts as a use.
                const QString text = QString::number(step);
                cache.insert(keyOf(n), text);
                if (const auto it = model.find(n); it != model.end()) {
                    order.erase(it->second.second);
                } else if (qsizetype(model.size()) == capacity) {
                    model.erase(order.back());
                    order.pop_back();
                }
                order.push_front(n);
                model[n] = {text, order.begin()};
            }
            ASSERT_EQ(cache.size(), qsizetype(model.size()));
        }
    }
}

TEST(DateTextCache, RenderingStaysBoundedAndRight)
{
    const QString format = QStringLiteral("%Y-%m-%d %j");
    const WQDate first(1900, 1, 1);
    for (qint64 n = 0; n < 30000; ++n) {
        const WQDate date = *WQDate::dateWithDayOfCommonEra(first.dayOfCommonEra() + n);
        ASSERT_EQ(date.descriptionWithCalendarFormat(format, std::nullopt),
                  _wq_renderWithCalendarFormat(date, format, std::nullopt));
    }
    // (Keys planted by hand are held apart, a few at most here.)
    EXPECT_LE(_wq_textCacheSize(), 8192 + 16);
    EXPECT_GE(_wq_textCacheSize(), 8192);
    // The most recent dates are still there; the first ones have gone.
    const WQDate last = *WQDate::dateWithDayOfCommonEra(first.dayOfCommonEra() + 29999);
    EXPECT_TRUE(WQDate::cachedValueForKey(last.cacheKeyForFormat(format, std::nullopt)));
    EXPECT_FALSE(WQDate::cachedValueForKey(first.cacheKeyForFormat(format, std::nullopt)));
    // Dates the day count cannot tell apart are still different texts.
    EXPECT_EQ(WQDate(2024, 3, 0).descriptionWithCalendarFormat("%Y-%m-%d", std::nullopt), "2024-03-00");
    EXPECT_EQ(WQDate(2024, 2, 29).descriptionWithCalendarFormat("%Y-%m-%d", std::nullopt), "2024-02-29");
}

TEST(DateTextCache, TextKeysReachTheSameEntries)
{
    const WQDate date(-44, 3, 15);
    const QString format = QStringLiteral("%d %m %Y");   // blanks, as the key's separators
    const QString key = date.cacheKeyForFormat(format, std::nullopt);
    EXPECT_EQ(key, "%d %m %Y 9223372036854775807 -44 3 15");
    WQDate::cacheValue("Ides", key);
    EXPECT_EQ(date.descriptionWithCalendarFormat(format, std::nullopt), "Ides");
    // Keys written another way, or naming a locale no list reaches, are keys
    // of their own, as they always were.
    for (const char* other : {"%d %m %Y 9223372036854775807 -044 3 15", "%d %m %Y 9223372036854775807 -44 03 15",
                              "%d %m %Y 09223372036854775807 -44 3 15", "%d %m %Y 9223372036854775807 -44 3 300",
                              "no numbers", "%d %m %Y 4294967295 -44 3 15"}) {
        EXPECT_FALSE(WQDate::cachedValueForKey(other)) << other;
        WQDate::cacheValue("planted", other);
        EXPECT_EQ(WQDate::cachedValueForKey(other), QString("planted")) << other;
        EXPECT_EQ(WQDate::cachedValueForKey(key), QString("Ides")) << other;
    }
}

TEST(DateTextCache, SeveralThreadsRenderAtOnce)
{
    const QVariantMap names = {{wq::WQDateLocaleKey_MonthNameArray,
                                QStringList{"J", "F", "M", "A", "M", "J", "J", "A", "S", "O", "N", "D"}}};
    const QString formats[] = {QStringLiteral("%Y-%m-%d"), QStringLiteral("%B %e"), QStringLiteral("d/M/yy")};
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            QRandomGenerator generator{quint32(t)};
            for (int i = 0; i < 20000; ++i) {
                const WQDate date(2000 + generator.bounded(40), 1 + generator.bounded(12), 1 + generator.bounded(28));
                const QString& format = formats[generator.bounded(3)];
                const std::optional<QVariantMap> locale = generator.bounded(2) ? std::optional(names) : std::nullopt;
                if (date.descriptionWithCalendarFormat(format, locale) != _wq_renderWithCalendarFormat(date, format, locale))
                    ++wrong[std::size_t(t)];
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

TEST(DateTextCache, FormatsNumberedAfreshInAnotherThreadNeverAnswerOldTexts)
{
    // Each batch wraps the format numbering at least twice, so the numbers
    // this thread's texts are stored under are handed to other formats while
    // they are still held here.
    const WQDate date(1999, 12, 31);
    const auto batch = [&](const char* tag) {
        std::vector<QString> formats;
        for (int n = 0; n < 2100; ++n)
            formats.push_back(QStringLiteral("%Y-%m-%d ") + QLatin1String(tag) + QString::number(n));
        return formats;
    };
    const auto wrongIn = [&](const std::vector<QString>& formats) {
        int wrong = 0;
        for (const QString& format : formats)
            wrong += date.descriptionWithCalendarFormat(format, std::nullopt) != _wq_renderWithCalendarFormat(date, format, std::nullopt);
        return wrong;
    };
    const std::vector<QString> mine = batch("here"), theirs = batch("there");
    EXPECT_EQ(wrongIn(mine), 0);
    int wrongThere = -1;
    std::thread([&] { wrongThere = wrongIn(theirs); }).join();
    EXPECT_EQ(wrongThere, 0);
    EXPECT_EQ(wrongIn(theirs), 0);
    EXPECT_EQ(wrongIn(mine), 0);
}
