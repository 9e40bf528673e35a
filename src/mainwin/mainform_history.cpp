// SPDX-License-Identifier: GPL-3.0-or-later
// MainForm: the context's undo stack in the window. Edit menu "&Undo" and "&Redo" named after
// the step, the View menu's "Edit &History" list, and showing the bank of a step before it is
// undone or redone.
#include "history/history.h"
#include "mainform.h"

#include "inplaceedit.h"

#include <QAction>
#include <QMenu>
#include <QTabBar>
#include <QUndoView>

namespace kestrel {

void MainForm::installHistory(QMenu* edit, QMenu* view) {
    History& history = HistoryOf(m_ctx);
    QUndoStack& stack = history.stack();

    // createUndoAction keeps the caption ("&Undo Edit Frequency of Channel 5") and the enabled
    // state in step with the stack.
    QAction* undo = stack.createUndoAction(this, tr("&Undo"));
    QAction* redo = stack.createRedoAction(this, tr("&Redo"));
    undo->setObjectName(QStringLiteral("UndoMenuItem"));
    redo->setObjectName(QStringLiteral("RedoMenuItem"));
    undo->setShortcuts(QKeySequence::Undo);
    // Ctrl+Shift+Z and Ctrl+Y on every desktop, whatever the platform's own redo key is.
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    for (const QKeySequence& key :
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)})
        if (!redoKeys.contains(key))
            redoKeys.append(key);
    redo->setShortcuts(redoKeys);
    QAction* first = edit->actions().value(0);
    edit->insertAction(first, undo);
    edit->insertAction(first, redo);
    edit->insertSeparator(first);
    m_items[size_t(MenuId::Undo)] = undo;
    m_items[size_t(MenuId::Redo)] = redo;

    connect(addItem(view, QStringLiteral("Edit &History"), MenuId::EditHistory),
            &QAction::triggered, this, [this, &stack] {
                if (!m_historyView) {
                    auto* list = new QUndoView(&stack, this);
                    list->setWindowFlags(Qt::Window);
                    list->setObjectName(QStringLiteral("EditHistory"));
                    list->setWindowTitle(QStringLiteral("Edit History"));
                    list->setEmptyLabel(QStringLiteral("<nothing changed>"));
                    list->resize(320, 400);
                    m_historyView = list;
                }
                m_historyView->show();
                m_historyView->raise();
                m_historyView->activateWindow();
            });

    connect(&history, &History::aboutToRestore, this, &MainForm::showStepPlace);
    connect(&history, &History::restored, this, &MainForm::afterStepRestored);
}

void MainForm::showStepPlace(qint16 profile, quint8 bank) {
    // A half-typed cell edit belongs to the memory being left: it is dropped.
    abandonCellEdit();
    if (profile != m_ctx.CurProfile && profile >= 0 && profile < m_profileTab->count())
        m_profileTab->setCurrentIndex(profile); // runs the profile switch
    if (bank != m_ctx.CurBank && bank >= 1 && bank <= SearchTab)
        m_bankTab->setCurrentIndex(bank - 1); // runs the bank switch
    m_srchNameBeforeStep = m_ctx.cur().SrchName;
}

void MainForm::afterStepRestored(const MemoryStep& step) {
    // A rename undone or redone: the boxes, the tab and the caption follow the profile's names.
    const ProfileRec& profile = m_ctx.cur();
    if (m_ctx.CurProfile != 0 && m_shown.profName != profile.Name) {
        m_shown.profName = profile.Name;
        m_shown.profPath = m_ctx.settingsPath(profile.Name);
        const QSignalBlocker block(m_profTxt);
        m_profTxt->setText(profile.Name);
        m_profTxt->setPending(false);
        m_profileTab->setTabText(m_ctx.CurProfile, profile.Name);
        updateCaption();
    }
    if (m_srchNameBeforeStep != profile.SrchName)
        m_shown.srchName = profile.SrchName;
    // Most steps change a few channels: only their rows are repainted.
    if (step.onlyChannels()) {
        for (const int n : step.channelNumbers(m_ctx.CurProfile))
            refreshChannel(n);
    } else {
        refreshLists();
    }
}

} // namespace kestrel
