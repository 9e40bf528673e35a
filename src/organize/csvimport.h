// SPDX-License-Identifier: GPL-3.0-or-later
// CSV import into the shown bank or the search ranges, without the window: the open file and its
// lines, the column count, the value rules of each field, and the two imports.
#pragma once

#include "core/appcontext.h"

#include <QList>
#include <QStringList>
#include <array>

namespace kestrel {

enum class CsvMode { Bank = 0, Search = 1 };

inline constexpr int kCsvMaxColumns = 30;  // at most this many columns are counted
inline constexpr int kCsvChoosable = 9;    // Column 1..9 can be chosen
inline constexpr int kCsvTextBoxes = 9;    // fields shown of one line
inline constexpr int kCsvBankLines = 20;   // data lines imported into a bank
inline constexpr int kCsvSearchLines = 10; // data lines imported into the search ranges
inline constexpr int kCsvBankFields = 5;   // Description, Frequency, Delay, Lock-Out, Priority
inline constexpr int kCsvSearchFields = 3; // Description, Lower, Upper

// "> Default <" for 0, "Column k" for 1..9.
QString CsvColumnName(int k);
// Field defaults in field order (bank: "UnKnown", "102.100000", "False", "False", "False").
QStringList CsvBankDefaults();
QStringList CsvSearchDefaults();

// The lines of a CSV file's bytes: a UTF-8 byte-order mark is skipped, CRLF, LF and CR all end a
// line, and a last line end does not start another line.
QStringList CsvLines(const QByteArray& bytes);
// Fields of the first line, less a trailing empty one, at most 30.
int CsvColumnCount(const QString& firstLine);
// The import's frequency rule: every "." removed, the rest read as hertz, empty gives 25 MHz,
// clamped to 25..956 MHz. "146.520000" is 146,520,000 Hz; "146.52" clamps to 25 MHz.
double CsvFrequency(const QString& text);
// A field's text for one line: its default for choice 0, else field `choice` (from 1) of the
// line. Throws when the line has fewer fields.
QString CsvFieldValue(const QStringList& fields, int choice, const QString& def);
// Puts field k of the line into box k; throws after filling the boxes when the line has more
// fields than there are boxes. Boxes beyond the line's fields are emptied.
void CsvShowLine(const QString& line, std::array<QString, kCsvTextBoxes>& boxes);

// "OverWrite *ALL* Data in the Current Bank?"
extern const char* const kCsvOverwriteText;
// The file the search import writes its range keys to, in the "Banks" folder.
extern const char* const kCsvSearchTmpFile;

class CsvImport {
public:
    explicit CsvImport(AppContext& ctx) : m_ctx(ctx) {}

    // Opens the file and counts the columns of its first line. False (nothing open) when it
    // cannot be read.
    bool open(const QString& path);
    void close();
    bool isOpen() const { return m_open; }
    const QString& fileName() const { return m_path; }
    int columnCount() const { return m_columns; }

    // The next line of the open file (the first one right after open); throws past the end.
    QString nextLine();

    // Fills slots 1, 2, ... of bank CurBank of the current profile from the data lines (at most
    // 20) after the user agreed to overwrite the bank; choices are the column per field, 0 for
    // the default. Returns the lines imported; a line that lacks a chosen column ends the
    // import there (reported), keeping what was imported. -1 when the user said No.
    int importToBank(const QList<int>& choices);
    // Fills ranges 1, 2, ... (at most 10) and writes the range keys to "SeachBankTmp.SKE".
    int importToSearch(const QList<int>& choices);

private:
    QStringList readDataLines(int max) const;

    AppContext& m_ctx;
    QString m_path;
    QStringList m_lines;
    int m_next = 0;
    int m_columns = 0;
    bool m_open = false;
};

} // namespace kestrel
