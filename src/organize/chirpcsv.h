// SPDX-License-Identifier: GPL-3.0-or-later
// CHIRP's generic CSV in both directions: recognising its header, importing its rows into the
// shown bank (or, by their Location, across the profile's 200 channels), and writing a bank as
// a file CHIRP opens. The columns are one table of name, reader and writer.
#pragma once

#include "core/appcontext.h"

#include <optional>

namespace kestrel {

// CHIRP's files begin with this header; the columns after it are found by name.
inline constexpr const char* kChirpHeaderStart = "Location,Name,Frequency";
// The header the export writes: the columns every CHIRP release reads.
inline constexpr const char* kChirpHeader =
    "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,Mode,"
    "TStep,Skip,Comment,URCALL,RPT1CALL,RPT2CALL,DVCODE";

// The kinds of file the window's CSV export offers for a bank.
inline constexpr const char* kCsvExportFilter = "CSV (*.csv)";
inline constexpr const char* kChirpExportFilter = "CHIRP generic CSV (*.csv)";

// Whether a file's first line is CHIRP's header.
bool IsChirpHeader(const QString& firstLine);

// How the rows are placed: in file order into slots 1..20 of the shown bank, or row Location n
// into channel n+1 of the profile's 200.
enum class ChirpPlacement { ShownBank, ByLocation };

struct ChirpReport {
    int imported = 0;
    int outOfBand = 0;
    int leftOver = 0;
    // "n imported, m skipped (out of band), k left over (bank full)"
    QString text() const;
};

// Imports a CHIRP file into the given profile (bank: where rows without placement by Location
// go) after the user agreed to overwrite, as one undoable step. All or nothing: every row is
// read and checked before any channel changes; a row that cannot be used is reported (the
// file's line and why) and nothing is imported. Nothing when the user said No or the import
// failed.
std::optional<ChirpReport> ImportChirp(AppContext& ctx, qint16 profile, int bank,
                                       const QString& path, ChirpPlacement placement);

// Why the import of the file would fail, or empty when it would not; changes nothing.
QString ChirpProblem(const AppContext& ctx, qint16 profile, int bank, const QString& path,
                     ChirpPlacement placement);

// The channels of a bank (number 1..10) that hold a frequency, as a CHIRP file. Location is the
// channel number less one, so that an import by Location puts each back where it was.
QByteArray ChirpCsv(const BankRec& bank, int bankNumber);

} // namespace kestrel
