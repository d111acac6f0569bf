#include <WQGeneral/model/WQCaptureInvocation.h>
#include <WQGeneral/model/WQPerformWithEach.h>

#include <gtest/gtest.h>

#include <QStringList>

using namespace wq;

namespace {

struct Payee {
    QString name;
};

class Ledger {
public:
    void setTotal(double value) { calls << QStringLiteral("total %1").arg(value); }
    void attach(const std::shared_ptr<Payee>& payee) { calls << QStringLiteral("attach ") + payee->name; }
    void note(const QString& text) { calls << text; }
    QStringList calls;
};

} // namespace

TEST(CaptureInvocation, RecordsOneCallAndReplaysItOnTheCurrentTarget)
{
    WQCaptureInvocation<Ledger> recorder;
    recorder.invoke(); // fresh: nothing to do, nothing to do it on
    EXPECT_FALSE(recorder.hasInvocation());

    auto first = std::make_shared<Ledger>();
    recorder.setTarget(first);
    recorder.invoke();
    EXPECT_TRUE(first->calls.isEmpty());

    recorder.capture(&Ledger::setTotal, 1.5);
    recorder.capture(&Ledger::note, QStringLiteral("second"));
    EXPECT_TRUE(first->calls.isEmpty()) << "capturing does not perform";

    recorder.invoke();
    recorder.invoke();
    EXPECT_EQ(first->calls, (QStringList{"second", "second"})) << "only the last capture, as often as asked";

    auto other = std::make_shared<Ledger>();
    recorder.setTarget(other);
    recorder.invoke();
    EXPECT_EQ(other->calls, QStringList{"second"});
    EXPECT_EQ(first->calls.size(), 2);
    EXPECT_EQ(recorder.target(), other);

    recorder.capture([](Ledger& ledger, int n) { ledger.setTotal(n * 2); }, 21);
    recorder.invoke();
    EXPECT_EQ(other->calls.back(), QStringLiteral("total 42"));

    recorder.setTarget(nullptr);
    recorder.invoke();
    EXPECT_EQ(other->calls.size(), 2) << "no target, no call";
}

TEST(CaptureInvocation, OwnsObjectArgumentsUntilTheNextCapture)
{
    auto ledger = std::make_shared<Ledger>();
    std::weak_ptr<Payee> watch;
    std::weak_ptr<Ledger> target = ledger;
    {
        WQCaptureInvocation<Ledger> recorder(std::move(ledger));
        {
            auto payee = std::make_shared<Payee>(Payee{QStringLiteral("Grocer")});
            watch = payee;
            recorder.capture(&Ledger::attach, payee);
        }
        EXPECT_FALSE(watch.expired()) << "the record keeps its argument alive";
        recorder.invoke();
        EXPECT_EQ(target.lock()->calls, QStringList{"attach Grocer"});

        recorder.capture(&Ledger::note, QStringLiteral("n"));
        EXPECT_TRUE(watch.expired()) << "released by the next capture";

        auto payee = std::make_shared<Payee>(Payee{QStringLiteral("Bank")});
        watch = payee;
        recorder.capture(&Ledger::attach, std::move(payee));
        EXPECT_FALSE(target.expired()) << "the target is owned too";
    }
    EXPECT_TRUE(watch.expired()) << "released with the recorder";
    EXPECT_TRUE(target.expired());
}

TEST(PerformWithEach, SendsOncePerElement)
{
    Ledger ledger;
    const QStringList names{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    performSelectorWithEachObjectInArray(ledger, &Ledger::note, names);
    EXPECT_EQ(ledger.calls, names);

    ledger.calls.clear();
    performSelectorWithEachObjectInArray(ledger, &Ledger::note, QStringList{});
    performSelectorWithEachObjectInArray(ledger, &Ledger::note, static_cast<const QStringList*>(nullptr));
    performSelectorWithEachObjectInSet(ledger, &Ledger::note, QSet<QString>{});
    performSelectorWithEachObjectInSet(ledger, &Ledger::note, static_cast<const QSet<QString>*>(nullptr));
    EXPECT_TRUE(ledger.calls.isEmpty());

    const QSet<QString> set{QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")};
    performSelectorWithEachObjectInSet(ledger, &Ledger::note, set);
    EXPECT_EQ(QSet<QString>(ledger.calls.begin(), ledger.calls.end()), set);
    EXPECT_EQ(ledger.calls.size(), 3);

    // The count is read once: a list that shrinks under the loop is a range
    // error, not a read past its end.
    QStringList shrinking{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")};
    int seen = 0;
    auto drop = [&shrinking, &seen](Ledger&, const QString&) {
        ++seen;
        shrinking.removeLast();
    };
    EXPECT_THROW(performSelectorWithEachObjectInArray(ledger, drop, shrinking), NSRangeException);
    EXPECT_EQ(seen, 2);
}
