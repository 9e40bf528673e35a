// SPDX-License-Identifier: GPL-3.0-or-later
// The verify window: lists the channels an import has just written into the current bank, lets
// the user shorten or correct their descriptions, and accepts the bank only when every
// description fits the scanner.
#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrel {

class AppContext;
struct BankRec;

class FrmVerifyRRChan : public QWidget {
    Q_OBJECT
public:
    // Works on the bank shown when it opens (CurProfile, CurBank), slots 1..ImportCount. It is
    // a window of its own over parent, not modal.
    explicit FrmVerifyRRChan(AppContext& ctx, QWidget* parent = nullptr);

    // The import's undo step: edits made here and Finish join it (History merge id).
    void setStepId(int id) { m_stepId = id; }

    // (Re)builds the list from the bank.
    void FillChannels();
    // True when every listed description fits; otherwise brings the first long one into view.
    bool VerifyChannels();

    bool isOpen() const { return m_open; }

    QTreeWidget* ChanLV() const { return m_chanLv; }
    QLineEdit* ChanDescTxt() const { return m_descTxt; }
    QPushButton* UpdateDescBtn() const { return m_updateBtn; }
    QPushButton* FinishBtn() const { return m_finishBtn; }
    QPushButton* AbortBtn() const { return m_abortBtn; }

Q_SIGNALS:
    // The window has closed; finished is true when the user accepted the bank with Finish.
    void closed(bool finished);

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void ChanLV_ItemClick(QTreeWidgetItem* item);
    void UpdateDescBtn_Click();
    void FinishBtn_Click();
    BankRec& bank();

    AppContext& m_ctx;
    int m_profile;
    int m_bank;
    int m_stepId = -1;
    QTreeWidget* m_chanLv;
    QLineEdit* m_descTxt;
    QPushButton* m_updateBtn;
    QPushButton* m_finishBtn;
    QPushButton* m_abortBtn;
    bool m_open = false;
    bool m_finished = false;
};

} // namespace kestrel
