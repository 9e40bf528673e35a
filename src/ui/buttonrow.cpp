// SPDX-License-Identifier: GPL-3.0-or-later
#include "buttonrow.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace kestrel {

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
