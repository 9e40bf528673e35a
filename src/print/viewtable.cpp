// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewtable.h"

#include <QHeaderView>
#include <QTableView>
#include <QTreeView>

namespace kestrel {

namespace {

Qt::Alignment horizontal(const QVariant& align, Qt::Alignment def) {
    const Qt::Alignment a =
        (align.isValid() ? Qt::Alignment(align.toInt()) : def) & Qt::AlignHorizontal_Mask;
    if (a & Qt::AlignRight)
        return Qt::AlignRight;
    if (a & Qt::AlignHCenter)
        return Qt::AlignHCenter;
    return Qt::AlignLeft;
}

} // namespace

PrintTable TableFromView(const QAbstractItemView& view) {
    PrintTable table;
    table.font = view.font();
    const QAbstractItemModel* model = view.model();
    if (model == nullptr)
        return table;
    const QHeaderView* header = nullptr;
    if (auto* tree = qobject_cast<const QTreeView*>(&view))
        header = tree->header();
    else if (auto* grid = qobject_cast<const QTableView*>(&view))
        header = grid->horizontalHeader();

    // Columns in the order the user sees them.
    QList<int> columns;
    const int count = model->columnCount(view.rootIndex());
    for (int visual = 0; visual < count; ++visual) {
        const int logical = header ? header->logicalIndex(visual) : visual;
        if (logical < 0 || (header && header->isSectionHidden(logical)))
            continue;
        PrintColumn col;
        col.caption = model->headerData(logical, Qt::Horizontal, Qt::DisplayRole).toString();
        col.width = header ? header->sectionSize(logical) : 80;
        // The column's alignment is the one its texts show with: the caption's when the list
        // sets one, else that of the column's first cell; a header's own centring of captions
        // is only how the header draws.
        QVariant align = model->headerData(logical, Qt::Horizontal, Qt::TextAlignmentRole);
        if (!align.isValid() && model->rowCount(view.rootIndex()) > 0)
            align = model->index(0, logical, view.rootIndex()).data(Qt::TextAlignmentRole);
        col.align = horizontal(align, Qt::AlignLeft);
        columns.append(logical);
        table.columns.append(col);
    }

    const int rows = model->rowCount(view.rootIndex());
    for (int r = 0; r < rows; ++r) {
        PrintRow row;
        for (int logical : columns) {
            const QModelIndex index = model->index(r, logical, view.rootIndex());
            PrintCell cell;
            cell.text = index.data(Qt::DisplayRole).toString();
            const QVariant fg = index.data(Qt::ForegroundRole);
            if (fg.canConvert<QBrush>() && fg.value<QBrush>().style() != Qt::NoBrush)
                cell.color = fg.value<QBrush>().color();
            else if (fg.canConvert<QColor>() && fg.value<QColor>().isValid())
                cell.color = fg.value<QColor>();
            const QVariant font = index.data(Qt::FontRole);
            cell.bold = font.isValid() && font.value<QFont>().bold();
            row.append(cell);
        }
        table.rows.append(row);
    }
    return table;
}

} // namespace kestrel
