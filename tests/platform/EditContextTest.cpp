#include <WQGeneral/formatters/WQEditContext.h>

#include <gtest/gtest.h>

using namespace wq;

namespace {
class FakeEditor : public WQFieldEditor {
public:
    WQRange selectedRange() const override { return range; }
    void setSelectedRange(WQRange r) override { range = r; }
    QString text() const override { return QString(); }
    WQRange range;
};
} // namespace

TEST(EditContext, ScopesNestAndRestore)
{
    FakeEditor outerEditor, innerEditor;
    EXPECT_EQ(WQEditContext::keyFieldEditor(), nullptr);
    EXPECT_FALSE(WQEditContext::currentEvent().isDeleteKeyDown());
    {
        WQEditScope outer({WQEditEvent::Type::KeyDown, QString(QChar(127)), false}, &outerEditor);
        EXPECT_TRUE(WQEditContext::currentEvent().isDeleteKeyDown());
        {
            WQEditScope inner({WQEditEvent::Type::KeyDown, QStringLiteral("+"), true}, &innerEditor);
            EXPECT_FALSE(WQEditContext::currentEvent().isDeleteKeyDown());
            EXPECT_TRUE(WQEditContext::currentEvent().optionKeyDown);
            EXPECT_EQ(WQEditContext::keyFieldEditor(), &innerEditor);
        }
        EXPECT_EQ(WQEditContext::keyFieldEditor(), &outerEditor);
        EXPECT_TRUE(WQEditContext::currentEvent().isDeleteKeyDown());
    }
    EXPECT_EQ(WQEditContext::keyFieldEditor(), nullptr);
    EXPECT_EQ(WQEditContext::currentEvent().type, WQEditEvent::Type::None);
}
