// SPDX-License-Identifier: GPL-3.0-or-later
// Wires the web import window into the main window: "&Web Import" opens it (or brings it to the
// front), its check mark shows it is open, and the lists follow every import.
#include "mainform.h"

#include "import/frmimportrr.h"

#include <QAction>
#include <QPointer>
#include <memory>

namespace kestrel {

void installImport(MainForm& form) {
    QAction* item = form.wireMenuItem(MenuId::WebImport);
    if (!item)
        return;
    item->setCheckable(true);
    auto window = std::make_shared<QPointer<FrmImportRR>>();
    QObject::connect(item, &QAction::triggered, &form, [&form, item, window] {
        Trap(form.ctx().errors, "MainForm -> WebImportMenuItem", [&] {
            if (!*window) {
                auto* w = new FrmImportRR(form.ctx(), &form);
                w->setAttribute(Qt::WA_DeleteOnClose);
                QObject::connect(w, &FrmImportRR::closed, item,
                                 [item] { item->setChecked(false); });
                QObject::connect(w, &FrmImportRR::bankImported, &form,
                                 [&form] { form.refreshLists(); });
                *window = w;
            }
            item->setChecked(true);
            (*window)->show();
            (*window)->raise();
            (*window)->activateWindow();
        });
    });
}

} // namespace kestrel
