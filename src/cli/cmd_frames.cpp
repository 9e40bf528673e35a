// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl frames: the frames an upload would send, one per line in hexadecimal.
#include "cli.h"

#include "link/frames.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const auto [ctx, profile, target] = env.select(args, true);
    for (const QByteArray& frame : UploadFrames(profile, target.kind, target.bank))
        out(FrameToHex(frame));
    return env.finish();
}

const CommandRegistration reg({"frames",
                               nullptr,
                               "Print the frames an upload would send, one a line in hexadecimal",
                               targetOptions(true),
                               {},
                               run});

} // namespace
} // namespace kestrel::cli
