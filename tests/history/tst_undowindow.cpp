// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo in the main window, offscreen: a cell edit undone in one step from the Edit
// menu, the keyboard or the Edit History list, the step's bank and profile shown first, and
// closing after everything was undone writes no file. Every other kind of step is undone in
// tst_history.
#include "core/files.h"
#include "core/profiles.h"
#include "history/history.h"
#include "imagelines.h"
#include "link/kestrelcomm.h"
#include "mainwin/inplaceedit.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoView>

using namespace kestrel;
using namespace Qt::StringLiterals;

class TestUndoWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void undoneInOneStep_data() {
        QTest::addColumn<int>("profile"); // where the channel is edited
        QTest::addColumn<int>("bank");
        QTest::addColumn<int>("shownBank"); // what is shown when it is undone
        QTest::addColumn<QString>("undo");
        QTest::addColumn<QString>("redo");
        QTest::addColumn<QString>("caption"); // of the Undo item after the change
        QTest::newRow("keys") << 0 << 1 << 1 << "Ctrl+Z"
                              << "Ctrl+Shift+Z"
                              << "&Undo Edit Frequency of Channel 5";
        QTest::newRow("other bank") << 0 << 3 << 11 << "menu"
                                    << "Ctrl+Y"
                                    << "&Undo Edit Frequency of Channel 45";
        QTest::newRow("other profile") << 2 << 4 << 2 << "history"
                                       << "menu"
                                       << "&Undo Edit Frequency of Channel 65";
    }
    void undoneInOneStep() {
        QFETCH(int, profile);
        QFETCH(int, bank);
        QFETCH(int, shownBank);
        QFETCH(QString, undo);
        QFETCH(QString, redo);
        QFETCH(QString, caption);
        QTemporaryDir dir;
        ScriptedPrompts prompts(Answer::Yes);
        AppContext ctx(dir.path(), &prompts);
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        Save_Profiles(ctx); // as a first run leaves it: nothing Changed
        const auto files = kestrel::test::snapshotTree(dir.path());
        MainForm form(ctx);
        form.findChild<KestrelComm*>()->setTimeScale(0.01);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        const auto show = [&](int p, int b) {
            form.ProfileTab()->setCurrentIndex(p);
            form.BankTab()->setCurrentIndex(b - 1);
        };
        const auto press = [&](const QString& how, const char* item) {
            if (how == u"menu") {
                form.menuItem(QString::fromLatin1(item))->trigger();
            } else if (how == u"history") { // the list's first row: before any change
                form.menuItem(u"EditHistoryMenuItem"_s)->trigger();
                auto* view = form.findChild<QUndoView*>();
                QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                                  view->visualRect(view->model()->index(0, 0)).center());
            } else {
                QTest::keySequence(&form, QKeySequence(how));
            }
        };
        QAction* undoItem = form.menuItem(u"UndoMenuItem"_s);
        QVERIFY(!undoItem->isEnabled());
        show(profile, bank);
        QTableWidget* list = form.ChnlsLv();
        const QStringList before = imageLines(ctx.Profiles);
        const QString row5 = list->item(4, ColFreq)->text();
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                           list->visualRect(list->model()->index(4, ColFreq)).center());
        QTest::keyClicks(form.FreqTxt(), u"146.52"_s);
        QTest::keyClick(form.FreqTxt(), Qt::Key_Return);
        const QStringList after = imageLines(ctx.Profiles);
        QVERIFY(after != before && list->item(4, ColFreq)->text() != row5);
        QCOMPARE(HistoryOf(ctx).stack().count(), 1);
        QCOMPARE(undoItem->text(), caption);

        show(profile == 0 ? 0 : 1, shownBank);
        press(undo, "UndoMenuItem");
        QCOMPARE(imageLines(ctx.Profiles), before); // records and Changed flags
        QCOMPARE(ctx.CurProfile, profile);
        QCOMPARE(form.BankTab()->currentIndex(), bank - 1);
        QCOMPARE(list->item(4, ColFreq)->text(), row5);
        QVERIFY(!undoItem->isEnabled());
        press(redo, "RedoMenuItem");
        QCOMPARE(imageLines(ctx.Profiles), after);
        QVERIFY(list->item(4, ColFreq)->text() != row5);

        HistoryOf(ctx).stack().undo();
        QVERIFY(form.close());
        QCOMPARE(kestrel::test::changedFiles(files, kestrel::test::snapshotTree(dir.path())),
                 QStringList());
    }
};

QTEST_MAIN(TestUndoWindow)
#include "tst_undowindow.moc"
