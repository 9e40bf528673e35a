// SPDX-License-Identifier: GPL-3.0-or-later
// The cable window: two-wire or three-wire, stored with the settings and pushed to the link.
#pragma once

#include <QWidget>

class QPushButton;
class QRadioButton;

namespace kestrel {

class AppContext;
class KestrelComm;

class FrmSelCable : public QWidget {
    Q_OBJECT
public:
    FrmSelCable(AppContext& ctx, KestrelComm& link, QWidget* parent = nullptr);

    int choice() const { return m_choice; }
    QRadioButton* CableOpt(int i) const { return i == 0 ? m_two : m_three; }
    QPushButton* CmdAccept() const { return m_accept; }
    QPushButton* CmdCancel() const { return m_cancel; }

Q_SIGNALS:
    // The window has closed, by any means; the owner removes its menu check mark.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    AppContext& m_ctx;
    KestrelComm& m_link;
    QRadioButton* m_two;
    QRadioButton* m_three;
    QPushButton* m_accept;
    QPushButton* m_cancel;
    int m_choice = 2;
};

} // namespace kestrel
