// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl import-csv: a CSV file into a bank or the search ranges, by the import window's
// rules, with the overwrite question answered Yes; then saves what changed.
#include "cli.h"

#include "core/files.h"
#include "core/profiles.h"
#include "organize/csvimport.h"

#include <QDir>
#include <QFileInfo>

namespace kestrel::cli {

namespace {

QList<int> parseColumns(const QString& list, int fields) {
    QList<int> columns(fields, 0);
    if (list.isEmpty())
        return columns;
    const QStringList parts = list.split(QLatin1Char(','));
    if (parts.size() != fields)
        throw UsageError(qPrintable(QStringLiteral("--columns needs ") + QString::number(fields) +
                                    QStringLiteral(" numbers")));
    for (int i = 0; i < fields; ++i) {
        bool ok = false;
        columns[i] = parts[i].trimmed().toInt(&ok);
        if (!ok || columns[i] < 0 || columns[i] > kCsvChoosable)
            throw UsageError("--columns: each number must be from 0 to 9");
    }
    return columns;
}

int run(Env& env, const Args& args) {
    const QString file = args.positional().first();
    const Target target = parseTarget(args, false);
    const int fields = target.kind == Target::Bank ? kCsvBankFields : kCsvSearchFields;
    const QList<int> columns = parseColumns(args.value(QStringLiteral("columns")), fields);
    if (!QFileInfo(file).isFile())
        throw UsageError(qPrintable(QStringLiteral("cannot read ") + file));

    AppContext& ctx = env.load();
    env.selectProfile(args);
    CsvImport import(ctx);
    if (!import.open(file))
        throw UsageError(qPrintable(QStringLiteral("cannot read ") + file));
    // The window offers only the columns its first line has, and at most nine.
    if (import.columnCount() > kCsvChoosable)
        throw UsageError("the first line has more than nine columns");
    for (int c : columns)
        if (c > import.columnCount())
            throw UsageError(qPrintable(QStringLiteral("--columns: the file has ") +
                                        QString::number(import.columnCount()) +
                                        QStringLiteral(" columns")));
    QDir().mkpath(ctx.appDir());
    MakeBanksDir(ctx);
    int imported = 0;
    if (target.kind == Target::Bank) {
        ctx.CurBank = quint8(target.bank);
        imported = import.importToBank(columns);
    } else {
        ctx.CurBank = quint8(SearchTab);
        imported = import.importToSearch(columns);
    }
    Save_Profiles(ctx);
    err(QStringLiteral("imported ") + QString::number(qMax(imported, 0)) +
        (target.kind == Target::Bank ? QStringLiteral(" channels") : QStringLiteral(" ranges")));
    return env.finish();
}

const CommandRegistration
    reg({"import-csv",
         nullptr,
         "Read a CSV file into a bank or the search ranges and save",
         targetOptions(false) +
             QList<Option>{{"columns", "LIST",
                            "The file's column for each field, comma-separated (0: none)"}},
         {{"FILE", "The CSV file to read"}},
         run});

} // namespace
} // namespace kestrel::cli
