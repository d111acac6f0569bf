// Localized sentences, message templates and the edit context formatters
// consult while a key is being judged.

#include <WQGeneral/formatters/WQEditContext.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;

namespace {

// A translator that knows one sentence, in one context.
class OneSentence : public QTranslator {
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        if (QByteArray(context) == "WQGeneral" && QByteArray(source) == "Invalid date")
            return u"Ungültiges Datum"_s;
        return QString();
    }
    bool isEmpty() const override { return false; }
};

class FakeEditor : public WQFieldEditor {
public:
    WQRange selectedRange() const override { return range; }
    void setSelectedRange(WQRange r) override { range = r; }
    QString text() const override { return QString(); }
    WQRange range;
};

} // namespace

TEST(LocalizedText, FallsBackToEnglishAndUsesInstalledTranslations)
{
    EXPECT_EQ(WQLocalizedString("Invalid date"), u"Invalid date");
    OneSentence translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(WQLocalizedString("Invalid date"), u"Ungültiges Datum");
    EXPECT_EQ(WQLocalizedStringFromTable("Invalid date", "ToolbarStrings"), u"Invalid date");
    EXPECT_EQ(WQLocalizedString("Something else"), u"Something else");
    QCoreApplication::removeTranslator(&translator);
}

TEST(LocalizedText, TemplatesFillPlaceholdersInOrder)
{
    EXPECT_EQ(WQFormatTemplate(uR"("%@" is not valid here)"_s, {u"x"_s}), uR"("x" is not valid here)");
    EXPECT_EQ(WQFormatTemplate(u"%@ of %@"_s, {u"1"_s, u"2"_s}), u"1 of 2");
    EXPECT_EQ(WQFormatTemplate(u"%@ and %@"_s, {u"1"_s}), u"1 and ");
    EXPECT_EQ(WQFormatTemplate(u"100%"_s, {}), u"100%");
}

TEST(EditContext, ScopesNestAndRestore)
{
    FakeEditor outerEditor, innerEditor;
    EXPECT_EQ(WQEditContext::keyFieldEditor(), nullptr);
    EXPECT_FALSE(WQEditContext::currentEvent().isDeleteKeyDown());
    {
        WQEditScope outer({WQEditEvent::Type::KeyDown, QString(QChar(127)), false}, &outerEditor);
        EXPECT_TRUE(WQEditContext::currentEvent().isDeleteKeyDown());
        {
            WQEditScope inner({WQEditEvent::Type::KeyDown, u"+"_s, true}, &innerEditor);
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
