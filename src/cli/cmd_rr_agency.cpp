// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr agency AID: one agency with its categories, subcategories and frequencies.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const qint32 aid = idArgument(args, 0, "AID");
    RRSession rr(env, args);
    if (rr.open() &&
        rr.known(rr.client().getAgencyInfo(aid), rr.client().AgencyInfo.aid, "agency", aid)) {
        const TypAgencyInfo agency = rr.client().AgencyInfo;
        printRecord(agency, {QStringLiteral("agency")});
        printCategories(rr, agency.cats);
    }
    return rr.finish();
}

const CommandRegistration
    reg({"rr",
         "agency",
         "Print an agency, then its categories (cat CID), subcategories (subcat CID SCID) and "
         "frequencies (freq SCID FID, megahertz)",
         {},
         {{"AID", "The agency's id (see rr state or rr county)"}},
         run});

} // namespace
} // namespace kestrel::cli
