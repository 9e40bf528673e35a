// SPDX-License-Identifier: GPL-3.0-or-later
// What the "Organize Channels" window does, without the window: private copies of a source and
// a destination bank of the current profile, rearranged by drops and sorts, written back on save.
#pragma once

#include "arrange.h"
#include "core/appcontext.h"

namespace kestrel {

class ChannelOrganizer {
public:
    enum Side { Source = 0, Destination = 1 };

    explicit ChannelOrganizer(AppContext& ctx) : m_ctx(ctx) {}

    // Both sides show bank 1 of the given profile, nothing changed.
    void load(qint16 profile);

    int bank(Side side) const { return m_bank[side]; }
    const BankChannels& channels(Side side) const { return m_copy[side]; }
    bool changed(Side side) const { return m_changed[side]; }
    bool anyChanged() const { return m_changed[Source] || m_changed[Destination]; }

    // Shows another bank on one side. With unsaved changes on that side the user is asked
    // first; false when the user cancelled (the side keeps its bank and its changes).
    bool selectBank(Side side, int bank);

    // A drop of `text` (dragged from the source list) onto slot target of one side's list.
    // True when anything changed.
    bool dropOnSource(const QString& text, int target);
    bool dropOnDestination(const QString& text, int target);

    void sort(Side side, ChannelSortKey key);

    // Writes the changed copies into the profile.
    void saveCurrent(); // writes both sides to memory as one undoable step
    // How many times anything was written into the profile (a save may also come from the
    // question on switching banks).
    int writes() const { return m_writes; }

    // "Do You Want to Save the Current Bank First?"
    static const char* const kSaveFirstText;
    static const char* const kSaveFirstTitle;

private:
    std::optional<QList<int>> draggedSlots(const QString& text) const;

    AppContext& m_ctx;
    qint16 m_profile = 0;
    BankChannels m_copy[2]{};
    int m_bank[2] = {1, 1};
    bool m_changed[2] = {false, false};
    int m_writes = 0;
};

} // namespace kestrel
