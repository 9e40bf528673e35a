// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr state STID: one state with its counties, agencies and trunked systems.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const qint32 stid = idArgument(args, 0, "STID");
    RRSession rr(env, args);
    if (rr.open() &&
        rr.known(rr.client().getStateInfo(stid), rr.client().StateInfo.stid, "state", stid)) {
        const TypStateInfo& s = rr.client().StateInfo;
        printRecord(s, {QStringLiteral("state")});
        printRecords(s.countyList, {QStringLiteral("county")});
        printRecords(s.agencyList, {QStringLiteral("agency")});
        printRecords(s.trsList, {QStringLiteral("system")});
    }
    return rr.finish();
}

const CommandRegistration
    reg({"rr",
         "state",
         "Print a state, then its counties, agencies and trunked systems, one a line, each led "
         "by its kind (state, county, agency, system) and its id",
         {},
         {{"STID", "The state's id (see rr states)"}},
         run});

} // namespace
} // namespace kestrel::cli
