// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl show: channels or search ranges of a profile, as the files store them.
#include "cli.h"

#include "core/freq.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const auto [ctx, profile, target] = env.select(args, true);
    auto showBank = [&](int b) {
        for (int c = 1; c <= ChansPerBank; ++c)
            out(Num3(ChannelNumber(b, c)) + QLatin1Char(',') +
                ChannelLine(profile.Banks[b].Chans[c]));
    };
    switch (target.kind) {
    case ProfilePart::Bank:
        showBank(target.bank);
        break;
    case ProfilePart::AllBanks:
        for (int b = 1; b <= BankCount; ++b)
            showBank(b);
        break;
    case ProfilePart::Search:
        for (int i = 1; i <= SearchCount; ++i)
            out(Num2(i) + QLatin1Char(',') + SearchLine(profile.Searches[i]));
        break;
    }
    return env.finish();
}

const CommandRegistration reg({"show",
                               nullptr,
                               "Print the channels of a bank or every bank, or the search ranges",
                               targetOptions(true),
                               {},
                               run});

} // namespace
} // namespace kestrel::cli
