// SPDX-License-Identifier: GPL-3.0-or-later
// The rules for the descriptions of freshly imported channels: how long a description may be,
// which characters the user may type into one, and which slots the import filled.
#pragma once

#include "core/records.h"

#include <QChar>

namespace kestrel {

// The scanner keeps at most this many characters of a description.
inline constexpr int MaxDescLen = 60;

// Character codes 8 (backspace), 32, 33, 35-43 and 45-126: no comma (the files' separator), no
// double quote, no other control character and nothing beyond plain ASCII.
bool DescKeyAllowed(QChar c);

// The slots the import filled: ImportCount kept within 0..20.
int ImportedSlots(const BankRec& bank);

// The mode an imported channel was given ("FM", "AM", "P25"), empty for a site channel.
QString ImportedModeText(const ChannelRec& ch);

// The first of the imported slots whose description is too long, or 0 when there is none.
int FirstLongDesc(const BankRec& bank);

} // namespace kestrel
