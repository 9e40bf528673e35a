// SPDX-License-Identifier: GPL-3.0-or-later
// CSV import into the shown bank or the search ranges, without the window: the open file read
// line by line, the column count, the fields each import fills (a table: target, header name,
// default, kind of value), the columns named by our own export's header, and the two imports,
// each all or nothing.
#pragma once

#include "core/appcontext.h"
#include "core/csvreader.h"

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

// What one target field holds, and so how its text is read.
enum class CsvValue { Text, Freq, Flag };
struct CsvTargetField {
    const char* header; // the column name our export writes for it
    const char* def;    // the value used with "> Default <"
    CsvValue kind;
};
// The fields an import fills, in the window's order.
const QList<CsvTargetField>& CsvFields(CsvMode mode);

// "> Default <" for 0, "Column k" for 1..9.
QString CsvColumnName(int k);
// Field defaults in field order (bank: "UnKnown", "102.100000", "False", "False", "False").
QStringList CsvBankDefaults();
QStringList CsvSearchDefaults();

// The fields of a line as spreadsheets write them; a line whose quotes do not pair is split at
// every comma.
QStringList CsvSplit(const QString& line);
// Fields of the first line, less a trailing empty one, at most 30.
int CsvColumnCount(const QString& firstLine);
// When the first line is the header our export writes (names in any order, any case), the
// column (from 1) of each field of the mode; otherwise empty.
QList<int> CsvHeaderChoices(const QString& firstLine, CsvMode mode);
// A frequency as the rest of the program reads it: megahertz with any number of decimals; out
// of the band or empty gives 0.
double CsvFrequency(const QString& text);
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

    // Opens the file and reads its first line. False (nothing open) when it cannot be read or
    // is not text; openError() says why.
    bool open(const QString& path);
    void close();
    bool isOpen() const { return m_open; }
    const QString& fileName() const { return m_path; }
    const QString& openError() const { return m_error; }
    int columnCount() const { return m_columns; }
    // The columns our export's header names for each field of the mode; empty when the first
    // line is not such a header.
    QList<int> headerChoices(CsvMode mode) const { return CsvHeaderChoices(m_first, mode); }

    // The next line of the open file (the first one right after open); throws past the end.
    QString nextLine();

    // What stops an import with these choices (the file's line and why), or nothing: the lines
    // are read and checked, nothing changes.
    QString problem(CsvMode mode, const QList<int>& choices) const;

    // Fills slots 1, 2, ... of the given bank of the given profile from the data lines (at
    // most 20, blank lines skipped) after the user agreed to overwrite the bank; choices are
    // the column per field, 0 for the default. All or nothing: a line that cannot be used is
    // reported and the bank stays as it was (0 is returned). -1 when the user said No. The
    // import is one undoable step.
    int importToBank(qint16 profile, int bank, const QList<int>& choices);
    // Fills ranges 1, 2, ... (at most 10) of the given profile as one undoable step and writes
    // the range keys to "SeachBankTmp.SKE".
    int importToSearch(qint16 profile, const QList<int>& choices);

private:
    struct DataLine {
        int number;
        QStringList fields;
    };
    // The data lines after the header, at most max; reading stops there. Throws on a line that
    // cannot be read.
    QList<DataLine> readDataLines(int max) const;

    AppContext& m_ctx;
    CsvReader m_reader;
    QString m_path;
    QString m_first;
    bool m_firstPending = false;
    int m_columns = 0;
    bool m_open = false;
    QString m_error;
};

} // namespace kestrel
