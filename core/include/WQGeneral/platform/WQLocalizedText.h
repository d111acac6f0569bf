#pragma once
/// \file
/// User-facing texts are English sentences used as keys into the application's
/// translations; untranslated texts show the English.

#include <WQGeneral/WQCoreExport.h>

#include <QString>
#include <QStringList>

namespace wq {

/// \addtogroup platform
/// @{

/// Translation context "WQGeneral".
WQ_CORE_EXPORT QString WQLocalizedString(const char* english);
/// Another table (for example "ToolbarStrings") is another context.
WQ_CORE_EXPORT QString WQLocalizedStringFromTable(const char* english, const char* table);
/// Replaces each "%@" in order with the next argument.
WQ_CORE_EXPORT QString WQFormatTemplate(const QString& templ, const QStringList& arguments);

/// @}

} // namespace wq

/// Gives a class a static tr() that looks texts up in the string table named
/// by the argument. lupdate is told to read this macro as
/// Q_DECLARE_TR_FUNCTIONS, so every literal passed to that tr() is extracted
/// under the table's name.
#define WQ_DECLARE_STRING_TABLE(table)                                                                                 \
public:                                                                                                                \
    static QString tr(const char* english) { return ::wq::WQLocalizedStringFromTable(english, #table); }              \
                                                                                                                       \
private:

namespace wq {

/// \addtogroup platform
/// @{

/// The framework's own texts, in the table "WQGeneral".
class WQ_CORE_EXPORT WQStrings {
    WQ_DECLARE_STRING_TABLE(WQGeneral)
};

/// The toolbar's own texts, in the table "ToolbarStrings".
class WQ_CORE_EXPORT WQToolbarStrings {
    WQ_DECLARE_STRING_TABLE(ToolbarStrings)
};

/// @}

} // namespace wq
