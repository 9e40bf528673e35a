// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo in the main window, offscreen: each kind of change undone in one step from the
// Edit menu or the keyboard, the step's bank and profile shown first, and closing after
// everything was undone writes no file.
#include "core/files.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "history/history.h"
#include "link/kestrelcomm.h"
#include "mainwin/inplaceedit.h"
#include "mainwin/mainform.h"
#include "organize/chnlorganizer.h"
#include "organize/csvimport.h"
#include "testsupport.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

using namespace kestrel;
using namespace Qt::StringLiterals;

namespace {

// The whole memory image as text: names, Changed flags, every channel and range.
QString imageText(const AppContext& ctx) {
    QString text;
    for (int p = 0; p < ProfileCount; ++p) {
        const ProfileRec& profile = ctx.Profiles[p];
        text += u"%1 %2 %3\n"_s.arg(profile.Name, profile.SrchName).arg(profile.Changed);
        for (int b = 1; b <= BankCount; ++b) {
            text += u" %1 %2\n"_s.arg(profile.Banks[b].FileName).arg(profile.Banks[b].Changed);
            for (int c = 1; c <= ChansPerBank; ++c)
                text += ChannelLine(profile.Banks[b].Chans[c]) + u'\n';
        }
        for (int s = 1; s <= SearchCount; ++s)
            text += SearchLine(profile.Searches[s]) + u'\n';
    }
    return text;
}

} // namespace

class TestUndoWindow : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<ScriptedPrompts> m_prompts;
    std::unique_ptr<AppContext> m_ctx;
    std::unique_ptr<MainForm> m_form;

    // Starts on a data folder a first run has written: nothing is marked changed.
    MainForm& start() {
        for (int run = 0; run < 2; ++run) {
            m_form.reset();
            m_ctx.reset();
            m_prompts = std::make_unique<ScriptedPrompts>(Answer::Yes);
            m_ctx = std::make_unique<AppContext>(m_dir.path(), m_prompts.get());
            MakeBanksDir(*m_ctx);
            Load_Profiles(*m_ctx);
            m_form = std::make_unique<MainForm>(*m_ctx);
            m_form->findChild<KestrelComm*>()->setTimeScale(0.01);
            m_form->show();
            if (!QTest::qWaitForWindowExposed(m_form.get()))
                qWarning("main window not exposed");
            if (run == 0) {
                m_ctx->Profiles[0].Changed = true;
                m_form->close();
            }
        }
        QApplication::setActiveWindow(m_form.get());
        return *m_form;
    }
    void show(int profile, int bank) {
        m_form->ProfileTab()->setCurrentIndex(profile);
        m_form->BankTab()->setCurrentIndex(bank - 1);
        QCOMPARE(m_ctx->CurProfile, profile);
        QCOMPARE(m_ctx->CurBank, bank);
    }
    void editCell(int row, const QString& typed) {
        QTableWidget* list = m_form->ChnlsLv();
        const QModelIndex index = list->model()->index(row, ColFreq);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(index).center());
        QVERIFY(m_form->FreqTxt()->isVisible());
        QTest::keyClicks(m_form->FreqTxt(), typed);
        QTest::keyClick(m_form->FreqTxt(), Qt::Key_Return);
    }
    void press(const QString& how) {
        if (how.startsWith(u"menu"_s))
            m_form->menuItem(how.endsWith(u"Undo"_s) ? u"UndoMenuItem"_s : u"RedoMenuItem"_s)
                ->trigger();
        else
            QTest::keySequence(m_form.get(), QKeySequence(how));
    }

private Q_SLOTS:
    void undoneInOneStep_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("profile"); // where the change is made
        QTest::addColumn<int>("bank");
        QTest::addColumn<int>("shownBank"); // what is shown when it is undone
        QTest::addColumn<QString>("undo");
        QTest::addColumn<QString>("redo");
        QTest::addColumn<QString>("caption"); // of the Undo item after the change
        QTest::newRow("edit, menu") << "edit" << 0 << 1 << 1 << "menu Undo"
                                    << "menu Redo"
                                    << "&Undo Edit Frequency of Channel 5";
        QTest::newRow("edit, keys") << "edit" << 0 << 1 << 1 << "Ctrl+Z"
                                    << "Ctrl+Shift+Z"
                                    << "&Undo Edit Frequency of Channel 5";
        QTest::newRow("edit, other bank") << "edit" << 0 << 3 << 7 << "Ctrl+Z"
                                          << "Ctrl+Y"
                                          << "&Undo Edit Frequency of Channel 45";
        QTest::newRow("edit, other profile") << "edit" << 2 << 4 << 2 << "Ctrl+Z"
                                             << "Ctrl+Y"
                                             << "&Undo Edit Frequency of Channel 65";
        QTest::newRow("organize drop") << "drop" << 0 << 2 << 11 << "menu Undo"
                                       << "Ctrl+Y"
                                       << "&Undo Organize Channels";
        QTest::newRow("csv import") << "csv" << 0 << 5 << 1 << "Ctrl+Z"
                                    << "menu Redo"
                                    << "&Undo CSV Import";
    }
    void undoneInOneStep() {
        QFETCH(QString, kind);
        QFETCH(int, profile);
        QFETCH(int, bank);
        QFETCH(int, shownBank);
        QFETCH(QString, undo);
        QFETCH(QString, redo);
        QFETCH(QString, caption);
        start();
        QAction* undoItem = m_form->menuItem(u"UndoMenuItem"_s);
        QVERIFY(!undoItem->isEnabled());
        show(profile, bank);
        const QString before = imageText(*m_ctx);
        const QString row5 = m_form->ChnlsLv()->item(4, ColFreq)->text();
        if (kind == u"edit") {
            editCell(4, u"146.52"_s);
        } else if (kind == u"drop") {
            ChannelOrganizer org(*m_ctx);
            org.load(qint16(profile));
            QVERIFY(org.selectBank(ChannelOrganizer::Source, bank));
            QVERIFY(org.selectBank(ChannelOrganizer::Destination, bank));
            QVERIFY(org.dropOnSource(u"XFR,%1"_s.arg(ChannelNumber(bank, 1)), 5));
            org.saveCurrent();
        } else {
            QByteArray csv = "Description,Frequency\n";
            for (int i = 1; i <= 20; ++i)
                csv += "Csv,1" + QByteArray::number(40 + i) + ".5\n";
            kestrel::test::writeFile(m_dir.filePath(u"in.csv"_s), csv);
            CsvImport import(*m_ctx);
            QVERIFY(import.open(m_dir.filePath(u"in.csv"_s)));
            QCOMPARE(import.importToBank(qint16(profile), bank, {1, 2, 0, 0, 0}), 20);
        }
        m_form->refreshLists();
        const QString after = imageText(*m_ctx);
        QVERIFY(after != before);
        QCOMPARE(HistoryOf(*m_ctx).stack().count(), 1);
        QVERIFY(undoItem->isEnabled());
        QCOMPARE(undoItem->text(), caption);
        QVERIFY(m_form->ChnlsLv()->item(4, ColFreq)->text() != row5);

        show(profile == 0 ? 0 : 1, shownBank);
        press(undo);
        QCOMPARE(imageText(*m_ctx), before); // records and Changed flags
        QCOMPARE(m_ctx->CurProfile, profile);
        QCOMPARE(m_ctx->CurBank, bank);
        QCOMPARE(m_form->BankTab()->currentIndex(), bank - 1);
        QCOMPARE(m_form->ChnlsLv()->item(4, ColFreq)->text(), row5);
        QVERIFY(!undoItem->isEnabled());

        press(redo);
        QCOMPARE(imageText(*m_ctx), after);
        QVERIFY(m_form->ChnlsLv()->item(4, ColFreq)->text() != row5);
    }

    void closingAfterUndoingEverythingWritesNothing() {
        start();
        const auto files = kestrel::test::snapshotTree(m_dir.path());
        show(0, 2);
        editCell(0, u"151.82"_s);
        editCell(1, u"462.5625"_s);
        QTableWidget* list = m_form->ChnlsLv();
        list->selectRow(2);
        const QModelIndex row3 = list->model()->index(2, ColDesc);
        QTest::mouseClick(list->viewport(), Qt::RightButton, {}, list->visualRect(row3).center());
        m_form->menuItem(u"ClearSelectedMenuItem"_s)->trigger();
        m_form->popUpMenu()->hide();
        QCOMPARE(HistoryOf(*m_ctx).stack().count(), 3);
        m_form->menuItem(u"EditHistoryMenuItem"_s)->trigger();
        QWidget* view = m_form->findChild<QWidget*>(u"EditHistory"_s);
        QVERIFY(view && view->isVisible());
        HistoryOf(*m_ctx).stack().setIndex(0); // what a click on "<nothing changed>" does
        QVERIFY(m_form->close());
        QCOMPARE(kestrel::test::changedFiles(files, kestrel::test::snapshotTree(m_dir.path())),
                 QStringList());
    }
};

QTEST_MAIN(TestUndoWindow)
#include "tst_undowindow.moc"
