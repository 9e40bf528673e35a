// SPDX-License-Identifier: GPL-3.0-or-later
// The web-service client's settings in the main window: the Options menu opens the database
// location window (the import window offers the same window from its own menu).
#include "mainform.h"

#include "webservice/ui/frmdbaseloc.h"

#include <QAction>

namespace kestrel {

void installWebUi(MainForm& form) {
    QAction* item = form.wireMenuItem(MenuId::DatabaseAddress);
    QObject::connect(item, &QAction::triggered, &form, [&form] {
        Trap(form.ctx().errors, "MainForm -> DatabaseAddressMenuItem",
             [&] { OpenDBaseLoc(form.ctx(), &form); });
    });
}

} // namespace kestrel
