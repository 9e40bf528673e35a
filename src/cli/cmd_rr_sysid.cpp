// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr sysid SYSID: the trunked systems that use a system id.
#include "rrsession.h"

#include "import/searchtree.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const QString sysid = args.positional().value(0).toUpper();
    RRSession rr(env, args);
    if (rr.open()) {
        if (rr.client().getTrsBySysid(sysid))
            printRecords(rr.client().TrsBySysid);
        else if (!rr.failed())
            err(searchtree::kNoResults);
    }
    return rr.finish();
}

const CommandRegistration reg({"rr",
                               "sysid",
                               "Print the trunked systems with this system id, one a line: id, "
                               "name, type, flavor, voice, city, last update",
                               {},
                               {{"SYSID", "The system id, hexadecimal (lower case is taken as "
                                          "upper case)"}},
                               run});

} // namespace
} // namespace kestrel::cli
