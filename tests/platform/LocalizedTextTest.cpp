#include <WQGeneral/platform/WQLocalizedText.h>

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

using namespace wq;

namespace {
// A translator that knows one sentence, in one context.
class OneSentence : public QTranslator {
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        if (QByteArray(context) == "WQGeneral" && QByteArray(source) == "Invalid date")
            return QStringLiteral("Ungültiges Datum");
        return QString();
    }
    bool isEmpty() const override { return false; }
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
    EXPECT_EQ(WQFormatTemplate(QStringLiteral("\"%@\" is not valid here"), {QStringLiteral("x")}), u"\"x\" is not valid here");
    EXPECT_EQ(WQFormatTemplate(QStringLiteral("%@ of %@"), {QStringLiteral("1"), QStringLiteral("2")}), u"1 of 2");
    EXPECT_EQ(WQFormatTemplate(QStringLiteral("%@ and %@"), {QStringLiteral("1")}), u"1 and ");
    EXPECT_EQ(WQFormatTemplate(QStringLiteral("100%"), {}), u"100%");
}
