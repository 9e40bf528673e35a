// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr states COID: the states (provinces) of one country.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const qint32 coid = idArgument(args, 0, "COID");
    RRSession rr(env, args);
    if (rr.open() && rr.client().getCountryInfo(coid))
        printRecords(rr.client().States);
    return rr.finish();
}

const CommandRegistration reg({"rr",
                               "states",
                               "Print the states of a country: id, name, code",
                               {},
                               {{"COID", "The country's id (see rr countries)"}},
                               run});

} // namespace
} // namespace kestrel::cli
