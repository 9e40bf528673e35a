// SPDX-License-Identifier: GPL-3.0-or-later
// Printing wired into the main window: the channel list's "Print" button and the Options item
// "&Print Current Bank" hand the list on screen to the print preview.
#include "mainform.h"

#include "print/frmprntprev.h"
#include "print/viewtable.h"

#include <QAction>
#include <QPushButton>
#include <QTableWidget>

namespace kestrel {

namespace {

void showPreview(MainForm& form, const QAbstractItemView& list, const QString& title) {
    FrmPrntPrev preview(form.ctx(), &form);
    preview.setList_View(TableFromView(list));
    preview.setDescription(title);
    preview.setMaxRows(kListMaxRows);
    preview.exec();
}

} // namespace

void installPrint(MainForm& form) {
    QPushButton* button = form.PtintChansBtn();
    button->setEnabled(true);
    QObject::connect(button, &QPushButton::clicked, &form, [&form] {
        Trap(form.ctx().errors, "MainForm -> PtintChansBtn", [&] {
            showPreview(form, *form.ChanLV(),
                        QStringLiteral("All Channels For ") + form.ctx().cur().Name);
        });
    });

    QAction* item = form.wireMenuItem(MenuId::PrintBank);
    if (item == nullptr)
        return;
    // The mark shows the preview is open.
    item->setCheckable(true);
    item->setChecked(false);
    QObject::connect(item, &QAction::triggered, &form, [&form, item] {
        Trap(form.ctx().errors, "MainForm -> PrintBankMenuItem", [&] {
            AppContext& ctx = form.ctx();
            item->setChecked(true);
            if (ctx.CurBank == SearchTab)
                showPreview(form, *form.SearchLV(), form.shown().srchName);
            else
                showPreview(form, *form.ChnlsLv(), ctx.cur().Banks[ctx.CurBank].FileName);
            item->setChecked(false);
        });
        item->setChecked(false);
    });
}

} // namespace kestrel
