// SPDX-License-Identifier: GPL-3.0-or-later
// The place where the windows of other subsystems are wired into the main window. Each
// subsystem keeps its wiring in its own mainform_<subsystem>.cpp as a function over the
// MainForm's public interface, declared and called here.
#include "mainform.h"

namespace kestrel {

void installLink(MainForm& form); // mainform_link.cpp
void installOrganize(MainForm& form);
void installPrint(MainForm& form);
void installWebUi(MainForm& form);
void installImport(MainForm& form);

void MainForm::installSubsystems() {
    installOrganize(*this);
    installLink(*this);
    installPrint(*this);
    installWebUi(*this);
    installImport(*this);
}

} // namespace kestrel
