// SPDX-License-Identifier: GPL-3.0-or-later
// The columns of the channel and search lists, and the texts of their rows: one table for the
// main window's lists and for printing them, so that both show the same captions and cells.
#pragma once

#include "records.h"

#include <QList>
#include <QStringList>

namespace kestrel {

// Columns of the channel lists (ChnlsLv, ChanLV) and of the search list (SearchLV).
enum ChannelColumn { ColChanNumber, ColFreq, ColDesc, ColDelay, ColPriority, ColLockout };
enum SearchColumn { ColSrchNumber, ColLower, ColUpper, ColSrchDesc };
inline constexpr int kChannelColumns = 6;
inline constexpr int kSearchColumns = 4;

struct ListColumn {
    const char* caption; // empty for the number column
    const char* sample;  // the widest text it holds; null for the description, which takes the rest
    int printWidth;      // on paper, in screen pixels at 96 dots per inch
};
const QList<ListColumn>& ChannelColumnTable();
const QList<ListColumn>& SearchColumnTable();

QStringList ChannelHeaders(); // "", "Frequency", "Description", "Delay", "Priority", "L/Out"
QStringList SearchHeaders();  // "", "Lower Frequency", "Upper Frequency", "Description"

// Row texts: number (three digits for channels, two for ranges), frequencies in the files' form,
// the description and the flags as "True"/"False" in the order Delay, Priority, L/Out.
QStringList ChannelRowTexts(int channelNumber, const ChannelRec& rec);
QStringList SearchRowTexts(int index, const SearchRec& rec);

} // namespace kestrel
