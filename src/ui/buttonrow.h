// SPDX-License-Identifier: GPL-3.0-or-later
// The "Accept" and "Cancel" buttons that close the program's small settings windows.
#pragma once

class QHBoxLayout;
class QPushButton;
class QWidget;

namespace kestrel {

// The two buttons (CmdAccept, CmdCancel), right-aligned in one row.
QHBoxLayout* acceptCancelRow(QWidget* owner, QPushButton*& accept, QPushButton*& cancel);

} // namespace kestrel
