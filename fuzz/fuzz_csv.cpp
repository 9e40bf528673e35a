// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary bytes to the CSV reader and field splitter: no crash, no line beyond the
// limit, and every line's fields written back (quoted as the export does) split the same.
#include "core/csvreader.h"

#include <cstddef>
#include <cstdint>

using namespace kestrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CsvReader reader;
    reader.setData(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    int lines = 0;
    while (const std::optional<QString> line = reader.readLine()) {
        if (line->size() > kCsvMaxLine || ++lines != reader.lineNumber())
            __builtin_trap();
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
