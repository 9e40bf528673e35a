// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmselcable.h"

#include "kestrelcomm.h"
#include "linkwindows.h"

#include "core/appcontext.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kestrel {

FrmSelCable::FrmSelCable(AppContext& ctx, KestrelComm& link, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_link(link) {
    setObjectName(QStringLiteral("FrmSelCable"));
    setWindowTitle(QStringLiteral("Select Cable Type"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* frame = new QGroupBox(QStringLiteral("Select Your Cable Type"), this);
    m_two = new QRadioButton(QStringLiteral("Two Wire"), frame);
    m_two->setObjectName(QStringLiteral("CableOpt0"));
    m_three = new QRadioButton(QStringLiteral("Three Wire"), frame);
    m_three->setObjectName(QStringLiteral("CableOpt1"));
    auto* opts = new QVBoxLayout(frame);
    opts->addWidget(m_two);
    opts->addWidget(m_three);
    auto* buttons = acceptCancelRow(this, m_accept, m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);

    auto chooser = [this](int cable) {
        return [this, cable] {
            Trap(m_ctx.errors, "FrmSelCable -> CableOpt", [&] { m_choice = cable; });
        };
    };
    connect(m_two, &QRadioButton::clicked, this, chooser(2));
    connect(m_three, &QRadioButton::clicked, this, chooser(3));
    connect(m_accept, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmSelCable -> CmdAccept", [&] {
            m_ctx.settings.KestrelCable = qint16(m_choice);
            m_ctx.markSettingsChanged();
            m_link.setCableType(m_choice);
            close();
        });
    });
    connect(m_cancel, &QPushButton::clicked, this, &QWidget::close);

    Trap(m_ctx.errors, "FrmSelCable -> Load", [&] {
        placeWindow(this, m_ctx, WindowId::SC);
        m_choice = m_ctx.settings.KestrelCable;
        m_two->setChecked(m_choice == 2);
        m_three->setChecked(m_choice == 3);
    });
}

void FrmSelCable::closeEvent(QCloseEvent* event) {
    Trap(m_ctx.errors, "FrmSelCable -> Unload", [&] { rememberWindow(this, m_ctx, WindowId::SC); });
    QWidget::closeEvent(event);
    Q_EMIT closed();
}

} // namespace kestrel
