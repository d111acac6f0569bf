#pragma once
/// \file
/// User-facing texts are English sentences used as keys into the application's
/// translations; untranslated texts show the English.

#include <QString>

namespace wq {

/// \addtogroup platform
/// @{

/// Translation context "WQGeneral".
QString WQLocalizedString(const char* english);
/// Another table (for example "ToolbarStrings") is another context.
QString WQLocalizedStringFromTable(const char* english, const char* table);
/// Replaces each "%@" in order with the next argument.
QString WQFormatTemplate(const QString& templ, const QStringList& arguments);

/// @}

} // namespace wq
