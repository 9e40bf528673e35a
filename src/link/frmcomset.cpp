// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmcomset.h"

#include "kestrelcomm.h"
#include "ui/buttonrow.h"
#include "ui/windowplace.h"

#include "core/appcontext.h"

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
    auto* buttons = acceptCancelRow(this, m_accept, m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(m_device);
    layout->addLayout(buttons);

    connect(m_accept, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmComSet -> CmdAccept", [&] {
            m_ctx.settings.CommPort = qint16(m_choice);
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
        const QString device = m_link.portMap().device(current);
        m_device->setText(QStringLiteral("COM") + QString::number(current) + QStringLiteral(" = ") +
                          (device.isEmpty() ? QStringLiteral("(no device)") : device));
    });
}

void FrmComSet::choose(int index) {
    Trap(m_ctx.errors, "FrmComSet -> ComPortOpt", [&] {
        const QVariant port = m_opts[size_t(index)]->property(kPortProperty);
        if (!port.isValid())
            return;
        const int n = port.toInt();
        const QString device = m_link.portMap().device(n);
        m_device->setText(QStringLiteral("COM") + QString::number(n) + QStringLiteral(" = ") +
                          device);
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
