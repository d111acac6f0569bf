#include <WQGeneral/model/WQBaseModelObject.h>

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

// Records what reaches the default centre for one name.
struct Recorder {
    explicit Recorder(const QString& name)
    {
        WQNotificationCenter::defaultCenter().addObserver(this, name, nullptr,
                                                          [this](const WQNotification& n) { seen.push_back(n); });
    }
    ~Recorder() { WQNotificationCenter::defaultCenter().removeObserver(this); }
    std::vector<WQNotification> seen;
};

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

TEST(BaseModelObject, DocumentIdentifierAndUndoManager)
{
    Account account;
    EXPECT_EQ(account.document(), nullptr);
    EXPECT_EQ(account.undoManager(), nullptr);
    EXPECT_EQ(account.veltranoID(), 0u);

    Document document;
    account.setDocument(&document);
    EXPECT_EQ(account.document(), &document);
    EXPECT_EQ(account.undoManager(), &document.stack);
    account.setDocument(nullptr);
    EXPECT_EQ(account.undoManager(), nullptr);

    account.setVeltranoID(0xFFFFFFFFu);
    EXPECT_EQ(account.veltranoID(), 0xFFFFFFFFu);
    EXPECT_EQ(kWQKey_UserData, QStringLiteral("kWQKey_UserData"));
}

TEST(BaseModelObject, NotificationsCarryDataOnlyWhenGivenAndCanBeSwitchedOff)
{
    const QString name = QStringLiteral("AccountChanged");
    Recorder recorder(name);
    Account account;

    account.sendNotification(name);
    account.sendNotification(name, QVariant(42));
    account.sendNotification(name, QVariant());
    ASSERT_EQ(recorder.seen.size(), 3u);
    EXPECT_EQ(recorder.seen[0].object, &account);
    EXPECT_FALSE(recorder.seen[0].userInfo.has_value());
    ASSERT_TRUE(recorder.seen[1].userInfo.has_value());
    EXPECT_EQ(*recorder.seen[1].userInfo, (QVariantMap{{kWQKey_UserData, 42}}));
    EXPECT_FALSE(recorder.seen[2].userInfo.has_value()) << "no data posts no user info, not an empty one";

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

TEST(BaseModelObject, ExtractDataFromNotification)
{
    Document document;
    Account account;
    account.setDocument(&document);
    WQNotificationSender stranger;

    const WQNotificationSender* sender = nullptr;
    const WQDocument* owner = &document;
    QVariant data(1);

    WQExtractDataFromNotification({QStringLiteral("n"), &account, QVariantMap{{kWQKey_UserData, 7}}}, &sender, &owner, &data);
    EXPECT_EQ(sender, &account);
    EXPECT_EQ(owner, &document) << "a model object answers its document";
    EXPECT_EQ(data, QVariant(7));

    WQExtractDataFromNotification({QStringLiteral("n"), &document, std::nullopt}, &sender, &owner, &data);
    EXPECT_EQ(sender, &document);
    EXPECT_EQ(owner, &document) << "a document is its own document";
    EXPECT_FALSE(data.isValid()) << "no user info, no data";

    WQExtractDataFromNotification({QStringLiteral("n"), &stranger, QVariantMap{{QStringLiteral("other"), 1}}}, &sender, &owner, &data);
    EXPECT_EQ(owner, nullptr);
    EXPECT_FALSE(data.isValid()) << "user info without the key";

    WQExtractDataFromNotification({QStringLiteral("n"), nullptr, std::nullopt}, nullptr, nullptr, nullptr);

    // End to end: what a model object posts comes apart again.
    Recorder recorder(QStringLiteral("Posted"));
    account.sendNotification(QStringLiteral("Posted"), QVariant(QStringLiteral("payload")));
    ASSERT_EQ(recorder.seen.size(), 1u);
    WQExtractDataFromNotification(recorder.seen[0], &sender, &owner, &data);
    EXPECT_EQ(sender, &account);
    EXPECT_EQ(owner, &document);
    EXPECT_EQ(data.toString(), QStringLiteral("payload"));
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
