// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowplace.h"

#include "core/appcontext.h"
#include "core/placement.h"

#include <QApplication>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace kestrel {

namespace {

// Before a window has been shown its frame is not known; this is room for a usual title bar and
// border, so that a window sized to the screen does not reach past it once framed.
constexpr QMargins kAssumedFrame(8, 32, 8, 8);

QMargins shownMargins(const QWidget* w) {
    const QRect frame = w->frameGeometry();
    const QRect inner = w->geometry();
    return {inner.left() - frame.left(), inner.top() - frame.top(), frame.right() - inner.right(),
            frame.bottom() - inner.bottom()};
}

// The frame a window has, or will have: that of a window shown already on the same desktop is
// the best guess before its own is known.
QMargins frameMargins(const QWidget* w) {
    if (w->isVisible())
        return shownMargins(w);
    if (const QWidget* parent = w->parentWidget(); parent && parent->window()->isVisible())
        return shownMargins(parent->window());
    return kAssumedFrame;
}

// The frame the window will have at `topLeft` with its present size.
QRect frameAt(const QWidget* w, QPoint topLeft) {
    const QMargins m = frameMargins(w);
    return QRect(topLeft, w->size().grownBy(m));
}

// The window that dialogs are centred over: the owner's window, else the main window.
QWidget* centreWindow(const QWidget* w) {
    if (const QWidget* parent = w->parentWidget())
        return parent->window();
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top != w && top->isVisible() && qobject_cast<QMainWindow*>(top))
            return top;
    return nullptr;
}

// Sizes a window that has not been sized yet to what its contents ask for.
void settleSize(QWidget* w) {
    if (!w->testAttribute(Qt::WA_Resized))
        w->adjustSize();
}

} // namespace

QList<QRect> screenAreas() {
    QList<QRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.append(screen->availableGeometry());
    return areas;
}

QSize desktopTwips() {
    QRect desktop;
    for (const QScreen* screen : QGuiApplication::screens())
        desktop |= screen->geometry();
    return QSize(std::max(0, desktop.right() + 1), std::max(0, desktop.bottom() + 1)) *
           kTwipsPerPixel;
}

void placeWindow(QWidget* w, const AppContext& ctx, WindowId id) {
    const QList<QRect> areas = screenAreas();
    if (id == WindowId::Main && !ctx.settings.mainSize.isEmpty())
        w->resize(TwipsToSize(ctx.settings.mainSize));
    settleSize(w);
    QRect frame = frameAt(w, TwipsToPoint(ctx.settings.pos(id)));
    const int screen = ScreenFor(frame, areas);
    if (screen >= 0) {
        const QMargins m = frameMargins(w);
        w->resize(FitToScreen(w->size(), w->minimumSizeHint(), m, areas[screen]));
        frame = BringOnScreen(frameAt(w, frame.topLeft()), areas);
    }
    w->move(frame.topLeft());
}

void placeWindow(QWidget* w) {
    settleSize(w);
    const QWidget* over = centreWindow(w);
    const QList<QRect> areas = screenAreas();
    QRect frame = frameAt(w, w->pos());
    if (over)
        frame = CentreOver(frame.size(), over->frameGeometry());
    else if (!areas.isEmpty())
        frame = CentreOver(frame.size(), areas.first());
    w->move(BringOnScreen(frame, areas).topLeft());
}

void rememberWindow(const QWidget* w, AppContext& ctx, WindowId id) {
    // A maximised or minimised window is remembered as it stands when restored.
    const bool restored = !(w->isMaximized() || w->isMinimized()) || !w->normalGeometry().isValid();
    QPoint topLeft = w->pos();
    QSize size = w->size();
    if (!restored) {
        const QMargins m = frameMargins(w);
        topLeft = w->normalGeometry().topLeft() - QPoint(m.left(), m.top());
        size = w->normalGeometry().size();
    }
    const WindowPos at = PointToTwips(topLeft);
    ctx.settings.pos(id) = {AdjFrmTop(at.top, ctx.screenTwips),
                            AdjFrmleft(at.left, ctx.screenTwips)};
    if (id == WindowId::Main)
        ctx.settings.mainSize = SizeToTwips(size);
}

} // namespace kestrel
