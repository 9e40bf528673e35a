// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl set: one channel or search range from a line, then the closing save.
#include "cli.h"

#include "core/entry.h"
#include "core/memory.h"
#include "core/profiles.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const QString line = args.positional().first();
    const bool bank = args.has(QStringLiteral("bank"));
    if (bank == args.has(QStringLiteral("search")))
        throw UsageError("give either --bank N --slot C or --search I");
    int b = 0, c = 0, i = 0;
    if (bank) {
        b = args.intValue(QStringLiteral("bank"), 1, BankCount);
        if (!args.has(QStringLiteral("slot")))
            throw UsageError("--bank needs --slot C");
        c = args.intValue(QStringLiteral("slot"), 1, ChansPerBank);
    } else {
        if (args.has(QStringLiteral("slot")))
            throw UsageError("--slot goes with --bank");
        i = args.intValue(QStringLiteral("search"), 1, SearchCount);
    }
    QString reason;
    if (!(bank ? CheckChannelLine(line, &reason) : CheckSearchLine(line, &reason)))
        throw UsageError(qPrintable(reason));
    AppContext& ctx = env.loadForWriting();
    const int p = env.selectProfile(args);
    // As an in-place edit: the record changes and its bank and profile are marked changed.
    if (bank) {
        Set_Channel(ctx, qint16(p), qint16(b), quint8(c), line);
        ctx.Profiles[p].Banks[b].Changed = true;
    } else {
        Set_Search(ctx, qint16(p), qint16(i), line);
    }
    ctx.Profiles[p].Changed = true;
    Save_Profiles(ctx);
    return env.finish();
}

const CommandRegistration reg({"set",
                               nullptr,
                               "Set one channel (--bank N --slot C) or search range (--search I)",
                               {kProfileOption,
                                {"bank", "N", "The channel's bank, 1-10"},
                                {"slot", "C", "The channel's slot in its bank, 1-20"},
                                {"search", "I", "The search range, 1-10"}},
                               {{"LINE", "The record as the files store it, without its key"}},
                               run});

} // namespace
} // namespace kestrel::cli
