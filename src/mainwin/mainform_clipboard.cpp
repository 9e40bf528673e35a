// SPDX-License-Identifier: GPL-3.0-or-later
// MainForm: the Edit menu's Cut, Copy, Paste and Select All on the rows of the list in front.
#include "core/cliprows.h"
#include "history/history.h"
#include "inplaceedit.h"
#include "mainform.h"

#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QTableWidget>

namespace kestrel {

namespace {

// The row numbers (channel 1..200 or range 1..10) of the selected rows, top to bottom; the
// current row when none is selected.
QList<int> selectedNumbers(QTableWidget* list) {
    QList<int> rows;
    for (const QModelIndex& index : list->selectionModel()->selectedRows())
        rows << index.row();
    if (rows.isEmpty() && list->currentIndex().isValid())
        rows << list->currentIndex().row();
    std::sort(rows.begin(), rows.end());
    QList<int> numbers;
    for (const int r : rows)
        numbers << list->item(r, 0)->text().toInt();
    return numbers;
}

} // namespace

void MainForm::clipboardCommand(MenuId command) {
    // In a text box the items do what they do in any text box.
    if (auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget())) {
        switch (command) {
        case MenuId::Cut:
            box->cut();
            break;
        case MenuId::Copy:
            box->copy();
            break;
        case MenuId::Paste:
            box->paste();
            break;
        default:
            box->selectAll();
            break;
        }
        return;
    }
    finishCellEdit();
    QTableWidget* list = activeList();
    if (!list)
        return;
    Trap(m_ctx.errors, "MainForm -> ClipboardMenuItem", [&] {
        switch (command) {
        case MenuId::Copy:
            copyRows(list);
            break;
        case MenuId::Cut: {
            copyRows(list);
            // The clearing is undone as "Cut", one step.
            const QList<int> numbers = selectedNumbers(list);
            ChangeStep step(m_ctx, QStringLiteral("Cut"), m_ctx.CurProfile,
                            list == m_searchLv || numbers.isEmpty()
                                ? quint8(m_ctx.CurBank)
                                : quint8(BankOfChannel(numbers.first())));
            popUpCommand(false);
            break;
        }
        case MenuId::Paste:
            pasteRows(list);
            break;
        default:
            list->selectAll();
            break;
        }
    });
}

void MainForm::copyRows(QTableWidget* list) {
    const QList<int> numbers = selectedNumbers(list);
    if (numbers.isEmpty())
        return;
    const ProfileRec& profile = m_ctx.cur();
    QString text;
    if (list == m_searchLv) {
        QList<SearchRec> rows;
        for (const int i : numbers)
            rows << profile.Searches[i];
        text = SearchRowsText(rows);
    } else {
        QList<ChannelRec> rows;
        for (const int n : numbers)
            rows << profile.Banks[BankOfChannel(n)].Chans[SlotOfChannel(n)];
        text = ChannelRowsText(rows);
    }
    QGuiApplication::clipboard()->setText(text);
}

void MainForm::pasteRows(QTableWidget* list) {
    const bool search = list == m_searchLv;
    QList<int> targets = selectedNumbers(list);
    if (targets.isEmpty())
        return;
    const auto refuse = [this](const QString& why) {
        m_ctx.prompts().message(tr("Nothing was pasted.\n") + why,
                                QStringLiteral("Kestrel Manager"), Icon::Exclamation, Buttons::Ok);
    };
    const QString text = QGuiApplication::clipboard()->text();
    QString reason;
    const auto channelRows = search ? std::nullopt : ParseChannelRows(text, &reason);
    const auto searchRows = search ? ParseSearchRows(text, &reason) : std::nullopt;
    if (!channelRows && !searchRows)
        return refuse(reason);
    const qsizetype count = search ? searchRows->size() : channelRows->size();

    // One selected row: the rows go there and below, as in a spreadsheet. Several: the rows
    // fill the selected ones in order.
    if (targets.size() == 1) {
        const int first = targets.front();
        const int last = search             ? SearchCount
                         : list == m_chanLv ? ChannelCount
                                            : ChannelNumber(BankOfChannel(first), ChansPerBank);
        for (int n = first + 1; n <= last && targets.size() < count; ++n)
            targets << n;
    }
    if (targets.size() < count)
        return refuse(tr("The clipboard holds %1 rows; there is room for %2 here.")
                          .arg(count)
                          .arg(targets.size()));
    targets.resize(count);

    ProfileRec& profile = m_ctx.cur();
    // However many rows and banks it fills, a paste is undone as one step.
    ChangeStep step(m_ctx, QStringLiteral("Paste"), m_ctx.CurProfile,
                    search ? quint8(SearchTab) : quint8(BankOfChannel(targets.first())));
    if (search) {
        for (qsizetype k = 0; k < count; ++k)
            ApplySearchRow(profile.Searches[targets[k]], (*searchRows)[k]);
        profile.Changed = true;
        for (const int i : targets)
            paintSearchRow(i);
    } else {
        for (qsizetype k = 0; k < count; ++k) {
            const int n = targets[k];
            BankRec& bank = profile.Banks[BankOfChannel(n)];
            ApplyChannelRow(bank.Chans[SlotOfChannel(n)], (*channelRows)[k]);
            bank.Changed = true;
        }
        profile.Changed = true;
        for (const int n : targets)
            refreshChannel(n);
    }
    // What was pasted stays selected, ready to be checked or moved on from.
    list->clearSelection();
    for (int r = 0; r < list->rowCount(); ++r)
        if (targets.contains(list->item(r, 0)->text().toInt()))
            list->selectionModel()->select(list->model()->index(r, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

} // namespace kestrel
