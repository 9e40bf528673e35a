// SPDX-License-Identifier: GPL-3.0-or-later
// A menu item that opens a tool window: it carries a check mark while the window is open, and
// the window clears the mark when it closes.
#pragma once

#include "windowplace.h"

#include <QAction>
#include <QPointer>
#include <QWidget>

namespace kestrel {

// What choosing the item does while its window is open: bring it to the front, or close it
// (for the items that show and hide a window, the Options menu's cable and error windows).
enum class WhenOpen { Raise, Close };

// Called from the item's triggered(): opens the window made by `make`, or handles the open one
// as `whenOpen` says. `Window` tells of its closing with a closed() signal; it is deleted when it
// closes, and the item's mark goes with it.
template <typename Window, typename Make>
Window* showToolWindow(QAction* item, QPointer<Window>& window, Make make,
                       WhenOpen whenOpen = WhenOpen::Raise) {
    if (whenOpen == WhenOpen::Close && item->isCheckable() && !item->isChecked()) {
        if (window)
            window->close();
        return nullptr;
    }
    if (!window) {
        window = make();
        window->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(window.data(), &Window::closed, item, [item] { item->setChecked(false); });
    }
    item->setChecked(true);
    window->show();
    window->raise();
    window->activateWindow();
    return window.data();
}

} // namespace kestrel
