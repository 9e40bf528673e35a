// SPDX-License-Identifier: GPL-3.0-or-later
// Checks on what the user types (in the window's lists, on the command line) or imports, so
// that a value the scanner cannot take is refused and the old value stays. Files are still read
// leniently.
#pragma once

#include <QString>
#include <optional>

namespace kestrel {

// A description keeps at most this many characters, so that its line is never cut on loading.
inline constexpr int kDescMax = 200;

// A typed frequency: empty or 0 empties the channel (0 Hz); otherwise it must be a number of
// megahertz within 25-956. Nothing, with the reason in *reason, when refused.
std::optional<double> TypedFreq(QStringView text, QString* reason);
// A typed description: at most 200 characters, no comma (the files split lines at commas), no
// line break.
bool CheckTypedDesc(QStringView text, QString* reason);
// An imported description: at most 200 characters.
bool CheckDescLength(QStringView text, QString* reason);
// An imported description made fit for the bank file: a comma becomes ";" and a line break a
// space, since the file separates a channel's fields with commas and its lines with breaks.
QString ImportedDesc(QString text);

// A whole channel line ("146.52,Fire,False,True,False") or search line ("25,30,Low") as typed:
// exactly its fields, typed frequencies, a typed description and flags True or False.
bool CheckChannelLine(QStringView line, QString* reason);
bool CheckSearchLine(QStringView line, QString* reason);

} // namespace kestrel
