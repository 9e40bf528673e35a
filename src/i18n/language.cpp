// SPDX-License-Identifier: GPL-3.0-or-later
#include "language.h"

#include "core/settings.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace kestrel {

namespace {
const QString kSubkey = QStringLiteral("Options");
const QString kValueName = QStringLiteral("Language");
} // namespace

QStringList AvailableLanguages() {
    return {QStringLiteral("de"), QStringLiteral("fr")};
}

QString LanguageDisplayName(const QString& language) {
    const QLocale locale(language);
    QString name = locale.nativeLanguageName();
    if (!name.isEmpty())
        name[0] = name[0].toUpper();
    return name;
}

QString LanguageChoice() {
    const QString choice = Get_Setting(kSubkey, kValueName);
    return choice == QStringLiteral("en") || AvailableLanguages().contains(choice) ? choice
                                                                                   : QString();
}

void SaveLanguageChoice(const QString& language) {
    Save_Setting(kSubkey, language, kValueName);
}

QString InstallTranslations(const QString& choice) {
    const QLocale locale = choice.isEmpty() ? QLocale::system() : QLocale(choice);
    auto* ours = new QTranslator(QCoreApplication::instance());
    if (!ours->load(locale, QStringLiteral("kestrel"), QStringLiteral("_"),
                    QStringLiteral(":/i18n"))) {
        delete ours;
        return {};
    }
    QCoreApplication::installTranslator(ours);
    // Qt's own texts (standard buttons, file dialogs) in the same language; a missing file
    // leaves them in English.
    auto* qt = new QTranslator(QCoreApplication::instance());
    if (qt->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qt);
    else
        delete qt;
    return ours->language();
}

} // namespace kestrel
