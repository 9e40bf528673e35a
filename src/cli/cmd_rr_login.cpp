// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr login: checks the login with the service and prints the user's name and the
// subscription's expiry date.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    RRSession rr(env, args);
    if (rr.open() && rr.client().getUserData())
        printRecord(rr.client().UserData);
    return rr.finish();
}

const CommandRegistration reg(
    {"rr", "login", "Log in; print the user name and the subscription's expiry date", {}, {}, run});

} // namespace
} // namespace kestrel::cli
