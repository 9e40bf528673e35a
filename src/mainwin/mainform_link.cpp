// SPDX-License-Identifier: GPL-3.0-or-later
// The scanner link in the main window: the one link control, its set-up at load, the Scanner
// menu's three uploads with their progress display, the time-out message, and the Options and
// Help items that open the port, cable, trace and error-help windows.
#include "mainform.h"
#include "ui/toolwindow.h"

#include "link/frmcomset.h"
#include "link/frmdebug.h"
#include "link/frmerrs.h"
#include "link/frmselcable.h"
#include "link/kestrelcomm.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>

namespace kestrel {

namespace {

// Lives as a child of the main window and holds what the link's handlers share.
class LinkHooks : public QObject {
public:
    LinkHooks(MainForm& form, KestrelComm& link) : QObject(&form), m_form(form), m_link(link) {
        // Beside the "Sending Bank:" box, the status bar shows how far the upload has come
        // and offers to stop it.
        m_bar = new QProgressBar;
        m_bar->setObjectName(QStringLiteral("UploadProgressBar"));
        m_bar->setFormat(QStringLiteral("%v of %m"));
        m_bar->setTextVisible(true);
        m_bar->setMaximumWidth(
            m_bar->fontMetrics().horizontalAdvance(QStringLiteral("000 of 000")) * 3);
        m_cancelBtn = new QPushButton(MainForm::tr("Cancel"));
        m_cancelBtn->setObjectName(QStringLiteral("UploadCancelBtn"));
        m_cancelBtn->setToolTip(MainForm::tr("Stop after the frame on its way"));
        form.statusBar()->addPermanentWidget(m_bar);
        form.statusBar()->addPermanentWidget(m_cancelBtn);
        m_bar->hide();
        m_cancelBtn->hide();
        connect(m_cancelBtn, &QPushButton::clicked, this, [this] {
            m_cancelBtn->setEnabled(false);
            m_link.cancelUpload();
        });
        connect(&link, &KestrelComm::uploadProgress, this, [this](int n, int total) {
            m_bar->setMaximum(total);
            m_bar->setValue(n);
        });
    }

    void upload(const char* label, const QString& caption, const std::function<void()>& send) {
        // The link keeps the window responsive while it waits, so the menu can be used again
        // before the upload has returned; a second upload waits for the first to end.
        if (m_link.busy())
            return;
        Trap(m_form.ctx().errors, label, [&] {
            setUploadItemsEnabled(false);
            m_form.SndBankTxt()->clear();
            m_form.SndBankTxt()->show();
            m_form.captionLabel(1)->setText(caption);
            m_form.captionLabel(1)->show();
            m_form.statusBar()->clearMessage();
            m_bar->setRange(0, 1);
            m_bar->setValue(0);
            m_bar->show();
            m_cancelBtn->setEnabled(true);
            m_cancelBtn->show();
            send();
            hideProgress();
            m_form.statusBar()->showMessage(UploadSummary(m_link.lastUpload()));
        });
        hideProgress();
        setUploadItemsEnabled(true);
    }

    void hideProgress() {
        m_form.SndBankTxt()->hide();
        m_form.captionLabel(1)->hide();
        m_bar->hide();
        m_cancelBtn->hide();
    }

    void setUploadItemsEnabled(bool on) {
        for (const MenuId id :
             {MenuId::UploadAllBanks, MenuId::UploadCurrBank, MenuId::UploadSrchBank})
            if (QAction* a = m_form.menuItem(id))
                a->setEnabled(on);
    }

    FrmDebug* debugWindow() {
        if (!m_debug) {
            m_debug = new FrmDebug(m_form.ctx(), m_link, &m_form);
            connect(m_debug, &FrmDebug::closed, this, [this] {
                if (QAction* a = m_form.menuItem(MenuId::DebugComm))
                    a->setChecked(false);
            });
            m_debug->show();
        }
        return m_debug;
    }

    MainForm& m_form;
    KestrelComm& m_link;
    QPointer<FrmDebug> m_debug;
    QPointer<FrmSelCable> m_cable;
    QPointer<FrmErrs> m_errs;
    QProgressBar* m_bar = nullptr;
    QPushButton* m_cancelBtn = nullptr;
};

} // namespace

void installLink(MainForm& form) {
    AppContext& ctx = form.ctx();
    auto* link = new KestrelComm(ctx, &form);
    link->setObjectName(QStringLiteral("KestrelComm"));
    auto* hooks = new LinkHooks(form, *link);

    QObject::connect(link, &KestrelComm::SendingChnl, &form,
                     [&form](quint8 n) { form.SndBankTxt()->setText(QString::number(n)); });
    QObject::connect(link, &KestrelComm::SendingSrch, &form,
                     [&form](quint8 n) { form.SndBankTxt()->setText(QString::number(n)); });
    QObject::connect(link, &KestrelComm::RxTimeOut, &form, [&ctx, link, hooks] {
        Trap(ctx.errors, "MainForm -> KestrelComm_RxTimeOut", [&] {
            link->setComPortOpen(false);
            hooks->hideProgress();
            ctx.prompts().message(MainForm::tr("Scanner Timed Out while Receiving!\nPlease "
                                               "Check Connections to Scanner and Try Again"),
                                  QStringLiteral("Kestrel Manager"), Icon::Information,
                                  Buttons::Ok);
        });
    });
    QObject::connect(link, &KestrelComm::DebugInfo, &form,
                     [&ctx, hooks](quint8 list, const QString& text) {
                         Trap(ctx.errors, "MainForm -> KestrelComm_DebugInfo",
                              [&] { hooks->debugWindow()->SetDebugInfo(list, text); });
                     });
    QObject::connect(link, &KestrelComm::Error, &form, [&ctx, hooks](const QString& text) {
        Trap(ctx.errors, "MainForm -> KestrelComm_Error",
             [&] { hooks->debugWindow()->SetDebugInfo(0, text); });
    });

    QObject::connect(
        form.wireMenuItem(MenuId::UploadAllBanks), &QAction::triggered, hooks, [hooks, link] {
            hooks->upload("MainForm -> UploadAllBanksMenuItem", QStringLiteral("Sending Chan:"),
                          [link] { link->SendAllChannels(); });
        });
    QObject::connect(
        form.wireMenuItem(MenuId::UploadCurrBank), &QAction::triggered, hooks, [hooks, link, &ctx] {
            // The bank shown when the command is given, whatever is shown later.
            const quint8 bank = ctx.CurBank;
            hooks->upload("MainForm -> UploadCurrBankMenuItem", QStringLiteral("Sending Chan:"),
                          [link, bank] { link->SendBank(bank); });
        });
    QObject::connect(
        form.wireMenuItem(MenuId::UploadSrchBank), &QAction::triggered, hooks, [hooks, link] {
            hooks->upload("MainForm -> UploadSrchBankMenuItem", QStringLiteral("Sending Srch:"),
                          [link] { link->SendSearch(); });
        });

    QAction* cable = form.wireMenuItem(MenuId::CableType);
    cable->setCheckable(true);
    QObject::connect(cable, &QAction::triggered, hooks, [hooks, cable, link, &ctx, &form] {
        Trap(ctx.errors, "MainForm -> CableTypeMenuItem", [&] {
            showToolWindow(
                cable, hooks->m_cable, [&] { return new FrmSelCable(ctx, *link, &form); },
                WhenOpen::Close);
        });
    });

    QObject::connect(form.wireMenuItem(MenuId::ComPort), &QAction::triggered, hooks,
                     [link, &ctx, &form] {
                         Trap(ctx.errors, "MainForm -> ComPortMenuItem", [&] {
                             FrmComSet window(ctx, *link, &form);
                             window.exec();
                             if (!window.portAccepted())
                                 return;
                             link->setCommPort(ctx.settings.CommPort);
                             link->Initialize();
                             ctx.markSettingsChanged();
                         });
                     });

    QAction* debug = form.wireMenuItem(MenuId::DebugComm);
    debug->setCheckable(true);
    QObject::connect(debug, &QAction::triggered, hooks, [hooks, debug, link, &ctx] {
        Trap(ctx.errors, "MainForm -> DebugCommMenuItem", [&] {
            if (debug->isChecked()) {
                hooks->debugWindow()->show();
                link->setInDebug(true);
            } else {
                link->setInDebug(false);
                if (hooks->m_debug)
                    hooks->m_debug->close();
            }
        });
    });

    QAction* errs = form.wireMenuItem(MenuId::DisplayErrors);
    errs->setCheckable(true);
    QObject::connect(errs, &QAction::triggered, hooks, [hooks, errs, &ctx, &form] {
        Trap(ctx.errors, "MainForm -> DisplayErrorsMenuItem", [&] {
            showToolWindow(
                errs, hooks->m_errs, [&] { return new FrmErrs(ctx, &form); }, WhenOpen::Close);
        });
    });

    // Set-up at load, with the stored port and cable. Its pauses and a message about a port in
    // use come once the window has been painted, from the event loop, so the window is seen at
    // once and stays painted meanwhile; the uploads and the port choice wait for it to end.
    link->setInDebug(false);
    link->setCommPort(ctx.settings.CommPort);
    link->setCableType(ctx.settings.KestrelCable);
    hooks->setUploadItemsEnabled(false);
    QAction* port = form.menuItem(MenuId::ComPort);
    port->setEnabled(false);
    QObject::connect(
        &form, &MainForm::firstPainted, hooks,
        [&form, link, hooks, port] {
            link->Initialize();
            hooks->setUploadItemsEnabled(true);
            port->setEnabled(true);
            Q_EMIT form.linkSetUpDone();
        },
        Qt::QueuedConnection);
}

} // namespace kestrel
