// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmtalkgrouplist.h"

#include "core/appcontext.h"
#include "core/filereport.h"
#include "import/talkgrouplist.h"
#include "ui/windowplace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrel {

FrmTalkgroupList::FrmTalkgroupList(AppContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmTalkgroupList"));
    setWindowTitle(QStringLiteral("Compare Talk Groups"));
    m_list = new QTreeWidget(this);
    m_list->setRootIsDecorated(false);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setHeaderLabels(TalkgroupColumns());
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_copy = new QPushButton(QStringLiteral("&Copy"), this);
    m_save = new QPushButton(QStringLiteral("&Save as CSV..."), this);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_copy);
    buttons->addWidget(m_save);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
    connect(m_copy, &QPushButton::clicked, this, &FrmTalkgroupList::copyRows);
    connect(m_save, &QPushButton::clicked, this, &FrmTalkgroupList::saveCsv);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    resize(640, 400);
    placeWindow(this);
}

void FrmTalkgroupList::fill(const GroupIdList& list) {
    m_list->clear();
    for (const QStringList& row : TalkgroupRows(list)) {
        auto* item = new QTreeWidgetItem(m_list, row);
        item->setTextAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
    }
}

QList<QStringList> FrmTalkgroupList::shownRows(bool selectedOnly) const {
    QList<QStringList> rows;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = m_list->topLevelItem(i);
        if (selectedOnly && !item->isSelected())
            continue;
        QStringList row;
        for (int c = 0; c < m_list->columnCount(); ++c)
            row.append(item->text(c));
        rows.append(row);
    }
    return rows;
}

void FrmTalkgroupList::copyRows() {
    Trap(m_ctx.errors, "FrmTalkgroupList -> Copy", [&] {
        const bool selected = !m_list->selectedItems().isEmpty();
        QGuiApplication::clipboard()->setText(TalkgroupText(shownRows(selected)));
    });
}

void FrmTalkgroupList::saveCsv() {
    Trap(m_ctx.errors, "FrmTalkgroupList -> SaveCsv", [&] {
        FileDialogOptions o;
        o.title = QStringLiteral("Save as CSV");
        o.startDir = m_ctx.appDir();
        o.pattern = QStringLiteral("*.csv");
        o.defaultExt = QStringLiteral("csv");
        o.presetName = QStringLiteral("Talkgroups.csv");
        const std::optional<QString> path = m_ctx.prompts().saveFile(o);
        if (path && !SaveBytes(m_ctx, TalkgroupCsv(shownRows(false)), *path))
            ReportWriteFailures(m_ctx);
    });
}

} // namespace kestrel
