// SPDX-License-Identifier: GPL-3.0-or-later
// The typing rule of a small input box: which characters it takes from the keyboard or a paste,
// and what leaving the box (focus moving away, or Enter, which the box swallows) does.
#pragma once

#include <QObject>
#include <functional>

class QLineEdit;

namespace kestrel {

class ErrorReporter;

class KeyFilter : public QObject {
    Q_OBJECT
public:
    using Allowed = std::function<bool(QChar)>;

    // Installs itself on the box. keyLabel names the key handler in error reports, leaveLabel
    // the leave handler; onLeave may be empty (Enter is then still swallowed).
    KeyFilter(QLineEdit* box, Allowed allowed, ErrorReporter& errors, const char* keyLabel,
              std::function<void()> onLeave = {}, const char* leaveLabel = nullptr);

    // The characters of text that the box takes, in order.
    QString filtered(const QString& text) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void leave();

    QLineEdit* m_box;
    Allowed m_allowed;
    ErrorReporter& m_errors;
    const char* m_keyLabel;
    std::function<void()> m_onLeave;
    const char* m_leaveLabel;
};

} // namespace kestrel
