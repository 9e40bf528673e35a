// SPDX-License-Identifier: GPL-3.0-or-later
// The Compare list: the talk groups Compare collected (decimal id, description, alpha tag, tag,
// mode), with Copy (the selected rows, or all) and Save as CSV.
#pragma once

#include <QWidget>

class QPushButton;
class QTreeWidget;

namespace kestrel {

class AppContext;
class GroupIdList;

class FrmTalkgroupList : public QWidget {
    Q_OBJECT
public:
    FrmTalkgroupList(AppContext& ctx, QWidget* parent = nullptr);

    // Shows the list's talk groups, replacing those shown before.
    void fill(const GroupIdList& list);
    void copyRows();
    void saveCsv();

    QTreeWidget* list() const { return m_list; }
    QPushButton* copyButton() const { return m_copy; }
    QPushButton* saveButton() const { return m_save; }

private:
    QList<QStringList> shownRows(bool selectedOnly) const;

    AppContext& m_ctx;
    QTreeWidget* m_list;
    QPushButton* m_copy;
    QPushButton* m_save;
};

} // namespace kestrel
