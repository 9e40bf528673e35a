// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary bytes to the CSV reader and field splitter: no crash, no record beyond the
// limit, each record numbered by its first line (a record spans one line more per line break in
// quotes), and every record's fields written back (quoted as the export does) split the same.
#include "core/csvreader.h"

#include <cstddef>
#include <cstdint>

using namespace kestrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CsvReader reader;
    reader.setData(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    int next = 1;
    while (const std::optional<QString> line = reader.readLine()) {
        if (line->size() > kCsvMaxLine || reader.lineNumber() != next)
            __builtin_trap();
        next = reader.lineNumber() + int(line->count(QLatin1Char('\n'))) + 1;
        QStringList fields;
        if (!SplitCsvFields(*line, fields))
            continue;
        QStringList quoted;
        for (const QString& f : fields)
            quoted.append(CsvQuote(f));
        QStringList again;
        if (!SplitCsvFields(quoted.join(QLatin1Char(',')), again) || again != fields)
            __builtin_trap();
    }
    return 0;
}
