// SPDX-License-Identifier: GPL-3.0-or-later
// Wires the web import window into the main window: "&Web Import" opens it (or brings it to the
// front), its check mark shows it is open, and the lists follow every import.
#include "mainform.h"

#include "import/frmimportrr.h"
#include "ui/toolwindow.h"

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
            showToolWindow(item, *window, [&form] {
                auto* w = new FrmImportRR(form.ctx(), &form);
                QObject::connect(w, &FrmImportRR::bankImported, &form,
                                 [&form] { form.refreshLists(); });
                return w;
            });
        });
    });
}

} // namespace kestrel
