// SPDX-License-Identifier: GPL-3.0-or-later
// The main window in German and French: its menus, their accelerators and a message box.
#include "core/files.h"
#include "core/profiles.h"
#include "i18n/language.h"
#include "mainwin/mainform.h"
#include "mainwin/menuitems.h"
#include "testsupport.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

using namespace kestrel;
using namespace Qt::StringLiterals;

namespace {

// The letters marked with & in a menu's items, with the items that share one.
QStringList clashingAccelerators(const QMenu* menu) {
    QMap<QChar, QString> seen;
    QStringList clashes;
    for (const QAction* a : menu->actions()) {
        const QString text = a->text();
        const qsizetype amp = text.indexOf(u'&');
        if (amp < 0 || amp + 1 >= text.size())
            continue;
        const QChar key = text[amp + 1].toLower();
        if (seen.contains(key))
            clashes << seen[key] + u" / "_s + text;
        seen[key] = text;
    }
    return clashes;
}

} // namespace

class TestLanguage : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        for (QTranslator* t : qApp->findChildren<QTranslator*>()) {
            QCoreApplication::removeTranslator(t);
            delete t;
        }
    }

    void mainWindow_data() {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<QString>("aboutTitle");
        QTest::newRow("German") << u"de"_s
                                << QStringList{u"&Datei"_s,    u"&Bearbeiten"_s, u"&Ansicht"_s,
                                               u"&Optionen"_s, u"&Scanner"_s,    u"&Hilfe"_s}
                                << u"Über Kestrel Manager"_s;
        QTest::newRow("French") << u"fr"_s
                                << QStringList{u"&Fichier"_s, u"É&dition"_s, u"&Affichage"_s,
                                               u"&Options"_s, u"&Scanner"_s, u"Aid&e"_s}
                                << u"À propos de Kestrel Manager"_s;
    }
    void mainWindow() {
        QFETCH(QString, language);
        QFETCH(QStringList, titles);
        QFETCH(QString, aboutTitle);
        QVERIFY(InstallTranslations(language).startsWith(language));

        QTemporaryDir dir;
        ScriptedPrompts prompts;
        AppContext ctx(dir.path(), &prompts);
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        MainForm form(ctx);

        QStringList shown;
        QList<QMenu*> menus = form.findChildren<QMenu*>();
        for (const QAction* a : form.menuBar()->actions())
            shown << a->text();
        QCOMPARE(shown, titles);
        for (const QMenu* menu : menus)
            QVERIFY2(clashingAccelerators(menu).isEmpty(),
                     qPrintable(clashingAccelerators(menu).join(u", "_s)));
        // The menu bar's own letters, too.
        QMenu bar;
        for (QAction* a : form.menuBar()->actions())
            bar.addAction(a->text());
        QVERIFY(clashingAccelerators(&bar).isEmpty());

        form.menuItem(MenuId::About)->trigger();
        QCOMPARE(prompts.messages().size(), 1);
        QCOMPARE(prompts.messages().first().title, aboutTitle);
        QVERIFY(!prompts.messages().first().text.contains(u"handheld"_s));
    }
};

QTEST_MAIN(TestLanguage)
#include "tst_language.moc"
