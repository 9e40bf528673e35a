// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr feeds: the audio feeds the user broadcasts.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    RRSession rr(env, args);
    if (rr.open() && rr.client().getUserFeedBroadcasts())
        printRecords(rr.client().Feeds);
    return rr.finish();
}

const CommandRegistration reg({"rr",
                               "feeds",
                               "Print the user's audio feeds: id, description, host, port, "
                               "mount, password",
                               {},
                               {},
                               run});

} // namespace
} // namespace kestrel::cli
