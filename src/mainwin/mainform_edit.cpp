// SPDX-License-Identifier: GPL-3.0-or-later
// MainForm: in-place editing of the lists, the profile and bank name boxes, and the lists'
// pop-up menu.
#include "core/entry.h"
#include "core/files.h"
#include "history/history.h"
#include "inplaceedit.h"
#include "mainform.h"

#include <QFileInfo>
#include <QMenu>
#include <QTabBar>
#include <QTableWidget>

namespace kestrel {

void MainForm::connectEditing() {
    connect(m_freqTxt, &InplaceEdit::enterPressed, this, [this] {
        QTableWidget* list = m_edit.list;
        commitCellEdit(m_freqTxt);
        if (list)
            list->setFocus();
    });
    connect(m_freqTxt, &InplaceEdit::leftBox, this, &MainForm::finishCellEdit);
    connect(m_descTxt, &InplaceEdit::enterPressed, this, [this] {
        QTableWidget* list = m_edit.list;
        commitCellEdit(m_descTxt);
        if (list)
            list->setFocus();
    });
    connect(m_descTxt, &InplaceEdit::leftBox, this, &MainForm::finishCellEdit);
    for (InplaceEdit* box : {m_freqTxt, m_descTxt}) {
        connect(box, &InplaceEdit::escapePressed, this, &MainForm::abandonCellEdit);
        connect(box, &QLineEdit::textEdited, this,
                [this, box](const QString& text) { onCellTextEdited(box, text); });
    }

    connect(m_profTxt, &InplaceEdit::enterPressed, this, &MainForm::commitProfTxt);
    connect(m_profTxt, &InplaceEdit::leftBox, this, &MainForm::commitProfTxt);
    connect(m_profTxt, &InplaceEdit::escapePressed, this, [this] {
        m_profTxt->setText(m_shown.profName);
        m_profTxt->setPending(false);
    });
    connect(m_bankTxt, &InplaceEdit::enterPressed, this, &MainForm::commitBankTxt);
    connect(m_bankTxt, &InplaceEdit::leftBox, this, &MainForm::commitBankTxt);
    connect(m_bankTxt, &InplaceEdit::escapePressed, this, [this] {
        if (m_ctx.CurBank == SearchTab)
            RefreshSearch();
        else
            RefreshBank(m_ctx.CurBank);
    });
}

void MainForm::onCellDoubleClicked(QTableWidget* list, int row, int column) {
    const bool search = list == m_searchLv;
    finishCellEdit();
    Trap(m_ctx.errors, search ? "MainForm -> SearchLV_DblClick" : "MainForm -> ChnlsLv_DblClick",
         [&] {
             if (row < 0 || column < 0)
                 return;
             if (IsTextColumn(search, column)) {
                 startCellEdit(list, row, column);
                 return;
             }
             if (search || m_ctx.CurBank < 1 || m_ctx.CurBank > BankCount)
                 return;
             ChangeStep step(m_ctx,
                             CellStepName(false, column, ChannelNumber(m_ctx.CurBank, row + 1)),
                             m_ctx.CurProfile, m_ctx.CurBank);
             BankRec& bank = m_ctx.cur().Banks[m_ctx.CurBank];
             if (!ToggleChannelFlag(bank.Chans[row + 1], column))
                 return;
             bank.Changed = true;
             m_ctx.cur().Changed = true;
             refreshChannel(ChannelNumber(m_ctx.CurBank, row + 1));
         });
}

void MainForm::startCellEdit(QTableWidget* list, int row, int column) {
    const bool search = list == m_searchLv;
    InplaceEdit* box = IsFrequencyColumn(search, column) ? m_freqTxt : m_descTxt;
    m_edit = {list, box, m_ctx.CurProfile, search ? 0 : int(m_ctx.CurBank), row, column};
    if (box->parentWidget() != list->viewport())
        box->setParent(list->viewport());
    const QModelIndex index = list->model()->index(row, column);
    list->scrollTo(index);
    list->setCurrentIndex(index);
    box->setGeometry(list->visualRect(index));
    box->setText(storedEditText());
    box->setPending(false);
    box->show();
    box->raise();
    box->setFocus(Qt::OtherFocusReason);
    box->selectAll();
}

QString MainForm::storedEditText() const {
    const ProfileRec& profile = m_ctx.Profiles[m_edit.profile];
    if (m_edit.list == m_searchLv)
        return StoredSearchCellText(profile.Searches[m_edit.row + 1], m_edit.column);
    return StoredCellText(profile.Banks[m_edit.bank].Chans[m_edit.row + 1], m_edit.column);
}

void MainForm::onCellTextEdited(InplaceEdit* box, const QString& text) {
    // The box is never left empty: it shows the stored value again, ready to be typed over.
    if (text.isEmpty() && m_edit.box == box) {
        box->setText(storedEditText());
        box->selectAll();
    }
}

void MainForm::commitCellEdit(InplaceEdit* box) {
    const bool freq = box == m_freqTxt;
    Trap(m_ctx.errors, freq ? "MainForm -> FreqTxt_LostFocus" : "MainForm -> DescTxt_LostFocus",
         [&] {
             if (m_edit.box != box)
                 return;
             const CellEdit edit = m_edit;
             const QString stored = storedEditText();
             const QString typed = box->text();
             m_edit = {};
             box->setPending(false);
             box->hide();
             QString reason;
             if (freq ? !TypedFreq(typed, &reason) : !CheckTypedDesc(typed, &reason)) {
                 // The old value stays; the user is told why the new one was not taken.
                 box->setText(stored);
                 m_ctx.prompts().message(reason, QStringLiteral("Kestrel Manager"),
                                         Icon::Exclamation, Buttons::Ok);
                 return;
             }
             const bool search = edit.list == m_searchLv;
             const int slot = edit.row + 1;
             const int number = search ? slot : ChannelNumber(edit.bank, slot);
             // A value typed again as it was changes nothing and leaves no step.
             ChangeStep step(m_ctx, CellStepName(search, edit.column, number), qint16(edit.profile),
                             quint8(search ? SearchTab : edit.bank));
             ProfileRec& profile = m_ctx.Profiles[edit.profile];
             if (search) {
                 SearchRec& range = profile.Searches[slot];
                 box->setText(freq ? CommitSearchFreq(range, edit.column, typed)
                                   : (range.Desc = typed));
             } else {
                 BankRec& bank = profile.Banks[edit.bank];
                 ChannelRec& ch = bank.Chans[slot];
                 box->setText(freq ? CommitChannelFreq(ch, typed) : (ch.Desc = typed));
                 bank.Changed = true;
             }
             profile.Changed = true;
             if (edit.profile == m_ctx.CurProfile) {
                 if (search)
                     paintSearchRow(slot);
                 else
                     refreshChannel(number);
             }
         });
}

void MainForm::abandonCellEdit() {
    if (!m_edit.box)
        return;
    QTableWidget* list = m_edit.list;
    InplaceEdit* box = m_edit.box;
    m_edit = {};
    box->setPending(false);
    box->hide();
    list->setFocus();
}

void MainForm::finishCellEdit() {
    if (!m_edit.box)
        return;
    if (m_edit.box->pending()) {
        commitCellEdit(m_edit.box);
        return;
    }
    InplaceEdit* box = m_edit.box;
    m_edit = {};
    box->hide();
}

void MainForm::commitProfTxt() {
    Trap(m_ctx.errors, "MainForm -> ProfTxt_LostFocus", [&](Stmt& s) {
        if (!m_profTxt->pending())
            return;
        m_profTxt->setPending(false);
        const QString text = m_profTxt->text();
        s.at(1);
        const QString oldPath = m_shown.profPath;
        const QString newPath = m_ctx.settingsPath(text);
        if (m_ctx.CurProfile == 0 || newPath == oldPath)
            return;
        s.at(2);
        if (!IsUsableBaseName(text) || !RenameFile(m_ctx, newPath, oldPath)) {
            m_profTxt->setText(m_shown.profName);
            return;
        }
        s.at(3);
        ChangeStep step(m_ctx, QStringLiteral("Rename Profile"), m_ctx.CurProfile, m_ctx.CurBank);
        step.outside = renameBack(newPath, oldPath);
        m_ctx.cur().Name = text;
        m_shown.profName = text;
        m_shown.profPath = newPath;
        m_profileTab->setTabText(m_ctx.CurProfile, text);
        updateCaption();
        m_ctx.cur().Changed = true;
        m_ctx.Profiles[0].Changed = true;
    });
}

void MainForm::commitBankTxt() {
    Trap(m_ctx.errors, "MainForm -> BankTxt_LostFocus", [&](Stmt& s) {
        if (!m_bankTxt->pending())
            return;
        m_bankTxt->setPending(false);
        const QString text = m_bankTxt->text();
        const bool search = m_ctx.CurBank == SearchTab;
        s.at(1);
        BankRec* bank = search ? nullptr : &m_ctx.cur().Banks[m_ctx.CurBank];
        const QString oldPath =
            search ? m_ctx.searchPath(m_shown.srchName) : m_ctx.bankPath(bank->FileName);
        const QString newPath = search ? m_ctx.searchPath(text) : m_ctx.bankPath(text);
        if (newPath == oldPath)
            return;
        s.at(2);
        if (!IsUsableBaseName(text) || !RenameFile(m_ctx, newPath, oldPath)) {
            m_bankTxt->setText(search ? m_shown.srchName : bank->FileName);
            return;
        }
        s.at(3);
        ChangeStep step(
            m_ctx, search ? QStringLiteral("Rename Search Limits") : QStringLiteral("Rename Bank"),
            m_ctx.CurProfile, m_ctx.CurBank);
        step.outside = renameBack(newPath, oldPath);
        // The settings file names the bank and search files, so it is written at closing too.
        if (search) {
            m_ctx.cur().SrchName = text;
            m_shown.srchName = text;
        } else {
            bank->FileName = text;
            bank->Changed = true;
        }
        m_ctx.cur().Changed = true;
        m_bankTab->setTabText(m_ctx.CurBank - 1, text);
    });
}

std::function<bool(bool)> MainForm::renameBack(const QString& newPath, const QString& oldPath) {
    // Undoing a rename gives the file its old name back, so that the names in memory and on
    // disk agree; when that fails the records stay Changed and closing writes them anew.
    return [&ctx = m_ctx, newPath, oldPath](bool undo) {
        const QString& from = undo ? newPath : oldPath;
        const QString& to = undo ? oldPath : newPath;
        return !QFileInfo::exists(from) || RenameFile(ctx, to, from);
    };
}

void MainForm::showPopUp(QTableWidget* list, const QPoint& pos) {
    if (!list->indexAt(pos).isValid())
        return;
    finishCellEdit();
    m_popUpTag = list == m_chnlsLv    ? QStringLiteral("Chnls")
                 : list == m_searchLv ? QStringLiteral("Srch")
                                      : QStringLiteral("Chan");
    m_popUpMenu->popup(list->viewport()->mapToGlobal(pos));
}

void MainForm::popUpCommand(bool toDefault) {
    Trap(m_ctx.errors,
         toDefault ? "MainForm -> UseDefaultsMenuItem" : "MainForm -> ClearSelectedMenuItem", [&] {
             // A list can only be right-clicked while it is in front, so the pop-up menu,
             // the Edit menu and the Delete key all act on the list in front.
             QTableWidget* list = activeList();
             if (!list)
                 return;
             QList<int> numbers;
             for (const QModelIndex& index : list->selectionModel()->selectedRows())
                 numbers << list->item(index.row(), 0)->text().toInt();
             if (list == m_searchLv) {
                 ClearSearches(m_ctx, m_ctx.CurProfile, numbers, toDefault);
                 for (const int i : numbers)
                     paintSearchRow(i);
             } else {
                 ClearChannels(m_ctx, m_ctx.CurProfile, numbers, toDefault);
                 for (const int n : numbers)
                     refreshChannel(n);
             }
             updateCaption();
         });
}

void MainForm::onLabelDoubleClick(int index) {
    if (QAction* debug = menuItem(MenuId::DebugComm))
        debug->setVisible(index == 0);
}

} // namespace kestrel
