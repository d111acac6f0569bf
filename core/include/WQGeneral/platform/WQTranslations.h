#pragma once
/// \file
/// The framework's catalogues of its own texts (WQGeneral_<language>.qm).
///
/// As a QCoreApplication is constructed, the framework installs a translator
/// with the catalogue for QLocale().uiLanguages(); translators the application
/// installs later come first, so they can reword the framework's texts. It
/// follows later QEvent::LanguageChange events (an application that swaps its
/// own translators after QLocale::setDefault()) by loading the catalogue of
/// the new language.

#include <WQGeneral/WQCoreExport.h>

#include <QLocale>
#include <QString>
#include <QStringList>

namespace wq {

/// \addtogroup platform
/// @{

/// Turns the automatic loading off or on again. Off before the application
/// object is made (first thing in main()), nothing is loaded; off later, the
/// catalogue loaded automatically is removed. The texts are then English
/// unless the application calls WQLoadTranslations().
WQ_CORE_EXPORT void WQSetAutomaticTranslationsEnabled(bool enabled);
/// Whether the catalogue is loaded automatically (on unless turned off).
WQ_CORE_EXPORT bool WQAutomaticTranslationsEnabled();

/// Installs the catalogue for the first language of uiLanguages that has one,
/// in place of the framework's previous catalogue. English is the language of
/// the texts themselves: reaching it ends the search with no catalogue.
/// Answers the catalogue's language ("de"), or an empty string when the texts
/// stay English. Needs a QCoreApplication; call on its thread.
WQ_CORE_EXPORT QString WQLoadTranslations(const QStringList& uiLanguages = QLocale().uiLanguages());

/// The language of the installed catalogue, or an empty string.
WQ_CORE_EXPORT QString WQLoadedTranslationLanguage();

/// The folders searched for catalogues, in order: the one that belongs to the
/// library where it is installed (`share/WQGeneral/translations` of its
/// prefix, found from the library's own location, so a prefix moved or
/// unpacked elsewhere still finds its catalogues), the build tree's, the one
/// beside the application (`bin/../share/WQGeneral/translations`), and the
/// folder of the prefix the library was configured for.
WQ_CORE_EXPORT QStringList WQTranslationDirectories();

/// @}

} // namespace wq
