// SPDX-License-Identifier: GPL-3.0-or-later
// The main window driven offscreen as a user drives it: clicks, double clicks, typing, pop-up
// menus, menu commands with their dialogs answered through the prompts seam, and closing; then
// the records and the files on disk are checked.
#include "core/files.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "link/kestrelcomm.h"
#include "mainwin/inplaceedit.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>
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

QStringList cells(QTableWidget* list, int row, QList<int> columns) {
    QStringList texts;
    for (int c : columns)
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

    // Starts the program on the current data folder, as start-up does.
    MainForm& start() {
        m_form.reset();
        m_ctx.reset();
        m_prompts = std::make_unique<ScriptedPrompts>(Answer::Yes);
        m_ctx = std::make_unique<AppContext>(m_dir->path(), m_prompts.get());
        MakeBanksDir(*m_ctx);
        Load_Profiles(*m_ctx);
        m_form = std::make_unique<MainForm>(*m_ctx);
        // The link's set-up after the first paint is not what these tests are about.
        m_form->findChild<KestrelComm*>()->setTimeScale(0.01);
        m_form->show();
        if (!QTest::qWaitForWindowExposed(m_form.get()))
            qWarning("main window not exposed");
        return *m_form;
    }
    MainForm& startFresh() {
        m_form.reset();
        m_ctx.reset();
        m_dir = std::make_unique<QTemporaryDir>();
        return start();
    }
    // A data folder in which a first run has written every file; nothing is marked changed.
    MainForm& startSaved() {
        startFresh();
        m_ctx->Profiles[0].Changed = true; // a first run writes profile 0 only when changed
        closeForm();
        return start();
    }
    void closeForm() { QVERIFY(m_form->close()); }
    ProfileRec& prof(int p = 0) { return m_ctx->Profiles[p]; }
    QString bankPath(const QString& name) const { return m_ctx->bankPath(name); }
    void clickBankTab(int index) {
        QTabBar* tabs = m_form->BankTab();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
        QCOMPARE(tabs->currentIndex(), index);
    }
    void clickProfileTab(int index) {
        m_form->ProfileTab()->setCurrentIndex(index); // may sit behind the scroll buttons
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
    void trigger(const QString& item) {
        QAction* action = m_form->menuItem(item);
        QVERIFY2(action && action->isEnabled(), qPrintable(item));
        action->trigger();
    }
    void enabled(const QStringList& items, bool on) {
        for (const QString& name : items)
            QVERIFY2(m_form->menuItem(name)->isEnabled() == on, qPrintable(name));
    }
    void clearChanged() {
        prof().Changed = false;
        for (int b = 1; b <= BankCount; ++b)
            prof().Banks[b].Changed = false;
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

    void startUpAndTabSwitches() {
        MainForm& form = startFresh();
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Main]"));
        QVERIFY(!form.ProfTxt()->isEnabled());
        const QStringList bankItems = {"ClearCurrBankMenuItem", "LoadBankMenuItem",
                                       "SaveBankAsMenuItem", "DefaultBankMenuItem"};
        const QStringList searchItems = {"ClearSearchMenuItem", "LoadSearchMenuItem",
                                         "SaveSearchAsMenuItem", "DefaultLimitsMenuItem"};
        enabled(bankItems, true);
        enabled(searchItems, false);
        clickBankTab(7);
        QCOMPARE(cells(form.ChnlsLv(), 10, {0, 1, 5}), QStringList({"151", "000.000000", "True"}));
        clickBankTab(10);
        QCOMPARE(m_ctx->CurBank, SearchTab);
        enabled(bankItems, false);
        enabled(searchItems, true);
        // Ctrl+V steps to the next bank tab and wraps round.
        form.BankTab()->setFocus();
        QTest::keyClick(form.BankTab(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(m_ctx->CurBank, 1);
        QTest::keyClick(form.BankTab(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(m_ctx->CurBank, 2);
        // Another profile keeps the bank and shows its own channels.
        clickProfileTab(3);
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("Bank32"));
        QVERIFY(form.ProfTxt()->isEnabled());
        editCell(form.ChnlsLv(), 0, ColDesc, QStringLiteral("Profile three"));
        QCOMPARE(prof(3).Banks[2].Chans[1].Desc, QStringLiteral("Profile three"));
        clickProfileTab(0);
        QCOMPARE(cell(form.ChanLV(), 20, ColDesc), QStringLiteral("Chan #021"));
    }

    void frequencyCommit_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("after"); // frequency, delay, priority, l/out
        QTest::newRow("locked-out channel gains a frequency")
            << 8 << 0 << "146.52" << QStringList({"146.520000", "True", "False", "False"});
        QTest::newRow("0 empties and locks out")
            << 0 << 0 << "0" << QStringList({"000.000000", "False", "False", "True"});
        QTest::newRow("flags of a scanned channel stay")
            << 0 << 2 << "462.5625" << QStringList({"462.562500", "False", "False", "False"});
    }
    void frequencyCommit() {
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(QString, typed);
        QFETCH(QStringList, after);
        MainForm& form = startFresh();
        clickBankTab(tab);
        clearChanged();
        editCell(form.ChnlsLv(), row, ColFreq, typed);
        const QList<int> columns = {ColFreq, ColDelay, ColPriority, ColLockout};
        QCOMPARE(cells(form.ChnlsLv(), row, columns), after);
        const ChannelRec& rec = prof().Banks[tab + 1].Chans[row + 1];
        QCOMPARE(QStringList({FreqToString(rec.Freq), BoolToString(rec.Delay),
                              BoolToString(rec.Priority), BoolToString(rec.Lockout)}),
                 after);
        QVERIFY(prof().Banks[tab + 1].Changed && prof().Changed);
        QCOMPARE(cells(form.ChanLV(), ChannelNumber(tab + 1, row + 1) - 1, columns), after);
    }

    void flagToggles_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QList<int>>("clicks");
        QTest::addColumn<QString>("after"); // delay, priority, l/out
        QTest::newRow("delay") << 0 << QList<int>{ColDelay} << "True,False,False";
        QTest::newRow("priority") << 0 << QList<int>{ColPriority} << "False,True,False";
        QTest::newRow("lock out drops delay")
            << 0 << QList<int>{ColDelay, ColLockout} << "False,False,True";
        QTest::newRow("scanned again gains delay")
            << 0 << QList<int>{ColLockout, ColLockout} << "True,False,False";
        QTest::newRow("empty: delay stays off")
            << 9 << QList<int>{ColLockout} << "False,False,False";
        QTest::newRow("empty: delay stays on")
            << 9 << QList<int>{ColDelay, ColLockout} << "True,False,False";
        QTest::newRow("number column") << 0 << QList<int>{ColChanNumber} << "False,False,False";
    }
    void flagToggles() {
        QFETCH(int, tab);
        QFETCH(QList<int>, clicks);
        MainForm& form = startFresh();
        clickBankTab(tab);
        clearChanged();
        for (int column : clicks)
            doubleClickCell(form.ChnlsLv(), 0, column);
        QFETCH(QString, after);
        QCOMPARE(cells(form.ChnlsLv(), 0, {ColDelay, ColPriority, ColLockout}).join(','), after);
        const ChannelRec& rec = prof().Banks[tab + 1].Chans[1];
        QCOMPARE(QStringList({BoolToString(rec.Delay), BoolToString(rec.Priority),
                              BoolToString(rec.Lockout)})
                     .join(','),
                 after);
        QCOMPARE(prof().Changed, clicks.first() != ColChanNumber);
        QVERIFY(!form.FreqTxt()->isVisible() && !form.DescTxt()->isVisible());
    }

    void editBoxes() {
        MainForm& form = startSaved();
        QTableWidget* list = form.ChnlsLv();
        // Escape abandons; so does leaving a box opened without typing.
        doubleClickCell(list, 3, ColFreq);
        QTest::keyClicks(form.FreqTxt(), QStringLiteral("300"));
        QTest::keyClick(form.FreqTxt(), Qt::Key_Escape);
        QVERIFY(!form.FreqTxt()->isVisible());
        form.BankTxt()->setFocus();
        QCOMPARE(cell(list, 3, ColFreq), QStringLiteral("122.000000"));
        doubleClickCell(list, 3, ColFreq);
        form.BankTxt()->setFocus();
        QVERIFY(!form.FreqTxt()->isVisible());
        QVERIFY(!prof().Changed && !prof().Banks[1].Changed);
        // A box is never left empty: it falls back to the stored value.
        doubleClickCell(list, 0, ColFreq);
        QTest::keyClick(form.FreqTxt(), Qt::Key_Delete);
        QCOMPARE(form.FreqTxt()->text(), QStringLiteral("40.500000"));
        QTest::keyClick(form.FreqTxt(), Qt::Key_Escape);
        // F2 starts the edit from the keyboard; "," is refused in a description.
        list->setFocus();
        list->setCurrentCell(4, ColDesc);
        QTest::keyClick(list, Qt::Key_F2);
        QVERIFY(form.DescTxt()->isVisible());
        QTest::keyClick(form.DescTxt(), Qt::Key_Backspace);
        QCOMPARE(form.DescTxt()->text(), QStringLiteral("Chan #005"));
        QTest::keyClicks(form.DescTxt(), QStringLiteral("Fire, East"));
        QTest::keyClick(form.DescTxt(), Qt::Key_Return);
        QVERIFY(list->hasFocus());
        QCOMPARE(cell(list, 4, ColDesc), QStringLiteral("Fire East"));
        // Switching the bank mid-edit commits into the edited bank.
        doubleClickCell(list, 1, ColFreq);
        QTest::keyClicks(form.FreqTxt(), QStringLiteral("151.625"));
        form.BankTab()->setCurrentIndex(3);
        QCOMPARE(prof().Banks[1].Chans[2].Freq, 151625000.0);
        QCOMPARE(prof().Banks[4].Chans[2].Desc, QStringLiteral("Chan #062"));
        closeForm();
        QVERIFY(readFile(bankPath("Bank01")).contains("Channel05=122.200000,Fire East,"));
    }

    void searchRangesEditInPlace() {
        MainForm& form = startSaved();
        clickBankTab(10);
        QTableWidget* list = form.SearchLV();
        editCell(list, 0, ColUpper, QStringLiteral("30"));
        editCell(list, 1, ColSrchDesc, QStringLiteral("Low, band"));
        editCell(list, 2, ColLower, QStringLiteral("1000")); // refused: the old value stays
        QVERIFY(m_prompts->messages().value(0).text.contains(QStringLiteral("25 to 956 MHz")));
        QCOMPARE(cells(list, 0, {1, 2}), QStringList({"25.000000", "30.000000"}));
        QCOMPARE(cell(list, 2, ColLower), QStringLiteral("29.700000"));
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Searches[1].Upper, 30000000.0);
        QCOMPARE(next->Profiles[0].Searches[2].Desc, QStringLiteral("Low band"));
        QCOMPARE(next->Profiles[0].Searches[3].Lower, 29700000.0);
    }

    void popUpCommands_data() {
        QTest::addColumn<bool>("allChannels");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("bank");
        QTest::addColumn<int>("slot");
        QTest::newRow("bank list, channel 20") << false << 19 << 1 << 20;
        QTest::newRow("all channels, channel 200") << true << 199 << 10 << 20;
    }
    void popUpCommands() {
        QFETCH(bool, allChannels);
        QFETCH(int, row);
        QFETCH(int, bank);
        QFETCH(int, slot);
        MainForm& form = startSaved();
        QTableWidget* view = form.ChnlsLv();
        if (allChannels) {
            trigger("ShowAllChanMenuItem");
            view = form.ChanLV();
        }
        const ChannelRec& rec = prof().Banks[bank].Chans[slot];
        prof().Banks[bank].Chans[slot].Desc = QStringLiteral("Mine");
        rightClickRow(view, row, "ClearSelectedMenuItem");
        QCOMPARE(form.popUpTag(), allChannels ? QStringLiteral("Chan") : QStringLiteral("Chnls"));
        QCOMPARE(QStringList({FreqToString(rec.Freq), rec.Desc, BoolToString(rec.Lockout)}),
                 QStringList({"000.000000", "Edit-Me", "True"}));
        QCOMPARE(cell(view, row, ColDesc), QStringLiteral("Edit-Me"));
        rightClickRow(view, row, "UseDefaultsMenuItem");
        QCOMPARE(rec.Desc, QStringLiteral("Chan #") + Num3(ChannelNumber(bank, slot)));
        QVERIFY(!prof().Changed && !prof().Banks[bank].Changed);
    }

    void rename_data() {
        QTest::addColumn<int>("profile");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("oldFile"); // relative to the data folder
        QTest::addColumn<QString>("newFile");
        QTest::newRow("bank, bad characters refused") << 0 << 2 << "Ma.ri/ne"
                                                      << "Banks/Bank03.BKE"
                                                      << "Banks/Marine.BKE";
        QTest::newRow("search limits") << 0 << 10 << "Coast"
                                       << "Banks/SrchBank00.SKE"
                                       << "Banks/Coast.SKE";
        QTest::newRow("profile") << 1 << -1 << "Club"
                                 << "Profile01.ini"
                                 << "Club.ini";
        QTest::newRow("bank onto an existing file") << 0 << 0 << "Bank02"
                                                    << ""
                                                    << "";
        QTest::newRow("search onto an existing file") << 0 << 10 << "SrchBank01"
                                                      << ""
                                                      << "";
        QTest::newRow("profile onto an existing file") << 1 << -1 << "Profile02"
                                                       << ""
                                                       << "";
    }
    void rename() {
        QFETCH(int, profile);
        QFETCH(int, tab);
        QFETCH(QString, typed);
        QFETCH(QString, oldFile);
        QFETCH(QString, newFile);
        MainForm& form = startSaved();
        clickProfileTab(profile);
        if (tab >= 0)
            clickBankTab(tab);
        QTabBar* tabs = tab < 0 ? form.ProfileTab() : form.BankTab();
        const int index = tab < 0 ? profile : tab;
        InplaceEdit* box = tab < 0 ? form.ProfTxt() : form.BankTxt();
        const QString before = tabs->tabText(index);
        const auto files = kestrel::test::snapshotTree(m_dir->path());
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, typed);
        // Leaving the box commits the pending rename.
        (tab == 10 ? form.SearchLV() : form.ChnlsLv())->setFocus();
        if (newFile.isEmpty()) {
            QCOMPARE(m_prompts->messages().size(), 1);
            QCOMPARE(m_prompts->messages().first().text,
                     QStringLiteral("Can NOT Rename File, Destination May Exist Already!!!"));
            QCOMPARE(tabs->tabText(index), before);
            QCOMPARE(box->text(), before);
            QVERIFY(!prof().Changed);
            QCOMPARE(kestrel::test::snapshotTree(m_dir->path()), files);
            return;
        }
        const QString name = QFileInfo(newFile).baseName();
        QVERIFY(m_prompts->messages().isEmpty());
        QCOMPARE(tabs->tabText(index), name);
        QVERIFY(!File_Exists(m_dir->filePath(oldFile)));
        QCOMPARE(readFile(m_dir->filePath(newFile)), files.value(oldFile));
        if (tab < 0)
            QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Club]"));
    }

    // Each View item shows its panel and is the one item disabled.
    void viewMenu() {
        MainForm& form = startFresh();
        const QStringList items = {"ShowScanBanksMenu", "ShowAllChanMenuItem",
                                   "ShowServiceMenuItem"};
        for (int shown : {0, 1, 2, 0}) {
            if (form.shownPanel() != shown)
                trigger(items[shown]);
            QCOMPARE(int(form.shownPanel()), shown);
            QVERIFY(form.panelWidget(MainForm::Panel(shown))->isVisible());
            for (int i = 0; i < items.size(); ++i)
                QCOMPARE(form.menuItem(items[i])->isEnabled(), i != shown);
        }
    }

    void editCommands_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("after"); // bank 2 slot 1, bank 5 slot 20, search 3
        const QString m = QStringLiteral("Mine"), e = QStringLiteral("Edit-Me");
        const int yes = int(Answer::Yes), no = int(Answer::No);
        QTest::newRow("clear all banks, no")
            << "ClearBanksMenuItem" << 1 << no << QStringList{m, m, m};
        QTest::newRow("clear all banks")
            << "ClearBanksMenuItem" << 1 << yes << QStringList{e, e, m};
        QTest::newRow("clear current bank")
            << "ClearCurrBankMenuItem" << 1 << yes << QStringList{e, m, m};
        QTest::newRow("set factory defaults")
            << "SetFactoryMenuItem" << 4 << yes << QStringList{"Chan #021", "Chan #100", m};
        QTest::newRow("set default bank")
            << "DefaultBankMenuItem" << 1 << yes << QStringList{"Chan #021", m, m};
        QTest::newRow("clear search limits")
            << "ClearSearchMenuItem" << 10 << yes << QStringList{m, m, e};
        QTest::newRow("set default limits")
            << "DefaultLimitsMenuItem" << 10 << yes << QStringList{m, m, "Search #3"};
    }
    void editCommands() {
        QFETCH(QString, item);
        QFETCH(int, tab);
        QFETCH(int, answer);
        QFETCH(QStringList, after);
        MainForm& form = startFresh();
        ProfileRec& p = prof();
        p.Banks[2].Chans[1].Desc = p.Banks[5].Chans[20].Desc = p.Searches[3].Desc = "Mine";
        form.refreshLists();
        clickBankTab(tab);
        clearChanged();
        m_prompts->queueAnswer(Answer(answer));
        trigger(item);
        QCOMPARE(m_prompts->messages().size(), 1);
        const ScriptedPrompts::Message& msg = m_prompts->messages().first();
        QCOMPARE(msg.text, QStringLiteral("This will ERASE Your Current Settings!\nAre You SURE "
                                          "You Want To Proceed???"));
        QVERIFY(msg.icon == Icon::Exclamation && msg.buttons == Buttons::YesNo);
        QCOMPARE(
            QStringList({p.Banks[2].Chans[1].Desc, p.Banks[5].Chans[20].Desc, p.Searches[3].Desc}),
            after);
        QCOMPARE(p.Changed, Answer(answer) == Answer::Yes);
        for (int b = 1; b <= BankCount; ++b)
            QVERIFY(!p.Banks[b].Changed);
        // The list in front shows the result.
        QCOMPARE(tab == 10 ? cell(form.SearchLV(), 2, ColSrchDesc)
                           : cell(form.ChanLV(), 20, ColDesc),
                 after[tab == 10 ? 2 : 0]);
    }

    // Clear Current Bank marks only the profile: the bank file stays, the next start shows the
    // old channels; cleared search limits do reach the profile's search file.
    void clearedBankIsNotWrittenAtClosing() {
        MainForm& form = startSaved();
        const QByteArray before = readFile(bankPath("Bank01"));
        trigger("ClearCurrBankMenuItem");
        QCOMPARE(cell(form.ChnlsLv(), 0, ColDesc), QStringLiteral("Edit-Me"));
        clickBankTab(10);
        trigger("ClearSearchMenuItem");
        closeForm();
        QCOMPARE(readFile(bankPath("Bank01")), before);
        MainForm& again = start();
        QCOMPARE(cell(again.ChnlsLv(), 0, ColDesc), QStringLiteral("Chan #001"));
        QCOMPARE(cell(again.SearchLV(), 2, ColSrchDesc), QStringLiteral("Edit-Me"));
    }

    // Save Bank writes the bank at once and clears its flag; closing rewrites the profile's
    // settings and search files but not that bank file. An untouched profile is not written.
    void saveBankThenClosing() {
        MainForm& form = startSaved();
        editCell(form.ChnlsLv(), 0, ColDesc, QStringLiteral("Saved now"));
        trigger("SaveBankMenuItem");
        QVERIFY(readFile(bankPath("Bank01")).contains("Saved now"));
        QVERIFY(!prof().Banks[1].Changed && prof().Changed);
        const QByteArray saved = readFile(bankPath("Bank01"));
        rightClickRow(form.ChnlsLv(), 1, "ClearSelectedMenuItem");
        QFile::remove(m_ctx->searchPath(QStringLiteral("SrchBank00")));
        QFile::remove(m_ctx->settingsPath(QStringLiteral("Main")));
        QFile::remove(m_ctx->settingsPath(QStringLiteral("Profile04")));
        closeForm();
        QCOMPARE(readFile(bankPath("Bank01")), saved);
        QVERIFY(File_Exists(m_ctx->searchPath(QStringLiteral("SrchBank00"))));
        QVERIFY(File_Exists(m_ctx->settingsPath(QStringLiteral("Main"))));
        QVERIFY(!File_Exists(m_ctx->settingsPath(QStringLiteral("Profile04"))));
    }

    void fileDialogsCancelled_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("options"); // title|folder|pattern|preset
        QTest::newRow("load profile") << "LoadProfileMenuItem"
                                      << "Load Profile||*.ini|*.ini";
        QTest::newRow("save profile as") << "SaveProfileAsMenuItem"
                                         << "Save Profile As||*.ini|Main.ini";
        QTest::newRow("load bank") << "LoadBankMenuItem"
                                   << "Load Bank|Banks/|*.BKE|*.BKE";
        QTest::newRow("save bank as") << "SaveBankAsMenuItem"
                                      << "Save Bank As|Banks/|*.BKE|Untitled.BKE";
        QTest::newRow("load search") << "LoadSearchMenuItem"
                                     << "Load Search|Banks/|*.SKE|*.SKE";
        QTest::newRow("save search as") << "SaveSearchAsMenuItem"
                                        << "Save Search As|Banks/|*.SKE|*.SKE";
    }
    void fileDialogsCancelled() {
        QFETCH(QString, item);
        QFETCH(QString, options);
        MainForm& form = startSaved();
        clickBankTab(item.contains(QStringLiteral("Search")) ? 10 : 0);
        const auto before = kestrel::test::snapshotTree(m_dir->path());
        trigger(item);
        QCOMPARE(m_prompts->dialogs().size(), 1);
        const FileDialogOptions& d = m_prompts->dialogs().first();
        QCOMPARE(QStringList({d.title, d.startDir, d.pattern, d.presetName}).join('|'),
                 options.replace('|' + QStringLiteral("Banks/"), '|' + m_ctx->banksDir() + '/')
                     .replace(QStringLiteral("||"), '|' + m_dir->path() + "/|"));
        QVERIFY(m_prompts->messages().isEmpty() && !prof().Changed);
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Main]"));
        QCOMPARE(kestrel::test::snapshotTree(m_dir->path()), before);
    }

    void bankThroughDialogs() {
        MainForm& form = startSaved();
        clickProfileTab(2);
        m_prompts->queueFile(bankPath(QStringLiteral("Air.Band")));
        trigger("SaveBankAsMenuItem"); // bank 21, under a name with a dot
        QCOMPARE(form.BankTab()->tabText(0), QStringLiteral("Air"));
        clickBankTab(1);
        m_prompts->queueFile(bankPath(QStringLiteral("Air.Band")));
        trigger("LoadBankMenuItem");
        QCOMPARE(form.BankTab()->tabText(1), QStringLiteral("Air"));
        QCOMPARE(form.BankTxt()->text(), QStringLiteral("Air"));
        QCOMPARE(cell(form.ChnlsLv(), 0, ColDesc), QStringLiteral("Chan #001")); // bank 21's
        QVERIFY(prof(2).Banks[2].Changed && prof(2).Changed && prof(0).Changed);
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[2].Banks[2].FileName, QStringLiteral("Air"));
        QCOMPARE(next->Profiles[2].Banks[2].Chans[1].Desc, QStringLiteral("Chan #001"));
    }

    void profileThroughDialogs() {
        MainForm& form = startSaved();
        clickProfileTab(2);
        clickBankTab(4);
        editCell(form.ChnlsLv(), 0, ColDesc, QStringLiteral("Two"));
        const QString travel = m_dir->filePath(QStringLiteral("Travel.ini"));
        m_prompts->queueFile(travel);
        trigger("SaveProfileAsMenuItem");
        QCOMPARE(form.windowTitle(), QStringLiteral("Kestrel Manager [Travel]"));
        QCOMPARE(prof(2).Name, QStringLiteral("Profile02"));
        QVERIFY(readFile(travel).contains("Bank05=Bank25"));
        clickProfileTab(5);
        m_prompts->queueFile(travel);
        trigger("LoadProfileMenuItem");
        QCOMPARE(form.ProfileTab()->tabText(5), QStringLiteral("Travel"));
        QCOMPARE(form.BankTab()->tabText(4), QStringLiteral("Bank25"));
        QCOMPARE(prof(5).Banks[5].Chans[1].Desc, QStringLiteral("Two"));
        closeForm();
        QVERIFY(readFile(m_ctx->profileListPath()).contains("Profile05=Travel"));
    }

    void storedPositionIsPulledInsideTheScreen() {
        m_dir = std::make_unique<QTemporaryDir>();
        kestrel::test::writeFile(m_dir->filePath(QStringLiteral("Main.ini")),
                                 "[Settings]\nMainWindowPos=-50,99999\n");
        // The screen of the tests is 1920 x 1080 pixels; the window's design width is 700.
        QCOMPARE(start().pos(), QPoint(1920 - 700, 0));
    }
};

QTEST_MAIN(TestMainForm)
#include "test_mainform.moc"
