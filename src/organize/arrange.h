// SPDX-License-Identifier: GPL-3.0-or-later
// The drag payload of the organize windows ("XFR,03,04"), the drop rearrangement rules and the
// stable insertion sorts. Pure functions over positions numbered from 1.
#pragma once

#include "core/records.h"

#include <QList>
#include <QStringList>
#include <optional>

namespace kestrel {

// "XFR," followed by the dragged rows' texts, in list order.
QString XfrPayload(const QStringList& rowTexts);

// The dragged row texts of a payload: the text must split at commas into "XFR" and at least one
// more part. Anything else (plain text from another program) gives nothing.
std::optional<QStringList> ParseXfrPayload(const QString& text);

// The dragged positions of a payload, each row text read as a number less `offset` (the first
// number of the list minus one), all within 1..count and none twice; nothing otherwise.
std::optional<QList<int>> XfrPositions(const QString& text, int count, int offset = 0);

// False when the target position is one of the dragged ones.
bool InBounds(int target, const QList<int>& dragged);

// The order after dropping the dragged positions (in payload order) onto target, as the old
// position of each new position 1..count. Dropped above the first dragged position, the block
// lands directly before the target row; below it, directly after it; the others keep their
// order. Nothing when the drop changes nothing or is not allowed.
std::optional<QList<int>> ArrangeOrder(int count, const QList<int>& dragged, int target);

// Applies an order from ArrangeOrder to a list held in slots 1..count of an array.
template <typename Array> void ApplyOrder(Array& slots, const QList<int>& order) {
    const Array old = slots;
    for (qsizetype i = 0; i < order.size(); ++i)
        slots[i + 1] = old[order[i]];
}

using BankChannels = std::array<ChannelRec, ChansPerBank + 1>;

// Moves the dragged slots of one bank into another at the target slot: the destination's
// channels from there on move down and those pushed past slot 20 are dropped; the source closes
// up and ends with empty channels. False (nothing changed) when the block would not fit below
// the target slot or the positions are not valid.
bool ArrangeDestination(BankChannels& source, BankChannels& dest, const QList<int>& dragged,
                        int target);

// Stable insertion sort: each item in turn goes before the first placed item greater than it,
// or at the end. Returns the old index of each sorted item.
template <typename T, typename Less>
QList<int> InsertionSortOrder(const QList<T>& items, Less less) {
    QList<int> placed;
    placed.reserve(items.size());
    for (qsizetype i = 0; i < items.size(); ++i) {
        qsizetype at = placed.size();
        for (qsizetype j = 0; j < placed.size(); ++j) {
            if (less(items[i], items[placed[j]])) {
                at = j;
                break;
            }
        }
        placed.insert(at, int(i));
    }
    return placed;
}

// Plain character-code order: upper case before lower case, no cultural rules.
bool CodeLess(const QString& a, const QString& b);

// The names sorted by character code, stable.
QStringList SortNames(const QStringList& names);

enum class ChannelSortKey { Frequency, Description };
// Sorts slots 1..20; empty channels (frequency 0) come first when sorting by frequency.
void SortChannels(BankChannels& chans, ChannelSortKey key);

} // namespace kestrel
