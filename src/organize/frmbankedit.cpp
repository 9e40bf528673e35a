// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmbankedit.h"

#include "core/filereport.h"
#include "core/freq.h"
#include "xfrlistview.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

namespace kestrel {

FrmBankEdit::FrmBankEdit(AppContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_organizer(ctx) {
    setObjectName(QStringLiteral("FrmBankEdit"));
    setWindowTitle(QStringLiteral("Organize Banks"));
    auto* frame = new QGroupBox(QStringLiteral("Banks"), this);
    m_list = new XfrListView(frame);
    m_list->setObjectName(QStringLiteral("SrcBanks"));
    m_list->setHeaderLabels({QStringLiteral("Bank"), QStringLiteral("Description")});
    m_list->setDragSource(true);
    m_list->setDropHandler([this](const QString& text, int row) { return dropOnRow(text, row); });
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->addWidget(m_list);

    m_sortBtn = new QPushButton(QStringLiteral("Sort by Description"), this);
    m_sortBtn->setObjectName(QStringLiteral("SrcSortByDescBtn"));
    m_saveBtn = new QPushButton(QStringLiteral("Save"), this);
    m_saveBtn->setObjectName(QStringLiteral("SaveBtn"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_sortBtn);
    buttons->addStretch();
    buttons->addWidget(m_saveBtn);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);
    resize(360, 320);

    connect(m_sortBtn, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmBankEdit -> SrcSortByDescBtn", [&] {
            m_organizer.sort();
            FillLvBanks();
            m_saveBtn->setEnabled(true);
        });
    });
    connect(m_saveBtn, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmBankEdit -> SaveBtn", [&] {
            if (!m_organizer.changed())
                return;
            QApplication::setOverrideCursor(Qt::WaitCursor);
            m_saveBtn->setEnabled(false);
            const bool applied = m_organizer.save();
            QApplication::restoreOverrideCursor();
            if (!ReportWriteFailures(m_ctx))
                m_saveBtn->setEnabled(m_organizer.changed());
            if (applied)
                Q_EMIT banksApplied();
        });
    });
    Load();
}

void FrmBankEdit::Load() {
    Trap(m_ctx.errors, "FrmBankEdit -> Load", [&] {
        m_organizer.load(m_ctx.CurProfile);
        m_saveBtn->setEnabled(false);
        FillLvBanks();
    });
}

void FrmBankEdit::FillLvBanks() {
    Trap(m_ctx.errors, "FrmBankEdit -> FillLvBanks", [&] {
        m_list->clear();
        const QStringList& names = m_organizer.names();
        for (int i = 0; i < names.size(); ++i) {
            auto* item = new QTreeWidgetItem(m_list, {Num2(i + 1), names[i]});
            item->setData(0, Qt::UserRole, Num2(i + 1));
        }
        m_list->header()->resizeSections(QHeaderView::ResizeToContents);
    });
}

bool FrmBankEdit::dropOnRow(const QString& text, int row) {
    // The target position is the row's own number.
    const QTreeWidgetItem* item = m_list->topLevelItem(row);
    if (!item || !m_organizer.drop(text, item->text(0).toInt()))
        return false;
    FillLvBanks();
    m_saveBtn->setEnabled(true);
    return true;
}

void FrmBankEdit::closeEvent(QCloseEvent* event) {
    Q_EMIT closed();
    event->accept();
}

} // namespace kestrel
