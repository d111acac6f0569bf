// The framework's catalogues: German texts from real formatters, English for
// languages without a catalogue, and following language changes. That the
// catalogues hold every text of the sources is the lupdate check's job.

#include "DateFormatterTesting.h"

#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/platform/WQTranslations.h>

#include <QEvent>

#include <thread>

using namespace wq;
using namespace wq::test;

namespace {

class Translations : public ::testing::Test {
protected:
    void TearDown() override
    {
        QLocale::setDefault(QLocale::system());
        WQSetAutomaticTranslationsEnabled(true);
        WQLoadTranslations({QStringLiteral("en-US")});
    }
    static void languageChanged()
    {
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &change);
    }
};

TEST_F(Translations, RefusalsFromRealFormattersAreGerman)
{
    ASSERT_EQ(WQLoadTranslations({QStringLiteral("de-DE")}), u"de");
    // (A date refusal in German is the sheets' test's.) A template: the
    // refused character goes where "%@" was.
    EXPECT_EQ(typeAtEnd(*formatterOn(QStringLiteral("M/d/yy")), QStringLiteral("3/1"), QStringLiteral("x")).error,
              u"„x“ ist hier nicht zulässig");

    WQDecimalFormatter decimals;
    QString error;
    EXPECT_FALSE(decimals.getObjectValue(nullptr, QStringLiteral("1.2.3"), &error));
    EXPECT_EQ(error, u"Ungültige Zahl");
    EXPECT_EQ(WQToolbarStrings::tr("Customize Toolbar\u2026"), u"Symbolleiste anpassen …");
}

TEST_F(Translations, LanguagesWithoutACatalogueShowEnglish)
{
    const struct {
        QStringList languages;
        QString loaded;
    } cases[] = {
        {{"fr-FR", "fr"}, ""},
        {{}, ""},
        {{"C"}, "en"},              // English words a few texts for this desktop
        {{"en-GB", "de-DE"}, "en"}, // English, the texts' own language, comes first
        {{"de-AT"}, "de"},          // the language without its region
        {{"de-Latn-CH"}, "de"},
        {{"fr-FR", "de-DE"}, "de"},
        {{"de_DE"}, "de"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.languages.join(u' ').toStdString());
        EXPECT_EQ(WQLoadTranslations(c.languages), c.loaded);
        EXPECT_EQ(WQLoadedTranslationLanguage(), c.loaded);
        EXPECT_EQ(WQStrings::tr("Invalid number"), c.loaded != u"de" ? u"Invalid number" : u"Ungültige Zahl");
        EXPECT_EQ(WQLocalizedString("Cancel"), c.loaded != u"de" ? u"Cancel" : u"Abbrechen");
    }
    // Catalogues belong to the application's thread: another one neither loads nor sees one.
    QString loaded = QStringLiteral("?"), seen = QStringLiteral("?");
    std::thread([&] {
        loaded = WQLoadTranslations({QStringLiteral("fr-FR")});
        seen = WQLoadedTranslationLanguage();
    }).join();
    EXPECT_EQ(loaded, u"");
    EXPECT_EQ(seen, u"");
    EXPECT_EQ(WQLoadedTranslationLanguage(), u"de");
}

TEST_F(Translations, FollowsLanguageChangesUnlessTurnedOff)
{
    QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
    languageChanged();
    EXPECT_EQ(WQLoadedTranslationLanguage(), u"de");
    EXPECT_EQ(WQStrings::tr("Don't show again"), u"Nicht mehr anzeigen");

    // Off: the catalogue loaded on its own goes, and changes are not followed.
    WQSetAutomaticTranslationsEnabled(false);
    EXPECT_FALSE(WQAutomaticTranslationsEnabled());
    EXPECT_EQ(WQStrings::tr("Don't show again"), u"Don't show again");
    languageChanged();
    EXPECT_EQ(WQLoadedTranslationLanguage(), u"");
    // An explicit load still works, and stays when turned off again.
    EXPECT_EQ(WQLoadTranslations(), u"de");
    WQSetAutomaticTranslationsEnabled(false);
    EXPECT_EQ(WQLoadedTranslationLanguage(), u"de");

    WQSetAutomaticTranslationsEnabled(true);
    QLocale::setDefault(QLocale(QStringLiteral("fr_FR")));
    languageChanged();
    EXPECT_EQ(WQLoadedTranslationLanguage(), u"");
    EXPECT_EQ(WQStrings::tr("Don't show again"), u"Don't show again");
}

} // namespace
