// SPDX-License-Identifier: GPL-3.0-or-later
#include "history.h"

#include <algorithm>

namespace kestrel {

MemoryStep::MemoryStep(History& history, const QString& text, qint16 profile, quint8 bank,
                       int mergeId)
    : QUndoCommand(text), m_history(history), m_mergeId(mergeId), m_profile(profile), m_bank(bank),
      m_saves(history.context().flagEpoch) {}

bool MemoryStep::capture(const MemoryImage& before, const MemoryImage& after) {
    for (int p = 0; p <= ProfileCount; ++p) {
        const ProfileRec& b = before[p];
        const ProfileRec& a = after[p];
        bool profileTouched = b.Changed != a.Changed;
        for (int s = 1; s <= SearchCount; ++s) {
            if (b.Searches[s] == a.Searches[s])
                continue;
            m_searches.push_back({qint16(p), quint8(s), 0, b.Searches[s], a.Searches[s]});
            profileTouched = true;
        }
        const ProfileHead pb{b.Name, b.SrchName};
        const ProfileHead pa{a.Name, a.SrchName};
        if (!(pb == pa)) {
            m_profiles.push_back({qint16(p), 0, 0, pb, pa});
            profileTouched = true;
        }
        for (int k = 1; k <= BankCount; ++k) {
            const BankRec& bb = b.Banks[k];
            const BankRec& ba = a.Banks[k];
            bool bankTouched = bb.Changed != ba.Changed;
            for (int c = 1; c <= ChansPerBank; ++c) {
                if (bb.Chans[c] == ba.Chans[c])
                    continue;
                m_chans.push_back({qint16(p), quint8(k), quint8(c), bb.Chans[c], ba.Chans[c]});
                bankTouched = true;
            }
            const BankHead hb{bb.ImportName, bb.ImportCount, bb.Revision, bb.FileName};
            const BankHead ha{ba.ImportName, ba.ImportCount, ba.Revision, ba.FileName};
            if (!(hb == ha)) {
                m_banks.push_back({qint16(p), quint8(k), 0, hb, ha});
                bankTouched = true;
            }
            // A touched bank's flag is kept even when it did not change: after a save it must
            // come back set, since the file then holds what the step made.
            if (bankTouched) {
                m_flags.push_back({qint16(p), quint8(k), 0, bb.Changed, ba.Changed});
                profileTouched = true;
            }
        }
        if (profileTouched)
            m_flags.push_back({qint16(p), 0, 0, b.Changed, a.Changed});
    }
    m_chans.shrink_to_fit();
    m_searches.shrink_to_fit();
    m_banks.shrink_to_fit();
    m_profiles.shrink_to_fit();
    m_flags.shrink_to_fit();
    return !m_flags.empty();
}

template <class T>
void MemoryStep::join(std::vector<Diff<T>>& mine, const std::vector<Diff<T>>& later) {
    for (const Diff<T>& d : later) {
        auto it = std::find_if(mine.begin(), mine.end(), [&](const Diff<T>& m) {
            return m.profile == d.profile && m.index == d.index && m.slot == d.slot;
        });
        if (it == mine.end())
            mine.push_back(d);
        else
            it->after = d.after;
    }
}

bool MemoryStep::mergeWith(const QUndoCommand* other) {
    const auto* later = dynamic_cast<const MemoryStep*>(other);
    if (!later || later->m_mergeId != m_mergeId || m_mergeId == -1)
        return false;
    join(m_chans, later->m_chans);
    join(m_searches, later->m_searches);
    join(m_banks, later->m_banks);
    join(m_profiles, later->m_profiles);
    join(m_flags, later->m_flags);
    if (later->outside) {
        outside = [first = outside, second = later->outside](bool undo) {
            bool ok = true;
            if (undo) {
                ok = second(true);
                return (!first || first(true)) && ok;
            }
            ok = !first || first(false);
            return second(false) && ok;
        };
    }
    if (later->m_saves != m_saves || later->m_stale)
        m_stale = true;
    m_saves = later->m_saves;
    const auto same = [](const auto& d) { return d.before == d.after; };
    std::erase_if(m_chans, same);
    std::erase_if(m_searches, same);
    std::erase_if(m_banks, same);
    std::erase_if(m_profiles, same);
    // Edits that together changed nothing leave no step behind.
    if (recordCount() == 0 && std::all_of(m_flags.begin(), m_flags.end(), same) && !outside)
        setObsolete(true);
    return true;
}

int MemoryStep::recordCount() const {
    return int(m_chans.size() + m_searches.size() + m_banks.size() + m_profiles.size());
}

QList<int> MemoryStep::channelNumbers(qint16 profile) const {
    QList<int> numbers;
    for (const auto& d : m_chans)
        if (d.profile == profile)
            numbers.append(ChannelNumber(d.index, d.slot));
    return numbers;
}

void MemoryStep::undo() {
    apply(true);
}

void MemoryStep::redo() {
    if (!m_pushed) {
        m_pushed = true;
        return;
    }
    apply(false);
}

void MemoryStep::apply(bool undo) {
    AppContext& ctx = m_history.context();
    // Set first: whatever the window does to show the bank is not recorded as a change.
    m_history.m_restoring = true;
    Q_EMIT m_history.aboutToRestore(m_profile, m_bank);
    bool outsideDone = true;
    if (outside)
        outsideDone = outside(undo);
    auto pick = [undo](const auto& d) -> const auto& {
        return undo ? d.before : d.after;
    };
    auto& image = ctx.Profiles;
    for (const auto& d : m_chans)
        image[d.profile].Banks[d.index].Chans[d.slot] = pick(d);
    for (const auto& d : m_searches)
        image[d.profile].Searches[d.index] = pick(d);
    for (const auto& d : m_banks) {
        BankRec& bank = image[d.profile].Banks[d.index];
        const BankHead& h = pick(d);
        bank.ImportName = h.ImportName;
        bank.ImportCount = h.ImportCount;
        bank.Revision = h.Revision;
        bank.FileName = h.FileName;
    }
    for (const auto& d : m_profiles) {
        image[d.profile].Name = pick(d).Name;
        image[d.profile].SrchName = pick(d).SrchName;
    }
    // Without a save since the step was last applied the flags are exactly as it left them and
    // go back with the records. A save in between means the files now hold the other side: the
    // touched records are then Changed either way.
    const bool savedSince = ctx.flagEpoch != m_saves || !outsideDone || m_stale;
    for (const auto& d : m_flags) {
        bool& flag =
            d.index == 0 ? image[d.profile].Changed : image[d.profile].Banks[d.index].Changed;
        flag = savedSince || pick(d);
    }
    m_saves = ctx.flagEpoch;
    m_history.m_restoring = false;
    Q_EMIT m_history.restored(*this);
}

History::History(AppContext& ctx) : m_ctx(ctx) {}

void History::begin(const QString& text, qint16 profile, quint8 bank, int mergeId) {
    if (m_restoring)
        return;
    if (m_depth++ > 0)
        return;
    m_text = text;
    m_profile = profile;
    m_bank = bank;
    m_mergeId = mergeId;
    m_before = m_ctx.Profiles;
    m_outside.clear();
}

bool History::end() {
    if (m_restoring || m_depth == 0 || --m_depth > 0)
        return false;
    auto step = std::make_unique<MemoryStep>(*this, m_text, m_profile, m_bank, m_mergeId);
    const bool changed = step->capture(m_before, m_ctx.Profiles);
    m_before = {};
    if (!changed && m_outside.empty())
        return false;
    if (!m_outside.empty()) {
        step->outside = [hooks = std::move(m_outside)](bool undo) {
            bool ok = true;
            if (undo) {
                for (auto it = hooks.rbegin(); it != hooks.rend(); ++it)
                    ok = (*it)(true) && ok;
            } else {
                for (const auto& hook : hooks)
                    ok = hook(false) && ok;
            }
            return ok;
        };
        m_outside = {};
    }
    m_stack.push(step.release()); // may merge into the step before it
    return true;
}

bool History::record(const QString& text, qint16 profile, quint8 bank,
                     const std::function<void()>& change) {
    begin(text, profile, bank);
    change();
    return end();
}

void History::clear() {
    m_stack.clear();
}

ChangeStep::ChangeStep(AppContext& ctx, const QString& text, qint16 profile, quint8 bank,
                       int mergeId)
    : m_history(HistoryOf(ctx)) {
    m_history.begin(text, profile, bank, mergeId);
}

ChangeStep::~ChangeStep() {
    if (outside && m_history.recording() && !m_history.restoring())
        m_history.m_outside.push_back(std::move(outside));
    m_history.end();
}

} // namespace kestrel
