// SPDX-License-Identifier: GPL-3.0-or-later
#include "inplaceedit.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

namespace kestrel {

InplaceEdit::InplaceEdit(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textEdited, this, [this] { m_pending = true; });
}

void InplaceEdit::refuseCharacters(const QString& chars) {
    const QRegularExpression re(QStringLiteral("[^") + QRegularExpression::escape(chars) +
                                QStringLiteral("]*"));
    setValidator(new QRegularExpressionValidator(re, this));
}

void InplaceEdit::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->accept();
        Q_EMIT enterPressed();
        return;
    case Qt::Key_Escape:
        event->accept();
        Q_EMIT escapePressed();
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void InplaceEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Opening a menu or switching to another program's window is not leaving the box.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        Q_EMIT leftBox();
}

} // namespace kestrel
