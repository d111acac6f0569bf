// Message templates (the catalogues are the translations test's) and the
// bridge through which formatters learn about the edit they judge.

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include "RecordingToolkit.h"
#include "TypingField.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;

namespace {

// A toolkit layer that edits one field while its window has the focus.
struct Layer : WQToolkit {
    const WQEditEvent& currentEvent() const override { return none; }
    WQFieldEditor* keyFieldEditor() const override { return &editor; }
    void noteRewrite() override {}
    void setUpForMathOperator(const QString&, double, const std::shared_ptr<WQFormatter>&) override {}
    void finishCalculation() override {}
    bool ownsKeyWindow() const override { return focused; }
    WQEditEvent none;
    mutable test::RecordingEditor editor;
    bool focused = false;
};

} // namespace

TEST(LocalizedText, TemplatesFillPlaceholdersInOrder)
{
    EXPECT_EQ(WQFormatTemplate(u"%@ of %@"_s, {u"1"_s, u"2"_s}), u"1 of 2");
    EXPECT_EQ(WQFormatTemplate(u"%@ and %@"_s, {u"1"_s}), u"1 and ");
    EXPECT_EQ(WQFormatTemplate(u"100%"_s, {}), u"100%");
}

TEST(Toolkit, EditScopesNestOverTheInstalledToolkitAndPassCalculatorRequestsOn)
{
    test::RecordingEditor focusedEditor, outerEditor, innerEditor;
    EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), nullptr) << "no windows before a toolkit is installed";
    {
        test::RecordingToolkit installed;
        installed.focused = &focusedEditor;
        EXPECT_EQ(&WQToolkit::shared(), &installed);
        {
            WQEditScope outer({WQEditEvent::Type::KeyDown, QString(QChar(127)), false}, &outerEditor);
            EXPECT_TRUE(WQToolkit::shared().currentEvent().isDeleteKeyDown());
            {
                WQEditScope inner({WQEditEvent::Type::KeyDown, u"+"_s, true});
                EXPECT_FALSE(WQToolkit::shared().currentEvent().isDeleteKeyDown());
                EXPECT_TRUE(WQToolkit::shared().currentEvent().optionKeyDown);
                EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &outerEditor) << "an editor-less scope keeps the outer one";
                WQToolkit::shared().noteRewrite();
                WQToolkit::shared().setUpForMathOperator(u"*"_s, 12, nullptr);
                EXPECT_TRUE(inner.rewritten());
                EXPECT_FALSE(outer.rewritten()) << "the verdict belongs to the innermost edit";
            }
            {
                WQEditScope inner({WQEditEvent::Type::KeyDown, u"="_s, false}, &innerEditor);
                EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &innerEditor);
                WQToolkit::shared().finishCalculation();
            }
            EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &outerEditor);
            EXPECT_TRUE(WQToolkit::shared().currentEvent().isDeleteKeyDown());
        }
        EXPECT_EQ(&WQToolkit::shared(), &installed);
        EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &focusedEditor);
        EXPECT_EQ(installed.requests, (QStringList{u"* 12"_s, u"="_s}));
        EXPECT_EQ(installed.rewrites, 0);
    }
    // Removed again, the windowless default answers.
    EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), nullptr);
    EXPECT_EQ(WQToolkit::shared().currentEvent().type, WQEditEvent::Type::None);
}

TEST(Toolkit, TheRegisteredLayerThatOwnsTheKeyWindowAnswers)
{
    Layer widgets, quick, installed;
    WQToolkit::registerToolkit(widgets);
    WQToolkit::registerToolkit(widgets);
    EXPECT_EQ(&WQToolkit::shared(), &widgets) << "a single layer answers even without the focus";
    WQToolkit::registerToolkit(quick);
    EXPECT_EQ(&WQToolkit::shared(), &widgets) << "nobody has the focus: the first registered";
    quick.focused = true;
    EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &quick.editor);
    WQToolkit* const previous = WQToolkit::install(&installed);
    EXPECT_EQ(&WQToolkit::shared(), &installed) << "an installed toolkit comes first";
    WQToolkit::install(previous);
    {
        WQEditScope scope({}, nullptr);
        quick.focused = false;
        widgets.focused = true;
        EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &quick.editor) << "a scope keeps the layer it began in";
    }
    EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &widgets.editor);
    WQToolkit::unregisterToolkit(widgets);
    WQToolkit::unregisterToolkit(quick);
    EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), nullptr);
}
