// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmfeeds.h"

#include "core/appcontext.h"
#include "import/searchtree.h"
#include "ui/windowplace.h"
#include "webservice/rrclient.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrel {

FrmFeeds::FrmFeeds(AppContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_lv1(new QTreeWidget(this)) {
    setWindowTitle(QStringLiteral("My Audio Feeds"));
    m_lv1->setObjectName(QStringLiteral("Lv1"));
    m_lv1->setRootIsDecorated(false);
    m_lv1->setHeaderLabels({QStringLiteral("Feed Id"), QStringLiteral("Description"),
                            QStringLiteral("Hostname"), QStringLiteral("Port"),
                            QStringLiteral("Mount"), QStringLiteral("Password")});
    // Clicking a column header changes nothing: the list keeps the service's order.
    m_lv1->header()->setSectionsClickable(false);
    m_lv1->setSortingEnabled(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_lv1);
    resize(720, 240);
    placeWindow(this);
    Load();
}

void FrmFeeds::Load() {
    Trap(m_ctx.errors, "FrmFeeds -> Load", [&] {
        const QPoint pos = m_ctx.component<SearchSettings>().FeedsPos;
        if (pos.x() >= 0 && pos.y() >= 0)
            move(pos);
        for (const TypFeed& f : std::as_const(m_ctx.component<RRClient>().Feeds))
            new QTreeWidgetItem(m_lv1, {QString::number(f.feedId), f.descr, f.hostname, f.port,
                                        f.mount, f.password});
        for (int c = 0; c < m_lv1->columnCount(); ++c)
            m_lv1->resizeColumnToContents(c);
    });
}

void FrmFeeds::closeEvent(QCloseEvent* event) {
    Unload();
    QWidget::closeEvent(event);
}

void FrmFeeds::Unload() {
    if (m_closed)
        return;
    m_closed = true;
    Trap(m_ctx.errors, "FrmFeeds -> Unload",
         [&] { m_ctx.component<SearchSettings>().FeedsPos = pos(); });
    Q_EMIT closed();
}

} // namespace kestrel
