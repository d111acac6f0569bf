// The framework's catalogues: German texts from real formatters, English for
// English and for languages without a catalogue, following language changes,
// and every text passed to the translation functions present in the shipped
// catalogues.

#include "DateFormatterTesting.h"

#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/platform/WQTranslations.h>

#include <QDirIterator>
#include <QEvent>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <map>
#include <set>
#include <tuple>

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
    const auto dates = formatterOn(QStringLiteral("M/d/yy"));
    QString error;
    EXPECT_FALSE(dates->dateForString(QString(), &error));
    EXPECT_EQ(error, u"Das Datumsfeld darf nicht leer bleiben.");
    // A template: the refused character goes where "%@" was.
    EXPECT_EQ(typeAtEnd(*dates, QStringLiteral("3/1"), QStringLiteral("x")).error, u"„x“ ist hier nicht zulässig");

    WQDecimalFormatter decimals;
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
}

TEST_F(Translations, FollowsLanguageChangesUnlessTurnedOff)
{
    QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
    languageChanged();
    EXPECT_EQ(WQLoadedTranslationLanguage(), u"de");
    EXPECT_EQ(WQStrings::tr("Don't show again"), u"Nicht mehr anzeigen");

    // Off: the catalogue loaded on its own goes, and changes are not followed.
    WQSetAutomaticTranslationsEnabled(false);
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

// --- Extraction --------------------------------------------------------------

struct Text {
    QString context;
    QString source;
    bool operator<(const Text& other) const
    {
        return std::tie(context, source) < std::tie(other.context, other.source);
    }
};

// Reads the C++ string literals (adjacent ones joined) at `at`; false when
// the argument there is not a literal.
bool readLiterals(const QString& code, qsizetype& at, QString& out)
{
    QByteArray utf8;
    bool any = false;
    for (;;) {
        while (at < code.size() && code[at].isSpace())
            ++at;
        if (at >= code.size() || code[at] != u'"')
            break;
        any = true;
        for (++at; at < code.size() && code[at] != u'"'; ++at) {
            if (code[at] != u'\\') {
                utf8 += QString(code[at]).toUtf8();
                continue;
            }
            const QChar e = code[++at];
            if (e == u'n')
                utf8 += '\n';
            else if (e == u't')
                utf8 += '\t';
            else if (e == u'u') {
                utf8 += QString(QChar(char16_t(code.mid(at + 1, 4).toUShort(nullptr, 16)))).toUtf8();
                at += 4;
            } else
                utf8 += QString(e).toUtf8();
        }
        ++at;
    }
    out = QString::fromUtf8(utf8);
    return any;
}

// Every call of the translation functions in the framework's sources.
std::set<Text> textsInSources(const QString& root, QStringList& dynamicCalls)
{
    static const QRegularExpression call(
        QStringLiteral(R"((WQStrings::tr|WQToolbarStrings::tr|WQLocalizedStringFromTable|WQLocalizedString|)"
                       R"(QCoreApplication::translate|(?<![\w:])tr|QT_TRANSLATE_NOOP|QT_TR_NOOP)\s*\()"));
    // Where a text that is not a literal is passed on: the lookup itself and
    // the application's own toolbar texts.
    static const QStringList passThrough = {QStringLiteral("core/include/WQGeneral/platform/WQLocalizedText.h"),
                                            QStringLiteral("core/platform/WQLocalizedText.cpp"),
                                            QStringLiteral("widgets/toolbar/WQToolbarDictionary.cpp")};
    std::set<Text> texts;
    for (const QString& folder : {QStringLiteral("core"), QStringLiteral("widgets"), QStringLiteral("quick")}) {
        QDirIterator files(root + u'/' + folder, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QString relative = path.mid(root.size() + 1);
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly))
                ADD_FAILURE() << "cannot read " << path.toStdString();
            const QString code = QString::fromUtf8(file.readAll());
            for (auto it = call.globalMatch(code); it.hasNext();) {
                const QRegularExpressionMatch m = it.next();
                const QString function = m.captured(1);
                qsizetype at = m.capturedEnd();
                QString first;
                QString second;
                const bool literal = readLiterals(code, at, first);
                const bool twoLiterals = literal && code[at] == u',' && readLiterals(code, ++at, second);
                if (!literal) {
                    if (!passThrough.contains(relative))
                        dynamicCalls << relative + u' ' + function;
                    continue;
                }
                if (function == u"WQStrings::tr" || function == u"WQLocalizedString")
                    texts.insert({QStringLiteral("WQGeneral"), first});
                else if (function == u"WQToolbarStrings::tr")
                    texts.insert({QStringLiteral("ToolbarStrings"), first});
                else if (function == u"WQLocalizedStringFromTable" && twoLiterals)
                    texts.insert({second, first});
                else if (twoLiterals && function != u"tr" && function != u"QT_TR_NOOP") // context first
                    texts.insert({first, second});
                else // a context lupdate would guess from the code around it
                    dynamicCalls << relative + u' ' + function + u' ' + first;
            }
        }
    }
    return texts;
}

// A catalogue's texts with their translations ("" where unfinished).
std::map<Text, QString> catalogue(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    std::map<Text, QString> messages;
    QXmlStreamReader xml(&file);
    QString context;
    QString source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name")
            context = xml.readElementText();
        else if (xml.name() == u"source")
            source = xml.readElementText();
        else if (xml.name() == u"translation") {
            const bool unfinished = xml.attributes().value(QStringLiteral("type")) == u"unfinished";
            const QString translation = xml.readElementText();
            messages[{context, source}] = unfinished ? QString() : translation;
        }
    }
    EXPECT_FALSE(xml.hasError()) << path.toStdString() << ": " << xml.errorString().toStdString();
    return messages;
}

TEST_F(Translations, EveryTextPassedToTheTranslationFunctionsIsInTheCatalogues)
{
    const QString root = QStringLiteral(WQ_SOURCE_DIR);
    QStringList dynamicCalls;
    const std::set<Text> inSources = textsInSources(root, dynamicCalls);
    EXPECT_TRUE(dynamicCalls.isEmpty()) << "texts lupdate cannot extract: " << dynamicCalls.join(u", ").toStdString();

    const std::map<Text, QString> templ = catalogue(root + QStringLiteral("/translations/WQGeneral.ts"));
    std::set<Text> inTemplate;
    for (const auto& [text, translation] : templ)
        inTemplate.insert(text);
    for (const Text& t : inSources)
        EXPECT_TRUE(inTemplate.count(t)) << "not extracted: " << t.context.toStdString() << " / "
                                         << t.source.toStdString();
    for (const Text& t : inTemplate)
        EXPECT_TRUE(inSources.count(t)) << "no longer used: " << t.context.toStdString() << " / "
                                        << t.source.toStdString();

    // German: complete, with the same placeholders and one mnemonic where
    // the English has one.
    const std::map<Text, QString> german = catalogue(root + QStringLiteral("/translations/WQGeneral_de.ts"));
    for (const Text& t : inTemplate) {
        SCOPED_TRACE(t.source.toStdString());
        const auto found = german.find(t);
        ASSERT_NE(found, german.end());
        EXPECT_FALSE(found->second.isEmpty());
        EXPECT_EQ(found->second.count(QStringLiteral("%@")), t.source.count(QStringLiteral("%@")));
        EXPECT_EQ(found->second.count(u'&'), t.source.count(u'&'));
        EXPECT_EQ(found->second.count(QStringLiteral("\n\n")), t.source.count(QStringLiteral("\n\n")));
    }
}

} // namespace
