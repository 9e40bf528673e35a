// SPDX-License-Identifier: GPL-3.0-or-later
// A one-line box that reports Enter, Escape and leaving it with a pending edit: the in-place
// editors laid over list cells and the profile and bank name boxes.
#pragma once

#include <QLineEdit>

namespace kestrel {

class InplaceEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit InplaceEdit(QWidget* parent = nullptr);

    // Set when the user has changed the text since the box was filled or last committed.
    bool pending() const { return m_pending; }
    void setPending(bool pending) { m_pending = pending; }

    // Refuses the given characters as typed or pasted (a description cannot hold a comma).
    void refuseCharacters(const QString& chars);

Q_SIGNALS:
    void enterPressed();
    void escapePressed();
    void leftBox(); // the box lost the focus (pending() tells whether an edit is pending)

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool m_pending = false;
};

} // namespace kestrel
