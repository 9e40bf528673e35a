// SPDX-License-Identifier: GPL-3.0-or-later
// Telling the user about files: the damaged ones found by a load (once per load), the writes
// that failed, and the dated copy kept of a damaged file before a save writes over it.
#pragma once

#include "appcontext.h"

namespace kestrel {

class IniDocument;

// Notes what a loader could not read in a file.
void NoteDamage(AppContext& ctx, const QString& path, const QString& detail);
// Notes the damaged lines of a document read from path, and an unreadable file.
void NoteDamagedLines(AppContext& ctx, const QString& path, const IniDocument& doc);

// Tells the user which files and lines could not be read since the last report: one entry in
// Error.log per file and one message listing them all. The list is then empty.
// log false: the message only (reading commands create no file).
void ReportLoadProblems(AppContext& ctx, bool log = true);

// Writes a whole document or file through ctx's writer. A damaged file is first copied aside;
// a failure is noted with its reason in ctx (see ReportWriteFailures).
bool SaveBytes(AppContext& ctx, const QByteArray& bytes, const QString& path);

// Tells the user (one message, and Error.log) which files could not be written since the last
// report; true when there were none.
bool ReportWriteFailures(AppContext& ctx);
// The failed writes as lines "path: reason", from the given index on.
QStringList WriteFailureLines(const AppContext& ctx, qsizetype from = 0);

// Removes the temporary files of saves that were killed, from the data and "Banks" folders.
// Only the holder of the data folder's lock may do this.
void RemoveStaleSaves(AppContext& ctx);

// The copy kept beside a damaged file: "Bank02.BKE.damaged-20261123-101533".
QString DamagedCopyPath(const QString& path);

// "Some files could not be read in full; ..."
extern const char* const kDamagedFilesText;
// "These files could not be saved; ..."
extern const char* const kWriteFailedText;

} // namespace kestrel
