// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr system SID: a trunked system's details, its sites with their frequencies, and
// its talk-group categories with their talk groups.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const qint32 sid = idArgument(args, 0, "SID");
    RRSession rr(env, args);
    if (!rr.open())
        return rr.finish();
    RRClient& c = rr.client();
    const QString id = QString::number(sid);
    if (c.getTrsDetails(sid)) {
        printRecord(c.TrsDetails, {QStringLiteral("system"), id});
        printRecords(c.TrsDetails.sysid, {QStringLiteral("sysid"), id});
        printRecords(c.TrsDetails.bandplan, {QStringLiteral("bandplan"), id});
    }
    if (!rr.failed() && c.getTrsSites(sid)) {
        for (const TypSite& site : c.TrsSites) {
            printRecord(site, {QStringLiteral("site")});
            printRecords(site.siteFreqs, {QStringLiteral("sitefreq"), QString::number(site.siteId),
                                          QString::number(site.siteNumber)});
        }
    }
    if (!rr.failed() && c.getTrsTalkgroupCats(sid)) {
        for (qsizetype i = 0; i < c.TgCats.size() && !rr.failed(); ++i) {
            printRecord(c.TgCats[i], {QStringLiteral("tgcat")});
            // All of the category's talk groups: no tag or decimal id to narrow them.
            if (c.getTrsTalkgroups(qint16(i), sid, c.TgCats[i].tgCid, 0, 0))
                printRecords(c.TgCats[i].Talkgroups,
                             {QStringLiteral("talkgroup"), QString::number(c.TgCats[i].tgCid)});
        }
    }
    return rr.finish();
}

const CommandRegistration
    reg({"rr",
         "system",
         "Print a trunked system (system SID), its system ids and band plan, its sites (site "
         "SITEID SID NUMBER) with their frequencies (sitefreq SITEID NUMBER LCN, megahertz), "
         "and its talk-group categories (tgcat TGCID) with their talk groups (talkgroup TGCID "
         "TGID)",
         {},
         {{"SID", "The trunked system's id (see rr state or rr county)"}},
         run});

} // namespace
} // namespace kestrel::cli
