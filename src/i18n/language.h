// SPDX-License-Identifier: GPL-3.0-or-later
// The language the program speaks: the user's choice (kept in the registry values) or the
// desktop's locale, our translation and Qt's own (qtbase) installed side by side.
#pragma once

#include <QString>
#include <QStringList>

namespace kestrel {

// The translations built into the programs, as locale names ("de", "fr").
QStringList AvailableLanguages();
// The language as the user calls it, in that language ("Deutsch", "Français").
QString LanguageDisplayName(const QString& language);

// The chosen language; empty means the desktop's locale.
QString LanguageChoice();
void SaveLanguageChoice(const QString& language);

// Installs the translators for the choice (empty: QLocale::system()) on the running application.
// Returns the language installed, empty when the program stays in English.
QString InstallTranslations(const QString& choice);

} // namespace kestrel
