// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkwindows.h"

#include "core/appcontext.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QWidget>

namespace kestrel {

namespace {
constexpr int kTwipsPerPixel = 15;
}

void placeWindow(QWidget* w, const AppContext& ctx, WindowId id) {
    const WindowPos& pos = ctx.settings.pos(id);
    w->move(pos.left / kTwipsPerPixel, pos.top / kTwipsPerPixel);
}

void rememberWindow(const QWidget* w, AppContext& ctx, WindowId id) {
    ctx.settings.pos(id) = {qint32(w->y() * kTwipsPerPixel), qint32(w->x() * kTwipsPerPixel)};
}

QHBoxLayout* acceptCancelRow(QWidget* owner, QPushButton*& accept, QPushButton*& cancel) {
    accept = new QPushButton(QStringLiteral("Accept"), owner);
    accept->setObjectName(QStringLiteral("CmdAccept"));
    cancel = new QPushButton(QStringLiteral("Cancel"), owner);
    cancel->setObjectName(QStringLiteral("CmdCancel"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(accept);
    row->addWidget(cancel);
    return row;
}

} // namespace kestrel
