// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl export-csv: a bank or the search ranges as CSV, to a file or standard output.
#include "cli.h"

#include "organize/chirpcsv.h"
#include "organize/csvexport.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const QString format = args.value(QStringLiteral("format"), QStringLiteral("kestrel"));
    const bool chirp = format == u"chirp";
    if (!chirp && format != u"kestrel")
        throw UsageError("--format is kestrel or chirp");
    if (chirp && parseTarget(args, false).kind != ProfilePart::Bank)
        throw UsageError("a CHIRP file holds channels: give --bank N");
    const auto [ctx, profile, target] = env.select(args, false);
    const QByteArray bytes = chirp ? ChirpCsv(profile.Banks[target.bank], target.bank)
                             : target.kind == ProfilePart::Bank
                                 ? BankCsv(profile.Banks[target.bank])
                                 : SearchCsv(profile);
    // "-" is standard output; a FIFO or a device is written as a stream.
    SaveCsvFile(ctx, bytes, args.value(QStringLiteral("o"), QStringLiteral("-")));
    return env.finish();
}

const CommandRegistration reg(
    {"export-csv",
     nullptr,
     "Write a bank or the search ranges as CSV",
     targetOptions(false) +
         QList<Option>{{"o", "FILE", "Write to FILE instead of the output"},
                       {"format", "FORMAT", "kestrel (the default) or chirp, a file CHIRP opens"}},
     {},
     run});

} // namespace
} // namespace kestrel::cli
