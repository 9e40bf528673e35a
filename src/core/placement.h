// SPDX-License-Identifier: GPL-3.0-or-later
// Where a window goes on the desktop, as plain geometry over the screens' free areas (no
// widgets), and the conversion between the settings file's twips and screen pixels.
#pragma once

#include "settings.h"

#include <QList>
#include <QMargins>
#include <QRect>

namespace kestrel {

// The settings file keeps places in twips; 15 twips make one device-independent pixel.
inline constexpr int kTwipsPerPixel = 15;

inline QPoint TwipsToPoint(const WindowPos& pos) {
    return {pos.left / kTwipsPerPixel, pos.top / kTwipsPerPixel};
}
inline WindowPos PointToTwips(QPoint p) {
    return {qint32(p.y()) * kTwipsPerPixel, qint32(p.x()) * kTwipsPerPixel};
}
inline QSize TwipsToSize(const WindowSize& s) {
    return {s.width / kTwipsPerPixel, s.height / kTwipsPerPixel};
}
inline WindowSize SizeToTwips(QSize s) {
    return {qint32(s.height()) * kTwipsPerPixel, qint32(s.width()) * kTwipsPerPixel};
}

// The index of the screen that holds most of `frame`; when it lies on none, the screen nearest
// to it. -1 without screens.
int ScreenFor(const QRect& frame, const QList<QRect>& screens);

// The frame moved onto the screen that ScreenFor picks, so that it lies wholly on it; a frame
// larger than the screen is cut to it. The top clamp is the same for every window: the top edge
// never lies above the screen's free area (the title bar stays within reach) nor lower than
// lets the whole frame show. Without screens the frame is returned as it is.
QRect BringOnScreen(const QRect& frame, const QList<QRect>& screens);

// A frame of `size` centred over `parent`.
QRect CentreOver(QSize size, const QRect& parent);

// The window size (inside its frame) that a window wanting `wanted` gets on a screen whose free
// area is `area`, when its frame adds `frame` around it: cut so that the frame fits the area,
// and never below `minimum` unless the area itself is smaller.
QSize FitToScreen(QSize wanted, QSize minimum, const QMargins& frame, const QRect& area);

} // namespace kestrel
