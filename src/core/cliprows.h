// SPDX-License-Identifier: GPL-3.0-or-later
// Channel and search rows as clipboard text: one line a row, tab-separated, frequencies in MHz,
// in the order of the lists' columns, so that spreadsheets and other programs take them. Text
// coming back (tab- or comma-separated) is checked as typed values are, every row before any
// is used.
#pragma once

#include "records.h"

#include <QList>
#include <QString>
#include <optional>

namespace kestrel {

// "146.520000\tFire\tTrue\tFalse\tFalse": frequency, description, Delay, Priority, L/Out.
QString ChannelRowsText(const QList<ChannelRec>& rows);
// "25.000000\t30.000000\tLow": lower, upper, description.
QString SearchRowsText(const QList<SearchRec>& rows);

// One pasted channel row. Fields left out of the row keep the target's value, as when only the
// frequency is typed.
struct ChannelRow {
    double freq = 0;
    std::optional<QString> desc;
    std::optional<bool> delay, priority, lockout;
};
struct SearchRow {
    double lower = 0;
    std::optional<double> upper;
    std::optional<QString> desc;
};

// The rows of pasted text; nothing (and in *reason the line and why) when any row would be
// refused if typed. A first line of column captions is skipped; blank lines are ignored.
std::optional<QList<ChannelRow>> ParseChannelRows(QStringView text, QString* reason);
std::optional<QList<SearchRow>> ParseSearchRows(QStringView text, QString* reason);

// Puts a pasted row into a record. A channel that gains a frequency while locked out is
// unlocked and gets Delay, one left without is locked out, unless the row gives the flags.
// What the program kept about where the channel came from is cleared: it is a new channel.
void ApplyChannelRow(ChannelRec& rec, const ChannelRow& row);
void ApplySearchRow(SearchRec& rec, const SearchRow& row);

} // namespace kestrel
