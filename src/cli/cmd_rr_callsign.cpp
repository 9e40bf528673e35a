// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr callsign CALLSIGN: one FCC licence, then its frequencies and locations.
#include "rrsession.h"

#include "import/searchtree.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const QString callsign = args.positional().value(0).toUpper();
    RRSession rr(env, args);
    if (rr.open()) {
        RRClient& client = rr.client();
        if (client.fccGetCallsign(callsign) && !client.FccCallsign.callsign.isEmpty()) {
            const TypFccCallsign& c = client.FccCallsign;
            printRecord(c, {QStringLiteral("licence")});
            printRecords(c.frequencies, {QStringLiteral("frequency")});
            printRecords(c.locations, {QStringLiteral("location")});
        } else if (!rr.failed()) {
            err(searchtree::kNoResults);
        }
    }
    return rr.finish();
}

const CommandRegistration
    reg({"rr",
         "callsign",
         "Print one FCC call sign's licence, then its frequencies and its locations, one a line, "
         "each led by its kind (licence, frequency, location)",
         {},
         {{"CALLSIGN", "The call sign (lower case is taken as upper case)"}},
         run});

} // namespace
} // namespace kestrel::cli
