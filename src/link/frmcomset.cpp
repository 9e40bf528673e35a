// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmcomset.h"

#include "kestrelcomm.h"
#include "ui/buttonrow.h"
#include "ui/windowplace.h"

#include "core/appcontext.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kestrel {

namespace {
const char* const kPortProperty = "port";
}

FrmComSet::FrmComSet(AppContext& ctx, KestrelComm& link, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_link(link) {
    setObjectName(QStringLiteral("FrmComSet"));
    setWindowTitle(QStringLiteral("COM Settings"));
    auto* frame = new QGroupBox(QStringLiteral("COM Port"), this);
    auto* grid = new QGridLayout(frame);
    for (int i = 0; i < kButtons; ++i) {
        auto* opt = new QRadioButton(frame);
        opt->setObjectName(QStringLiteral("ComPortOpt%1").arg(i));
        grid->addWidget(opt, i % 8, i / 8);
        connect(opt, &QRadioButton::clicked, this, [this, i] { choose(i); });
        m_opts[size_t(i)] = opt;
    }
    m_device = new QLabel(this);
    m_device->setObjectName(QStringLiteral("DeviceLbl"));
    m_path = new QComboBox(this);
    m_path->setObjectName(QStringLiteral("DevicePathCbo"));
    m_path->setEditable(true);
    m_path->setInsertPolicy(QComboBox::NoInsert);
    m_path->setMinimumContentsLength(28);
    m_path->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_path->setToolTip(QStringLiteral("The device the chosen COM number opens: pick one found "
                                      "or type its path"));
    auto* pathRow = new QFormLayout;
    pathRow->addRow(QStringLiteral("&Device:"), m_path);
    auto* buttons = acceptCancelRow(this, m_accept, m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(m_device);
    layout->addLayout(pathRow);
    layout->addLayout(buttons);

    // A device picked from the list puts its bare path in the field, without maker and product.
    connect(m_path, &QComboBox::activated, this, [this](int index) {
        const QString path = m_path->itemData(index).toString();
        if (!path.isEmpty())
            m_path->setEditText(path);
    });
    connect(m_path, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (text.trimmed() != m_link.portMap().device(m_choice)) {
            m_accept->setEnabled(true);
            m_cancel->setEnabled(true);
        }
    });

    connect(m_accept, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmComSet -> CmdAccept", [&] {
            m_ctx.settings.CommPort = qint16(m_choice);
            storeDevice();
            m_accepted = true;
            close();
        });
    });
    connect(m_cancel, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmComSet -> CmdCancel", [&] {
            m_accepted = false;
            close();
        });
    });

    Trap(m_ctx.errors, "FrmComSet -> Load", [&] {
        m_choice = m_ctx.settings.CommPort;
        m_accepted = false;
        placeWindow(this);
        fillDevices();
        ShowPorts(m_choice);
        m_cancel->setEnabled(false);
        m_accept->setEnabled(true);
    });
}

void FrmComSet::ShowPorts(int current) {
    Trap(m_ctx.errors, "FrmComSet -> ShowPorts", [&] {
        int k = 0;
        for (int n = 1; n <= 255 && k < kButtons; ++n) {
            const bool available = m_link.COMAvailable(qint16(n));
            if (n != current && !available)
                continue;
            QRadioButton* opt = m_opts[size_t(k)];
            opt->setProperty(kPortProperty, n);
            opt->setText(QStringLiteral("COM") + QString::number(n));
            opt->setToolTip(m_link.portMap().device(n));
            opt->setEnabled(available);
            opt->setChecked(n == current);
            ++k;
        }
        // A "Not Used" button stands for no port, so it cannot be chosen.
        for (; k < kButtons; ++k) {
            QRadioButton* opt = m_opts[size_t(k)];
            opt->setProperty(kPortProperty, QVariant());
            opt->setText(QStringLiteral("Not Used"));
            opt->setToolTip(QString());
            opt->setEnabled(false);
            opt->setChecked(false);
        }
        showDevice(current);
    });
}

void FrmComSet::fillDevices() {
    const QSignalBlocker block(m_path);
    m_path->clear();
    for (const SerialDevice& d : FindSerialDevices())
        m_path->addItem(d.label, d.path);
}

void FrmComSet::showDevice(int comNumber) {
    const QString device = m_link.portMap().device(comNumber);
    m_device->setText(QStringLiteral("COM") + QString::number(comNumber) + QStringLiteral(" = ") +
                      (device.isEmpty() ? QStringLiteral("(no device)") : device));
    const QSignalBlocker block(m_path);
    m_path->setEditText(device);
}

// The chosen number keeps the typed or picked device: an entry of the [Ports] settings, none
// when it is the number's own default.
void FrmComSet::storeDevice() {
    const QString path = m_path->currentText().trimmed();
    QMap<int, QString>& overrides = m_ctx.settings.PortOverrides;
    if (path == m_link.portMap().device(m_choice))
        return;
    if (path.isEmpty() || path == PortMap::defaultDevice(m_choice))
        overrides.remove(m_choice);
    else
        overrides.insert(m_choice, path);
    m_link.setPortMap(PortMap(overrides));
}

void FrmComSet::choose(int index) {
    Trap(m_ctx.errors, "FrmComSet -> ComPortOpt", [&] {
        const QVariant port = m_opts[size_t(index)]->property(kPortProperty);
        if (!port.isValid())
            return;
        const int n = port.toInt();
        showDevice(n);
        if (n == m_choice)
            return;
        m_choice = n;
        m_accept->setEnabled(true);
        m_cancel->setEnabled(true);
    });
}

// Escape, the frame's close box and both buttons all end here.
void FrmComSet::hideEvent(QHideEvent* event) {
    Trap(m_ctx.errors, "FrmComSet -> Unload",
         [&] { rememberWindow(this, m_ctx, WindowId::COMSet); });
    QDialog::hideEvent(event);
}

} // namespace kestrel
