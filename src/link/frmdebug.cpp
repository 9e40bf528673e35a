// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmdebug.h"

#include "kestrelcomm.h"
#include "ui/windowplace.h"

#include "core/appcontext.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QListWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace kestrel {

FrmDebug::FrmDebug(AppContext& ctx, KestrelComm& link, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_link(link) {
    setObjectName(QStringLiteral("FrmDebug"));
    setWindowTitle(QStringLiteral("Debug"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_check = new QCheckBox(QStringLiteral("Log Comm To File \"Debug.log\""), this);
    m_check->setObjectName(QStringLiteral("Check1"));
    auto* lists = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        auto* lw = new QListWidget(this);
        lw->setObjectName(QStringLiteral("LogWnd%1").arg(i));
        lists->addWidget(lw);
        // A line wider than the list can still be read in full.
        connect(lw, &QListWidget::itemClicked, this, [this, lw](QListWidgetItem* item) {
            Trap(m_ctx.errors, "FrmDebug -> LogWnd", [&] { lw->setToolTip(item->text()); });
        });
        m_lists[i] = lw;
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_check);
    layout->addLayout(lists);
    connect(m_check, &QCheckBox::toggled, this, &FrmDebug::setLogging);
    resize(640, 320);
    placeWindow(this);

    Trap(m_ctx.errors, "FrmDebug -> Load", [&] {
        m_lists[0]->clear();
        m_lists[1]->clear();
    });
}

QString FrmDebug::logPath() const {
    return QDir(m_ctx.appDir()).filePath(QStringLiteral("Debug.log"));
}

void FrmDebug::SetDebugInfo(int list, const QString& text) {
    Trap(m_ctx.errors, "FrmDebug -> SetDebugInfo", [&] {
        QListWidget* lw = m_lists[list == 1 ? 1 : 0];
        lw->addItem(text);
        lw->setCurrentRow(lw->count() - 1);
    });
}

void FrmDebug::setLogging(bool on) {
    DebugLog& log = m_link.debugLog();
    if (!on) {
        log.close();
        return;
    }
    if (!log.open(logPath())) {
        m_ctx.prompts().message(QStringLiteral("FrmDebug Error: ") + QString::number(err::FileIO) +
                                    QStringLiteral(" - ") + log.errorString() +
                                    QStringLiteral(" - ") + QStringLiteral("FrmDebug") +
                                    QLatin1Char('\n') + logPath(),
                                QStringLiteral("Kestrel Manager"), Icon::Critical, Buttons::Ok);
        const QSignalBlocker block(m_check);
        m_check->setChecked(false);
    }
}

void FrmDebug::closeEvent(QCloseEvent* event) {
    Trap(m_ctx.errors, "FrmDebug -> Unload", [&] {
        m_link.debugLog().close();
        m_link.setInDebug(false);
    });
    QWidget::closeEvent(event);
    Q_EMIT closed();
}

} // namespace kestrel
