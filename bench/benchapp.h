// SPDX-License-Identifier: GPL-3.0-or-later
// The one application object every benchmark of kestrel-bench shares: windows need a
// QApplication, drawn offscreen unless a platform was chosen.
#pragma once

#include <QApplication>

namespace kestrel::bench {

inline QApplication& GuiApp() {
    static int argc = 1;
    static char name[] = "kestrel-bench";
    static char* argv[] = {name, nullptr};
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication* app = [] {
        auto* existing = qobject_cast<QApplication*>(QCoreApplication::instance());
        return existing ? existing : new QApplication(argc, argv);
    }();
    return *app;
}

} // namespace kestrel::bench
