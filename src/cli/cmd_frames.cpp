// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl frames: the frames an upload would send, one per line in hexadecimal.
#include "cli.h"

#include "link/frames.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const QStringList& rawArgs) {
    const Args args(rawArgs, {QStringLiteral("--profile"), QStringLiteral("--bank")},
                    {QStringLiteral("--search"), QStringLiteral("--all")});
    if (!args.positional().isEmpty())
        throw UsageError("frames takes no positional arguments");
    const Target target = parseTarget(args, true);
    AppContext& ctx = env.load();
    const ProfileRec& profile = ctx.Profiles[env.selectProfile(args)];
    const UploadKind kind = target.kind == Target::All    ? UploadKind::AllBanks
                            : target.kind == Target::Bank ? UploadKind::Bank
                                                          : UploadKind::Search;
    for (const QByteArray& frame : UploadFrames(profile, kind, target.bank))
        out(FrameToHex(frame));
    return env.finish();
}

const CommandRegistration reg({"frames", "frames [--profile P] (--bank N | --search | --all)",
                               run});

} // namespace
} // namespace kestrel::cli
