// SPDX-License-Identifier: GPL-3.0-or-later
// The main window driven offscreen as a user drives it: clicks, double clicks, typing, pop-up
// menus, menu commands with their dialogs answered through the prompts seam, and closing; then
// the records and the files on disk are checked.
#include "core/files.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "mainwin/inplaceedit.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

using namespace kestrel;
using kestrel::test::readFile;

namespace {

QString cell(QTableWidget* list, int row, int column) {
    return list->item(row, column)->text();
}

QStringList rowTexts(QTableWidget* list, int row) {
    QStringList texts;
    for (int c = 0; c < list->columnCount(); ++c)
        texts << cell(list, row, c);
    return texts;
}

QPoint cellCenter(QTableWidget* list, int row, int column) {
    const QModelIndex index = list->model()->index(row, column);
    list->scrollTo(index);
    return list->visualRect(index).center();
}

void doubleClickCell(QTableWidget* list, int row, int column) {
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, cellCenter(list, row, column));
}

} // namespace

class TestMainForm : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompts> m_prompts;
    std::unique_ptr<AppContext> m_ctx;
    std::unique_ptr<MainForm> m_form;
    QList<QUrl> m_opened;

    // Starts the program on the current data folder, as start-up does.
    MainForm& start() {
        m_form.reset();
        m_ctx.reset();
        m_prompts = std::make_unique<ScriptedPrompts>(Answer::Yes);
        m_ctx = std::make_unique<AppContext>(m_dir->path(), m_prompts.get());
        MakeBanksDir(*m_ctx);
        Load_Profiles(*m_ctx);
        m_form = std::make_unique<MainForm>(*m_ctx);
        m_form->setUrlOpener([this](const QUrl& url) { m_opened << url; });
        m_form->show();
        if (!QTest::qWaitForWindowExposed(m_form.get()))
            qWarning("main window not exposed");
        return *m_form;
    }
    // A fresh data folder.
    MainForm& startFresh() {
        m_form.reset();
        m_ctx.reset();
        m_dir = std::make_unique<QTemporaryDir>();
        return start();
    }
    // A data folder in which a first run has written every file.
    MainForm& startSaved() {
        startFresh();
        m_ctx->Profiles[0].Changed = true; // a first run writes profile 0 only when changed
        closeForm();
        return start();
    }
    void closeForm() {
        QVERIFY(m_form->close());
        QVERIFY(!m_form->isVisible());
    }
    QString bankPath(const QString& name) const { return m_ctx->bankPath(name); }
    void clickBankTab(int index) {
        QTabBar* tabs = m_form->BankTab();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
        QCOMPARE(tabs->currentIndex(), index);
    }
    void clickProfileTab(int index) {
        QTabBar* tabs = m_form->ProfileTab();
        tabs->setCurrentIndex(index); // the tab may sit behind the scroll buttons
        QCOMPARE(m_ctx->CurProfile, index);
    }
    void editCell(QTableWidget* list, int row, int column, const QString& typed) {
        doubleClickCell(list, row, column);
        const bool desc = list == m_form->SearchLV() ? column == ColSrchDesc : column == ColDesc;
        InplaceEdit* box = desc ? m_form->DescTxt() : m_form->FreqTxt();
        QVERIFY(box->isVisible());
        QTest::keyClicks(box, typed);
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(!box->isVisible());
    }
    void rightClickRow(QTableWidget* list, int row, const char* item) {
        list->selectRow(row);
        QTest::mouseClick(list->viewport(), Qt::RightButton, {}, cellCenter(list, row, 1));
        QMenu* menu = m_form->popUpMenu();
        QTRY_VERIFY(menu->isVisible());
        QAction* action = m_form->menuItem(QString::fromLatin1(item));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        QTRY_VERIFY(!menu->isVisible());
    }
    void trigger(const char* item) {
        QAction* action = m_form->menuItem(QString::fromLatin1(item));
        QVERIFY2(action, item);
        QVERIFY2(action->isEnabled(), item);
        action->trigger();
    }
    std::unique_ptr<AppContext> reloaded() const {
        auto ctx = std::make_unique<AppContext>(m_dir->path());
        Load_Profiles(*ctx);
        return ctx;
    }

private Q_SLOTS:
    void cleanup() {
        m_form.reset();
        m_ctx.reset();
    }

    void startUpShowsMainProfile() {
        MainForm& form = startFresh();
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Main]"));
        QCOMPARE(form.ProfileTab()->count(), ProfileCount);
        QCOMPARE(form.ProfileTab()->tabText(0), QStringLiteral("Main"));
        QCOMPARE(form.ProfileTab()->tabText(9), QStringLiteral("Profile09"));
        QCOMPARE(form.BankTab()->count(), 11);
        QCOMPARE(form.BankTab()->tabText(0), QStringLiteral("Bank01"));
        QCOMPARE(form.BankTab()->tabText(9), QStringLiteral("Bank10"));
        QCOMPARE(form.BankTab()->tabText(10), QStringLiteral("SrchBank00"));
        QCOMPARE(form.ProfTxt()->text(), QStringLiteral("Main"));
        QVERIFY(!form.ProfTxt()->isEnabled());
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("Bank01"));
        QCOMPARE(m_ctx->CurBank, 1);
        QCOMPARE(rowTexts(form.ChnlsLv(), 0),
                 QStringList({"001", "40.500000", "Chan #001", "False", "False", "False"}));
        QCOMPARE(form.ChanLV()->rowCount(), 200);
        QCOMPARE(rowTexts(form.ChanLV(), 199),
                 QStringList({"200", "000.000000", "Chan #200", "False", "False", "True"}));
        QCOMPARE(rowTexts(form.SearchLV(), 9),
                 QStringList({"10", "806.000000", "956.000000", "Search #10"}));
        QVERIFY(!form.SndBankTxt()->isVisible());
        QVERIFY(!form.captionLabel(1)->isVisible());
        QCOMPARE(form.shownPanel(), MainForm::ScanBanksPanel);
        QVERIFY(!form.menuItem("ShowScanBanksMenu")->isEnabled());
        QVERIFY(form.menuItem("ShowServiceMenuItem")->isEnabled());
        QVERIFY(form.menuItem("ShowAllChanMenuItem")->isEnabled());
        QVERIFY(!form.menuItem("DebugCommMenuItem")->isVisible());
    }

    void menusOnBankAndSearchTabs() {
        MainForm& form = startFresh();
        const QStringList bankItems = {
            "ClearCurrBankMenuItem", "ClearBanksMenuItem",  "LoadBankMenuItem",  "SaveBankMenuItem",
            "SaveBankAsMenuItem",    "DefaultBankMenuItem", "SetFactoryMenuItem"};
        const QStringList searchItems = {"ClearSearchMenuItem", "LoadSearchMenuItem",
                                         "SaveSearchMenuItem", "SaveSearchAsMenuItem",
                                         "DefaultLimitsMenuItem"};
        for (const QString& name : bankItems)
            QVERIFY2(form.menuItem(name)->isEnabled(), qPrintable(name));
        for (const QString& name : searchItems)
            QVERIFY2(!form.menuItem(name)->isEnabled(), qPrintable(name));
        clickBankTab(10);
        QCOMPARE(m_ctx->CurBank, SearchTab);
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("SrchBank00"));
        for (const QString& name : bankItems)
            QVERIFY2(!form.menuItem(name)->isEnabled(), qPrintable(name));
        for (const QString& name : searchItems)
            QVERIFY2(form.menuItem(name)->isEnabled(), qPrintable(name));
        // Windows of other parts of the program are present but not yet usable.
        for (const char* name : {"WebImportMenuItem"}) {
            QVERIFY2(form.menuItem(name), name);
            QVERIFY2(!form.menuItem(name)->isEnabled(), name);
        }
        clickBankTab(2);
        QVERIFY(!form.menuItem("WebImportMenuItem")->isEnabled());
        QVERIFY(form.wireMenuItem("WebImportMenuItem")->isEnabled());
        clickBankTab(10);
        QVERIFY(!form.menuItem("WebImportMenuItem")->isEnabled());
        QCOMPARE(form.menuItem("UploadAllMenuItem"), form.menuItem("UploadAllBanksMenuItem"));
    }

    void bankSwitchShowsTheBank() {
        MainForm& form = startFresh();
        clickBankTab(7);
        QCOMPARE(m_ctx->CurBank, 8);
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("Bank08"));
        QCOMPARE(rowTexts(form.ChnlsLv(), 9),
                 QStringList({"150", "469.550000", "Chan #150", "False", "False", "False"}));
        QCOMPARE(rowTexts(form.ChnlsLv(), 10),
                 QStringList({"151", "000.000000", "Chan #151", "False", "False", "True"}));
    }

    void ctrlVSelectsTheNextBankTab() {
        MainForm& form = startFresh();
        form.BankTab()->setFocus();
        QTest::keyClick(form.BankTab(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(form.BankTab()->currentIndex(), 1);
        QCOMPARE(m_ctx->CurBank, 2);
        form.BankTab()->setCurrentIndex(10);
        QTest::keyClick(form.BankTab(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(form.BankTab()->currentIndex(), 0);
        QCOMPARE(m_ctx->CurBank, 1);
    }

    void frequencyCommit_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("cells"); // frequency, delay, priority, l/out
        QTest::newRow("locked-out channel gains a frequency")
            << 8 << 0 << "146.52" << QStringList({"146.520000", "True", "False", "False"});
        QTest::newRow("below the band locks out")
            << 0 << 0 << "20" << QStringList({"000.000000", "False", "False", "True"});
        QTest::newRow("flags of a scanned channel stay")
            << 0 << 2 << "462.5625" << QStringList({"462.562500", "False", "False", "False"});
        QTest::newRow("typed text replaces the selected value")
            << 1 << 19 << "155.1" << QStringList({"155.100000", "False", "False", "False"});
    }
    void frequencyCommit() {
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(QString, typed);
        QFETCH(QStringList, cells);
        MainForm& form = startFresh();
        clickBankTab(tab);
        for (int b = 1; b <= BankCount; ++b)
            m_ctx->Profiles[0].Banks[b].Changed = false;
        m_ctx->Profiles[0].Changed = false;
        editCell(form.ChnlsLv(), row, ColFreq, typed);
        QCOMPARE(
            QStringList({cell(form.ChnlsLv(), row, ColFreq), cell(form.ChnlsLv(), row, ColDelay),
                         cell(form.ChnlsLv(), row, ColPriority),
                         cell(form.ChnlsLv(), row, ColLockout)}),
            cells);
        const ChannelRec& rec = m_ctx->Profiles[0].Banks[tab + 1].Chans[row + 1];
        QCOMPARE(FreqToString(rec.Freq), cells[0]);
        QCOMPARE(BoolToString(rec.Delay), cells[1]);
        QCOMPARE(BoolToString(rec.Lockout), cells[3]);
        QVERIFY(m_ctx->Profiles[0].Banks[tab + 1].Changed);
        QVERIFY(m_ctx->Profiles[0].Changed);
        // The all-channels list shows the same channel.
        const int n = ChannelNumber(tab + 1, row + 1);
        QCOMPARE(cell(form.ChanLV(), n - 1, ColFreq), cells[0]);
    }

    void descriptionRefusesComma() {
        MainForm& form = startSaved();
        editCell(form.ChnlsLv(), 4, ColDesc, QStringLiteral("Fire, East"));
        QCOMPARE(cell(form.ChnlsLv(), 4, ColDesc), QStringLiteral("Fire East"));
        closeForm();
        QCOMPARE(reloaded()->Profiles[0].Banks[1].Chans[5].Desc, QStringLiteral("Fire East"));
        QVERIFY(readFile(bankPath("Bank01")).contains("Channel05=122.200000,Fire East,"));
    }

    void escapeAbandonsTheEdit() {
        MainForm& form = startSaved();
        doubleClickCell(form.ChnlsLv(), 3, ColFreq);
        QVERIFY(form.FreqTxt()->isVisible());
        QTest::keyClicks(form.FreqTxt(), QStringLiteral("300"));
        QTest::keyClick(form.FreqTxt(), Qt::Key_Escape);
        QVERIFY(!form.FreqTxt()->isVisible());
        QCOMPARE(cell(form.ChnlsLv(), 3, ColFreq), QStringLiteral("122.000000"));
        QVERIFY(!m_ctx->Profiles[0].Banks[1].Changed);
        QVERIFY(!m_ctx->Profiles[0].Changed);
        // Focus moving on after the escape commits nothing.
        form.BankTxt()->setFocus();
        QCOMPARE(m_ctx->Profiles[0].Banks[1].Chans[4].Freq, 122000000.0);
    }

    void emptiedBoxShowsTheStoredValue() {
        MainForm& form = startFresh();
        doubleClickCell(form.ChnlsLv(), 0, ColDesc);
        InplaceEdit* box = form.DescTxt();
        QCOMPARE(box->text(), QStringLiteral("Chan #001"));
        QTest::keyClick(box, Qt::Key_Backspace); // the whole text is selected
        QCOMPARE(box->text(), QStringLiteral("Chan #001"));
        QTest::keyClicks(box, QStringLiteral("Tower"));
        QCOMPARE(box->text(), QStringLiteral("Tower"));
        QTest::keyClick(box, Qt::Key_Escape);

        doubleClickCell(form.ChnlsLv(), 0, ColFreq);
        QTest::keyClick(form.FreqTxt(), Qt::Key_Delete);
        QCOMPARE(form.FreqTxt()->text(), QStringLiteral("40.500000"));
        QTest::keyClick(form.FreqTxt(), Qt::Key_Escape);
    }

    void leavingTheBoxCommitsAPendingEdit() {
        MainForm& form = startFresh();
        doubleClickCell(form.ChnlsLv(), 1, ColDesc);
        QTest::keyClicks(form.DescTxt(), QStringLiteral("Harbour"));
        form.BankTxt()->setFocus();
        QVERIFY(!form.DescTxt()->isVisible());
        QCOMPARE(m_ctx->Profiles[0].Banks[1].Chans[2].Desc, QStringLiteral("Harbour"));
        QCOMPARE(cell(form.ChnlsLv(), 1, ColDesc), QStringLiteral("Harbour"));

        // Switching the bank while a frequency is being typed commits it into the edited bank.
        doubleClickCell(form.ChnlsLv(), 1, ColFreq);
        QTest::keyClicks(form.FreqTxt(), QStringLiteral("151.625"));
        form.BankTab()->setCurrentIndex(3);
        QVERIFY(!form.FreqTxt()->isVisible());
        QCOMPARE(m_ctx->Profiles[0].Banks[1].Chans[2].Freq, 151625000.0);
        QCOMPARE(m_ctx->Profiles[0].Banks[4].Chans[2].Desc, QStringLiteral("Chan #062"));
    }

    void openingWithoutTypingChangesNothing() {
        MainForm& form = startSaved();
        clickBankTab(8); // empty, locked-out channels
        doubleClickCell(form.ChnlsLv(), 0, ColFreq);
        QVERIFY(form.FreqTxt()->isVisible());
        form.BankTxt()->setFocus();
        QVERIFY(!form.FreqTxt()->isVisible());
        QCOMPARE(cell(form.ChnlsLv(), 0, ColLockout), QStringLiteral("True"));
        QVERIFY(!m_ctx->Profiles[0].Changed);
    }

    void keyboardStartsTheEdit() {
        MainForm& form = startFresh();
        QTableWidget* list = form.ChnlsLv();
        list->setFocus();
        list->setCurrentCell(5, ColDesc);
        QTest::keyClick(list, Qt::Key_F2);
        QVERIFY(form.DescTxt()->isVisible());
        QTest::keyClicks(form.DescTxt(), QStringLiteral("Ferry"));
        QTest::keyClick(form.DescTxt(), Qt::Key_Return);
        QCOMPARE(m_ctx->Profiles[0].Banks[1].Chans[6].Desc, QStringLiteral("Ferry"));
        QVERIFY(list->hasFocus());
        // Arrow keys move between cells; Enter on a flag toggles it.
        QTest::keyClick(list, Qt::Key_Right);
        QCOMPARE(list->currentColumn(), int(ColDelay));
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(cell(list, 5, ColDelay), QStringLiteral("True"));
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(list->currentRow(), 6);
    }

    void flagToggles_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("column");
        QTest::addColumn<QStringList>("after"); // delay, priority, l/out
        QTest::newRow("delay") << 0 << int(ColDelay) << QStringList({"True", "False", "False"});
        QTest::newRow("priority") << 0 << int(ColPriority)
                                  << QStringList({"False", "True", "False"});
        QTest::newRow("lock out a channel with frequency")
            << 0 << int(ColLockout) << QStringList({"False", "False", "True"});
        QTest::newRow("unlock an empty channel")
            << 9 << int(ColLockout) << QStringList({"False", "False", "False"});
    }
    void flagToggles() {
        QFETCH(int, tab);
        QFETCH(int, column);
        QFETCH(QStringList, after);
        MainForm& form = startFresh();
        clickBankTab(tab);
        m_ctx->Profiles[0].Changed = false;
        m_ctx->Profiles[0].Banks[tab + 1].Changed = false;
        doubleClickCell(form.ChnlsLv(), 0, column);
        QCOMPARE(
            QStringList({cell(form.ChnlsLv(), 0, ColDelay), cell(form.ChnlsLv(), 0, ColPriority),
                         cell(form.ChnlsLv(), 0, ColLockout)}),
            after);
        QVERIFY(m_ctx->Profiles[0].Changed);
        QVERIFY(m_ctx->Profiles[0].Banks[tab + 1].Changed);
    }

    void lockoutToggleMovesDelay() {
        MainForm& form = startFresh();
        QTableWidget* list = form.ChnlsLv();
        doubleClickCell(list, 0, ColLockout); // locked out: no delay
        doubleClickCell(list, 0, ColLockout); // scanned again: delay
        QCOMPARE(cell(list, 0, ColDelay), QStringLiteral("True"));
        QCOMPARE(cell(list, 0, ColLockout), QStringLiteral("False"));
        // An empty channel keeps its delay whichever way L/Out goes.
        clickBankTab(9);
        doubleClickCell(list, 0, ColDelay);
        doubleClickCell(list, 0, ColLockout);
        QCOMPARE(cell(list, 0, ColDelay), QStringLiteral("True"));
        QCOMPARE(cell(list, 0, ColLockout), QStringLiteral("False"));
        // The number column does nothing.
        doubleClickCell(list, 0, ColChanNumber);
        QVERIFY(!form.FreqTxt()->isVisible() && !form.DescTxt()->isVisible());
    }

    void searchRangesEditInPlace() {
        MainForm& form = startSaved();
        clickBankTab(10);
        QTableWidget* list = form.SearchLV();
        QVERIFY(list->isVisible());
        editCell(list, 0, ColUpper, QStringLiteral("30"));
        editCell(list, 1, ColSrchDesc, QStringLiteral("Low, band"));
        editCell(list, 2, ColLower, QStringLiteral("1"));
        QCOMPARE(rowTexts(list, 0), QStringList({"01", "25.000000", "30.000000", "Search #1"}));
        QCOMPARE(cell(list, 1, ColSrchDesc), QStringLiteral("Low band"));
        QCOMPARE(cell(list, 2, ColLower), QStringLiteral("000.000000"));
        QVERIFY(m_ctx->Profiles[0].Changed);
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Searches[1].Upper, 30000000.0);
        QCOMPARE(next->Profiles[0].Searches[2].Desc, QStringLiteral("Low band"));
        QCOMPARE(next->Profiles[0].Searches[3].Lower, 0.0);
    }

    void popUpCommands_data() {
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("bank");
        QTest::addColumn<int>("slot");
        QTest::newRow("bank list, channel 20") << "Chnls" << 0 << 19 << 1 << 20;
        QTest::newRow("bank list, channel 61") << "Chnls" << 3 << 0 << 4 << 1;
        QTest::newRow("all channels, channel 20") << "Chan" << 0 << 19 << 1 << 20;
        QTest::newRow("all channels, channel 200") << "Chan" << 0 << 199 << 10 << 20;
    }
    void popUpCommands() {
        QFETCH(QString, list);
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(int, bank);
        QFETCH(int, slot);
        MainForm& form = startSaved();
        clickBankTab(tab);
        QTableWidget* view = form.ChnlsLv();
        if (list == QStringLiteral("Chan")) {
            trigger("ShowAllChanMenuItem");
            view = form.ChanLV();
        }
        const ChannelRec& rec = m_ctx->Profiles[0].Banks[bank].Chans[slot];
        m_ctx->Profiles[0].Banks[bank].Chans[slot].Desc = QStringLiteral("Mine");
        rightClickRow(view, row, "ClearSelectedMenuItem");
        QCOMPARE(form.popUpTag(), list);
        QCOMPARE(rec.Desc, QStringLiteral("Edit-Me"));
        QCOMPARE(rec.Freq, 0.0);
        QVERIFY(rec.Lockout);
        QCOMPARE(cell(view, row, ColDesc), QStringLiteral("Edit-Me"));
        QCOMPARE(cell(form.ChanLV(), ChannelNumber(bank, slot) - 1, ColDesc),
                 QStringLiteral("Edit-Me"));
        QVERIFY(!m_ctx->Profiles[0].Changed);
        QVERIFY(!m_ctx->Profiles[0].Banks[bank].Changed);
        rightClickRow(view, row, "UseDefaultsMenuItem");
        QCOMPARE(rec.Desc, QStringLiteral("Chan #") + Num3(ChannelNumber(bank, slot)));
        QVERIFY(!m_ctx->Profiles[0].Changed);
    }

    void popUpActsOnEverySelectedRow() {
        MainForm& form = startSaved();
        clickBankTab(10);
        QTableWidget* list = form.SearchLV();
        list->selectRow(1);
        list->selectionModel()->select(list->model()->index(4, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QTest::mouseClick(list->viewport(), Qt::RightButton, {}, cellCenter(list, 4, 1));
        QTRY_VERIFY(form.popUpMenu()->isVisible());
        QCOMPARE(form.popUpTag(), QStringLiteral("Srch"));
        form.menuItem("ClearSelectedMenuItem")->trigger();
        form.popUpMenu()->hide();
        QCOMPARE(m_ctx->Profiles[0].Searches[2].Desc, QStringLiteral("Edit-Me"));
        QCOMPARE(m_ctx->Profiles[0].Searches[5].Desc, QStringLiteral("Edit-Me"));
        QCOMPARE(m_ctx->Profiles[0].Searches[3].Desc, QStringLiteral("Search #3"));
        QCOMPARE(cell(list, 4, ColSrchDesc), QStringLiteral("Edit-Me"));
    }

    // Pop-up clears reach the disk only with another change of the same bank.
    void popUpClearsAndClosing() {
        MainForm& form = startSaved();
        const QByteArray bank2 = readFile(bankPath("Bank02"));
        rightClickRow(form.ChnlsLv(), 0, "ClearSelectedMenuItem");
        clickBankTab(1);
        rightClickRow(form.ChnlsLv(), 0, "ClearSelectedMenuItem");
        editCell(form.ChnlsLv(), 1, ColDesc, QStringLiteral("Edited"));
        closeForm();
        QCOMPARE(readFile(bankPath("Bank01")).contains("Channel01=000.000000,Edit-Me"), false);
        QCOMPARE(readFile(bankPath("Bank02")).contains("Channel01=000.000000,Edit-Me"), true);
        QVERIFY(readFile(bankPath("Bank02")) != bank2);
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Banks[1].Chans[1].Desc, QStringLiteral("Chan #001"));
        QCOMPARE(next->Profiles[0].Banks[2].Chans[2].Desc, QStringLiteral("Edited"));
    }

    void renameBank() {
        MainForm& form = startSaved();
        clickBankTab(2);
        InplaceEdit* box = form.BankTxt();
        box->setFocus();
        box->selectAll();
        // Characters a file name cannot hold are refused as they are typed.
        QTest::keyClicks(box, QStringLiteral("Ma.ri/ne"));
        QCOMPARE(box->text(), QStringLiteral("Marine"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(form.BankTab()->tabText(2), QStringLiteral("Marine"));
        QVERIFY(File_Exists(bankPath("Marine")));
        QVERIFY(!File_Exists(bankPath("Bank03")));
        QVERIFY(m_ctx->Profiles[0].Banks[3].Changed);
        QVERIFY(m_prompts->messages().isEmpty());
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Banks[3].FileName, QStringLiteral("Marine"));
        QCOMPARE(next->Profiles[0].Banks[3].Chans[1].Desc, QStringLiteral("Chan #041"));
    }

    void renameOntoExistingFileFails_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("taken");
        QTest::newRow("bank") << 0 << "Bank02";
        QTest::newRow("search limits") << 10 << "SrchBank01";
    }
    void renameOntoExistingFileFails() {
        QFETCH(int, tab);
        QFETCH(QString, taken);
        MainForm& form = startSaved();
        clickBankTab(tab);
        const QString before = form.BankTab()->tabText(tab);
        InplaceEdit* box = form.BankTxt();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, taken);
        // Leaving the box commits the pending rename.
        (tab == 10 ? form.SearchLV() : form.ChnlsLv())->setFocus();
        QCOMPARE(m_prompts->messages().size(), 1);
        QCOMPARE(m_prompts->messages().first().text,
                 QStringLiteral("Can NOT Rename File, Destination May Exist Already!!!"));
        QCOMPARE(form.BankTab()->tabText(tab), before);
        QCOMPARE(box->text(), before);
        QVERIFY(!m_ctx->Profiles[0].Changed);
    }

    void renameSearchLimits() {
        MainForm& form = startSaved();
        clickBankTab(10);
        InplaceEdit* box = form.BankTxt();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("Coast"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(form.BankTab()->tabText(10), QStringLiteral("Coast"));
        QCOMPARE(m_ctx->Profiles[0].SrchName, QStringLiteral("Coast"));
        QVERIFY(File_Exists(m_ctx->searchPath(QStringLiteral("Coast"))));
        closeForm();
        QCOMPARE(reloaded()->Profiles[0].SrchName, QStringLiteral("Coast"));
    }

    void renameProfile() {
        MainForm& form = startSaved();
        clickProfileTab(1);
        QVERIFY(form.ProfTxt()->isEnabled());
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Profile01]"));
        QCOMPARE(form.BankTab()->tabText(0), QStringLiteral("Bank11"));
        InplaceEdit* box = form.ProfTxt();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("Club"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(form.ProfileTab()->tabText(1), QStringLiteral("Club"));
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Club]"));
        QVERIFY(File_Exists(m_dir->path() + QStringLiteral("/Club.ini")));
        QVERIFY(!File_Exists(m_dir->path() + QStringLiteral("/Profile01.ini")));
        QVERIFY(m_ctx->Profiles[0].Changed);
        closeForm();
        QVERIFY(readFile(m_ctx->profileListPath()).contains("Profile01=Club"));
        MainForm& again = start();
        QCOMPARE(again.ProfileTab()->tabText(1), QStringLiteral("Club"));
        // Onto another profile's file: refused with the message, nothing renamed.
        clickProfileTab(1);
        again.ProfTxt()->setFocus();
        again.ProfTxt()->selectAll();
        QTest::keyClicks(again.ProfTxt(), QStringLiteral("Profile02"));
        QTest::keyClick(again.ProfTxt(), Qt::Key_Return);
        QCOMPARE(m_prompts->messages().size(), 1);
        QCOMPARE(again.ProfileTab()->tabText(1), QStringLiteral("Club"));
        QCOMPARE(again.ProfTxt()->text(), QStringLiteral("Club"));
    }

    void profileSwitchShowsThatProfile() {
        MainForm& form = startFresh();
        clickBankTab(2);
        clickProfileTab(3);
        QCOMPARE(m_ctx->CurBank, 3);
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("Bank33"));
        editCell(form.ChnlsLv(), 0, ColDesc, QStringLiteral("Profile three"));
        QCOMPARE(m_ctx->Profiles[3].Banks[3].Chans[1].Desc, QStringLiteral("Profile three"));
        clickProfileTab(0);
        QCOMPARE(cell(form.ChnlsLv(), 0, ColDesc), QStringLiteral("Chan #041"));
        QCOMPARE(cell(form.ChanLV(), 40, ColDesc), QStringLiteral("Chan #041"));
        clickProfileTab(3);
        QCOMPARE(cell(form.ChanLV(), 40, ColDesc), QStringLiteral("Profile three"));
    }

    void labelsShowAndHideDebugComm() {
        MainForm& form = startFresh();
        QAction* debug = form.menuItem("DebugCommMenuItem");
        QTest::mouseDClick(form.captionLabel(0), Qt::LeftButton);
        QVERIFY(debug->isVisible());
        QTest::mouseDClick(form.captionLabel(2), Qt::LeftButton);
        QVERIFY(!debug->isVisible());
    }

    void viewMenuPanels() {
        MainForm& form = startFresh();
        editCell(form.ChnlsLv(), 6, ColDesc, QStringLiteral("Shown everywhere"));
        trigger("ShowAllChanMenuItem");
        QCOMPARE(form.shownPanel(), MainForm::ChannelListPanel);
        QVERIFY(form.ChanLV()->isVisible());
        QCOMPARE(cell(form.ChanLV(), 6, ColDesc), QStringLiteral("Shown everywhere"));
        QVERIFY(!form.menuItem("ShowAllChanMenuItem")->isEnabled());
        QVERIFY(form.menuItem("ShowScanBanksMenu")->isEnabled());
        trigger("ShowServiceMenuItem");
        QCOMPARE(form.shownPanel(), MainForm::ServicePanel);
        const auto* list2 = form.panelWidget(MainForm::ServicePanel)
                                ->findChild<QLabel*>(QStringLiteral("ServiceList2"));
        QVERIFY(list2 && list2->isVisible());
        QVERIFY(list2->text().contains(QStringLiteral("935.0125 - 939.9875")));
        QVERIFY(!form.menuItem("ShowServiceMenuItem")->isEnabled());
        trigger("ShowScanBanksMenu");
        QVERIFY(form.ChnlsLv()->isVisible());
    }

    void editCommands_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("bank2slot1"); // description after the command
        QTest::addColumn<QString>("bank5slot20");
        QTest::addColumn<QString>("search3");
        QTest::newRow("clear all banks, no")
            << "ClearBanksMenuItem" << 1 << int(Answer::No) << "Mine"
            << "Mine"
            << "Mine";
        QTest::newRow("clear all banks, yes")
            << "ClearBanksMenuItem" << 1 << int(Answer::Yes) << "Edit-Me"
            << "Edit-Me"
            << "Mine";
        QTest::newRow("clear current bank")
            << "ClearCurrBankMenuItem" << 1 << int(Answer::Yes) << "Edit-Me"
            << "Mine"
            << "Mine";
        QTest::newRow("set factory defaults, no")
            << "SetFactoryMenuItem" << 1 << int(Answer::No) << "Mine"
            << "Mine"
            << "Mine";
        QTest::newRow("set factory defaults")
            << "SetFactoryMenuItem" << 4 << int(Answer::Yes) << "Chan #021"
            << "Chan #100"
            << "Mine";
        QTest::newRow("set default bank")
            << "DefaultBankMenuItem" << 1 << int(Answer::Yes) << "Chan #021"
            << "Mine"
            << "Mine";
        QTest::newRow("clear search limits")
            << "ClearSearchMenuItem" << 10 << int(Answer::Yes) << "Mine"
            << "Mine"
            << "Edit-Me";
        QTest::newRow("set default limits")
            << "DefaultLimitsMenuItem" << 10 << int(Answer::Yes) << "Mine"
            << "Mine"
            << "Search #3";
        QTest::newRow("set default limits, no")
            << "DefaultLimitsMenuItem" << 10 << int(Answer::No) << "Mine"
            << "Mine"
            << "Mine";
    }
    void editCommands() {
        QFETCH(QString, item);
        QFETCH(int, tab);
        QFETCH(int, answer);
        MainForm& form = startFresh();
        ProfileRec& p = m_ctx->Profiles[0];
        p.Banks[2].Chans[1].Desc = QStringLiteral("Mine");
        p.Banks[5].Chans[20].Desc = QStringLiteral("Mine");
        p.Searches[3].Desc = QStringLiteral("Mine");
        form.refreshLists();
        clickBankTab(tab);
        p.Changed = false;
        for (int b = 1; b <= BankCount; ++b)
            p.Banks[b].Changed = false;
        m_prompts->queueAnswer(Answer(answer));
        trigger(qPrintable(item));
        QCOMPARE(m_prompts->messages().size(), 1);
        const ScriptedPrompts::Message& m = m_prompts->messages().first();
        QCOMPARE(m.text, QStringLiteral("This will ERASE Your Current Settings!\nAre You SURE You "
                                        "Want To Proceed???"));
        QCOMPARE(m.icon, Icon::Exclamation);
        QCOMPARE(m.buttons, Buttons::YesNo);
        QTEST(p.Banks[2].Chans[1].Desc, "bank2slot1");
        QTEST(p.Banks[5].Chans[20].Desc, "bank5slot20");
        QTEST(p.Searches[3].Desc, "search3");
        QCOMPARE(p.Changed, Answer(answer) == Answer::Yes);
        for (int b = 1; b <= BankCount; ++b)
            QVERIFY(!p.Banks[b].Changed);
        // The list in front shows the result.
        if (tab == 10)
            QCOMPARE(cell(form.SearchLV(), 2, ColSrchDesc), p.Searches[3].Desc);
        else
            QCOMPARE(cell(form.ChanLV(), 20, ColDesc), p.Banks[2].Chans[1].Desc);
    }

    // Clear Current Bank with no other edit of the bank: the file stays, the next start shows
    // the old channels.
    void clearedBankIsNotWrittenAtClosing() {
        MainForm& form = startSaved();
        const QByteArray before = readFile(bankPath("Bank01"));
        trigger("ClearCurrBankMenuItem");
        QCOMPARE(cell(form.ChnlsLv(), 0, ColDesc), QStringLiteral("Edit-Me"));
        closeForm();
        QCOMPARE(readFile(bankPath("Bank01")), before);
        MainForm& again = start();
        QCOMPARE(cell(again.ChnlsLv(), 0, ColDesc), QStringLiteral("Chan #001"));
    }

    // Save Bank writes the bank at once and marks the profile: closing rewrites the settings
    // and search files but not that bank file.
    void saveBankThenClosing() {
        MainForm& form = startSaved();
        editCell(form.ChnlsLv(), 0, ColDesc, QStringLiteral("Saved now"));
        trigger("SaveBankMenuItem");
        QVERIFY(readFile(bankPath("Bank01")).contains("Saved now"));
        QVERIFY(!m_ctx->Profiles[0].Banks[1].Changed);
        QVERIFY(m_ctx->Profiles[0].Changed);
        const QByteArray saved = readFile(bankPath("Bank01"));
        rightClickRow(form.ChnlsLv(), 1, "ClearSelectedMenuItem");
        QFile::remove(m_ctx->searchPath(QStringLiteral("SrchBank00")));
        closeForm();
        QCOMPARE(readFile(bankPath("Bank01")), saved);
        QVERIFY(File_Exists(m_ctx->searchPath(QStringLiteral("SrchBank00"))));
    }

    void untouchedProfileIsNotWritten() {
        startSaved();
        QFile::remove(m_ctx->settingsPath(QStringLiteral("Profile04")));
        QFile::remove(m_ctx->searchPath(QStringLiteral("SrchBank00")));
        closeForm();
        QVERIFY(!File_Exists(m_ctx->settingsPath(QStringLiteral("Profile04"))));
        QVERIFY(!File_Exists(m_ctx->searchPath(QStringLiteral("SrchBank00"))));
    }

    void firstClosingWritesEveryProfile() {
        startFresh();
        closeForm();
        const QByteArray list = readFile(m_ctx->profileListPath());
        for (int p = 1; p < ProfileCount; ++p) {
            QVERIFY(list.contains(QStringLiteral("Profile%1=Profile%1").arg(Num2(p)).toLatin1()));
            QVERIFY(File_Exists(m_ctx->settingsPath(DefaultProfileName(p))));
        }
        QVERIFY(File_Exists(bankPath(QStringLiteral("Bank100"))));
    }

    void fileDialogsCancelled_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("title");
        QTest::newRow("load profile") << "LoadProfileMenuItem" << 0 << "Load Profile";
        QTest::newRow("save profile as") << "SaveProfileAsMenuItem" << 0 << "Save Profile As";
        QTest::newRow("load bank") << "LoadBankMenuItem" << 0 << "Load Bank";
        QTest::newRow("save bank as") << "SaveBankAsMenuItem" << 0 << "Save Bank As";
        QTest::newRow("load search") << "LoadSearchMenuItem" << 10 << "Load Search";
        QTest::newRow("save search as") << "SaveSearchAsMenuItem" << 10 << "Save Search As";
    }
    void fileDialogsCancelled() {
        QFETCH(QString, item);
        QFETCH(int, tab);
        MainForm& form = startSaved();
        clickBankTab(tab);
        const auto before = kestrel::test::snapshotTree(m_dir->path());
        const QString title = form.windowTitle();
        trigger(qPrintable(item));
        QCOMPARE(m_prompts->dialogs().size(), 1);
        QTEST(m_prompts->dialogs().first().title, "title");
        QVERIFY(m_prompts->messages().isEmpty());
        QVERIFY(!m_ctx->Profiles[0].Changed);
        QCOMPARE(form.windowTitle(), title);
        QCOMPARE(kestrel::test::snapshotTree(m_dir->path()), before);
    }

    void loadAndSaveBankThroughDialogs() {
        MainForm& form = startSaved();
        clickBankTab(1);
        m_prompts->queueFile(bankPath(QStringLiteral("Bank01")));
        trigger("LoadBankMenuItem");
        QCOMPARE(m_prompts->dialogs().first().startDir, m_ctx->banksDir() + QLatin1Char('/'));
        QCOMPARE(form.BankTab()->tabText(1), QStringLiteral("Bank01"));
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("Bank01"));
        QCOMPARE(cell(form.ChnlsLv(), 0, ColFreq), QStringLiteral("40.500000"));
        QCOMPARE(cell(form.ChanLV(), 20, ColFreq), QStringLiteral("40.500000"));
        QVERIFY(m_ctx->Profiles[0].Banks[2].Changed);

        m_prompts->queueFile(bankPath(QStringLiteral("Air.Band")));
        trigger("SaveBankAsMenuItem");
        QCOMPARE(m_prompts->dialogs().last().presetName, QStringLiteral("Untitled.BKE"));
        QCOMPARE(form.BankTab()->tabText(1), QStringLiteral("Air"));
        QVERIFY(File_Exists(bankPath(QStringLiteral("Air.Band"))));
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Banks[2].FileName, QStringLiteral("Air"));
        QCOMPARE(next->Profiles[0].Banks[2].Chans[1].Freq, 40500000.0);
    }

    void loadAndSaveSearchThroughDialogs() {
        MainForm& form = startSaved();
        clickBankTab(10);
        m_ctx->Profiles[0].Searches[4].Desc = QStringLiteral("Kept apart");
        m_prompts->queueFile(m_ctx->searchPath(QStringLiteral("Apart")));
        trigger("SaveSearchAsMenuItem");
        QCOMPARE(form.BankTab()->tabText(10), QStringLiteral("Apart"));
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("Apart"));
        QCOMPARE(m_ctx->Profiles[0].SrchName, QStringLiteral("Apart"));

        clickProfileTab(2);
        clickBankTab(10);
        m_prompts->queueFile(m_ctx->searchPath(QStringLiteral("Apart")));
        trigger("LoadSearchMenuItem");
        QCOMPARE(form.BankTab()->tabText(10), QStringLiteral("Apart"));
        QCOMPARE(cell(form.SearchLV(), 3, ColSrchDesc), QStringLiteral("Kept apart"));
        QCOMPARE(m_ctx->Profiles[2].SrchName, QStringLiteral("SrchBank02"));
        trigger("SaveSearchMenuItem"); // to the shown name
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].SrchName, QStringLiteral("Apart"));
        QCOMPARE(next->Profiles[2].SrchName, QStringLiteral("SrchBank02"));
        QCOMPARE(next->Profiles[2].Searches[4].Desc, QStringLiteral("Kept apart"));
    }

    void loadAndSaveProfileThroughDialogs() {
        MainForm& form = startSaved();
        clickProfileTab(2);
        clickBankTab(4);
        editCell(form.ChnlsLv(), 0, ColDesc, QStringLiteral("Two"));
        m_prompts->queueFile(m_dir->path() + QStringLiteral("/Travel.ini"));
        trigger("SaveProfileAsMenuItem");
        QCOMPARE(m_prompts->dialogs().last().presetName, QStringLiteral("Profile02.ini"));
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Travel]"));
        QCOMPARE(m_ctx->Profiles[2].Name, QStringLiteral("Profile02"));
        QVERIFY(readFile(m_dir->path() + QStringLiteral("/Travel.ini")).contains("Bank05=Bank25"));

        clickProfileTab(5);
        m_prompts->queueFile(m_dir->path() + QStringLiteral("/Travel.ini"));
        trigger("LoadProfileMenuItem");
        QCOMPARE(form.ProfileTab()->tabText(5), QStringLiteral("Travel"));
        QCOMPARE(form.ProfTxt()->text(), QStringLiteral("Travel"));
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Travel]"));
        QCOMPARE(form.BankTab()->currentIndex(), 0);
        QCOMPARE(form.BankTab()->tabText(4), QStringLiteral("Bank25"));
        QCOMPARE(m_ctx->Profiles[5].Banks[5].Chans[1].Desc, QStringLiteral("Two"));
        QVERIFY(m_ctx->Profiles[0].Changed);
        trigger("SaveProfileMenuItem");
        QVERIFY(!m_ctx->Profiles[5].Changed);
        closeForm();
        QVERIFY(readFile(m_ctx->profileListPath()).contains("Profile05=Travel"));
    }

    void exitSavesAndStoresThePosition() {
        MainForm& form = startFresh();
        form.move(100, 50);
        editCell(form.ChnlsLv(), 0, ColDesc, QStringLiteral("On exit"));
        trigger("ExitMenuItem");
        QVERIFY(!form.isVisible());
        QVERIFY(readFile(bankPath("Bank01")).contains("On exit"));
        const QByteArray mainIni = readFile(m_ctx->settingsPath(QStringLiteral("Main")));
        const WindowPos pos = m_ctx->settings.pos(WindowId::Main);
        QVERIFY(mainIni.contains(
            QStringLiteral("MainWindowPos=%1,%2").arg(pos.top).arg(pos.left).toLatin1()));
        QCOMPARE(pos.left, form.x() * 15);
        QCOMPARE(pos.top, form.y() * 15);
    }

    void storedPositionIsPulledInsideTheScreen() {
        m_form.reset();
        m_ctx.reset();
        m_dir = std::make_unique<QTemporaryDir>();
        kestrel::test::writeFile(m_dir->path() + QStringLiteral("/Main.ini"),
                                 "[Settings]\nMainWindowPos=-50,99999\n");
        MainForm& form = start();
        // The screen of the tests is 1920 x 1080 pixels; the window's design width is 700.
        QCOMPARE(form.y(), 0);
        QCOMPARE(form.x(), 1920 - 700);
    }

    void helpMenu() {
        MainForm& form = startFresh();
        trigger("HomePageMenuItem");
        trigger("DBaseSiteMenuItem");
        QCOMPARE(m_opened.size(), 2);
        QVERIFY(m_opened[0].isValid() && m_opened[1].isValid());
        QVERIFY(m_opened[0] != m_opened[1]);
        m_prompts->clear();
        trigger("AboutMenuItem");
        QCOMPARE(m_prompts->messages().size(), 1);
        QVERIFY(m_prompts->messages().first().text.contains(QStringLiteral(KESTREL_VERSION)));
        QCOMPARE(form.menuItem("DisplayErrorsMenuItem")->text(),
                 QStringLiteral("Show Possible Comm &Errors"));
    }
};

QTEST_MAIN(TestMainForm)
#include "test_mainform.moc"
