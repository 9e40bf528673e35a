// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo for the memory image. A change is recorded between History::begin and
// History::end (or by a ChangeStep on the stack): what it changed becomes one MemoryStep on the
// context's QUndoStack, holding the changed records before and after and the Changed flags of
// the banks and profiles it touched.
#pragma once

#include "core/appcontext.h"

#include <QObject>
#include <QUndoStack>
#include <functional>
#include <vector>

namespace kestrel {

class History;

using MemoryImage = std::array<ProfileRec, ProfileCount + 1>;

// One change to the memory image, kept as the records it changed.
class MemoryStep : public QUndoCommand {
public:
    MemoryStep(History& history, const QString& text, qint16 profile, quint8 bank,
               int mergeId = -1);

    // Keeps the records that differ between the two images; false when none does.
    bool capture(const MemoryImage& before, const MemoryImage& after);

    // Something outside the memory the step also undoes and redoes (a renamed file). It returns
    // false when it could not: the touched records then stay Changed, so closing writes them.
    std::function<bool(bool undo)> outside;

    void undo() override;
    void redo() override;
    // Steps with the same merge id (not -1) pushed one after the other become one step: the
    // later one's records join the earlier one (a web import and the verify window's edits).
    int id() const override { return m_mergeId; }
    bool mergeWith(const QUndoCommand* other) override;

    // Where the step happened: the window shows this bank (SearchTab: the search ranges).
    qint16 profile() const { return m_profile; }
    quint8 bank() const { return m_bank; }
    int recordCount() const;
    // The channel numbers (1..200) of the given profile the step changed, and whether it
    // changed anything but channels (names, ranges, bank heads), for a repaint of what changed.
    QList<int> channelNumbers(qint16 profile) const;
    bool onlyChannels() const {
        return m_searches.empty() && m_banks.empty() && m_profiles.empty();
    }

private:
    struct BankHead {
        QString ImportName;
        qint16 ImportCount = 0;
        quint8 Revision = 0;
        QString FileName;
        bool operator==(const BankHead&) const = default;
    };
    struct ProfileHead {
        QString Name;
        QString SrchName;
        bool operator==(const ProfileHead&) const = default;
    };
    template <class T> struct Diff {
        qint16 profile;
        quint8 index; // bank (0: the profile itself), slot or range
        quint8 slot;  // channel slot; unused otherwise
        T before;
        T after;
    };

    void apply(bool undo);
    template <class T>
    static void join(std::vector<Diff<T>>& mine, const std::vector<Diff<T>>& later);

    History& m_history;
    int m_mergeId;
    bool m_stale = false; // flags changed outside steps between merged parts: always Changed
    qint16 m_profile;
    quint8 m_bank;
    bool m_pushed = false; // the first redo() comes from the push: the change is already made
    quint32 m_saves = 0;   // the context's save count when the step was last applied
    std::vector<Diff<ChannelRec>> m_chans;
    std::vector<Diff<SearchRec>> m_searches;
    std::vector<Diff<BankHead>> m_banks;
    std::vector<Diff<ProfileHead>> m_profiles;
    std::vector<Diff<bool>> m_flags; // Changed flags (index 0: the profile's own)
};

// The context's undo stack and the recorder of changes: ctx.component<History>().
class History : public QObject, public Component {
    Q_OBJECT
public:
    explicit History(AppContext& ctx);

    AppContext& context() { return m_ctx; }
    QUndoStack& stack() { return m_stack; }

    // Starts recording a change named text (shown as "Undo <text>") made in the given bank
    // (1..10, SearchTab) of the given profile. A begin inside another folds into the outer one.
    void begin(const QString& text, qint16 profile, quint8 bank, int mergeId = -1);
    // Ends it; the outermost end pushes one step when the memory changed and says whether it
    // did. Changes made while a step is undone or redone are not recorded.
    bool end();
    // begin, change(), end.
    bool record(const QString& text, qint16 profile, quint8 bank,
                const std::function<void()>& change);
    bool recording() const { return m_depth > 0; }
    // A merge id no step has used yet.
    int newMergeId() { return ++m_lastMergeId; }
    bool restoring() const { return m_restoring; }

    // Forgets every step (the memory was reloaded as a whole).
    void clear();

Q_SIGNALS:
    // Before a step is undone or redone: the window shows its bank first.
    void aboutToRestore(qint16 profile, quint8 bank);
    // After: the window repaints what the step changed.
    void restored(const kestrel::MemoryStep& step);

private:
    friend class MemoryStep;
    AppContext& m_ctx;
    QUndoStack m_stack;
    int m_depth = 0;
    bool m_restoring = false;
    QString m_text;
    qint16 m_profile = 0;
    quint8 m_bank = 1;
    int m_mergeId = -1;
    int m_lastMergeId = 0;
    MemoryImage m_before;
    std::vector<std::function<bool(bool)>> m_outside;
    friend class ChangeStep;
};

// Records the change made during its life as one step (History::begin in the constructor,
// History::end in the destructor).
class ChangeStep {
public:
    ChangeStep(AppContext& ctx, const QString& text, qint16 profile, quint8 bank, int mergeId = -1);
    ~ChangeStep();
    ChangeStep(const ChangeStep&) = delete;
    ChangeStep& operator=(const ChangeStep&) = delete;

    // See MemoryStep::outside; set before the step ends.
    std::function<bool(bool undo)> outside;

private:
    History& m_history;
};

// The history of ctx (created on first use).
inline History& HistoryOf(AppContext& ctx) {
    return ctx.component<History>();
}

} // namespace kestrel
