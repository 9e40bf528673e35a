// SPDX-License-Identifier: GPL-3.0-or-later
#include "bankorganizer.h"

#include "arrange.h"
#include "core/files.h"
#include "history/history.h"

#include <QFileInfo>

namespace kestrel {

void BankOrganizer::load(qint16 profile) {
    Trap(m_ctx.errors, "FrmBankEdit -> Load", [&] {
        if (profile < 0 || profile >= ProfileCount)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        m_profile = profile;
        m_names.clear();
        m_origin.clear();
        for (int b = 1; b <= BankCount; ++b) {
            m_names.append(m_ctx.Profiles[m_profile].Banks[b].FileName);
            m_origin.append(b);
        }
        m_changed = false;
    });
}

bool BankOrganizer::drop(const QString& text, int target) {
    return Trap(m_ctx.errors, "FrmBankEdit -> SrcBanks_OLEDragDrop", [&](Stmt& s) {
        s.at(1);
        const std::optional<QList<int>> dragged = XfrPositions(text, BankCount);
        if (!dragged || target < 1 || target > BankCount)
            return false;
        s.at(2);
        const std::optional<QList<int>> order = ArrangeOrder(BankCount, *dragged, target);
        if (!order)
            return false;
        s.at(3);
        QStringList names;
        QList<int> origin;
        for (int p : *order) {
            names.append(m_names[p - 1]);
            origin.append(m_origin[p - 1]);
        }
        m_names = names;
        m_origin = origin;
        m_changed = true;
        return true;
    });
}

void BankOrganizer::sort() {
    Trap(m_ctx.errors, "FrmBankEdit -> SortBanks", [&] {
        const QList<int> order = InsertionSortOrder(m_names, CodeLess);
        QStringList names;
        QList<int> origin;
        for (int i : order) {
            names.append(m_names[i]);
            origin.append(m_origin[i]);
        }
        m_names = names;
        m_origin = origin;
        m_changed = true;
    });
}

bool BankOrganizer::save() {
    return Trap(m_ctx.errors, "FrmBankEdit -> SaveBtn", [&](Stmt& s) {
        if (!m_changed)
            return false;
        s.at(1);
        ProfileRec& profile = m_ctx.Profiles[m_profile];
        // Every bank's channels and edits move with its name: what is only in memory (edits not
        // yet saved, a bank that has no file yet) is written to its file first. A write that
        // fails leaves the order as it was.
        MakeBanksDir(m_ctx);
        const qsizetype failedBefore = m_ctx.failedWrites.size();
        for (int b = 1; b <= BankCount; ++b) {
            const BankRec& bank = profile.Banks[b];
            const QString path = m_ctx.bankPath(bank.FileName);
            if (!bank.FileName.isEmpty() && (bank.Changed || !QFileInfo::exists(path)))
                Save_BankInfo(m_ctx, m_profile, b, path);
        }
        if (m_ctx.failedWrites.size() > failedBefore)
            return false;
        s.at(2);
        // The files now hold what memory holds, so each bank moves whole with its name.
        const std::array<BankRec, BankCount + 1> before = profile.Banks;
        ChangeStep step(m_ctx, QStringLiteral("Organize Banks"), m_profile, 1);
        bool any = false;
        for (int i = 1; i <= BankCount; ++i) {
            BankRec& bank = profile.Banks[i];
            if (bank.FileName == m_names[i - 1])
                continue;
            bank = before[m_origin[i - 1]];
            // The new order is kept in the profile's settings file on the next save.
            bank.Changed = true;
            profile.Changed = true;
            any = true;
        }
        s.at(3);
        m_changed = false;
        for (int i = 0; i < BankCount; ++i)
            m_origin[i] = i + 1;
        return any;
    });
}

} // namespace kestrel
