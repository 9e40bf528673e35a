// SPDX-License-Identifier: GPL-3.0-or-later
// Where the link's small windows meet the settings: window places in twips.
#pragma once

#include "core/settings.h"

class QHBoxLayout;
class QPushButton;
class QWidget;

namespace kestrel {

class AppContext;

// Moves a window to its remembered place, and notes its place when it closes.
void placeWindow(QWidget* w, const AppContext& ctx, WindowId id);
void rememberWindow(const QWidget* w, AppContext& ctx, WindowId id);

// The "Accept" and "Cancel" buttons of a window, right-aligned in one row.
QHBoxLayout* acceptCancelRow(QWidget* owner, QPushButton*& accept, QPushButton*& cancel);

} // namespace kestrel
