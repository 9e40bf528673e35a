// SPDX-License-Identifier: GPL-3.0-or-later
// What the "Organize Banks" window does, without the window: the ten bank names of the current
// profile in a new order, built by drops and sorting, and applied to the profile on save.
#pragma once

#include "core/appcontext.h"

namespace kestrel {

class BankOrganizer {
public:
    explicit BankOrganizer(AppContext& ctx) : m_ctx(ctx) {}

    // Takes the names of banks 1..10 of the given profile; nothing is changed yet.
    void load(qint16 profile);

    const QStringList& names() const { return m_names; }
    bool changed() const { return m_changed; }

    // A drop of `text` onto the row at position target (1..10). True when the order changed;
    // anything that is not a payload of this list, or a drop onto a dragged row, changes nothing.
    bool drop(const QString& text, int target);

    // Sorts the names by character code (stable) and marks the order changed.
    void sort();

    // Applies the order, when changed: first the banks edited or without a file are written to
    // their files, then every position whose name differs takes that bank whole. True when
    // anything was applied; false, with the order kept for another try, when a write failed
    // (noted in ctx.failedWrites).
    bool save();

private:
    AppContext& m_ctx;
    qint16 m_profile = 0;
    QStringList m_names;
    QList<int> m_origin; // the position each name had when the window loaded
    bool m_changed = false;
};

} // namespace kestrel
