// SPDX-License-Identifier: GPL-3.0-or-later
// MainForm: the menu bar, the lists' pop-up menu, and the File, Edit, View and Help commands.
#include "core/filereport.h"
#include "inplaceedit.h"
#include "mainform.h"

#include <QMenuBar>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableWidget>

namespace kestrel {

namespace {

// Items whose windows are provided by other parts of the program; they stay disabled until
// those parts wire them in (MainForm::wireMenuItem).
const char* const kUnwiredItems[] = {
    "CsvImportMenuItem",      "CsvExportMenuItem",      "WebImportMenuItem",
    "OrganizeBanksMenuItem",  "OrganizeChansMenuItem",  "CableTypeMenuItem",
    "ComPortMenuItem",        "DebugCommMenuItem",      "PrintBankMenuItem",
    "UploadAllBanksMenuItem", "UploadCurrBankMenuItem", "UploadSrchBankMenuItem",
    "DisplayErrorsMenuItem",  "DatabaseAddressMenuItem"};

// Other names under which the wiring code may ask for an item.
const struct {
    const char* alias;
    const char* name;
} kAliases[] = {{"UploadAllMenuItem", "UploadAllBanksMenuItem"},
                {"UploadBankMenuItem", "UploadCurrBankMenuItem"},
                {"UploadSearchMenuItem", "UploadSrchBankMenuItem"},
                {"ShowCommErrorsMenuItem", "DisplayErrorsMenuItem"},
                {"OrganizeChannelsMenuItem", "OrganizeChansMenuItem"},
                {"ClearCurrentBankMenuItem", "ClearCurrBankMenuItem"}};

} // namespace

QAction* MainForm::addItem(QMenu* menu, const QString& caption, const char* name) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(QString::fromLatin1(name));
    m_items.insert(action->objectName(), action);
    return action;
}

void MainForm::buildMenus() {
    QMenuBar* bar = menuBar();

    QMenu* file = bar->addMenu(QStringLiteral("&File"));
    const auto fileCommand = [this](QMenu* menu, const QString& caption, const char* name,
                                    FileCommand command) {
        connect(addItem(menu, caption, name), &QAction::triggered, this,
                [this, command] { runFileCommand(command); });
    };
    fileCommand(file, QStringLiteral("Load Profile"), "LoadProfileMenuItem",
                FileCommand::LoadProfile);
    connect(addItem(file, QStringLiteral("Save Profile"), "SaveProfileMenuItem"),
            &QAction::triggered, this, [this] {
                runSaveCommand("MainForm -> SaveProfileMenuItem",
                               [this] { SaveProfile(m_ctx, m_shown); });
            });
    fileCommand(file, QStringLiteral("Save Profile As"), "SaveProfileAsMenuItem",
                FileCommand::SaveProfileAs);
    file->addSeparator();
    fileCommand(file, QStringLiteral("Load Bank"), "LoadBankMenuItem", FileCommand::LoadBank);
    connect(addItem(file, QStringLiteral("Save Bank"), "SaveBankMenuItem"), &QAction::triggered,
            this, [this] {
                runSaveCommand("MainForm -> SaveBankMenuItem", [this] {
                    if (m_ctx.CurBank >= 1 && m_ctx.CurBank <= BankCount)
                        SaveBank(m_ctx);
                });
            });
    fileCommand(file, QStringLiteral("Save Bank As"), "SaveBankAsMenuItem",
                FileCommand::SaveBankAs);
    file->addSeparator();
    fileCommand(file, QStringLiteral("Load Search Limits"), "LoadSearchMenuItem",
                FileCommand::LoadSearch);
    connect(addItem(file, QStringLiteral("Save Search Limits"), "SaveSearchMenuItem"),
            &QAction::triggered, this, [this] {
                runSaveCommand("MainForm -> SaveSearchMenuItem",
                               [this] { SaveSearch(m_ctx, m_shown); });
            });
    fileCommand(file, QStringLiteral("Save Search Limits As"), "SaveSearchAsMenuItem",
                FileCommand::SaveSearchAs);
    file->addSeparator();
    addItem(file, QStringLiteral("CS&V Import"), "CsvImportMenuItem")->setCheckable(true);
    addItem(file, QStringLiteral("CSV &Export..."), "CsvExportMenuItem");
    addItem(file, QStringLiteral("&Web Import"), "WebImportMenuItem");
    file->addSeparator();
    connect(addItem(file, QStringLiteral("E&xit"), "ExitMenuItem"), &QAction::triggered, this,
            &QWidget::close);

    QMenu* edit = bar->addMenu(QStringLiteral("&Edit"));
    const auto editCommand = [this](QMenu* menu, const QString& caption, const char* name,
                                    EditCommand command, const char* label) {
        connect(addItem(menu, caption, name), &QAction::triggered, this,
                [this, command, label] { runEditCommand(command, label); });
    };
    editCommand(edit, QStringLiteral("Clear ALL Banks"), "ClearBanksMenuItem",
                EditCommand::ClearAllBanks, "MainForm -> ClearBanksMenuItem");
    editCommand(edit, QStringLiteral("Clear Current Bank"), "ClearCurrBankMenuItem",
                EditCommand::ClearCurrentBank, "MainForm -> ClearCurrBankMenuItem");
    editCommand(edit, QStringLiteral("Clear Search Limits"), "ClearSearchMenuItem",
                EditCommand::ClearSearchLimits, "MainForm -> ClearSearchMenuItem");
    edit->addSeparator();
    editCommand(edit, QStringLiteral("Set Factory Defaults"), "SetFactoryMenuItem",
                EditCommand::SetFactoryDefaults, "MainForm -> SetFactoryMenuItem");
    editCommand(edit, QStringLiteral("Set Default Bank"), "DefaultBankMenuItem",
                EditCommand::SetDefaultBank, "MainForm -> DefaultBankMenuItem");
    editCommand(edit, QStringLiteral("Set Default Limits"), "DefaultLimitsMenuItem",
                EditCommand::SetDefaultLimits, "MainForm -> DefaultLimitsMenuItem");
    edit->addSeparator();
    addItem(edit, QStringLiteral("Organize Banks"), "OrganizeBanksMenuItem");
    addItem(edit, QStringLiteral("Organize Channels"), "OrganizeChansMenuItem");

    QMenu* view = bar->addMenu(QStringLiteral("&View"));
    connect(addItem(view, QStringLiteral("Show &Scan Banks"), "ShowScanBanksMenu"),
            &QAction::triggered, this, [this] { showPanel(ScanBanksPanel); });
    connect(addItem(view, QStringLiteral("Show Service &Freqs"), "ShowServiceMenuItem"),
            &QAction::triggered, this, [this] { showPanel(ServicePanel); });
    connect(addItem(view, QStringLiteral("Show &All Channels"), "ShowAllChanMenuItem"),
            &QAction::triggered, this, [this] { showPanel(ChannelListPanel); });

    QMenu* options = bar->addMenu(QStringLiteral("&Options"));
    addItem(options, QStringLiteral("Cable &Type"), "CableTypeMenuItem")->setCheckable(true);
    addItem(options, QStringLiteral("CO&M Port"), "ComPortMenuItem");
    QAction* debug = addItem(options, QStringLiteral("&Debug Comm"), "DebugCommMenuItem");
    debug->setCheckable(true);
    debug->setVisible(false);
    addItem(options, QStringLiteral("&Database Address"), "DatabaseAddressMenuItem");
    options->addSeparator();
    addItem(options, QStringLiteral("&Print Current Bank"), "PrintBankMenuItem");

    QMenu* scanner = bar->addMenu(QStringLiteral("&Scanner"));
    addItem(scanner, QStringLiteral("&Upload All Banks"), "UploadAllBanksMenuItem");
    addItem(scanner, QStringLiteral("Upload &Current Bank"), "UploadCurrBankMenuItem");
    addItem(scanner, QStringLiteral("Upload Sea&rch Bank"), "UploadSrchBankMenuItem");

    QMenu* help = bar->addMenu(QStringLiteral("&Help"));
    connect(addItem(help, QStringLiteral("@ &HomePage"), "HomePageMenuItem"), &QAction::triggered,
            this, [this] { m_openUrl(QUrl(QStringLiteral(KESTREL_HOMEPAGE))); });
    connect(addItem(help, QStringLiteral("@ &RadioReference.com"), "DBaseSiteMenuItem"),
            &QAction::triggered, this,
            [this] { m_openUrl(QUrl(QStringLiteral(KESTREL_DBASE_SITE))); });
    addItem(help, QStringLiteral("Show Possible Comm &Errors"), "DisplayErrorsMenuItem")
        ->setCheckable(true);
    help->addSeparator();
    connect(addItem(help, QStringLiteral("&About"), "AboutMenuItem"), &QAction::triggered, this,
            &MainForm::showAbout);

    for (const char* name : kUnwiredItems) {
        QAction* a = menuItem(QString::fromLatin1(name));
        a->setProperty("kestrelUnwired", true);
        a->setEnabled(false);
    }

    m_popUpMenu = new QMenu(this);
    m_popUpMenu->setObjectName(QStringLiteral("PopUpMenu1"));
    connect(addItem(m_popUpMenu, QStringLiteral("Clear Selected Entries"), "ClearSelectedMenuItem"),
            &QAction::triggered, this, [this] { popUpCommand(false); });
    connect(addItem(m_popUpMenu, QStringLiteral("Set Selected Entries to Default"),
                    "UseDefaultsMenuItem"),
            &QAction::triggered, this, [this] { popUpCommand(true); });

    for (const auto& a : kAliases)
        m_items.insert(QString::fromLatin1(a.alias), menuItem(QString::fromLatin1(a.name)));

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
                                    Icon::Exclamation, Buttons::YesNo);
        if (answer != Answer::Yes)
            return;
        ApplyEditCommand(m_ctx, m_ctx.CurProfile, m_ctx.CurBank, command);
        refreshLists();
    });
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
        menuItem(QStringLiteral("ShowScanBanksMenu"))->setEnabled(panel != ScanBanksPanel);
        menuItem(QStringLiteral("ShowAllChanMenuItem"))->setEnabled(panel != ChannelListPanel);
        menuItem(QStringLiteral("ShowServiceMenuItem"))->setEnabled(panel != ServicePanel);
    });
}

void MainForm::showAbout() {
    m_ctx.prompts().message(QStringLiteral("Kestrel Manager\nVersion %1\n\nPrepares the memory of "
                                           "a handheld programmable scanner and uploads it over "
                                           "a serial cable.")
                                .arg(QStringLiteral(KESTREL_VERSION)),
                            QStringLiteral("About Kestrel Manager"), Icon::Information,
                            Buttons::Ok);
}

} // namespace kestrel
