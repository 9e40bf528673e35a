// SPDX-License-Identifier: GPL-3.0-or-later
#include "xfrlistview.h"

#include "arrange.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>

namespace kestrel {

XfrListView::XfrListView(QWidget* parent) : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    setDropIndicatorShown(true);
    // The rows stay where they are when dragged away: the drop handler rebuilds the lists.
    setDefaultDropAction(Qt::CopyAction);
    setDragSource(false);
}

void XfrListView::setDragSource(bool on) {
    setDragEnabled(on);
    setDragDropMode(on ? QAbstractItemView::DragDrop : QAbstractItemView::DropOnly);
}

QString XfrListView::dragPayload() const {
    QStringList texts;
    for (int row = 0; row < topLevelItemCount(); ++row) {
        const QTreeWidgetItem* it = topLevelItem(row);
        if (it->isSelected())
            texts.append(it->text(0));
    }
    return XfrPayload(texts);
}

QStringList XfrListView::mimeTypes() const {
    return {QStringLiteral("text/plain")};
}

QMimeData* XfrListView::mimeData(const QList<QTreeWidgetItem*>& items) const {
    if (items.isEmpty())
        return nullptr;
    auto* data = new QMimeData;
    data->setText(dragPayload());
    return data;
}

Qt::DropActions XfrListView::supportedDropActions() const {
    return Qt::CopyAction | Qt::MoveAction;
}

void XfrListView::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasText())
        event->acceptProposedAction();
    else
        event->ignore();
}

void XfrListView::dragMoveEvent(QDragMoveEvent* event) {
    const bool onRow = itemAt(event->position().toPoint()) != nullptr;
    if (event->mimeData()->hasText() && onRow)
        event->acceptProposedAction();
    else
        event->ignore();
}

void XfrListView::dropEvent(QDropEvent* event) {
    const QMimeData* data = event->mimeData();
    QTreeWidgetItem* target = itemAt(event->position().toPoint());
    if (!data || !data->hasText() || !target || !m_onDrop) {
        event->ignore();
        return;
    }
    if (m_onDrop(data->text(), indexOfTopLevelItem(target))) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace kestrel
