// SPDX-License-Identifier: GPL-3.0-or-later
// The main window driven offscreen as a user drives it: clicks, double clicks, typing, pop-up
// menus, menu commands with their dialogs answered through the prompts seam, the standard keys,
// the clipboard, undo and closing; then the records and the files on disk are checked.
#include "core/files.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "history/history.h"
#include "history/imagelines.h"
#include "link/kestrelcomm.h"
#include "mainwin/inplaceedit.h"
#include "mainwin/mainform.h"
#include "testsupport.h"
#include "ui/guiprompts.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoView>
#include <functional>
#include <memory>

using namespace kestrel;
using namespace Qt::StringLiterals;
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

// Runs `act` on the modal dialog once it is shown. A dialog still open a second after its answer
// is rejected, so a wrong answer fails the test instead of hanging it.
void whenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(
        timer, &QTimer::timeout, timer,
        [timer, act, acted = false, answered = QPointer<QWidget>(), ticks = 0]() mutable {
            QWidget* modal = QApplication::activeModalWidget();
            if (!acted) {
                if (modal) {
                    acted = true;
                    answered = modal;
                    act(modal);
                }
            } else if (!answered || !answered->isVisible()) {
                timer->stop();
                timer->deleteLater();
            } else if (++ticks > 100) {
                if (auto* dialog = qobject_cast<QDialog*>(modal))
                    dialog->reject();
            }
        });
    timer->start();
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
        m_form->setUrlOpener([](const QUrl&) {}); // the Help key opens no browser
        m_form->show();
        QApplication::setActiveWindow(m_form.get());
        if (!QTest::qWaitForWindowActive(m_form.get()))
            qWarning("main window not active");
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
    // Keys as a user presses them, into whatever has the focus.
    void press(const QKeySequence& keys) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keySequence(focus ? focus : m_form.get(), keys);
    }
    void selectRows(QTableWidget* list, int first, int last) {
        list->setCurrentCell(first, 1);
        list->clearSelection();
        for (int r = first; r <= last; ++r)
            list->selectionModel()->select(list->model()->index(r, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
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
        // A first start has written nothing yet: the caption marks the profile unsaved.
        QCOMPARE(form.windowTitle(), u"Kestrel Manager [Main*]"_s);
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
        QCOMPARE(form.BankTxt()->text(), u"Bank32"_s);
        QVERIFY(form.ProfTxt()->isEnabled());
        editCell(form.ChnlsLv(), 0, ColDesc, u"Profile three"_s);
        QCOMPARE(prof(3).Banks[2].Chans[1].Desc, u"Profile three"_s);
        clickProfileTab(0);
        QCOMPARE(cell(form.ChanLV(), 20, ColDesc), u"Chan #021"_s);
    }

    // The first channel of a tab edited in the list: a typed frequency, or double clicks on the
    // switches ("D"elay, "P"riority, "L"ock-out, "#" the number column); the list, the list of
    // all channels and the record then show frequency, delay, priority and lock-out.
    void channelEdits_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("acts");
        QTest::addColumn<QString>("after");
        QTest::newRow("locked-out channel gains a frequency") << 8 << "146.52"
                                                              << "146.520000,True,False,False";
        QTest::newRow("priority") << 0 << "P"
                                  << "40.500000,False,True,False";
        QTest::newRow("lock out drops delay") << 0 << "D L"
                                              << "40.500000,False,False,True";
        QTest::newRow("scanned again gains delay") << 0 << "L L"
                                                   << "40.500000,True,False,False";
        QTest::newRow("empty: delay stays off") << 9 << "L"
                                                << "000.000000,False,False,False";
        QTest::newRow("number column") << 0 << "#"
                                       << "40.500000,False,False,False";
    }
    void channelEdits() {
        QFETCH(int, tab);
        QFETCH(QString, acts);
        QFETCH(QString, after);
        MainForm& form = startSaved();
        clickBankTab(tab);
        const QMap<QString, int> switches{
            {"D", ColDelay}, {"P", ColPriority}, {"L", ColLockout}, {"#", ColChanNumber}};
        for (const QString& act : acts.split(u' '))
            if (switches.contains(act))
                doubleClickCell(form.ChnlsLv(), 0, switches[act]);
            else
                editCell(form.ChnlsLv(), 0, ColFreq, act);
        const QList<int> columns = {ColFreq, ColDelay, ColPriority, ColLockout};
        QCOMPARE(cells(form.ChnlsLv(), 0, columns).join(','), after);
        QCOMPARE(cells(form.ChanLV(), ChannelNumber(tab + 1, 1) - 1, columns).join(','), after);
        const ChannelRec& rec = prof().Banks[tab + 1].Chans[1];
        QCOMPARE(QStringList({FreqToString(rec.Freq), BoolToString(rec.Delay),
                              BoolToString(rec.Priority), BoolToString(rec.Lockout)})
                     .join(','),
                 after);
        QCOMPARE(prof().Changed && prof().Banks[tab + 1].Changed, acts != u"#");
        QVERIFY(!form.FreqTxt()->isVisible() && !form.DescTxt()->isVisible());
    }

    void editBoxes() {
        MainForm& form = startSaved();
        QTableWidget* list = form.ChnlsLv();
        // Escape abandons; so does leaving a box opened without typing.
        doubleClickCell(list, 3, ColFreq);
        QTest::keyClicks(form.FreqTxt(), u"300"_s);
        QTest::keyClick(form.FreqTxt(), Qt::Key_Escape);
        QVERIFY(!form.FreqTxt()->isVisible());
        form.BankTxt()->setFocus();
        QCOMPARE(cell(list, 3, ColFreq), u"122.000000"_s);
        doubleClickCell(list, 3, ColFreq);
        form.BankTxt()->setFocus();
        QVERIFY(!form.FreqTxt()->isVisible());
        QVERIFY(!prof().Changed && !prof().Banks[1].Changed);
        // A box is never left empty: it falls back to the stored value.
        doubleClickCell(list, 0, ColFreq);
        QTest::keyClick(form.FreqTxt(), Qt::Key_Delete);
        QCOMPARE(form.FreqTxt()->text(), u"40.500000"_s);
        QTest::keyClick(form.FreqTxt(), Qt::Key_Escape);
        // "," is refused in a description.
        doubleClickCell(list, 4, ColDesc);
        QTest::keyClick(form.DescTxt(), Qt::Key_Backspace);
        QCOMPARE(form.DescTxt()->text(), u"Chan #005"_s);
        QTest::keyClicks(form.DescTxt(), u"Fire, East"_s);
        QTest::keyClick(form.DescTxt(), Qt::Key_Return);
        QCOMPARE(cell(list, 4, ColDesc), u"Fire East"_s);
        // Switching the bank mid-edit commits into the edited bank.
        doubleClickCell(list, 1, ColFreq);
        QTest::keyClicks(form.FreqTxt(), u"151.625"_s);
        form.BankTab()->setCurrentIndex(3);
        QCOMPARE(prof().Banks[1].Chans[2].Freq, 151625000.0);
        QCOMPARE(prof().Banks[4].Chans[2].Desc, u"Chan #062"_s);
        closeForm();
        QVERIFY(readFile(bankPath("Bank01")).contains("Channel05=122.200000,Fire East,"));
    }

    void searchRangesEditInPlace() {
        MainForm& form = startSaved();
        clickBankTab(10);
        QTableWidget* list = form.SearchLV();
        editCell(list, 0, ColUpper, u"30"_s);
        editCell(list, 1, ColSrchDesc, u"Low, band"_s);
        editCell(list, 2, ColLower, u"1000"_s); // refused: the old value stays
        QVERIFY(m_prompts->messages().value(0).text.contains(u"25 to 956 MHz"_s));
        QCOMPARE(cells(list, 0, {1, 2}), QStringList({"25.000000", "30.000000"}));
        QCOMPARE(cell(list, 2, ColLower), u"29.700000"_s);
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Searches[1].Upper, 30000000.0);
        QCOMPARE(next->Profiles[0].Searches[2].Desc, u"Low band"_s);
        QCOMPARE(next->Profiles[0].Searches[3].Lower, 29700000.0);
    }

    void popUpCommands_data() {
        QTest::addColumn<bool>("allChannels"); // channel 20 of bank 1, or channel 200
        QTest::newRow("bank list") << false;
        QTest::newRow("all channels") << true;
    }
    void popUpCommands() {
        QFETCH(bool, allChannels);
        const int row = allChannels ? 199 : 19, bank = allChannels ? 10 : 1, slot = 20;
        MainForm& form = startSaved();
        QTableWidget* view = form.ChnlsLv();
        if (allChannels) {
            trigger("ShowAllChanMenuItem");
            view = form.ChanLV();
        }
        const ChannelRec& rec = prof().Banks[bank].Chans[slot];
        prof().Banks[bank].Chans[slot].Desc = u"Mine"_s;
        rightClickRow(view, row, "ClearSelectedMenuItem");
        QCOMPARE(QStringList({FreqToString(rec.Freq), rec.Desc, BoolToString(rec.Lockout)}),
                 QStringList({"000.000000", "Edit-Me", "True"}));
        QCOMPARE(cell(view, row, ColDesc), u"Edit-Me"_s);
        rightClickRow(view, row, "UseDefaultsMenuItem");
        QCOMPARE(rec.Desc, u"Chan #"_s + Num3(ChannelNumber(bank, slot)));
        // Both are edits: the bank is marked, the caption shows it, each is one undo step.
        QVERIFY(prof().Banks[bank].Changed);
        QVERIFY(form.windowTitle().contains(u'*'));
        trigger("UndoMenuItem");
        QCOMPARE(rec.Desc, u"Edit-Me"_s);
        trigger("UndoMenuItem");
        QCOMPARE(rec.Desc, u"Mine"_s);
    }

    void rename_data() {
        QTest::addColumn<int>("profile");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("names"); // typed name|old file|new file, in the data folder
        QTest::newRow("bank, bad characters refused")
            << 0 << 2 << "Ma.ri/ne|Banks/Bank03.BKE|Banks/Marine.BKE";
        QTest::newRow("search limits") << 0 << 10 << "Coast|Banks/SrchBank00.SKE|Banks/Coast.SKE";
        QTest::newRow("profile") << 1 << -1 << "Club|Profile01.ini|Club.ini";
        QTest::newRow("bank onto an existing file") << 0 << 0 << "Bank02||";
    }
    void rename() {
        QFETCH(int, profile);
        QFETCH(int, tab);
        QFETCH(QString, names);
        const QString typed = names.section(u'|', 0, 0), oldFile = names.section(u'|', 1, 1),
                      newFile = names.section(u'|', 2);
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
                     u"Can NOT Rename File, Destination May Exist Already!!!"_s);
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
            QCOMPARE(form.windowTitle(), u"Kestrel Manager [Club]"_s);
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
        const QString m = u"Mine"_s, e = u"Edit-Me"_s;
        const int yes = int(Answer::Yes), no = int(Answer::No);
        QTest::newRow("clear all banks, no")
            << "ClearBanksMenuItem" << 1 << no << QStringList{m, m, m};
        QTest::newRow("clear current bank")
            << "ClearCurrBankMenuItem" << 1 << yes << QStringList{e, m, m};
        QTest::newRow("set factory defaults")
            << "SetFactoryMenuItem" << 4 << yes << QStringList{"Chan #021", "Chan #100", m};
        QTest::newRow("clear search limits")
            << "ClearSearchMenuItem" << 10 << yes << QStringList{m, m, e};
    }
    void editCommands() {
        QFETCH(QString, item);
        QFETCH(int, tab);
        QFETCH(int, answer);
        QFETCH(QStringList, after);
        MainForm& form = startSaved();
        ProfileRec& p = prof();
        p.Banks[2].Chans[1].Desc = p.Banks[5].Chans[20].Desc = p.Searches[3].Desc = "Mine";
        form.refreshLists();
        clickBankTab(tab);
        m_prompts->queueAnswer(Answer(answer));
        trigger(item);
        QCOMPARE(m_prompts->messages().size(), 1);
        const ScriptedPrompts::Message& msg = m_prompts->messages().first();
        QCOMPARE(msg.text, QStringLiteral("This will ERASE Your Current Settings!\nAre You SURE "
                                          "You Want To Proceed???"));
        QVERIFY(msg.icon == Icon::Exclamation && msg.buttons == Buttons::YesNoDefaultNo);
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

    // Save Bank writes the bank at once and clears its flag; a later clear marks it again, so
    // closing writes it with the profile's settings and search files. An untouched profile is
    // not written.
    void saveBankThenClosing() {
        MainForm& form = startSaved();
        editCell(form.ChnlsLv(), 0, ColDesc, u"Saved now"_s);
        trigger("SaveBankMenuItem");
        QVERIFY(readFile(bankPath("Bank01")).contains("Saved now"));
        QVERIFY(!prof().Banks[1].Changed && prof().Changed);
        const QByteArray saved = readFile(bankPath("Bank01"));
        rightClickRow(form.ChnlsLv(), 1, "ClearSelectedMenuItem");
        QFile::remove(m_ctx->searchPath(u"SrchBank00"_s));
        QFile::remove(m_ctx->settingsPath(u"Main"_s));
        QFile::remove(m_ctx->settingsPath(u"Profile04"_s));
        closeForm();
        QVERIFY(readFile(bankPath("Bank01")) != saved);
        QVERIFY(readFile(bankPath("Bank01")).contains("Edit-Me"));
        QVERIFY(File_Exists(m_ctx->searchPath(u"SrchBank00"_s)));
        QVERIFY(File_Exists(m_ctx->settingsPath(u"Main"_s)));
        QVERIFY(!File_Exists(m_ctx->settingsPath(u"Profile04"_s)));
    }

    void fileDialogsCancelled_data() {
        QTest::addColumn<QString>("options"); // item|title|folder|pattern|preset
        QTest::newRow("save profile as") << "SaveProfileAsMenuItem|Save Profile As||*.ini|Main.ini";
        QTest::newRow("load bank") << "LoadBankMenuItem|Load Bank|Banks/|*.BKE|*.BKE";
        QTest::newRow("save bank as")
            << "SaveBankAsMenuItem|Save Bank As|Banks/|*.BKE|Untitled.BKE";
        QTest::newRow("load search") << "LoadSearchMenuItem|Load Search|Banks/|*.SKE|*.SKE";
    }
    void fileDialogsCancelled() {
        QFETCH(QString, options);
        const QString item = options.section(u'|', 0, 0);
        MainForm& form = startSaved();
        clickBankTab(item.contains(u"Search"_s) ? 10 : 0);
        const auto before = kestrel::test::snapshotTree(m_dir->path());
        trigger(item);
        QCOMPARE(m_prompts->dialogs().size(), 1);
        const FileDialogOptions& d = m_prompts->dialogs().first();
        QCOMPARE(QStringList({item, d.title, d.startDir, d.pattern, d.presetName}).join('|'),
                 options.replace('|' + u"Banks/"_s, '|' + m_ctx->banksDir() + '/')
                     .replace(u"||"_s, '|' + m_dir->path() + "/|"));
        QVERIFY(m_prompts->messages().isEmpty() && !prof().Changed);
        QCOMPARE(form.windowTitle(), u"Kestrel Manager [Main]"_s);
        QCOMPARE(kestrel::test::snapshotTree(m_dir->path()), before);
    }

    void bankThroughDialogs() {
        MainForm& form = startSaved();
        clickProfileTab(2);
        m_prompts->queueFile(bankPath(u"Air.Band"_s));
        trigger("SaveBankAsMenuItem"); // bank 21, under a name with a dot
        QCOMPARE(form.BankTab()->tabText(0), u"Air"_s);
        clickBankTab(1);
        m_prompts->queueFile(bankPath(u"Air.Band"_s));
        trigger("LoadBankMenuItem");
        QCOMPARE(form.BankTab()->tabText(1), u"Air"_s);
        QCOMPARE(form.BankTxt()->text(), u"Air"_s);
        QCOMPARE(cell(form.ChnlsLv(), 0, ColDesc), u"Chan #001"_s); // bank 21's
        QVERIFY(prof(2).Banks[2].Changed && prof(2).Changed && prof(0).Changed);
        closeForm();
        const auto next = reloaded();
        QCOMPARE(next->Profiles[2].Banks[2].FileName, u"Air"_s);
        QCOMPARE(next->Profiles[2].Banks[2].Chans[1].Desc, u"Chan #001"_s);
    }

    void profileThroughDialogs() {
        MainForm& form = startSaved();
        clickProfileTab(2);
        clickBankTab(4);
        editCell(form.ChnlsLv(), 0, ColDesc, u"Two"_s);
        const QString travel = m_dir->filePath(u"Travel.ini"_s);
        m_prompts->queueFile(travel);
        trigger("SaveProfileAsMenuItem");
        QCOMPARE(form.windowTitle(), u"Kestrel Manager [Travel]"_s);
        QCOMPARE(prof(2).Name, u"Profile02"_s);
        QVERIFY(readFile(travel).contains("Bank05=Bank25"));
        clickProfileTab(5);
        m_prompts->queueFile(travel);
        trigger("LoadProfileMenuItem");
        QCOMPARE(form.ProfileTab()->tabText(5), u"Travel"_s);
        QCOMPARE(form.BankTab()->tabText(4), u"Bank25"_s);
        QCOMPARE(prof(5).Banks[5].Chans[1].Desc, u"Two"_s);
        closeForm();
        QVERIFY(readFile(m_ctx->profileListPath()).contains("Profile05=Travel"));
    }

    // The real dialogs behind the prompts seam: what they show and what they report back.
    void realDialogs() {
        GuiPrompts prompts;
        QString seen;
        whenModal([&](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            seen = box->windowTitle() + '|' + box->text() + '|' + QString::number(box->icon());
            box->button(QMessageBox::No)->click();
        });
        QCOMPARE(prompts.message(u"Are You SURE?"_s, u"Kestrel Manager"_s, Icon::Exclamation,
                                 Buttons::YesNo),
                 Answer::No);
        QCOMPARE(seen, u"Kestrel Manager|Are You SURE?|%1"_s.arg(QMessageBox::Warning));

        QTemporaryDir dir;
        kestrel::test::writeFile(dir.filePath(u"Air.BKE"_s), "[BankInfo]\n");
        const FileDialogOptions open{u"Load Bank"_s, dir.path() + QLatin1Char('/'), u"*.BKE"_s,
                                     u"BKE"_s, u"*.BKE"_s};
        whenModal([&](QWidget* w) {
            auto* dialog = qobject_cast<QFileDialog*>(w);
            seen = dialog->windowTitle() + '|' + dialog->directory().absolutePath() + '|' +
                   dialog->nameFilters().join(',');
            // Typed as a user would: selectFile() leaves a focused name field as it is.
            dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"Air.BKE"_s);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        QCOMPARE(prompts.openFile(open), std::optional(dir.filePath(u"Air.BKE"_s)));
        QCOMPARE(seen, u"Load Bank|%1|*.BKE"_s.arg(QDir(dir.path()).absolutePath()));
        whenModal([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
        QVERIFY(!prompts.openFile(open).has_value());
    }

    void shortcuts_data() {
        QTest::addColumn<QKeySequence>("keys");
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("tab");
        const auto row = [](const char* name, QKeySequence keys, MenuId id, int tab = 0) {
            QTest::newRow(name) << keys << int(id) << tab;
        };
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
        row("select all", QKeySequence::SelectAll, MenuId::SelectAll);
        row("delete", QKeySequence::Delete, MenuId::ClearSelected);
        row("previous bank", QKeySequence(Qt::CTRL | Qt::Key_PageUp), MenuId::PreviousBank);
    }
    void shortcuts() {
        QFETCH(QKeySequence, keys);
        QFETCH(int, item);
        QFETCH(int, tab);
        MainForm& form = startSaved();
        form.BankTab()->setCurrentIndex(tab);
        form.activeList()->setFocus();
        QSignalSpy spy(form.menuItem(MenuId(item)), &QAction::triggered);
        if (MenuId(item) == MenuId::PrintBank) // the print preview
            whenModal([](QWidget* w) { w->close(); });
        press(keys);
        QCOMPARE(spy.count(), 1);
    }

    // Bank keys, and the list edited without the mouse: F2 opens the cell, Enter commits.
    void keyboardOnly() {
        MainForm& form = startSaved();
        QTableWidget* list = form.ChnlsLv();
        list->setFocus();
        press(QKeySequence(Qt::CTRL | Qt::Key_3));
        QCOMPARE(m_ctx->CurBank, 3);
        press(QKeySequence(Qt::CTRL | Qt::Key_0));
        QCOMPARE(m_ctx->CurBank, 10);
        press(QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(m_ctx->CurBank, SearchTab);
        press(QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(m_ctx->CurBank, 1);
        QCOMPARE(QApplication::focusWidget(), list);
        list->setCurrentCell(4, ColFreq);
        QTest::keyClick(list, Qt::Key_F2);
        QVERIFY(form.FreqTxt()->hasFocus());
        QTest::keyClicks(form.FreqTxt(), u"146.52"_s);
        QTest::keyClick(form.FreqTxt(), Qt::Key_Return);
        QCOMPARE(prof().Banks[1].Chans[5].Freq, 146'520'000.0);
        QCOMPARE(QApplication::focusWidget(), list);
    }

    void copyThenPasteIntoAnotherBank() {
        MainForm& form = startSaved();
        const auto& banks = prof().Banks;
        for (int slot = 3; slot <= 5; ++slot)
            prof().Banks[1].Chans[slot] = {146'500'000.0 + slot * 12'500, u"Row %1"_s.arg(slot),
                                           slot == 4, slot == 5, slot == 3};
        form.ChnlsLv()->setFocus();
        selectRows(form.ChnlsLv(), 2, 4);
        press(QKeySequence::Copy);
        const QStringList lines =
            QGuiApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0], u"146.537500\tRow 3\tFalse\tTrue\tFalse"_s);

        press(QKeySequence(Qt::CTRL | Qt::Key_7));
        selectRows(form.ChnlsLv(), 9, 9);
        press(QKeySequence::Paste);
        for (int k = 0; k < 3; ++k) {
            QCOMPARE(ChannelLine(banks[7].Chans[10 + k]), ChannelLine(banks[1].Chans[3 + k]));
            QCOMPARE(cell(form.ChnlsLv(), 9 + k, ColDesc), banks[1].Chans[3 + k].Desc);
        }
        QVERIFY(banks[7].Changed);
        QCOMPARE(banks[7].Chans[13].Desc, u"Chan #133"_s); // the row after the pasted ones
    }

    // A paste is refused as a whole: with no room for every row no slot changes. (Bad rows are
    // refused by the clipboard parser, tst_cliprows.)
    void pasteRefused() {
        MainForm& form = startSaved();
        const auto before = prof().Banks[1].Chans;
        QGuiApplication::clipboard()->setText(u"146.52\n147.52"_s);
        form.ChnlsLv()->setFocus();
        selectRows(form.ChnlsLv(), 19, 19);
        press(QKeySequence::Paste);
        QVERIFY(prof().Banks[1].Chans == before);
        QVERIFY(!prof().Banks[1].Changed);
        QCOMPARE(m_prompts->messages().size(), 1);
        QVERIFY2(m_prompts->messages()[0].text.contains(u"room for 1"_s),
                 qPrintable(m_prompts->messages()[0].text));
    }

    // Space flips a switch; the caption marks the unsaved change.
    void unsavedMark() {
        MainForm& form = startSaved();
        QCOMPARE(form.windowTitle(), u"Kestrel Manager [Main]"_s);
        form.ChnlsLv()->setFocus();
        form.ChnlsLv()->setCurrentCell(0, ColDelay);
        QTest::keyClick(form.ChnlsLv(), Qt::Key_Space);
        QVERIFY(prof().Banks[1].Chans[1].Delay);
        QCOMPARE(cell(form.ChnlsLv(), 0, ColDelay), u"True"_s);
        QCOMPARE(form.windowTitle(), u"Kestrel Manager [Main*]"_s);
        // Another profile has nothing unsaved; back on Main the mark is there again.
        clickProfileTab(2);
        QVERIFY(!form.windowTitle().contains('*'));
        clickProfileTab(0);
        QVERIFY(form.windowTitle().endsWith(u"*]"_s));
        press(QKeySequence::Save);
        QCOMPARE(form.windowTitle(), u"Kestrel Manager [Main]"_s);
    }

    // A cell edit undone and redone by the keys or from the Edit History list: the step's
    // profile and bank are shown first, and closing after it was undone writes no file. Every
    // other kind of step is undone in tst_history.
    void undoneInOneStep_data() {
        QTest::addColumn<int>("profile"); // where the channel is edited
        QTest::addColumn<int>("bank");
        QTest::addColumn<QString>("undo");
        QTest::addColumn<QString>("redo");
        QTest::addColumn<QString>("caption"); // of the Undo item after the change
        QTest::newRow("in place") << 0 << 1 << "Ctrl+Z"
                                  << "Ctrl+Shift+Z"
                                  << "&Undo Edit Frequency of Channel 5";
        // Undone while profile 1's search ranges are shown.
        QTest::newRow("other profile and bank") << 2 << 4 << "history"
                                                << "Ctrl+Y"
                                                << "&Undo Edit Frequency of Channel 65";
    }
    void undoneInOneStep() {
        QFETCH(int, profile);
        QFETCH(int, bank);
        QFETCH(QString, undo);
        QFETCH(QString, redo);
        MainForm& form = startSaved();
        const auto files = kestrel::test::snapshotTree(m_dir->path());
        QAction* undoItem = form.menuItem(u"UndoMenuItem"_s);
        QVERIFY(!undoItem->isEnabled());
        clickProfileTab(profile);
        clickBankTab(bank - 1);
        const QStringList before = imageLines(m_ctx->Profiles);
        const QString row5 = cell(form.ChnlsLv(), 4, ColFreq);
        editCell(form.ChnlsLv(), 4, ColFreq, u"146.52"_s);
        const QStringList after = imageLines(m_ctx->Profiles);
        QCOMPARE(HistoryOf(*m_ctx).stack().count(), 1); // one step, so the edit changed something
        QTEST(undoItem->text(), "caption");

        if (profile != 0) {
            clickProfileTab(1);
            clickBankTab(10);
        }
        if (undo == u"history") { // the list's first row: before any change
            trigger(u"EditHistoryMenuItem"_s);
            auto* view = form.findChild<QUndoView*>();
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                              view->visualRect(view->model()->index(0, 0)).center());
        } else {
            press(QKeySequence(undo));
        }
        QCOMPARE(imageLines(m_ctx->Profiles), before); // records and Changed flags
        QCOMPARE(m_ctx->CurProfile, profile);
        QCOMPARE(form.BankTab()->currentIndex(), bank - 1);
        QCOMPARE(cell(form.ChnlsLv(), 4, ColFreq), row5);
        QVERIFY(!undoItem->isEnabled());
        QTest::keySequence(&form, QKeySequence(redo));
        QCOMPARE(imageLines(m_ctx->Profiles), after);
        QVERIFY(cell(form.ChnlsLv(), 4, ColFreq) != row5);

        HistoryOf(*m_ctx).stack().undo();
        closeForm();
        QCOMPARE(kestrel::test::changedFiles(files, kestrel::test::snapshotTree(m_dir->path())),
                 QStringList());
    }
};

QTEST_MAIN(TestMainForm)
#include "test_mainform.moc"
