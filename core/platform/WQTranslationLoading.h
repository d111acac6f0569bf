#pragma once

namespace wq::detail {

// Installs the framework's catalogue for QLocale().uiLanguages() as the
// application starts, unless automatic loading is off.
void loadTranslationsAtStartup();

} // namespace wq::detail
