// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl import-csv: a CSV file into a bank or the search ranges, by the import window's
// rules, with the overwrite question answered Yes; then saves what changed. CHIRP's files are
// recognised by their header.
#include "cli.h"

#include "core/profiles.h"
#include "organize/chirpcsv.h"
#include "organize/csvimport.h"

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

// Whether the file begins with CHIRP's header (an unreadable file is left to the usual checks).
bool isChirpFile(const QString& file) {
    CsvReader reader;
    if (!reader.open(file))
        return false;
    const std::optional<QString> first = reader.readLine();
    return first && IsChirpHeader(*first);
}

// The columns to read: the given ones or those our own export's header names. Throws when the
// file cannot be opened, has more columns than the window offers, lacks a given column or holds
// a line the import cannot use.
QList<int> usableColumns(CsvImport& import, const QString& file, CsvMode mode, QList<int> columns,
                         bool given) {
    if (!import.open(file))
        throw InputError(qPrintable(import.openError()));
    if (!given && !import.headerChoices(mode).isEmpty())
        columns = import.headerChoices(mode);
    // The window offers only the columns its first line has, and at most nine.
    if (import.columnCount() > kCsvChoosable)
        throw UsageError("the first line has more than nine columns");
    for (int c : columns)
        if (c > import.columnCount())
            throw UsageError(qPrintable(QStringLiteral("--columns: the file has ") +
                                        QString::number(import.columnCount()) +
                                        QStringLiteral(" columns")));
    if (const QString problem = import.problem(mode, columns); !problem.isEmpty())
        throw InputError(qPrintable(problem));
    return columns;
}

// A CHIRP file: its columns are found by name, its rows go into the bank in file order or, with
// --bank-from-location, by their Location across the profile's banks.
int runChirp(Env& env, const Args& args, const QString& file) {
    if (args.has(QStringLiteral("columns")))
        throw UsageError("a CHIRP file's columns are found by name: leave out --columns");
    const bool byLocation = args.has(QStringLiteral("bank-from-location"));
    int bank = 1;
    if (byLocation) {
        if (args.has(QStringLiteral("bank")) || args.has(QStringLiteral("search")))
            throw UsageError("--bank-from-location places each row by its Location: leave out "
                             "--bank and --search");
    } else {
        const Target target = parseTarget(args, false);
        if (target.kind != ProfilePart::Bank)
            throw UsageError("a CHIRP file fills a bank, not the search ranges");
        bank = target.bank;
    }
    const ChirpPlacement placement =
        byLocation ? ChirpPlacement::ByLocation : ChirpPlacement::ShownBank;
    AppContext& ctx = env.loadForWriting();
    const qint16 p = qint16(env.selectProfile(args));
    ctx.CurBank = quint8(bank);
    // A file the import cannot use in full is refused before anything changes.
    if (const QString problem = ChirpProblem(ctx, p, bank, file, placement); !problem.isEmpty())
        throw InputError(qPrintable(problem));
    const std::optional<ChirpReport> report = ImportChirp(ctx, p, bank, file, placement);
    Save_Profiles(ctx);
    if (report)
        err(report->text());
    return env.finish();
}

int run(Env& env, const Args& args) {
    const QString file = args.positional().first();
    if (isChirpFile(file))
        return runChirp(env, args, file);
    if (args.has(QStringLiteral("bank-from-location")))
        throw UsageError("--bank-from-location is for CHIRP files");
    const Target target = parseTarget(args, false);
    const int fields =
        int(CsvFields(target.kind == ProfilePart::Bank ? CsvMode::Bank : CsvMode::Search).size());
    QList<int> columns = parseColumns(args.value(QStringLiteral("columns")), fields);
    if (!QFileInfo(file).isFile())
        throw InputError(qPrintable(QStringLiteral("cannot read ") + file));

    // What the file alone decides is checked before the data folder is touched, so a refused
    // file leaves no folder and no lock behind. Those checks read no profile data: a bare
    // context serves them.
    const CsvMode mode = target.kind == ProfilePart::Bank ? CsvMode::Bank : CsvMode::Search;
    {
        AppContext bare(QString(), nullptr);
        CsvImport probe(bare);
        columns = usableColumns(probe, file, mode, columns, args.has(QStringLiteral("columns")));
    }
    AppContext& ctx = env.loadForWriting();
    const qint16 p = qint16(env.selectProfile(args));
    CsvImport import(ctx);
    if (!import.open(file))
        throw InputError(qPrintable(import.openError()));
    int imported = 0;
    if (target.kind == ProfilePart::Bank) {
        ctx.CurBank = quint8(target.bank);
        imported = import.importToBank(p, target.bank, columns);
    } else {
        ctx.CurBank = quint8(SearchTab);
        imported = import.importToSearch(p, columns);
    }
    Save_Profiles(ctx);
    err(QStringLiteral("imported ") + QString::number(qMax(imported, 0)) +
        (target.kind == ProfilePart::Bank ? QStringLiteral(" channels")
                                          : QStringLiteral(" ranges")));
    return env.finish();
}

const CommandRegistration
    reg({"import-csv",
         nullptr,
         "Read a CSV file into a bank or the search ranges and save",
         targetOptions(false) +
             QList<Option>{
                 {"columns", "LIST", "The file's column for each field, comma-separated (0: none)"},
                 {"bank-from-location", nullptr,
                  "CHIRP file: row Location n into channel n+1, across banks"}},
         {{"FILE", "The CSV file to read"}},
         run});

} // namespace
} // namespace kestrel::cli
