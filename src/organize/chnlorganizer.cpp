// SPDX-License-Identifier: GPL-3.0-or-later
#include "chnlorganizer.h"

#include "core/prompts.h"
#include "history/history.h"

namespace kestrel {

const char* const ChannelOrganizer::kSaveFirstText = "Do You Want to Save the Current Bank First?";
const char* const ChannelOrganizer::kSaveFirstTitle = "Bank NOT Saved!";

void ChannelOrganizer::load(qint16 profile) {
    Trap(m_ctx.errors, "FrmChnlEdit -> Load", [&] {
        if (profile < 0 || profile >= ProfileCount)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        m_profile = profile;
        for (Side side : {Source, Destination}) {
            m_bank[side] = 1;
            m_copy[side] = m_ctx.Profiles[m_profile].Banks[1].Chans;
            m_changed[side] = false;
        }
    });
}

bool ChannelOrganizer::selectBank(Side side, int bank) {
    const char* label =
        side == Source ? "FrmChnlEdit -> SrcBankSelTab" : "FrmChnlEdit -> DestBankSelTab";
    return Trap(m_ctx.errors, label, [&](Stmt& s) {
        s.at(1);
        if (bank < 1 || bank > BankCount)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        if (m_changed[side]) {
            s.at(2);
            const Answer a = m_ctx.prompts().message(QString::fromLatin1(kSaveFirstText),
                                                     QString::fromLatin1(kSaveFirstTitle),
                                                     Icon::Critical, Buttons::YesNoCancel);
            if (a == Answer::Cancel)
                return false;
            if (a == Answer::Yes)
                saveCurrent();
        }
        s.at(3);
        m_bank[side] = bank;
        m_copy[side] = m_ctx.Profiles[m_profile].Banks[bank].Chans;
        m_changed[side] = false;
        return true;
    });
}

std::optional<QList<int>> ChannelOrganizer::draggedSlots(const QString& text) const {
    // Rows carry memory-wide channel numbers; the dragged rows are those of the source list.
    return XfrPositions(text, ChansPerBank, (m_bank[Source] - 1) * ChansPerBank);
}

bool ChannelOrganizer::dropOnSource(const QString& text, int target) {
    return Trap(m_ctx.errors, "FrmChnlEdit -> SrcChannels_OLEDragDrop", [&](Stmt& s) {
        s.at(1);
        const std::optional<QList<int>> dragged = draggedSlots(text);
        if (!dragged)
            return false;
        s.at(2);
        const std::optional<QList<int>> order = ArrangeOrder(ChansPerBank, *dragged, target);
        if (!order)
            return false;
        s.at(3);
        ApplyOrder(m_copy[Source], *order);
        m_changed[Source] = true;
        return true;
    });
}

bool ChannelOrganizer::dropOnDestination(const QString& text, int target) {
    return Trap(m_ctx.errors, "FrmChnlEdit -> DestChannels_OLEDragDrop", [&](Stmt& s) {
        s.at(1);
        const std::optional<QList<int>> dragged = draggedSlots(text);
        if (!dragged)
            return false;
        if (m_bank[Source] == m_bank[Destination]) {
            s.at(2);
            const std::optional<QList<int>> order = ArrangeOrder(ChansPerBank, *dragged, target);
            if (!order)
                return false;
            ApplyOrder(m_copy[Source], *order);
            m_copy[Destination] = m_copy[Source];
        } else {
            s.at(3);
            if (!ArrangeDestination(m_copy[Source], m_copy[Destination], *dragged, target))
                return false;
        }
        m_changed[Source] = true;
        m_changed[Destination] = true;
        return true;
    });
}

void ChannelOrganizer::sort(Side side, ChannelSortKey key) {
    Trap(m_ctx.errors, "FrmChnlEdit -> SortChannels", [&] {
        SortChannels(m_copy[side], key);
        m_changed[side] = true;
    });
}

void ChannelOrganizer::saveCurrent() {
    Trap(m_ctx.errors, "FrmChnlEdit -> SaveCurrent", [&](Stmt& s) {
        ProfileRec& profile = m_ctx.Profiles[m_profile];
        // Both sides go to memory as one step, shown at the source bank when it changed.
        ChangeStep step(m_ctx, QStringLiteral("Organize Channels"), m_profile,
                        quint8(m_bank[m_changed[Source] ? Source : Destination]));
        if (anyChanged())
            ++m_writes;
        if (m_changed[Source]) {
            s.at(1);
            BankRec& bank = profile.Banks[m_bank[Source]];
            bank.Chans = m_copy[Source];
            bank.Changed = true;
            profile.Changed = true;
            if (m_bank[Destination] == m_bank[Source]) {
                // The destination shows the bank just written: it is saved as well.
                m_copy[Destination] = m_copy[Source];
                m_changed[Destination] = false;
            }
            m_changed[Source] = false;
        }
        if (m_changed[Destination] && m_bank[Destination] != m_bank[Source]) {
            s.at(2);
            BankRec& bank = profile.Banks[m_bank[Destination]];
            bank.Chans = m_copy[Destination];
            bank.Changed = true;
            profile.Changed = true;
            m_changed[Destination] = false;
        }
    });
}

} // namespace kestrel
