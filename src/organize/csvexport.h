// SPDX-License-Identifier: GPL-3.0-or-later
// CSV export of a bank or the search ranges. Its header line names the columns, so that the CSV
// import reads the export back unchanged without any columns chosen.
#pragma once

#include "core/appcontext.h"

namespace kestrel {

// The header line (CsvHeader, organize/csvimport.h), then one line per channel (or range) in slot
// order, LF line ends, UTF-8. Frequencies are megahertz with six decimals; switches "True"/"False".
// A description with a comma or a quote is written in double quotes, as spreadsheets do.
QByteArray BankCsv(const BankRec& bank);
QByteArray SearchCsv(const ProfileRec& profile);

// Writes the bytes to the file ("-" standard output; a FIFO or device as a stream); false, with
// the path and reason noted in ctx, when it cannot be written.
bool SaveCsvFile(AppContext& ctx, const QByteArray& bytes, const QString& path);

} // namespace kestrel
