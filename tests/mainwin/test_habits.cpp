// SPDX-License-Identifier: GPL-3.0-or-later
// The main window from the keyboard: each standard shortcut reaches its command, rows go
// through the clipboard between banks, a bad paste is refused as typing is, and the caption
// marks unsaved changes.
#include "core/files.h"
#include "core/profiles.h"
#include "link/kestrelcomm.h"
#include "mainwin/inplaceedit.h"
#include "mainwin/mainform.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

using namespace kestrel;
using namespace Qt::StringLiterals;

namespace {

struct Window {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    std::unique_ptr<AppContext> ctx;
    std::unique_ptr<MainForm> form;
    QList<QUrl> opened;

    Window() {
        // A first run that has written its files, so nothing starts out unsaved.
        for (int run = 0; run < 2; ++run) {
            form.reset();
            ctx = std::make_unique<AppContext>(dir.path(), &prompts);
            MakeBanksDir(*ctx);
            Load_Profiles(*ctx);
            ctx->Profiles[0].Changed = true;
            if (run == 0)
                Save_Profiles(*ctx);
        }
        ctx->Profiles[0].Changed = false;
        form = std::make_unique<MainForm>(*ctx);

        form->findChild<KestrelComm*>()->setTimeScale(0.01);
        form->setUrlOpener([this](const QUrl& url) { opened << url; });
        form->show();
        QApplication::setActiveWindow(form.get());
        if (!QTest::qWaitForWindowActive(form.get()))
            qWarning("main window not active");
        form->ChnlsLv()->setFocus();
    }
    ChannelRec& chan(int bank, int slot) { return ctx->cur().Banks[bank].Chans[slot]; }
    void keys(const QKeySequence& seq) {
        QTest::keySequence(QApplication::focusWidget() ? QApplication::focusWidget() : form.get(),
                           seq);
    }
    void selectRows(QTableWidget* list, int first, int last) {
        list->setCurrentCell(first, 1);
        list->clearSelection();
        for (int r = first; r <= last; ++r)
            list->selectionModel()->select(list->model()->index(r, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
};

// Closes the modal window a command opens (the print preview) once it shows.
void closeNextModal() {
    QTimer::singleShot(50, [] {
        if (QWidget* w = QApplication::activeModalWidget())
            w->close();
    });
}

} // namespace

class TestHabits : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void shortcuts_data() {
        QTest::addColumn<QKeySequence>("keys");
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("tab");
        const auto row = [](const char* name, QKeySequence keys, MenuId id, int tab = 0) {
            QTest::newRow(name) << keys << int(id) << tab;
        };
        row("save profile", QKeySequence::Save, MenuId::SaveProfile);
        row("open bank", QKeySequence::Open, MenuId::LoadBank);
        row("open search limits", QKeySequence::Open, MenuId::LoadSearch, 10);
        row("print", QKeySequence::Print, MenuId::PrintBank);
        row("help", QKeySequence::HelpContents, MenuId::HomePage);
        // A desktop without a Quit key of its own gets the usual one.
        row("quit",
            QKeySequence(QKeySequence::Quit).isEmpty() ? QKeySequence(Qt::CTRL | Qt::Key_Q)
                                                       : QKeySequence(QKeySequence::Quit),
            MenuId::Exit);
        row("cut", QKeySequence::Cut, MenuId::Cut);
        row("copy", QKeySequence::Copy, MenuId::Copy);
        row("paste", QKeySequence::Paste, MenuId::Paste);
        row("select all", QKeySequence::SelectAll, MenuId::SelectAll);
        row("delete", QKeySequence::Delete, MenuId::ClearSelected);
        row("next bank", QKeySequence(Qt::CTRL | Qt::Key_PageDown), MenuId::NextBank);
        row("previous bank", QKeySequence(Qt::CTRL | Qt::Key_PageUp), MenuId::PreviousBank);
    }
    void shortcuts() {
        QFETCH(QKeySequence, keys);
        QFETCH(int, item);
        QFETCH(int, tab);
        Window w;
        w.form->BankTab()->setCurrentIndex(tab);
        w.form->activeList()->setFocus();
        QSignalSpy spy(w.form->menuItem(MenuId(item)), &QAction::triggered);
        if (MenuId(item) == MenuId::PrintBank)
            closeNextModal();
        w.keys(keys);
        QCOMPARE(spy.count(), 1);
    }

    // Bank keys, and the list edited without the mouse: F2 opens the cell, Enter commits,
    // Space flips a switch.
    void keyboardOnly() {
        Window w;
        w.keys(QKeySequence(Qt::CTRL | Qt::Key_3));
        QCOMPARE(w.ctx->CurBank, 3);
        w.keys(QKeySequence(Qt::CTRL | Qt::Key_0));
        QCOMPARE(w.ctx->CurBank, 10);
        w.keys(QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(w.ctx->CurBank, SearchTab);
        w.keys(QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(w.ctx->CurBank, 1);
        QTableWidget* list = w.form->ChnlsLv();
        QCOMPARE(QApplication::focusWidget(), list);
        list->setCurrentCell(4, ColFreq);
        QTest::keyClick(list, Qt::Key_F2);
        QVERIFY(w.form->FreqTxt()->hasFocus());
        QTest::keyClicks(w.form->FreqTxt(), u"146.52"_s);
        QTest::keyClick(w.form->FreqTxt(), Qt::Key_Return);
        QCOMPARE(w.chan(1, 5).Freq, 146'520'000.0);
        QCOMPARE(QApplication::focusWidget(), list);
        QTest::keyClick(list, Qt::Key_Right);
        QTest::keyClick(list, Qt::Key_Right);
        QCOMPARE(list->currentColumn(), int(ColDelay));
        const bool delay = w.chan(1, 5).Delay;
        QTest::keyClick(list, Qt::Key_Space);
        QCOMPARE(w.chan(1, 5).Delay, !delay);
        QCOMPARE(list->item(4, ColDelay)->text(), delay ? u"False"_s : u"True"_s);
    }

    void copyThenPasteIntoAnotherBank() {
        Window w;
        for (int slot = 3; slot <= 5; ++slot)
            w.chan(1, slot) = {146'500'000.0 + slot * 12'500, u"Row %1"_s.arg(slot), slot == 4,
                               slot == 5, slot == 3};
        w.selectRows(w.form->ChnlsLv(), 2, 4);
        w.keys(QKeySequence::Copy);
        const QStringList lines =
            QGuiApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0], u"146.537500\tRow 3\tFalse\tTrue\tFalse"_s);

        w.keys(QKeySequence(Qt::CTRL | Qt::Key_7));
        w.selectRows(w.form->ChnlsLv(), 9, 9);
        w.keys(QKeySequence::Paste);
        for (int k = 0; k < 3; ++k) {
            const ChannelRec& from = w.chan(1, 3 + k);
            const ChannelRec& to = w.chan(7, 10 + k);
            QCOMPARE(to.Freq, from.Freq);
            QCOMPARE(to.Desc, from.Desc);
            QCOMPARE(QList<bool>({to.Delay, to.Priority, to.Lockout}),
                     QList<bool>({from.Delay, from.Priority, from.Lockout}));
            QCOMPARE(w.form->ChnlsLv()->item(9 + k, ColDesc)->text(), from.Desc);
        }
        QVERIFY(w.ctx->cur().Banks[7].Changed);
        QCOMPARE(w.chan(7, 13).Desc, u"Chan #133"_s); // the row after the pasted ones
    }

    // A paste is checked as typing is; any bad row leaves every slot as it was.
    void pasteRefused_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("reason");
        QTest::newRow("below the band") << u"146.52\tFire\n20\tLow"_s << 0 << u"Line 2: \"20\""_s;
        QTest::newRow("no room below") << u"146.52\n147.52"_s << 19 << u"room for 1"_s;
    }
    void pasteRefused() {
        QFETCH(QString, text);
        QFETCH(int, row);
        QFETCH(QString, reason);
        Window w;
        const auto before = w.ctx->cur().Banks[1].Chans;
        QGuiApplication::clipboard()->setText(text);
        w.selectRows(w.form->ChnlsLv(), row, row);
        w.keys(QKeySequence::Paste);
        QVERIFY(w.ctx->cur().Banks[1].Chans == before);
        QVERIFY(!w.ctx->cur().Banks[1].Changed);
        QCOMPARE(w.prompts.messages().size(), 1);
        QVERIFY2(w.prompts.messages()[0].text.contains(reason),
                 qPrintable(w.prompts.messages()[0].text));
    }

    void unsavedMark() {
        Window w;
        QCOMPARE(w.form->windowTitle(), u"Kestrel Manager [Main]"_s);
        w.form->ChnlsLv()->setCurrentCell(0, ColDelay);
        QTest::keyClick(w.form->ChnlsLv(), Qt::Key_Space);
        QCOMPARE(w.form->windowTitle(), u"Kestrel Manager [Main*]"_s);
        // Another profile has nothing unsaved; back on Main the mark is there again.
        w.form->ProfileTab()->setCurrentIndex(2);
        QVERIFY(!w.form->windowTitle().contains('*'));
        w.form->ProfileTab()->setCurrentIndex(0);
        QVERIFY(w.form->windowTitle().endsWith(u"*]"_s));
        w.keys(QKeySequence::Save);
        QCOMPARE(w.form->windowTitle(), u"Kestrel Manager [Main]"_s);
    }
};

QTEST_MAIN(TestHabits)
#include "test_habits.moc"
