// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr countries: the database's countries (the one list that needs no login).
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    RRSession rr(env, args);
    if (rr.open(false) && rr.client().getCountryList())
        printRecords(rr.client().Countries);
    return rr.finish();
}

const CommandRegistration
    reg({"rr", "countries", "Print the countries: id, name, code", {}, {}, run});

} // namespace
} // namespace kestrel::cli
