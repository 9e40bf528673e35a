// SPDX-License-Identifier: GPL-3.0-or-later
#include "placement.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kestrel {

namespace {

// Squared distance between a rectangle and a point outside it (0 inside).
qint64 distanceSq(const QRect& r, QPoint p) {
    const qint64 dx = p.x() < r.left()    ? r.left() - p.x()
                      : p.x() > r.right() ? p.x() - r.right()
                                          : 0;
    const qint64 dy = p.y() < r.top()      ? r.top() - p.y()
                      : p.y() > r.bottom() ? p.y() - r.bottom()
                                           : 0;
    return dx * dx + dy * dy;
}

} // namespace

int ScreenFor(const QRect& frame, const QList<QRect>& screens) {
    int best = -1;
    qint64 bestArea = 0;
    for (int i = 0; i < screens.size(); ++i) {
        const QRect common = screens[i].intersected(frame);
        const qint64 area = qint64(common.width()) * common.height();
        if (area > bestArea) {
            bestArea = area;
            best = i;
        }
    }
    if (best >= 0)
        return best;
    // Off every screen (a monitor since unplugged, a smaller desktop): the nearest one.
    qint64 bestDistance = std::numeric_limits<qint64>::max();
    for (int i = 0; i < screens.size(); ++i) {
        const qint64 d = distanceSq(screens[i], frame.center());
        if (d < bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    return best;
}

QRect BringOnScreen(const QRect& frame, const QList<QRect>& screens) {
    const int index = ScreenFor(frame, screens);
    if (index < 0)
        return frame;
    const QRect& area = screens[index];
    QRect placed(frame.topLeft(), frame.size().boundedTo(area.size()));
    placed.moveLeft(std::clamp(placed.left(), area.left(), area.right() + 1 - placed.width()));
    placed.moveTop(std::clamp(placed.top(), area.top(), area.bottom() + 1 - placed.height()));
    return placed;
}

QRect CentreOver(QSize size, const QRect& parent) {
    QRect r(QPoint(0, 0), size);
    r.moveCenter(parent.center());
    return r;
}

QSize FitToScreen(QSize wanted, QSize minimum, const QMargins& frame, const QRect& area) {
    const QSize room(std::max(0, area.width() - frame.left() - frame.right()),
                     std::max(0, area.height() - frame.top() - frame.bottom()));
    return wanted.expandedTo(minimum).boundedTo(room);
}

} // namespace kestrel
