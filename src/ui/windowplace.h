// SPDX-License-Identifier: GPL-3.0-or-later
// Where every window of the program opens and what it remembers of its place when it closes.
// The geometry itself is in core/placement.h; this side asks the screens and moves the widget.
#pragma once

#include "core/settings.h"

#include <QList>
#include <QRect>

class QWidget;

namespace kestrel {

class AppContext;

// A window with a remembered place opens there, brought back onto the nearest screen when it
// lies off every screen (a monitor unplugged since) and pulled wholly onto the screen it is on.
// The main window also gets its remembered size, cut to fit its screen.
void placeWindow(QWidget* w, const AppContext& ctx, WindowId id);
// A dialog, or a window without a remembered place, opens centred over the main window (or over
// its own parent window), kept on that window's screen.
void placeWindow(QWidget* w);
// Notes where a window with a remembered place stands as it closes (and the main window's size).
void rememberWindow(const QWidget* w, AppContext& ctx, WindowId id);

// The free areas of the screens, in the desktop's coordinates.
QList<QRect> screenAreas();
// How far the screens reach from the desktop's origin, in twips: the extent that remembered
// places are read and noted within (AppContext::screenTwips), so that one on a second screen
// is kept.
QSize desktopTwips();

} // namespace kestrel
