#pragma once
// The showcase's own texts go through Qt's translation under the context
// "Showcase" (its toolbar's texts under "ToolbarStrings", where the toolbar
// looks them up); the framework's texts have the framework's catalogue.

#include <QCoreApplication>
#include <QStringList>

namespace showcase {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Showcase)
};

// Installs the showcase's catalogue for the first of the languages that has
// one, in place of the one installed before (English, the texts' own
// language, ends the search); answers its language, or an empty string.
QString installShowcaseTranslations(const QStringList& uiLanguages);

} // namespace showcase
