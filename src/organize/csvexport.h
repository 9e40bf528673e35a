// SPDX-License-Identifier: GPL-3.0-or-later
// CSV export of a bank or the search ranges, laid out so that the CSV import with Column 1, 2,
// 3, ... chosen for its fields in order reads it back.
#pragma once

#include "core/appcontext.h"

namespace kestrel {

inline constexpr const char* kCsvBankHeader = "Description,Frequency,Delay,Lock-Out,Priority";
inline constexpr const char* kCsvSearchHeader = "Description,Lower Frequency,Upper Frequency";

// The header line, then one line per channel (or range) in slot order, LF line ends, UTF-8.
// Frequencies are megahertz with six decimals; switches "True"/"False". The import splits at
// every comma, so a comma inside a description is written as ";".
QByteArray BankCsv(const BankRec& bank);
QByteArray SearchCsv(const ProfileRec& profile);

// Writes the bytes to the file atomically; false (and the path noted in ctx.failedWrites) when
// the file cannot be written.
bool SaveCsvFile(AppContext& ctx, const QByteArray& bytes, const QString& path);

} // namespace kestrel
