// SPDX-License-Identifier: GPL-3.0-or-later
// A report-style list whose rows are dragged as the "XFR,..." text payload and which hands every
// text dropped on a row to a handler; drops of anything else are refused.
#pragma once

#include <QTreeWidget>
#include <functional>

namespace kestrel {

class XfrListView : public QTreeWidget {
    Q_OBJECT
public:
    // Gets the dropped text and the target row (from 0); true when the drop was taken.
    using DropHandler = std::function<bool(const QString& text, int row)>;

    explicit XfrListView(QWidget* parent = nullptr);

    void setDropHandler(DropHandler handler) { m_onDrop = std::move(handler); }
    // Whether rows can be dragged from this list.
    void setDragSource(bool on);
    // The payload of the selected rows, in list order.
    QString dragPayload() const;

protected:
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
    Qt::DropActions supportedDropActions() const override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    DropHandler m_onDrop;
};

} // namespace kestrel
