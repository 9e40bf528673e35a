// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl export-csv: a bank or the search ranges as CSV, to a file or standard output.
#include "cli.h"

#include "organize/csvexport.h"

#include <cstdio>

namespace kestrel::cli {

namespace {

int run(Env& env, const QStringList& rawArgs) {
    const Args args(rawArgs,
                    {QStringLiteral("--profile"), QStringLiteral("--bank"), QStringLiteral("-o")},
                    {QStringLiteral("--search")});
    if (!args.positional().isEmpty())
        throw UsageError("export-csv takes no positional arguments");
    const Target target = parseTarget(args, false);
    AppContext& ctx = env.load();
    const ProfileRec& profile = ctx.Profiles[env.selectProfile(args)];
    const QByteArray bytes =
        target.kind == Target::Bank ? BankCsv(profile.Banks[target.bank]) : SearchCsv(profile);
    if (args.has(QStringLiteral("-o"))) {
        SaveCsvFile(ctx, bytes, args.value(QStringLiteral("-o")));
    } else {
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        std::fflush(stdout);
    }
    return env.finish();
}

const CommandRegistration reg({"export-csv",
                               "export-csv [--profile P] (--bank N | --search) [-o FILE]", run});

} // namespace
} // namespace kestrel::cli
