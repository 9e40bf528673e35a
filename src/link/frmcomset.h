// SPDX-License-Identifier: GPL-3.0-or-later
// The port window: lists the ports that can be opened now (and the stored one), shows which
// device each COM number is, lets the user give the chosen number another device (one of those
// found, or any path), and stores the user's choice.
#pragma once

#include <QDialog>
#include <array>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace kestrel {

class AppContext;
class KestrelComm;

class FrmComSet : public QDialog {
    Q_OBJECT
public:
    static constexpr int kButtons = 16;

    FrmComSet(AppContext& ctx, KestrelComm& link, QWidget* parent = nullptr);

    // Set when the user accepted; read by the owner after the window has closed.
    bool portAccepted() const { return m_accepted; }
    int choice() const { return m_choice; }

    void ShowPorts(int current);

    QRadioButton* ComPortOpt(int i) const { return m_opts[size_t(i)]; }
    QPushButton* CmdAccept() const { return m_accept; }
    QPushButton* CmdCancel() const { return m_cancel; }
    // The device path of the chosen COM number, with the serial devices found to choose from.
    QComboBox* DevicePathCbo() const { return m_path; }

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void choose(int index);
    void remember();
    void fillDevices();
    void showDevice(int comNumber);
    void storeDevice();

    AppContext& m_ctx;
    KestrelComm& m_link;
    std::array<QRadioButton*, kButtons> m_opts{};
    QPushButton* m_accept;
    QPushButton* m_cancel;
    QLabel* m_device;
    QComboBox* m_path;
    int m_choice = 1;
    bool m_accepted = false;
};

} // namespace kestrel
