// SPDX-License-Identifier: GPL-3.0-or-later
// The "Organize Channels" window: a source and a destination channel list, each with a bank
// tab strip; rows dragged from the source reorder a bank or move channels into another bank.
#pragma once

#include "chnlorganizer.h"

#include <QWidget>

class QPushButton;
class QTabBar;

namespace kestrel {

class XfrListView;

class FrmChnlEdit : public QWidget {
    Q_OBJECT
public:
    explicit FrmChnlEdit(AppContext& ctx, QWidget* parent = nullptr);

    QTabBar* SrcBankSelTab() const { return m_tabs[ChannelOrganizer::Source]; }
    QTabBar* DestBankSelTab() const { return m_tabs[ChannelOrganizer::Destination]; }
    XfrListView* SrcChannels() const { return m_lists[ChannelOrganizer::Source]; }
    XfrListView* DestChannels() const { return m_lists[ChannelOrganizer::Destination]; }
    QPushButton* SrcSortByFreqBtn() const { return m_byFreq[ChannelOrganizer::Source]; }
    QPushButton* SrcSortByDescBtn() const { return m_byDesc[ChannelOrganizer::Source]; }
    QPushButton* DestSortByFreqBtn() const { return m_byFreq[ChannelOrganizer::Destination]; }
    QPushButton* DestSortByDescBtn() const { return m_byDesc[ChannelOrganizer::Destination]; }
    QPushButton* SaveBtn() const { return m_saveBtn; }
    const ChannelOrganizer& organizer() const { return m_organizer; }

Q_SIGNALS:
    // Channels were written into the profile: the main window redraws the shown bank.
    void channelsSaved();
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    using Side = ChannelOrganizer::Side;
    void Load();
    void fillBank(Side side);
    void refresh(Side side);
    void bankTabChosen(Side side, int index);
    void sortSide(Side side, ChannelSortKey key, const char* label);
    void SaveCurrent();
    bool dropOn(Side side, const QString& text, int row);

    AppContext& m_ctx;
    ChannelOrganizer m_organizer;
    QTabBar* m_tabs[2];
    XfrListView* m_lists[2];
    QPushButton* m_byFreq[2];
    QPushButton* m_byDesc[2];
    QPushButton* m_saveBtn;
    bool m_ignoreTab[2] = {false, false};
};

} // namespace kestrel
