// SPDX-License-Identifier: GPL-3.0-or-later
// MainForm: the menu bar, the lists' pop-up menu, and the File, Edit, View and Help commands.
#include "core/filereport.h"
#include "inplaceedit.h"
#include "mainform.h"

#include <QKeySequence>
#include <QMenuBar>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableWidget>

namespace kestrel {

namespace {

// Items whose windows are provided by other parts of the program; they stay disabled until
// those parts wire them in (MainForm::wireMenuItem).
const MenuId kUnwiredItems[] = {
    MenuId::CsvImport,     MenuId::CsvExport,      MenuId::WebImport,      MenuId::OrganizeBanks,
    MenuId::OrganizeChans, MenuId::CableType,      MenuId::ComPort,        MenuId::DebugComm,
    MenuId::PrintBank,     MenuId::UploadAllBanks, MenuId::UploadCurrBank, MenuId::UploadSrchBank,
    MenuId::DisplayErrors, MenuId::DatabaseAddress};

// The desktop's own keys for a standard command; where the desktop names none (a bare window
// manager has no Quit key) the usual one.
QKeySequence standardKey(QKeySequence::StandardKey key, const QKeySequence& usual) {
    const QList<QKeySequence> bindings = QKeySequence::keyBindings(key);
    return bindings.isEmpty() ? usual : bindings.constFirst();
}

} // namespace

QAction* MainForm::addItem(QMenu* menu, const QString& caption, MenuId id,
                           const QKeySequence& shortcut) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(MenuItemName(id));
    if (!shortcut.isEmpty())
        action->setShortcut(shortcut);
    m_items[size_t(id)] = action;
    return action;
}

void MainForm::buildMenus() {
    QMenuBar* bar = menuBar();

    QMenu* file = bar->addMenu(tr("&File"));
    const auto fileCommand = [this](QMenu* menu, const QString& caption, MenuId id,
                                    FileCommand command, const QKeySequence& keys = {}) {
        connect(addItem(menu, caption, id, keys), &QAction::triggered, this,
                [this, command] { runFileCommand(command); });
    };
    fileCommand(file, tr("Load Profile"), MenuId::LoadProfile, FileCommand::LoadProfile);
    connect(addItem(file, tr("Save Profile"), MenuId::SaveProfile, QKeySequence::Save),
            &QAction::triggered, this, [this] {
                runSaveCommand("MainForm -> SaveProfileMenuItem",
                               [this] { SaveProfile(m_ctx, m_shown); });
            });
    fileCommand(file, tr("Save Profile As"), MenuId::SaveProfileAs, FileCommand::SaveProfileAs,
                QKeySequence::SaveAs);
    file->addSeparator();
    // Open loads the file of what is shown: a bank file on a bank tab, search limits on the
    // search tab (only one of the two items is enabled at a time).
    fileCommand(file, tr("Load Bank"), MenuId::LoadBank, FileCommand::LoadBank, QKeySequence::Open);
    connect(addItem(file, tr("Save Bank"), MenuId::SaveBank), &QAction::triggered, this, [this] {
        runSaveCommand("MainForm -> SaveBankMenuItem", [this] {
            if (m_ctx.CurBank >= 1 && m_ctx.CurBank <= BankCount)
                SaveBank(m_ctx);
        });
    });
    fileCommand(file, tr("Save Bank As"), MenuId::SaveBankAs, FileCommand::SaveBankAs);
    file->addSeparator();
    fileCommand(file, tr("Load Search Limits"), MenuId::LoadSearch, FileCommand::LoadSearch,
                QKeySequence::Open);
    connect(addItem(file, tr("Save Search Limits"), MenuId::SaveSearch), &QAction::triggered, this,
            [this] {
                runSaveCommand("MainForm -> SaveSearchMenuItem",
                               [this] { SaveSearch(m_ctx, m_shown); });
            });
    fileCommand(file, tr("Save Search Limits As"), MenuId::SaveSearchAs, FileCommand::SaveSearchAs);
    file->addSeparator();
    addItem(file, tr("CS&V Import"), MenuId::CsvImport)->setCheckable(true);
    addItem(file, tr("CSV &Export..."), MenuId::CsvExport);
    addItem(file, tr("&Web Import"), MenuId::WebImport);
    file->addSeparator();
    QAction* exit = addItem(file, tr("E&xit"), MenuId::Exit,
                            standardKey(QKeySequence::Quit, QKeySequence(Qt::CTRL | Qt::Key_Q)));
    exit->setMenuRole(QAction::QuitRole);
    connect(exit, &QAction::triggered, this, &QWidget::close);

    QMenu* edit = bar->addMenu(tr("&Edit"));
    edit->setObjectName(QStringLiteral("EditMenu"));
    connect(addItem(edit, tr("Cu&t"), MenuId::Cut, QKeySequence::Cut), &QAction::triggered, this,
            [this] { clipboardCommand(MenuId::Cut); });
    connect(addItem(edit, tr("&Copy"), MenuId::Copy, QKeySequence::Copy), &QAction::triggered, this,
            [this] { clipboardCommand(MenuId::Copy); });
    connect(addItem(edit, tr("&Paste"), MenuId::Paste, QKeySequence::Paste), &QAction::triggered,
            this, [this] { clipboardCommand(MenuId::Paste); });
    connect(addItem(edit, tr("Select &All"), MenuId::SelectAll, QKeySequence::SelectAll),
            &QAction::triggered, this, [this] { clipboardCommand(MenuId::SelectAll); });
    edit->addSeparator();
    // The lists' pop-up menu shows the same two items.
    connect(
        addItem(edit, tr("Clear Selected Entries"), MenuId::ClearSelected, QKeySequence::Delete),
        &QAction::triggered, this, [this] { popUpCommand(false); });
    connect(addItem(edit, tr("Set Selected Entries to Default"), MenuId::UseDefaults),
            &QAction::triggered, this, [this] { popUpCommand(true); });
    edit->addSeparator();
    const auto editCommand = [this](QMenu* menu, const QString& caption, MenuId id,
                                    EditCommand command, const char* label) {
        connect(addItem(menu, caption, id), &QAction::triggered, this,
                [this, command, label] { runEditCommand(command, label); });
    };
    editCommand(edit, tr("Clear Current Bank"), MenuId::ClearCurrBank,
                EditCommand::ClearCurrentBank, "MainForm -> ClearCurrBankMenuItem");
    editCommand(edit, tr("Clear Search Limits"), MenuId::ClearSearch,
                EditCommand::ClearSearchLimits, "MainForm -> ClearSearchMenuItem");
    editCommand(edit, tr("Set Factory Defaults"), MenuId::SetFactory,
                EditCommand::SetFactoryDefaults, "MainForm -> SetFactoryMenuItem");
    editCommand(edit, tr("Set Default Bank"), MenuId::DefaultBank, EditCommand::SetDefaultBank,
                "MainForm -> DefaultBankMenuItem");
    editCommand(edit, tr("Set Default Limits"), MenuId::DefaultLimits,
                EditCommand::SetDefaultLimits, "MainForm -> DefaultLimitsMenuItem");
    edit->addSeparator();
    addItem(edit, tr("Organize Banks"), MenuId::OrganizeBanks);
    addItem(edit, tr("Organize Channels"), MenuId::OrganizeChans);
    // Emptying all ten banks sits apart from the everyday items, where it is not hit by a slip.
    edit->addSeparator();
    editCommand(edit, tr("Clear ALL Banks"), MenuId::ClearBanks, EditCommand::ClearAllBanks,
                "MainForm -> ClearBanksMenuItem");

    QMenu* view = bar->addMenu(tr("&View"));
    connect(addItem(view, tr("Show &Scan Banks"), MenuId::ShowScanBanks), &QAction::triggered, this,
            [this] { showPanel(ScanBanksPanel); });
    connect(addItem(view, tr("Show Service &Freqs"), MenuId::ShowService), &QAction::triggered,
            this, [this] { showPanel(ServicePanel); });
    connect(addItem(view, tr("Show &All Channels"), MenuId::ShowAllChan), &QAction::triggered, this,
            [this] { showPanel(ChannelListPanel); });
    view->addSeparator();
    connect(addItem(view, tr("&Next Bank"), MenuId::NextBank,
                    QKeySequence(Qt::CTRL | Qt::Key_PageDown)),
            &QAction::triggered, this, [this] { stepBankTab(1); });
    connect(addItem(view, tr("&Previous Bank"), MenuId::PreviousBank,
                    QKeySequence(Qt::CTRL | Qt::Key_PageUp)),
            &QAction::triggered, this, [this] { stepBankTab(-1); });
    // Ctrl+1 .. Ctrl+9 and Ctrl+0 show banks 1 to 10.
    for (int b = 1; b <= BankCount; ++b) {
        auto* go = new QAction(this);
        go->setObjectName(QStringLiteral("GoToBank%1").arg(b));
        go->setShortcut(QKeySequence(Qt::CTRL | (Qt::Key_0 + b % 10)));
        connect(go, &QAction::triggered, this, [this, b] { stepBankTab(0, b); });
        addAction(go);
        m_bankKeys[size_t(b - 1)] = go;
    }

    QMenu* options = bar->addMenu(tr("&Options"));
    addItem(options, tr("Cable &Type"), MenuId::CableType)->setCheckable(true);
    addItem(options, tr("CO&M Port"), MenuId::ComPort);
    QAction* debug = addItem(options, tr("&Debug Comm"), MenuId::DebugComm);
    debug->setCheckable(true);
    debug->setVisible(false);
    addItem(options, tr("&Database Address"), MenuId::DatabaseAddress);
    addLanguageMenu(options);
    options->addSeparator();
    addItem(options, tr("&Print Current Bank"), MenuId::PrintBank, QKeySequence::Print);

    QMenu* scanner = bar->addMenu(tr("&Scanner"));
    addItem(scanner, tr("&Upload All Banks"), MenuId::UploadAllBanks);
    addItem(scanner, tr("Upload &Current Bank"), MenuId::UploadCurrBank);
    addItem(scanner, tr("Upload Sea&rch Bank"), MenuId::UploadSrchBank);

    QMenu* help = bar->addMenu(tr("&Help"));
    // The home page carries the program's help, so the desktop's help key opens it.
    connect(addItem(help, tr("@ &Home Page"), MenuId::HomePage, QKeySequence::HelpContents),
            &QAction::triggered, this,
            [this] { m_openUrl(QUrl(QStringLiteral(KESTREL_HOMEPAGE))); });
    connect(addItem(help, tr("@ &RadioReference.com"), MenuId::DBaseSite), &QAction::triggered,
            this, [this] { m_openUrl(QUrl(QStringLiteral(KESTREL_DBASE_SITE))); });
    addItem(help, tr("Show Possible Comm &Errors"), MenuId::DisplayErrors)->setCheckable(true);
    help->addSeparator();
    QAction* about = addItem(help, tr("&About"), MenuId::About);
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &MainForm::showAbout);

    for (const MenuId id : kUnwiredItems) {
        QAction* a = menuItem(id);
        a->setProperty("kestrelUnwired", true);
        a->setEnabled(false);
    }

    m_popUpMenu = new QMenu(this);
    m_popUpMenu->setObjectName(QStringLiteral("PopUpMenu1"));
    m_popUpMenu->addAction(menuItem(MenuId::ClearSelected));
    m_popUpMenu->addAction(menuItem(MenuId::UseDefaults));

    installHistory(edit, view);
}

void MainForm::runFileCommand(FileCommand command) {
    static const char* const labels[] = {
        "MainForm -> LoadProfileMenuItem", "MainForm -> SaveProfileAsMenuItem",
        "MainForm -> LoadBankMenuItem",    "MainForm -> SaveBankAsMenuItem",
        "MainForm -> LoadSearchMenuItem",  "MainForm -> SaveSearchAsMenuItem"};
    finishCellEdit();
    Trap(m_ctx.errors, labels[int(command)], [&](Stmt& s) {
        const bool bankCommand =
            command == FileCommand::LoadBank || command == FileCommand::SaveBankAs;
        const bool onBank = m_ctx.CurBank >= 1 && m_ctx.CurBank <= BankCount;
        if (bankCommand && !onBank)
            return;
        s.at(1);
        const FileDialogOptions options = FileDialogFor(command, m_ctx, m_shown);
        const std::optional<QString> path = IsOpenDialog(command)
                                                ? m_ctx.prompts().openFile(options)
                                                : m_ctx.prompts().saveFile(options);
        if (!path || path->isEmpty())
            return;
        s.at(2);
        switch (command) {
        case FileCommand::LoadProfile:
            LoadProfileFrom(m_ctx, m_ctx.CurProfile, m_shown, *path);
            afterProfileLoaded();
            break;
        case FileCommand::SaveProfileAs:
            SaveProfileAs(m_ctx, m_shown, *path);
            m_profTxt->setText(m_shown.profName);
            m_profTxt->setPending(false);
            updateCaption();
            break;
        case FileCommand::LoadBank:
            LoadBankFrom(m_ctx, m_ctx.CurProfile, m_ctx.CurBank, *path);
            m_bankTab->setTabText(m_ctx.CurBank - 1, m_ctx.cur().Banks[m_ctx.CurBank].FileName);
            RefreshBank(m_ctx.CurBank);
            FillChanLV();
            break;
        case FileCommand::SaveBankAs:
            SaveBankAs(m_ctx, *path);
            m_bankTab->setTabText(m_ctx.CurBank - 1, m_ctx.cur().Banks[m_ctx.CurBank].FileName);
            RefreshBank(m_ctx.CurBank);
            break;
        case FileCommand::LoadSearch:
            LoadSearchFrom(m_ctx, m_ctx.CurProfile, m_shown, *path);
            m_bankTab->setTabText(SearchTab - 1, m_shown.srchName);
            RefreshSearch();
            break;
        case FileCommand::SaveSearchAs:
            SaveSearchAs(m_ctx, m_shown, *path);
            m_bankTab->setTabText(SearchTab - 1, m_shown.srchName);
            if (m_ctx.CurBank == SearchTab)
                RefreshSearch();
            break;
        }
    });
    updateCaption();
    ReportLoadProblems(m_ctx);
    ReportWriteFailures(m_ctx);
}

void MainForm::afterProfileLoaded() {
    {
        const QSignalBlocker block(m_profTxt);
        m_profTxt->setText(m_shown.profName);
        m_profTxt->setPending(false);
    }
    m_profileTab->setTabText(m_ctx.CurProfile, m_shown.profName);
    updateCaption();
    captionBankTabs();
    // The loaded profile is shown from its first bank.
    if (m_bankTab->currentIndex() != 0) {
        m_bankTab->setCurrentIndex(0); // runs the bank switch
    } else {
        m_ctx.CurBank = 1;
        SetMenus(m_ctx.CurBank);
    }
    refreshLists();
}

void MainForm::runSaveCommand(const char* label, const std::function<void()>& save) {
    finishCellEdit();
    Trap(m_ctx.errors, label, [&] { save(); });
    updateCaption();
    ReportWriteFailures(m_ctx);
}

void MainForm::runEditCommand(EditCommand command, const char* label) {
    finishCellEdit();
    Trap(m_ctx.errors, label, [&] {
        const bool search = EditCommandTouchesSearch(command);
        const bool onBank = m_ctx.CurBank >= 1 && m_ctx.CurBank <= BankCount;
        if (!search && !onBank)
            return;
        if (search && onBank)
            return;
        const Answer answer =
            m_ctx.prompts().message(EraseConfirmText(), QStringLiteral("Kestrel Manager"),
                                    Icon::Exclamation, Buttons::YesNoDefaultNo);
        if (answer != Answer::Yes)
            return;
        ApplyEditCommand(m_ctx, m_ctx.CurProfile, m_ctx.CurBank, command);
        refreshLists();
    });
    updateCaption();
}

void MainForm::showPanel(Panel panel) {
    static const char* const labels[] = {"MainForm -> ShowScanBanksMenu",
                                         "MainForm -> ShowAllChanMenuItem",
                                         "MainForm -> ShowServiceMenuItem"};
    finishCellEdit();
    Trap(m_ctx.errors, labels[panel], [&] {
        m_panels->setCurrentIndex(panel);
        if (panel == ChannelListPanel)
            FillChanLV();
        menuItem(MenuId::ShowScanBanks)->setEnabled(panel != ScanBanksPanel);
        menuItem(MenuId::ShowAllChan)->setEnabled(panel != ChannelListPanel);
        menuItem(MenuId::ShowService)->setEnabled(panel != ServicePanel);
    });
}

void MainForm::showAbout() {
    m_ctx.prompts().message(tr("Kestrel Manager\nVersion %1\n\nPrepares the memory of "
                               "a handheld programmable scanner and uploads it over "
                               "a serial cable.")
                                .arg(QStringLiteral(KESTREL_VERSION)),
                            tr("About Kestrel Manager"), Icon::Information, Buttons::Ok);
}

} // namespace kestrel
