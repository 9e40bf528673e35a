// SPDX-License-Identifier: GPL-3.0-or-later
// MainForm: the program's main window. Profile and bank tabs over the lists of the shown bank,
// the search ranges and all channels, in-place editing, and the File, Edit, View, Options,
// Scanner and Help menus. It works directly on the memory image of the AppContext.
#pragma once

#include "core/appcontext.h"
#include "editrules.h"
#include "filecommands.h"
#include "menuitems.h"

#include <QHash>
#include <QKeySequence>
#include <QMainWindow>
#include <QUrl>
#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QStackedWidget;
class QTabBar;
class QTableWidget;
class QGroupBox;

namespace kestrel {

class InplaceEdit;
class MemoryStep;

class MainForm : public QMainWindow {
    Q_OBJECT
public:
    // The panels of the lower area, in the order of the View menu.
    enum Panel { ScanBanksPanel, ChannelListPanel, ServicePanel };

    explicit MainForm(AppContext& ctx, QWidget* parent = nullptr);
    ~MainForm() override;

    AppContext& ctx() { return m_ctx; }
    const ShownNames& shown() const { return m_shown; }

    void RefreshBank(int b);
    void RefreshSearch();
    void SetMenus(int b);
    // Refills all 200 rows of ChanLV from the shown profile.
    void FillChanLV();
    // Repaints channel n (1..200) of the shown profile in every list that shows it.
    void refreshChannel(int n);
    // Refreshes the list in front after something changed the shown profile's records.
    void refreshLists();

    QAction* menuItem(MenuId id) const { return m_items[size_t(id)]; }
    // The same by object name ("ClearSelectedMenuItem"), for code that finds items by name.
    QAction* menuItem(const QString& objectName) const;
    // An item whose window comes from another part of the program starts disabled; its wiring
    // enables it through here and connects to the returned action.
    QAction* wireMenuItem(MenuId id);
    QAction* wireMenuItem(const QString& objectName);
    // The hidden actions behind Ctrl+1 .. Ctrl+0 (banks 1..10).
    QAction* bankKey(int bank) const { return m_bankKeys[size_t(bank - 1)]; }

    // The list in front that the Edit menu's clipboard items and Delete act on: the shown bank,
    // the search ranges or all channels; nullptr on the service panel.
    QTableWidget* activeList() const;
    // Whether the shown profile has changes not yet written (the caption then shows "*").
    bool shownProfileModified() const;

    QTableWidget* ChnlsLv() const { return m_chnlsLv; }
    QTableWidget* SearchLV() const { return m_searchLv; }
    QTableWidget* ChanLV() const { return m_chanLv; }
    QTabBar* ProfileTab() const { return m_profileTab; }
    QTabBar* BankTab() const { return m_bankTab; }
    InplaceEdit* ProfTxt() const { return m_profTxt; }
    InplaceEdit* BankTxt() const { return m_bankTxt; }
    InplaceEdit* FreqTxt() const { return m_freqTxt; }
    InplaceEdit* DescTxt() const { return m_descTxt; }
    QLineEdit* SndBankTxt() const;
    // The caption labels "Bank Name:", "Sending Bank:", "Profile Name:" (indices 0, 1, 2).
    QLabel* captionLabel(int index) const { return m_labels[index]; }
    QPushButton* PtintChansBtn() const { return m_printChansBtn; }
    QMenu* popUpMenu() const { return m_popUpMenu; }
    // "Chnls", "Srch" or "Chan": the list the pop-up menu was opened on.
    const QString& popUpTag() const { return m_popUpTag; }
    Panel shownPanel() const;
    QWidget* panelWidget(Panel panel) const;

    // How web pages are opened (the desktop's browser by default).
    void setUrlOpener(std::function<void(const QUrl&)> opener) { m_openUrl = std::move(opener); }

    // Ends an in-place edit: a pending one is committed, otherwise the box is hidden.
    void finishCellEdit();

Q_SIGNALS:
    // The window has been painted once. Start-up work that pauses or asks (the scanner link's
    // set-up) is queued behind this, so that the window is seen first.
    void firstPainted();
    // The scanner link's set-up at load has ended, whatever its outcome.
    void linkSetUpDone();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // mainform.cpp: set-up, tabs, refresh, closing
    void buildWidgets();
    QGroupBox* buildScanBanksPanel();
    QGroupBox* buildChannelListPanel();
    QGroupBox* buildServicePanel();
    QTableWidget* makeList(const QStringList& headers, int rows, bool searchList);
    void InitControls();
    void loadWindow();
    void installSubsystems();
    void onProfileTab(int index);
    void onBankTab(int index);
    void captionBankTabs();
    void updateCaption();
    void nextBankTab();
    void paintRow(QTableWidget* list, int row, const QStringList& texts);
    void paintChnlsRow(int slot);
    void paintChanRow(int n);
    void paintSearchRow(int index);

    // mainform_edit.cpp: in-place editing, name boxes, pop-up menu
    void connectEditing();
    void onCellDoubleClicked(QTableWidget* list, int row, int column);
    void startCellEdit(QTableWidget* list, int row, int column);
    // The one commit of both in-place boxes: checks the typed text, stores it as one undoable
    // step, repaints the row.
    void commitCellEdit(InplaceEdit* box);
    void abandonCellEdit();
    void onCellTextEdited(InplaceEdit* box, const QString& text);
    QString storedEditText() const;
    void commitProfTxt();
    void commitBankTxt();
    // The outside part of a rename's undo step: the file is renamed back and forth with it.
    std::function<bool(bool)> renameBack(const QString& newPath, const QString& oldPath);
    void showPopUp(QTableWidget* list, const QPoint& pos);
    void popUpCommand(bool toDefault);
    void onLabelDoubleClick(int index);

    // mainform_menus.cpp: the menus and their commands
    void buildMenus();
    QAction* addItem(QMenu* menu, const QString& caption, MenuId id,
                     const QKeySequence& shortcut = {});
    void clipboardCommand(MenuId command);
    void copyRows(QTableWidget* list);
    void pasteRows(QTableWidget* list);
    // Moves the bank tab by step (wrapping over the search tab), or to bank `bank` when given.
    void stepBankTab(int step, int bank = 0);
    void runFileCommand(FileCommand command);
    void runSaveCommand(const char* label, const std::function<void()>& save);
    void runEditCommand(EditCommand command, const char* label);
    void showPanel(Panel panel);
    void showAbout();
    void addLanguageMenu(QMenu* options);
    void afterProfileLoaded();

    // mainform_history.cpp: Undo, Redo and Edit History
    void installHistory(QMenu* edit, QMenu* view);
    void showStepPlace(qint16 profile, quint8 bank);
    void afterStepRestored(const MemoryStep& step);

    AppContext& m_ctx;
    ShownNames m_shown;
    QWidget* m_historyView = nullptr;
    QString m_srchNameBeforeStep; // the shown profile's SrchName before a step is restored

    QTabBar* m_profileTab = nullptr;
    QTabBar* m_bankTab = nullptr;
    InplaceEdit* m_profTxt = nullptr;
    InplaceEdit* m_bankTxt = nullptr;
    QLineEdit* m_sndBankTxt = nullptr;
    QLabel* m_labels[3] = {};
    QStackedWidget* m_panels = nullptr;
    QStackedWidget* m_listStack = nullptr;
    QTableWidget* m_chnlsLv = nullptr;
    QTableWidget* m_searchLv = nullptr;
    QTableWidget* m_chanLv = nullptr;
    QPushButton* m_printChansBtn = nullptr;
    InplaceEdit* m_freqTxt = nullptr;
    InplaceEdit* m_descTxt = nullptr;
    QMenu* m_popUpMenu = nullptr;
    QString m_popUpTag;
    std::array<QAction*, size_t(MenuId::Count)> m_items{};
    std::array<QAction*, BankCount> m_bankKeys{};
    std::function<void(const QUrl&)> m_openUrl;
    bool m_loaded = false;
    bool m_painted = false;

    // The cell being edited in place, fixed when the edit starts.
    struct CellEdit {
        QTableWidget* list = nullptr;
        InplaceEdit* box = nullptr;
        int profile = 0;
        int bank = 0;
        int row = -1;
        int column = -1;
    } m_edit;
    // The last mouse button pressed on each list's viewport.
    QHash<QObject*, Qt::MouseButton> m_lastButton;
};

} // namespace kestrel
