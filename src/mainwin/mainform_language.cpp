// SPDX-License-Identifier: GPL-3.0-or-later
// The Options menu's Language list: the desktop's language or one the program speaks, kept for
// the next start (texts are translated once, when the windows are built).
#include "i18n/language.h"
#include "mainform.h"

#include <QActionGroup>
#include <QMenu>

namespace kestrel {

void MainForm::addLanguageMenu(QMenu* options) {
    QMenu* menu = options->addMenu(tr("&Language"));
    menu->setObjectName(QStringLiteral("LanguageMenu"));
    auto* group = new QActionGroup(menu);
    const QString chosen = LanguageChoice();
    const auto add = [&](const QString& caption, const QString& language) {
        QAction* a = menu->addAction(caption);
        a->setObjectName(QStringLiteral("Language_") +
                         (language.isEmpty() ? QStringLiteral("system") : language));
        a->setCheckable(true);
        a->setChecked(language == chosen);
        group->addAction(a);
        connect(a, &QAction::triggered, this, [this, language] {
            if (language == LanguageChoice())
                return;
            SaveLanguageChoice(language);
            m_ctx.prompts().message(
                tr("The new language is used when Kestrel Manager starts again."),
                QStringLiteral("Kestrel Manager"), Icon::Information, Buttons::Ok);
        });
    };
    add(tr("&System default"), QString());
    menu->addSeparator();
    add(QStringLiteral("English"), QStringLiteral("en"));
    for (const QString& language : AvailableLanguages())
        add(LanguageDisplayName(language), language);
}

} // namespace kestrel
