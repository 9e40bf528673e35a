// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr county CTID: one county, its conventional categories, subcategories and their
// frequencies, and its agencies and trunked systems.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const qint32 ctid = idArgument(args, 0, "CTID");
    RRSession rr(env, args);
    if (rr.open() &&
        rr.known(rr.client().getCountyInfo(ctid), rr.client().CountyInfo.ctid, "county", ctid)) {
        // Copied: the frequency queries below reuse the client's reply buffers.
        const TypCountyInfo county = rr.client().CountyInfo;
        printRecord(county, {QStringLiteral("county")});
        printRecords(county.agencyList, {QStringLiteral("agency")});
        printRecords(county.trsList, {QStringLiteral("system")});
        printCategories(rr, county.cats);
    }
    return rr.finish();
}

const CommandRegistration
    reg({"rr",
         "county",
         "Print a county, its agencies and trunked systems, then its categories (cat CID), "
         "subcategories (subcat CID SCID) and frequencies (freq SCID FID, megahertz)",
         {},
         {{"CTID", "The county's id (see rr state)"}},
         run});

} // namespace
} // namespace kestrel::cli
