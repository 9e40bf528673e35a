// SPDX-License-Identifier: GPL-3.0-or-later
// The "Organize Banks" window: the ten bank names of the current profile in a list whose rows
// are dragged into a new order or sorted, then applied with "Save".
#pragma once

#include "bankorganizer.h"

#include <QWidget>

class QPushButton;

namespace kestrel {

class XfrListView;

class FrmBankEdit : public QWidget {
    Q_OBJECT
public:
    explicit FrmBankEdit(AppContext& ctx, QWidget* parent = nullptr);

    XfrListView* SrcBanks() const { return m_list; }
    QPushButton* SrcSortByDescBtn() const { return m_sortBtn; }
    QPushButton* SaveBtn() const { return m_saveBtn; }
    const BankOrganizer& organizer() const { return m_organizer; }

Q_SIGNALS:
    // The profile's banks were replaced: the main window redraws its bank tabs.
    void banksApplied();
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Load();
    void FillLvBanks();
    bool dropOnRow(const QString& text, int row);

    AppContext& m_ctx;
    BankOrganizer m_organizer;
    XfrListView* m_list;
    QPushButton* m_sortBtn;
    QPushButton* m_saveBtn;
};

} // namespace kestrel
