// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl show: channels or search ranges of a profile, as the files store them.
#include "cli.h"

#include "core/freq.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const QStringList& rawArgs) {
    const Args args(rawArgs, {QStringLiteral("--profile"), QStringLiteral("--bank")},
                    {QStringLiteral("--search"), QStringLiteral("--all")});
    if (!args.positional().isEmpty())
        throw UsageError("show takes no positional arguments");
    const Target target = parseTarget(args, true);
    AppContext& ctx = env.load();
    const ProfileRec& profile = ctx.Profiles[env.selectProfile(args)];
    auto showBank = [&](int b) {
        for (int c = 1; c <= ChansPerBank; ++c)
            out(Num3(ChannelNumber(b, c)) + QLatin1Char(',') +
                ChannelLine(profile.Banks[b].Chans[c]));
    };
    switch (target.kind) {
    case Target::Bank:
        showBank(target.bank);
        break;
    case Target::All:
        for (int b = 1; b <= BankCount; ++b)
            showBank(b);
        break;
    case Target::Search:
        for (int i = 1; i <= SearchCount; ++i)
            out(Num2(i) + QLatin1Char(',') + SearchLine(profile.Searches[i]));
        break;
    }
    return env.finish();
}

const CommandRegistration reg({"show", "show [--profile P] (--bank N | --search | --all)", run});

} // namespace
} // namespace kestrel::cli
