#include <WQGeneral/model/WQBaseModelObject.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <QUndoStack>

using namespace wq;

namespace {

class Document : public WQDocument {
public:
    QUndoStack* undoManager() const override { return &stack; }
    mutable QUndoStack stack;
};

class Account : public WQBaseModelObject {};

// Observes through the base so that the base can drop the registration.
class Watcher : public WQBaseModelObject {
public:
    explicit Watcher(int& calls)
    {
        observeNotification(QStringLiteral("a"), nullptr, [&calls](const WQNotification&) { ++calls; });
        observeNotification(QStringLiteral("b"), nullptr, [&calls](const WQNotification&) { ++calls; });
    }
};

} // namespace

TEST(BaseModelObject, NotificationsCarryDataOnlyWhenGivenAndCanBeSwitchedOff)
{
    const QString name = QStringLiteral("AccountChanged");
    test::Heard recorder(name);
    Account account;

    account.sendNotification(name);
    account.sendNotification(name, QVariant(42));
    account.sendNotification(name, QVariant());
    ASSERT_EQ(recorder.seen.size(), 3u);
    EXPECT_EQ(recorder.seen[0].object, &account);
    EXPECT_EQ(recorder.seen[0].userInfo, std::nullopt);
    EXPECT_EQ(recorder.seen[1].userInfo, (QVariantMap{{QStringLiteral("kWQKey_UserData"), 42}}));
    EXPECT_EQ(recorder.seen[2].userInfo, std::nullopt) << "no data posts no user info, not an empty one";

    // A switch, not a counter.
    account.disableNotificationSending();
    account.disableNotificationSending();
    account.sendNotification(name);
    account.sendNotification(name, QVariant(QStringLiteral("data")));
    EXPECT_EQ(recorder.seen.size(), 3u);
    account.enableNotificationSending();
    account.sendNotification(name);
    EXPECT_EQ(recorder.seen.size(), 4u);
}

TEST(BaseModelObject, DocumentGivesUndoManagerAndNotificationsTheirOwner)
{
    Document document;
    Account account;
    EXPECT_EQ(account.undoManager(), nullptr);
    EXPECT_EQ(account.veltranoID(), 0u);
    account.setDocument(&document);
    EXPECT_EQ(account.undoManager(), &document.stack);
    WQNotificationSender stranger;

    const WQNotificationSender* sender = nullptr;
    const WQDocument* owner = &document;
    QVariant data(1);

    // A model object answers its document, a document itself; no user info
    // or user info without the key is no data.
    const WQNotification cases[] = {
        {QStringLiteral("n"), &account, QVariantMap{{kWQKey_UserData, 7}}},
        {QStringLiteral("n"), &document, std::nullopt},
        {QStringLiteral("n"), &stranger, QVariantMap{{QStringLiteral("other"), 1}}},
    };
    const WQDocument* owners[] = {&document, &document, nullptr};
    const QVariant values[] = {QVariant(7), QVariant(), QVariant()};
    for (int i = 0; i < 3; ++i) {
        WQExtractDataFromNotification(cases[i], &sender, &owner, &data);
        EXPECT_EQ(sender, cases[i].object) << i;
        EXPECT_EQ(owner, owners[i]) << i;
        EXPECT_EQ(data, values[i]) << i;
    }
    WQExtractDataFromNotification({QStringLiteral("n"), nullptr, std::nullopt}, nullptr, nullptr, nullptr);
    account.setDocument(nullptr);
    EXPECT_EQ(account.undoManager(), nullptr);
}

TEST(BaseModelObject, DestructionRemovesEveryRegistration)
{
    auto& center = WQNotificationCenter::defaultCenter();
    int calls = 0;
    const qsizetype before = center.observationCount();
    {
        Watcher watcher(calls);
        EXPECT_EQ(center.observationCount(), before + 2);
        center.postNotificationName(QStringLiteral("a"));
        EXPECT_EQ(calls, 1);
    }
    EXPECT_EQ(center.observationCount(), before);
    center.postNotificationName(QStringLiteral("a"));
    center.postNotificationName(QStringLiteral("b"));
    EXPECT_EQ(calls, 1) << "a destroyed object is never called";
}
