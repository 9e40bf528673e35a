// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of the main window's in-place editing and the texts of its list rows, kept free of
// widgets so that they can be checked on their own.
#pragma once

#include "core/records.h"

#include <QString>
#include <QStringList>

namespace kestrel {

// Columns of the channel lists (ChnlsLv, ChanLV) and of the search list (SearchLV).
enum ChannelColumn { ColChanNumber, ColFreq, ColDesc, ColDelay, ColPriority, ColLockout };
enum SearchColumn { ColSrchNumber, ColLower, ColUpper, ColSrchDesc };
inline constexpr int kChannelColumns = 6;
inline constexpr int kSearchColumns = 4;

QStringList ChannelHeaders(); // "", "Frequency", "Description", "Delay", "Priority", "L/Out"
QStringList SearchHeaders();  // "", "Lower Frequency", "Upper Frequency", "Description"

// Row texts: number (three digits for channels, two for ranges), frequencies in the files' form,
// the description and the flags as "True"/"False" in the order Delay, Priority, L/Out.
QStringList ChannelRowTexts(int channelNumber, const ChannelRec& rec);
QStringList SearchRowTexts(int index, const SearchRec& rec);

// A typed frequency committed into a channel: the box's text is read leniently, an out-of-band
// value empties the channel. A channel that gains a frequency while locked out is unlocked and
// gets Delay; an emptied channel is locked out without Delay. Returns the text the box shows.
QString CommitChannelFreq(ChannelRec& rec, const QString& typed);
// The same for a search limit (column ColLower or ColUpper); no flags are involved.
QString CommitSearchFreq(SearchRec& rec, int column, const QString& typed);

// A double click on a flag column inverts that flag. Inverting L/Out on a channel with a
// frequency also sets Delay to the opposite of the new L/Out. False for a non-flag column.
bool ToggleChannelFlag(ChannelRec& rec, int column);

// What an in-place box falls back to when the user empties it: the stored value's text.
QString StoredCellText(const ChannelRec& rec, int column);
QString StoredSearchCellText(const SearchRec& rec, int column);

// Whether a column opens an in-place box (true), toggles a flag, or does nothing.
bool IsTextColumn(bool searchList, int column);
// The undo step of an edit of one cell: "Edit Frequency of Channel 5", "Edit Lower Frequency of
// Search 3" (number: channel 1..200 or range 1..10).
QString CellStepName(bool searchList, int column, int number);
bool IsFrequencyColumn(bool searchList, int column);

// A name typed into the profile or bank name box can be used as a file's base name: not empty,
// and without the characters a base name cannot hold ("." would cut it short when read back).
bool IsUsableBaseName(const QString& name);

} // namespace kestrel
