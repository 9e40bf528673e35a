// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmchnledit.h"

#include "core/freq.h"
#include "xfrlistview.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

namespace kestrel {

FrmChnlEdit::FrmChnlEdit(AppContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_organizer(ctx) {
    setObjectName(QStringLiteral("FrmChnlEdit"));
    setWindowTitle(QStringLiteral("Organize Channels"));
    auto* sides = new QHBoxLayout;
    const char* frameTitles[2] = {"Source", "Destination"};
    const char* prefixes[2] = {"Src", "Dest"};
    for (Side side : {ChannelOrganizer::Source, ChannelOrganizer::Destination}) {
        const QString prefix = QString::fromLatin1(prefixes[side]);
        auto* frame = new QGroupBox(QString::fromLatin1(frameTitles[side]), this);
        m_tabs[side] = new QTabBar(frame);
        m_tabs[side]->setObjectName(prefix + QStringLiteral("BankSelTab"));
        m_tabs[side]->setExpanding(false);
        m_tabs[side]->setUsesScrollButtons(true);
        m_lists[side] = new XfrListView(frame);
        m_lists[side]->setObjectName(prefix + QStringLiteral("Channels"));
        m_lists[side]->setHeaderLabels({QStringLiteral("Channel"), QStringLiteral("Frequency"),
                                        QStringLiteral("Description")});
        m_lists[side]->setDragSource(side == ChannelOrganizer::Source);
        m_lists[side]->setDropHandler(
            [this, side](const QString& text, int row) { return dropOn(side, text, row); });
        m_byFreq[side] = new QPushButton(QStringLiteral("Sort by Frequency"), frame);
        m_byFreq[side]->setObjectName(prefix + QStringLiteral("SortByFreqBtn"));
        m_byDesc[side] = new QPushButton(QStringLiteral("Sort by Description"), frame);
        m_byDesc[side]->setObjectName(prefix + QStringLiteral("SortByDescBtn"));
        auto* buttons = new QHBoxLayout;
        buttons->addWidget(m_byFreq[side]);
        buttons->addWidget(m_byDesc[side]);
        if (side == ChannelOrganizer::Source) {
            m_saveBtn = new QPushButton(QStringLiteral("Save"), frame);
            m_saveBtn->setObjectName(QStringLiteral("SaveBtn"));
            buttons->addWidget(m_saveBtn);
        }
        auto* frameLayout = new QVBoxLayout(frame);
        frameLayout->addWidget(m_tabs[side]);
        frameLayout->addWidget(m_lists[side]);
        frameLayout->addLayout(buttons);
        sides->addWidget(frame);
    }
    auto* hint = new QLabel(QStringLiteral("To Move Channels from one Bank to another, Click "
                                           "Selected Channels in Source Bank, Hold & Drag to "
                                           "Source/Destination Bank"),
                            this);
    hint->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addLayout(sides);
    resize(760, 560);

    using CO = ChannelOrganizer;
    connect(m_byFreq[CO::Source], &QPushButton::clicked, this, [this] {
        sortSide(CO::Source, ChannelSortKey::Frequency, "FrmChnlEdit -> SrcSortByFreqBtn");
    });
    connect(m_byDesc[CO::Source], &QPushButton::clicked, this, [this] {
        sortSide(CO::Source, ChannelSortKey::Description, "FrmChnlEdit -> SrcSortByDescBtn");
    });
    connect(m_byFreq[CO::Destination], &QPushButton::clicked, this, [this] {
        sortSide(CO::Destination, ChannelSortKey::Frequency, "FrmChnlEdit -> DestSortByFreqBtn");
    });
    connect(m_byDesc[CO::Destination], &QPushButton::clicked, this, [this] {
        sortSide(CO::Destination, ChannelSortKey::Description,
                 "FrmChnlEdit -> DestSortByDescBtn_Click");
    });
    connect(m_saveBtn, &QPushButton::clicked, this, &FrmChnlEdit::SaveCurrent);
    Load();
    for (Side side : {CO::Source, CO::Destination})
        connect(m_tabs[side], &QTabBar::currentChanged, this,
                [this, side](int index) { bankTabChosen(side, index); });
}

void FrmChnlEdit::Load() {
    Trap(m_ctx.errors, "FrmChnlEdit -> Load", [&] {
        m_organizer.load(m_ctx.CurProfile);
        for (Side side : {ChannelOrganizer::Source, ChannelOrganizer::Destination}) {
            QTabBar* tabs = m_tabs[side];
            while (tabs->count() > 0)
                tabs->removeTab(0);
            for (int b = 1; b <= BankCount; ++b)
                tabs->addTab(m_ctx.cur().Banks[b].FileName);
            tabs->setCurrentIndex(0);
            fillBank(side);
        }
        m_saveBtn->setEnabled(false);
    });
}

void FrmChnlEdit::fillBank(Side side) {
    Trap(m_ctx.errors,
         side == ChannelOrganizer::Source ? "FrmChnlEdit -> FillSrcBank"
                                          : "FrmChnlEdit -> FillDestBank",
         [&] {
             XfrListView* list = m_lists[side];
             const int b = m_organizer.bank(side);
             const BankChannels& chans = m_organizer.channels(side);
             list->clear();
             for (int c = 1; c <= ChansPerBank; ++c) {
                 auto* item =
                     new QTreeWidgetItem(list, {QString::number(ChannelNumber(b, c)),
                                                FreqToString(chans[c].Freq), chans[c].Desc});
                 item->setData(0, Qt::UserRole, c);
             }
             list->header()->resizeSections(QHeaderView::ResizeToContents);
         });
}

void FrmChnlEdit::refresh(Side side) {
    Trap(m_ctx.errors,
         side == ChannelOrganizer::Source ? "FrmChnlEdit -> RefreshSrc"
                                          : "FrmChnlEdit -> RefreshDest",
         [&] {
             fillBank(side);
             m_lists[side]->clearSelection();
             m_lists[side]->scrollToTop();
             m_saveBtn->setEnabled(true);
         });
}

void FrmChnlEdit::bankTabChosen(Side side, int index) {
    Trap(m_ctx.errors,
         side == ChannelOrganizer::Source ? "FrmChnlEdit -> SrcBankSelTab"
                                          : "FrmChnlEdit -> DestBankSelTab",
         [&] {
             if (m_ignoreTab[side]) {
                 m_ignoreTab[side] = false;
                 return;
             }
             const int writes = m_organizer.writes();
             if (!m_organizer.selectBank(side, index + 1)) {
                 // Cancelled: show the bank still held again, ignoring the tab event this makes.
                 m_ignoreTab[side] = true;
                 m_tabs[side]->setCurrentIndex(m_organizer.bank(side) - 1);
                 return;
             }
             if (m_organizer.writes() != writes)
                 Q_EMIT channelsSaved();
             fillBank(side);
             // A save from the question may have refilled the other side's copy.
             fillBank(side == ChannelOrganizer::Source ? ChannelOrganizer::Destination
                                                       : ChannelOrganizer::Source);
             // Changes still pending on the other side can still be saved.
             m_saveBtn->setEnabled(m_organizer.anyChanged());
         });
}

void FrmChnlEdit::sortSide(Side side, ChannelSortKey key, const char* label) {
    Trap(m_ctx.errors, label, [&] {
        m_organizer.sort(side, key);
        refresh(side);
    });
}

void FrmChnlEdit::SaveCurrent() {
    Trap(m_ctx.errors, "FrmChnlEdit -> SaveCurrent", [&] {
        if (!m_organizer.anyChanged())
            return;
        m_saveBtn->setEnabled(false);
        const bool sameBank = m_organizer.bank(ChannelOrganizer::Source) ==
                              m_organizer.bank(ChannelOrganizer::Destination);
        const int writes = m_organizer.writes();
        m_organizer.saveCurrent();
        if (sameBank)
            fillBank(ChannelOrganizer::Destination);
        if (m_organizer.writes() != writes)
            Q_EMIT channelsSaved();
    });
}

bool FrmChnlEdit::dropOn(Side side, const QString& text, int row) {
    const int slot = row + 1;
    if (side == ChannelOrganizer::Source) {
        if (!m_organizer.dropOnSource(text, slot))
            return false;
        refresh(ChannelOrganizer::Source);
        return true;
    }
    if (!m_organizer.dropOnDestination(text, slot))
        return false;
    refresh(ChannelOrganizer::Destination);
    refresh(ChannelOrganizer::Source);
    return true;
}

void FrmChnlEdit::closeEvent(QCloseEvent* event) {
    Q_EMIT closed();
    event->accept();
}

} // namespace kestrel
