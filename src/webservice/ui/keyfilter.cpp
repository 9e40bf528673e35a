// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyfilter.h"

#include "core/errors.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace kestrel {

KeyFilter::KeyFilter(QLineEdit* box, Allowed allowed, ErrorReporter& errors, const char* keyLabel,
                     std::function<void()> onLeave, const char* leaveLabel)
    : QObject(box), m_box(box), m_allowed(std::move(allowed)), m_errors(errors),
      m_keyLabel(keyLabel), m_onLeave(std::move(onLeave)),
      m_leaveLabel(leaveLabel ? leaveLabel : keyLabel) {
    box->installEventFilter(this);
    // The context menu's paste would get around the rule.
    box->setContextMenuPolicy(Qt::NoContextMenu);
}

QString KeyFilter::filtered(const QString& text) const {
    QString out;
    for (QChar c : text)
        if (m_allowed(c))
            out += c;
    return out;
}

void KeyFilter::leave() {
    if (m_onLeave)
        Trap(m_errors, m_leaveLabel, [&] { m_onLeave(); });
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_box)
        return false;
    if (event->type() == QEvent::FocusOut) {
        // Leaving means moving to another control of the window, not the window losing focus.
        const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            leave();
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        leave();
        return true;
    }
    return Trap(m_errors, m_keyLabel, [&] {
        if (key->matches(QKeySequence::Paste)) {
            m_box->insert(filtered(QGuiApplication::clipboard()->text()));
            return true;
        }
        // Editing and moving keys, and shortcuts, are not typed characters.
        switch (key->key()) {
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Escape:
            return false;
        default:
            break;
        }
        if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
            return false;
        const QString text = key->text();
        return !text.isEmpty() && filtered(text) != text;
    });
}

} // namespace kestrel
